// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_STROKECHAINS_H
#define VESK_DRAW_STROKECHAINS_H

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "draw/Occlusion.h"
#include "draw/PlaceSet.h"
#include "draw/SeenLines.h"

namespace Vesk {

// A part of a line that is seen.
struct LinePiece {
  std::uint64_t line = 0;
  LinePart part;
  bool isOutline = false;
};

// Puts pieces in order and joins those of a line that touch, as they do where a
// line was cut for no other reason than that bands end.
void joinPieces(std::vector<LinePiece>& pieces);

// Makes long strokes of pieces that meet at their ends.
class StrokeChains {
 public:
  // An end of a line: where it is, and a number that equal ends share.
  struct End {
    ScreenPoint place;
    std::uint32_t vertex = 0;
  };

  // For so many parts of lines at the most.
  explicit StrokeChains(std::size_t most) : places_(most) {}

  // A part of the line from a to b.
  void add(const End& a, const End& b, const LinePart& part, LineWeight weight);

  // Appends the strokes of what was added. Left out are pieces that lie where
  // another one is, of whatever element, and short rests of lines that are hidden.
  void take(std::uint32_t element, std::vector<Stroke>& strokes);

 private:
  // A node is the vertex that a segment ends in, or kCut and more where a line was
  // cut since the rest of it is hidden.
  static constexpr std::uint64_t kCut = std::uint64_t{1} << 32U;

  struct Segment {
    std::array<ScreenPoint, 2> ends;
    std::array<std::uint64_t, 2> nodes;
    LineWeight weight;
    bool isUsed = false;
  };

  struct Meeting {
    std::uint64_t node;
    LineWeight weight;
    std::size_t segment;

    friend auto operator<=>(const Meeting&, const Meeting&) = default;
  };

  // In hundredths of a pixel, the smaller end first.
  static PlaceSet::Place placeOf(const Segment& segment);
  std::size_t next(const Segment& segment, std::uint64_t node) const;
  void follow(std::size_t segment, std::size_t end, Stroke& stroke, bool& isCut);

  std::vector<Segment> segments_;
  std::vector<Meeting> meetings_;
  std::uint64_t cuts_ = kCut;
  PlaceSet places_;
};

}  // namespace Vesk

#endif
