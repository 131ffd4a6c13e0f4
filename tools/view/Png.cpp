// SPDX-License-Identifier: MIT
#include "view/Png.h"

#include <cstdlib>
#include <memory>
#include <new>
#include <string_view>
#include <vector>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

namespace VeskTool {
namespace {

bool isOpaque(const Vesk::Picture& picture) {
  for (std::size_t i = 3; i < picture.bytes.size(); i += 4) {
    if (picture.bytes[i] != 255) return false;
  }
  return true;
}

std::vector<std::uint8_t> withoutAlpha(const std::vector<std::uint8_t>& bytes) {
  std::vector<std::uint8_t> colours;
  colours.reserve(bytes.size() / 4 * 3);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i % 4 != 3) colours.push_back(bytes[i]);
  }
  return colours;
}

struct Freer {
  void operator()(unsigned char* bytes) const { std::free(bytes); }
};

}  // namespace

void writePng(TextSink& to, const Vesk::Picture& picture) {
  const bool hasAlpha = !isOpaque(picture);
  const int channels = hasAlpha ? 4 : 3;
  const std::vector<std::uint8_t> bytes = hasAlpha ? picture.bytes : withoutAlpha(picture.bytes);
  int size = 0;
  const std::unique_ptr<unsigned char, Freer> png(stbi_write_png_to_mem(
      bytes.data(), picture.width * channels, picture.width, picture.height, channels, &size));
  if (png == nullptr) throw std::bad_alloc();
  const void* first = png.get();
  to.write({static_cast<const char*>(first), static_cast<std::size_t>(size)});
}

}  // namespace VeskTool
