// SPDX-License-Identifier: MIT
// vesk_picture RECORDS OUTPUT.png - draws a record file as `vesk view -o OUTPUT.png` does.
//
// For scripts/demo, which shows something within a minute: it is made of the drawing code
// alone. Exit code 1, with a message, if the picture can't be made.
#include <cstdio>
#include <exception>
#include <fstream>
#include <string>

#include "draw/Drawing.h"
#include "draw/Painter.h"
#include "elements/Kinds.h"
#include "mesh/SceneBuilder.h"
#include "view/Palette.h"
#include "view/Png.h"
#include <vesk/RecordFile.h>

namespace {

using Found = Vesk::RecordFile::Found;

// As wide as the README shows it.
constexpr int kWidth = 1200;
constexpr int kHeight = 640;

class Bytes : public VeskTool::TextSink {
 public:
  void write(std::string_view text) override { all += text; }
  std::string all;
};

Vesk::Scene sceneOf(const std::string& name, const Vesk::Fineness& fineness) {
  Vesk::RecordFile records(name);
  Vesk::SceneBuilder builder(fineness);
  const std::uint32_t file = builder.addFile(name);
  for (Found found; (found = records.next()) != Found::kEnd;) {
    if (found != Found::kElement) continue;
    Vesk::SceneElement shown;
    shown.kind = static_cast<std::uint8_t>(VeskTool::kindOf(*records.element().geo));
    shown.file = file;
    builder.add(*records.element().geo, shown);
  }
  return builder.finish();
}

bool draw(const std::string& records, const std::string& output) {
  const Vesk::Scene rough = sceneOf(records, Vesk::Fineness::ofSegments(Vesk::Fineness::kDraft));
  if (rough.elements.empty()) return false;
  Vesk::DrawingStyle style;
  style.view = *Vesk::standardView("iso");
  style.width = kWidth;
  style.height = kHeight;
  style.colours = VeskTool::kindColours();
  const Vesk::Scene scene = sceneOf(records, Vesk::Drawing::finenessFor(rough, style));
  Bytes png;
  VeskTool::writePng(png, Vesk::paint(Vesk::Drawing(scene, style), true));
  std::ofstream file(output, std::ios::binary);
  file << png.all;
  file.close();
  return file.good();
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc == 3 && draw(argv[1], argv[2])) return 0;
  std::fputs(argc == 3 ? "vesk_picture: there is nothing to draw, or no place for it\n"
                       : "Usage: vesk_picture RECORDS OUTPUT.png\n",
             stderr);
  return 1;
} catch (const std::exception& e) {
  std::fprintf(stderr, "vesk_picture: %s\n", e.what());
  return 1;
}
