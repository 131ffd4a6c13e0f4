// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CLASH_CLASHSEARCH_H
#define VESK_TOOLS_CLASH_CLASHSEARCH_H

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "clash/ClashModel.h"

namespace VeskTool {

// Between what clashes are looked for: a line is the headers of one field F1.
enum class ClashScope { kElements, kHeaders, kLines, kFiles };

struct ClashOptions {
  ClashScope between = ClashScope::kHeaders;
  double clearance = 0.0;                   // what is nearer than this is a clash as well
  double tolerance = 0.1;                   // what is no deeper than this only touches
  bool isStrict = false;                    // a pipe that ends inside another is a clash
  std::optional<std::uint32_t> secondFrom;  // files from here on are the other side

  // Pairs of patterns for headers that may clash with each other.
  std::vector<std::pair<std::string, std::string>> ignored;
};

struct Clash {
  enum class Kind { kHard, kClearance, kDuplicate, kInside };

  Kind kind = Kind::kHard;
  std::uint32_t a = 0;  // elements, in the order of the files
  std::uint32_t b = 0;
  double distance = 0.0;
  GePoint place;  // of both, or in the middle between the nearest points
};

// How deep two elements are in each other.
struct ClashDepth {
  double depth = 0.0;
  bool isBound = true;  // at least so deep; else it is exact
};

// Looks for pairs of elements that overlap, are too near or are the same.
//
//   duplicate   the same kind, place and size, to a thousandth
//   hard        they are in each other by more than the tolerance
//   clearance   they are nearer than the clearance
//   inside      a pipe ends inside another; with isStrict only
//
// No clash is
// * what meets end to end by the rule of Joints, within the tolerance;
// * a pipe of which one end lies in another pipe whose surface its centre line
//   crosses once: a branch and its run, or two pipes with a common end, mitred;
//   but not two of which each ends in the other;
// * two elements of one component, or of one header, line or file as `between` says;
// * a pair of headers that is ignored.
//
// Pairs whose boxes are near come from a tree of boxes; each is measured to
// kDistanceError.
class ClashSearch {
 public:
  // Limits on the work, told before it begins: boxes that are near to each other, and
  // those among them that are to be measured.
  static constexpr std::uint64_t kMostNear = 100'000'000;
  static constexpr std::uint64_t kMostPairs = 2'000'000;

  // Both outlive it.
  ClashSearch(const ClashModel& model, const ClashOptions& options);

  // In the order of the files. Throws a Failure with Exit::kInput where a limit is
  // reached, Interrupted after Ctrl-C.
  std::vector<Clash> find();

  // How many pairs find() has measured.
  std::uint64_t pairs() const { return pairs_; }

  // Of parallel cylinders exact, from axes and radii; of others a bound from below.
  ClashDepth depthOf(const Clash& clash) const;

 private:
  using Pair = std::pair<std::uint32_t, std::uint32_t>;

  std::vector<Pair> nearPairs() const;
  bool isWanted(const ClashElement& a, const ClashElement& b) const;
  bool isIgnored(std::uint32_t header, std::uint32_t other) const;
  std::optional<Clash> judge(std::uint32_t i, std::uint32_t k) const;
  bool doMeet(const ClashElement& a, const ClashElement& b) const;
  bool isBranch(const ClashElement& a, const ClashElement& b) const;
  std::optional<GePoint> endInside(const ClashElement& pipe, const ClashElement& run) const;

  const ClashModel& model_;
  const ClashOptions& options_;
  std::uint64_t pairs_ = 0;
  // By rule and header: bit 0 for its first pattern, bit 1 for its second.
  std::vector<std::vector<std::uint8_t>> ignored_;
};

}  // namespace VeskTool

#endif
