// SPDX-License-Identifier: MIT
#include "view/DrawingOptions.h"

#include <charconv>
#include <string_view>
#include <vector>

#include "terminal/Exit.h"
#include "terminal/Options.h"
#include "view/Palette.h"

namespace VeskTool {
namespace {

constexpr int kLeastSize = 16;
constexpr int kMostSize = 8192;
constexpr const char* kGroup = "Drawings (.svg, .png)";

// From the front of the text, which it takes away; -1 if there is none.
int takeSize(std::string_view& text) {
  int size = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
  if (error != std::errc()) return -1;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return size;
}

}  // namespace

void DrawingOptions::define(CLI::App& app) {
  app_ = &app;
  std::vector<std::string> views;
  for (const Vesk::StandardView& view : Vesk::standardViews()) views.emplace_back(view.name);
  app.add_option("--from", from_, "iso, top, bottom, front, back, left or right; z is up")
      ->type_name("VIEW")
      ->check(CLI::IsMember(views))
      ->capture_default_str()
      ->group(kGroup);
  app.add_option("--pixels", size_, "width and height in pixels, 16 to 8192 each")
      ->type_name("WxH")
      ->capture_default_str()
      ->group(kGroup);
  app.add_option("--background", background_, "white, black, transparent or #rrggbb")
      ->type_name("COLOUR")
      ->capture_default_str()
      ->group(kGroup);
  app.add_option("--unit", unit_, "length of the file's unit in millimetres")
      ->type_name("MM")
      ->check(aboveZero())
      ->capture_default_str()
      ->group(kGroup);
  app.add_flag("--no-faces", lines_, "only lines in a .png too, as in an .svg")->group(kGroup);
  app.add_flag("--plain", plain_, "leave out the scale bar and the axes")->group(kGroup);
}

bool DrawingOptions::isGiven() const {
  for (const CLI::Option* option : app_->get_options()) {
    if (option->get_group() == kGroup && option->count() > 0) return true;
  }
  return false;
}

Vesk::DrawingStyle DrawingOptions::style() const {
  Vesk::DrawingStyle style;
  style.view = *Vesk::standardView(from_);
  std::string_view rest = size_;
  style.width = takeSize(rest);
  const bool hasSign = rest.starts_with('x');
  if (hasSign) rest.remove_prefix(1);
  style.height = takeSize(rest);
  for (const int size : {style.width, style.height}) {
    if (!hasSign || !rest.empty() || size < kLeastSize || size > kMostSize) {
      throw Failure(Exit::kUsage, "--pixels " + size_ + ": not two sizes from 16 to 8192",
                    "for example --pixels 1600x1200");
    }
  }
  const std::optional<Vesk::Colour> background = readColour(background_);
  if (!background) {
    throw Failure(Exit::kUsage, "--background " + background_ + ": not a colour",
                  "white, black, transparent, or red, green and blue as #1c2430");
  }
  style.background = *background;
  style.colours = kindColours();
  style.unit = unit_;
  style.isPlain = plain_;
  return style;
}

}  // namespace VeskTool
