// SPDX-License-Identifier: MIT
#include "tools/Exported.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>

namespace VeskTest {

using Json = nlohmann::json;

std::string bytesOf(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::uint32_t u32At(const std::string& bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = value << 8U | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

float f32At(const std::string& bytes, std::size_t at) {
  const std::uint32_t bits = u32At(bytes, at);
  float value = 0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

Glb::Glb(const std::string& bytes) {
  EXPECT_EQ(bytes.substr(0, 4), "glTF");
  EXPECT_EQ(u32At(bytes, 4), 2U);
  EXPECT_EQ(u32At(bytes, 8), bytes.size());
  const std::uint32_t size = u32At(bytes, 12);
  EXPECT_EQ(bytes.substr(16, 4), "JSON");
  json = Json::parse(bytes.substr(20, size));
  if (bytes.size() > 20 + size) data = bytes.substr(20 + size + 8);
}

std::size_t Glb::placeOf(const Json& accessor) const {
  const Json& view = json["bufferViews"][accessor["bufferView"].get<std::size_t>()];
  return view.value("byteOffset", std::size_t{0}) + accessor.value("byteOffset", std::size_t{0});
}

float Glb::at(const Json& accessor, std::size_t k, std::size_t i) const {
  const Json& view = json["bufferViews"][accessor["bufferView"].get<std::size_t>()];
  return f32At(data, placeOf(accessor) + k * view["byteStride"].get<std::size_t>() + 4 * i);
}

std::size_t Glb::indexAt(const Json& accessor, std::size_t i) const {
  constexpr int kShort = 5123;
  const bool isShort = accessor["componentType"] == kShort;
  const std::size_t place = placeOf(accessor) + i * (isShort ? 2 : 4);
  if (!isShort) return u32At(data, place);
  return static_cast<unsigned char>(data[place]) +
         256U * static_cast<unsigned char>(data[place + 1]);
}

}  // namespace VeskTest
