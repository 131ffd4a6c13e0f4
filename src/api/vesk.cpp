// SPDX-License-Identifier: MIT
#include "vesk.h"

#include <string>
#include <utility>

#include "api/Globals.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

using namespace Vesk;

namespace {

template <class Primitive>
int writeElement(Primitive&& primitive) {
  elementHolder.takeElement(std::forward<Primitive>(primitive));
  return outFile.writeElement(elementHolder);
}

}  // namespace

// The primitives are built in braces, which convert the arrays from left to
// right: of two null arrays the first one names the place.

int vk_openVesk(const char* name) {
  if (name == nullptr) {
    outFile.close();
    return 0;
  }
  const std::string path = std::string("vesk") + name + ".dat";
  return outFile.open(path.c_str(), kTokens) ? 1 : 0;
}

int vk_setHeader(const char* a, const char* b, int n) {
  return elementHolder.header.set(a, b, n) ? 1 : 0;
}

void vk_writePnt(const double p[3]) { writeElement(Pline{GePoint(p)}); }

void vk_writeSeg(const double p1[3], const double p2[3]) {
  writeElement(Pline{GePoint(p1), GePoint(p2)});
}

void vk_writeTri(const double p1[3], const double p2[3], const double p3[3]) {
  writeElement(Pgon{GePoint(p1), GePoint(p2), GePoint(p3)});
}

void vk_writeQua(const double p1[3], const double p2[3], const double p3[3], const double p4[3]) {
  writeElement(Pgon{GePoint(p1), GePoint(p2), GePoint(p3), GePoint(p4)});
}

void vk_writeTxt(const double p1[3], const double p2[3], const double p3[3], double d1, double d2,
                 int i1, int i2, const char* s) {
  writeElement(Txt{p1, p2, p3, d1, d2, i1, i2, s == nullptr ? "" : s});
}

void vk_writeBox(const double p0[3], const double p1[3], const double p2[3], const double p3[3]) {
  writeElement(Box{p0, p1, p2, p3});
}

void vk_writeRed(const double p0[3], const double p1[3], const double p2[3], const double p3[3],
                 const double p4[3], const double p5[3], const double p6[3], const double p7[3]) {
  writeElement(Red{{p0, p1, p2, p3, p4, p5, p6, p7}});
}

int vk_writeCyl(const double p1[3], const double p2[3], double d) {
  return writeElement(Cyl{p1, p2, d});
}

int vk_writeCon(const double p1[3], const double p2[3], double d1, double d2) {
  return writeElement(Cone{p1, p2, d1, d2});
}

int vk_writeTor(const double p0[3], const double p1[3], const double p2[3], double d) {
  return writeElement(Torus{p0, p1, p2, d});
}

int vk_writeElb(const double p0[3], const double p1[3], const double p2[3], const double p3[3],
                double d) {
  return writeElement(Relb{p0, p1, p2, p3, d});
}
