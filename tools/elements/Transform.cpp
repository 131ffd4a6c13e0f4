// SPDX-License-Identifier: MIT
#include "elements/Transform.h"

#include <cmath>
#include <numbers>

#include "terminal/Exit.h"
#include "text/Numbers.h"
#include "vesk/Txt.h"

namespace VeskTool {
namespace {

struct SinCos {
  double sine;
  double cosine;
};

// Quarter turns are exact.
SinCos sinCosOf(double degrees) {
  const double turn = std::remainder(degrees, 360.0);
  if (turn == 0.0) return {0.0, 1.0};
  if (turn == 90.0) return {1.0, 0.0};
  if (turn == -90.0) return {-1.0, 0.0};
  if (std::fabs(turn) == 180.0) return {0.0, -1.0};
  const double radians = turn * std::numbers::pi / 180.0;
  return {std::sin(radians), std::cos(radians)};
}

// By the right hand about a world axis.
GeMatrix turnAbout(char axis, double degrees) {
  const auto [s, c] = sinCosOf(degrees);
  const GeVector origin;
  if (axis == 'x') return {{1, 0, 0}, {0, c, s}, {0, -s, c}, origin};
  if (axis == 'y') return {{c, 0, -s}, {0, 1, 0}, {s, 0, c}, origin};
  return {{c, s, 0}, {-s, c, 0}, {0, 0, 1}, origin};
}

// "z,90"
GeMatrix readTurn(const std::string& word) {
  double degrees = 0.0;
  const bool good = word.size() > 2 && word[1] == ',' && word.find_first_of("xyz") == 0 &&
                    readNumber(std::string_view(word).substr(2), degrees) && std::isfinite(degrees);
  if (good) return turnAbout(word[0], degrees);
  throw Failure(Exit::kUsage, "--rotate " + word + ": not an axis and an angle",
                "x, y or z, a comma and degrees, for instance z,90");
}

}  // namespace

void Transform::define(CLI::App& app) {
  app.add_option("--scale", scaleWord_, "multiply coordinates and sizes by this, about the origin")
      ->type_name("FACTOR")
      ->default_str("1");
  app.add_option("--rotate", turnWords_,
                 "then turn about the x, y or z axis by degrees, right-handed: z,90; may be given "
                 "several times")
      ->type_name("AXIS,DEG")
      ->default_str("none")
      ->take_all()
      ->expected(1)
      ->allow_extra_args(false);
  app.add_option("--move", moveWord_, "then shift, in the unit of the file")
      ->type_name("X,Y,Z")
      ->default_str("0,0,0");
}

void Transform::prepare() {
  if (!scaleWord_.empty() &&
      !(readNumber(scaleWord_, scale_) && std::isfinite(scale_) && scale_ > 0.0)) {
    throw Failure(Exit::kUsage, "--scale " + scaleWord_ + ": not a number above 0");
  }
  for (const std::string& word : turnWords_) turns_.push_back(readTurn(word));
  double v[3] = {};
  moves_ = !moveWord_.empty();
  if (moves_ && !readNumbers(moveWord_, 3, v)) {
    throw Failure(Exit::kUsage, "--move " + moveWord_ + ": not three numbers",
                  "X,Y,Z, for instance 1000,0,-250.5");
  }
  move_ = {v[0], v[1], v[2]};
}

void Transform::apply(Vesk::Geo& geo) const {
  if (scale_ != 1.0) geo.scale(scale_);
  for (const GeMatrix& turn : turns_) geo.rot(turn);
  if (!moves_) return;
  if (geo.typeCode() == Vesk::Txt::kTypeCode) {
    geo.rot({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, move_});
  } else {
    geo.move(move_);
  }
}

}  // namespace VeskTool
