// SPDX-License-Identifier: MIT
// What the tests read of exported files.
#ifndef VESK_TESTS_TOOLS_EXPORTED_H
#define VESK_TESTS_TOOLS_EXPORTED_H

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

namespace VeskTest {

// All bytes of a file as they are.
std::string bytesOf(const std::string& name);

// Numbers in little endian at a place.
std::uint32_t u32At(const std::string& bytes, std::size_t at);
float f32At(const std::string& bytes, std::size_t at);

// A binary glTF file, taken apart.
struct Glb {
  nlohmann::json json;
  std::string data;

  explicit Glb(const std::string& bytes);

  // Component i of vector k.
  float at(const nlohmann::json& accessor, std::size_t k, std::size_t i) const;

  // Index i of a mesh, of 16 or 32 bits.
  std::size_t indexAt(const nlohmann::json& accessor, std::size_t i) const;

 private:
  std::size_t placeOf(const nlohmann::json& accessor) const;
};

}  // namespace VeskTest

#endif
