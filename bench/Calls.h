// SPDX-License-Identifier: MIT
#ifndef VESK_BENCH_CALLS_H
#define VESK_BENCH_CALLS_H

#include <utility>

#include "PlantModel.h"
#include "vesk.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

namespace VeskBench {

// Writes the element by its export.
inline void callExport(const Element& e) {
  const auto p = [&e](std::size_t i) { return e.point(i); };
  switch (e.kind) {
    case Element::kCyl:
      vk_writeCyl(p(0), p(1), e.sizes[0]);
      break;
    case Element::kTor:
      vk_writeTor(p(0), p(1), p(2), e.sizes[0]);
      break;
    case Element::kCon:
      vk_writeCon(p(0), p(1), e.sizes[0], e.sizes[1]);
      break;
    case Element::kBox:
      vk_writeBox(p(0), p(1), p(2), p(3));
      break;
    case Element::kElb:
      vk_writeElb(p(0), p(1), p(2), p(3), e.sizes[0]);
      break;
    case Element::kRed:
      vk_writeRed(p(0), p(1), p(2), p(3), p(4), p(5), p(6), p(7));
      break;
    case Element::kPnt:
      vk_writePnt(p(0));
      break;
    case Element::kSeg:
      vk_writeSeg(p(0), p(1));
      break;
    case Element::kTri:
      vk_writeTri(p(0), p(1), p(2));
      break;
    case Element::kQua:
      vk_writeQua(p(0), p(1), p(2), p(3));
      break;
    case Element::kTxt:
      vk_writeTxt(p(0), p(1), p(2), e.sizes[0], e.sizes[1], e.alignment, 0, e.text.c_str());
      break;
  }
}

// Builds the primitive that the export builds and calls write(primitive).
template <class Write>
void withPrimitive(const Element& e, Write write) {
  using namespace Vesk;
  const auto p = [&e](std::size_t i) { return e.point(i); };
  const auto point = [&e](std::size_t i) { return GePoint(e.point(i)); };
  switch (e.kind) {
    case Element::kCyl:
      write(Cyl{p(0), p(1), e.sizes[0]});
      break;
    case Element::kTor:
      write(Torus{p(0), p(1), p(2), e.sizes[0]});
      break;
    case Element::kCon:
      write(Cone{p(0), p(1), e.sizes[0], e.sizes[1]});
      break;
    case Element::kBox:
      write(Box{p(0), p(1), p(2), p(3)});
      break;
    case Element::kElb:
      write(Relb{p(0), p(1), p(2), p(3), e.sizes[0]});
      break;
    case Element::kRed:
      write(Red{{p(0), p(1), p(2), p(3), p(4), p(5), p(6), p(7)}});
      break;
    case Element::kPnt:
      write(Pline{point(0)});
      break;
    case Element::kSeg:
      write(Pline{point(0), point(1)});
      break;
    case Element::kTri:
      write(Pgon{point(0), point(1), point(2)});
      break;
    case Element::kQua:
      write(Pgon{point(0), point(1), point(2), point(3)});
      break;
    case Element::kTxt:
      write(Txt{p(0), p(1), p(2), e.sizes[0], e.sizes[1], e.alignment, 0, e.text});
      break;
  }
}

}  // namespace VeskBench

#endif
