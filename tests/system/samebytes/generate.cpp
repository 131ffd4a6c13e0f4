// SPDX-License-Identifier: MIT
// Writes the same elements on every run, for comparing the bytes of one build
// with those of another.
//
//   generate [LOCALE]     into the current folder
//
//   vesktokens.dat   mode 3, through the exports
//   fixed.dat        mode 2, through the model, some of them moved, turned and
//                    scaled before
//
// With LOCALE the program runs under that locale, and fails if a call changes it.

#include <array>
#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <limits>
#include <locale>
#include <string>

#include "api/ElementHolder.h"
#include "output/OutFile.h"
#include "vesk.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/GeEx.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

namespace {

constexpr int kElementsOfAKind = 1000;

// Where the nine-character form changes, and what else is worth a neighbour.
constexpr double kBounds[] = {
    99999999.0, 9999999.9,  999999.99, 99999.999,  9999.999,  -9999.999, -99999.99,
    -999999.9,  -9999999.0, 99999.5,   99999999.5, 999.9995,  1e-4,      5e-5,
    1e-6,       5e-7,       1e8,       1e15,       9.99995e9, 1e100,     1e300,
    0.01,       1e-7,       1e-10,     2.2e-15,
};

class Numbers {
 public:
  std::uint64_t bits() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 7;
    state_ ^= state_ << 17;
    return state_;
  }

  int below(int n) { return static_cast<int>(bits() % static_cast<std::uint64_t>(n)); }

  // Mostly what a plant is made of, sometimes anything that a double can be.
  double number() {
    switch (below(16)) {
      case 0:
        return bound();
      case 1:
        return oddOne();
      case 2:
        return tie(32.0);  // an exact half of the 4th decimal
      case 3:
        return tie(128.0);  // of the 6th
      default:
        return millimetres();
    }
  }

  double millimetres() { return static_cast<double>(below(2000001) - 1000000) / 1000.0; }

  using Triple = std::array<double, 3>;
  Triple triple() { return {number(), number(), number()}; }
  Triple place() { return {millimetres(), millimetres(), millimetres()}; }
  Triple any() { return below(2) == 0 ? place() : triple(); }

 private:
  double tie(double part) { return static_cast<double>(2 * below(100000) - 99999) / part; }

  // A bound, or one of the two doubles beside it.
  double bound() {
    const double value = kBounds[below(static_cast<int>(std::size(kBounds)))];
    const auto step = static_cast<std::uint64_t>(below(3));
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) + step - 1);
  }

  double oddOne() {
    using Limits = std::numeric_limits<double>;
    constexpr std::array<double, 8> kOdd = {
        0.0,           -0.0,          Limits::infinity(),  -Limits::infinity(), Limits::quiet_NaN(),
        Limits::max(), Limits::min(), Limits::denorm_min()};
    const int choice = below(16);
    if (choice < static_cast<int>(kOdd.size())) return kOdd[static_cast<std::size_t>(choice)];
    return std::bit_cast<double>(bits());
  }

  std::uint64_t state_ = 0x9E3779B97F4A7C15U;
};

std::string text(Numbers& from) {
  std::string result;
  for (int left = from.below(40); left > 0; --left) {
    result += static_cast<char>(' ' + from.below(95));
  }
  return result;
}

// A null direction is refused, in every build alike.
template <class Call>
void unlessRefused(Call call) {
  try {
    call();
  } catch (const GeEx::NullDir&) {
    // Nothing is written then.
  }
}

void writeTokens(Numbers& from) {
  vk_openVesk("tokens");
  for (int i = 0; i < kElementsOfAKind; ++i) {
    std::array<Numbers::Triple, 8> a;
    for (auto& p : a) p = from.any();
    const double d1 = from.number();
    const double d2 = from.number();
    const std::string pipeline = text(from);
    const std::string label = text(from);
    const int n = from.below(50000);  // compilers differ in which argument comes first
    vk_setHeader(pipeline.c_str(), label.c_str(), n);
    vk_writePnt(a[0].data());
    vk_writeSeg(a[0].data(), a[1].data());
    vk_writeTri(a[0].data(), a[1].data(), a[2].data());
    vk_writeQua(a[0].data(), a[1].data(), a[2].data(), a[3].data());
    vk_writeTxt(a[0].data(), a[1].data(), a[2].data(), d1, d2, n % 12, n % 2, label.c_str());
    vk_writeBox(a[0].data(), a[1].data(), a[2].data(), a[3].data());
    vk_writeRed(a[0].data(), a[1].data(), a[2].data(), a[3].data(), a[4].data(), a[5].data(),
                a[6].data(), a[7].data());
    vk_writeCyl(a[0].data(), a[1].data(), d1);
    vk_writeCon(a[0].data(), a[1].data(), d1, d2);
    vk_writeTor(a[0].data(), a[1].data(), a[2].data(), d1);
    unlessRefused([&] { vk_writeElb(a[0].data(), a[1].data(), a[2].data(), a[3].data(), d1); });
  }
  vk_openVesk(nullptr);
}

class FixedColumns {
 public:
  explicit FixedColumns(Numbers& from) : from_(from) { file_.open("fixed.dat", 2); }

  // As it is, and moved, turned and scaled.
  void write(Vesk::Geo& primitive) {
    holder_.header.set("P-1001", "01", from_.below(46656));
    unlessRefused([&] { put(primitive); });
    unlessRefused([&] {
      const GeVector axis(from_.place().data());
      primitive.move(GeVector(from_.place().data()));
      primitive.rot(GeMatrix(GeVector(1.0, 0.0, 0.0).rotatedAbout(axis, 0.7),
                             GeVector(0.0, 1.0, 0.0).rotatedAbout(axis, 0.7),
                             GeVector(0.0, 0.0, 1.0).rotatedAbout(axis, 0.7),
                             GeVector(from_.place().data())));
      primitive.scale(from_.millimetres());
      put(primitive);
    });
  }

 private:
  void put(const Vesk::Geo& primitive) {
    holder_.setElement(primitive);
    file_.writeElement(holder_);
  }

  Numbers& from_;
  Vesk::OutFile file_;
  Vesk::ElementHolder holder_;
};

void writeFixedColumns(Numbers& from) {
  FixedColumns file(from);
  const auto point = [&] { return GePoint(from.any().data()); };
  const auto vector = [&] { return GeVector(from.any().data()); };
  const auto write = [&](auto primitive) { file.write(primitive); };
  for (int i = 0; i < kElementsOfAKind; ++i) {
    const std::array<GeVector, 8> v = {vector(), vector(), vector(), vector(),
                                       vector(), vector(), vector(), vector()};
    const double d1 = from.number();
    const double d2 = from.number();
    write(Vesk::Cyl{v[0], v[1], d1});
    write(Vesk::Cone{v[0], v[1], d1, d2});
    write(Vesk::Torus{v[0], v[1], v[2], d1});
    write(Vesk::Red{v});
    Vesk::Box box{v[0], v[1], v[2], v[3]};
    box.edges = {{"left", {}}, {"seam", {{d1, d2}}}};
    write(box);
    unlessRefused([&] { write(Vesk::Relb{v[0], v[1], v[2], v[3], d1}); });
    write(Vesk::Txt{point(), v[0], v[1], d1, d2, from.below(12), from.below(2), text(from)});

    Vesk::Pline line;
    Vesk::Pgon face;
    for (int left = 1 + from.below(6); left > 0; --left) line.vertices.push_back(point());
    for (int left = 3 + from.below(6); left > 0; --left)
      face.addVertex(GePoint(from.place().data()));
    write(line);
    write(face);
    for (auto& vertex : face.vertices) vertex.point = point();
    write(face);
  }
}

}  // namespace

int main(int count, char** words) {
  if (count > 1) {
    if (std::setlocale(LC_ALL, words[1]) == nullptr) {
      std::fprintf(stderr, "generate: no locale %s\n", words[1]);
      return 1;
    }
    std::locale::global(std::locale(words[1]));
  }
  const std::string before = std::setlocale(LC_ALL, nullptr);
  Numbers from;
  writeTokens(from);
  writeFixedColumns(from);
  if (before != std::setlocale(LC_ALL, nullptr)) {
    std::fprintf(stderr, "generate: the locale was changed\n");
    return 1;
  }
  return 0;
}
