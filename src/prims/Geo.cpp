// SPDX-License-Identifier: MIT
#include "vesk/Geo.h"

#include <cstdio>
#include <string>

#include "output/NumberText.h"

namespace Vesk {

std::int32_t Geo::read(Input&) { return 0; }

std::int32_t Geo::write(Output&) const { return 0; }

void Geo::move(const GeVector&) { printNotSupported("move"); }

void Geo::rot(const GeMatrix&) { printNotSupported("rot"); }

void Geo::scale(double) { printNotSupported("scale"); }

std::int32_t Geo::pieceCount() const { return 1; }

double Geo::volume() const { return 0.0; }

bool Geo::equal(const Geo&, double) const {
  printNotSupported("equal");
  return false;
}

void Geo::printNotSupported(const char* operation) const {
  std::string text = "  Vesk::Geo::";
  text += operation;
  text += " not supported for ";
  appendInt(text, typeCode());
  text += '\n';
  std::fputs(text.c_str(), stdout);
  std::fflush(stdout);
}

}  // namespace Vesk
