// SPDX-License-Identifier: MIT
#include "PlantFile.h"

#include "Calls.h"
#include "api/ElementHolder.h"
#include "output/OutFile.h"

namespace VeskBench {

void writeByExports(const std::vector<Element>& model, std::size_t count) {
  forEachElement(
      model, count, [](int n) { vk_setHeader("P-1001", "A1", n); }, callExport);
}

void writeByModel(const std::vector<Element>& model, std::size_t count, const char* name) {
  Vesk::OutFile file;
  Vesk::ElementHolder holder;
  file.open(name, 2);
  forEachElement(
      model, count, [&](int n) { holder.header.set("P-1001", "A1", n); },
      [&](const Element& element) {
        withPrimitive(element, [&](const auto& primitive) {
          holder.setElement(primitive);
          file.writeElement(holder);
        });
      });
}

std::string writePlant(const std::vector<Element>& model, std::size_t count, int mode) {
  if (mode == 2) {
    writeByModel(model, count, "plant.dat");
    return "plant.dat";
  }
  vk_openVesk("plant");
  writeByExports(model, count);
  vk_openVesk(nullptr);
  return "veskplant.dat";
}

}  // namespace VeskBench
