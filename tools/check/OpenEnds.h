// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CHECK_OPENENDS_H
#define VESK_TOOLS_CHECK_OPENENDS_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "check/PipeEnd.h"
#include "vesk/Geo.h"
#include "vesk/HeaderFields.h"

namespace VeskTool {

// The solids of a file, and which of their ends are those of a line of pipe.
//
// Where a file has centre lines, the ends of what they run through are ends of
// pipes, all others belong to handwheels, supports and the like. Groups of elements
// are those of the same F1 and F2: in a group without any centre line every end
// counts.
class Solids {
 public:
  // The index of the solid, or of the next one if the element is none; centre
  // lines are kept too.
  std::uint32_t add(const Vesk::Geo& geo, std::uint64_t group, std::uint64_t line);

  static std::uint64_t groupOf(const Vesk::HeaderFields& header);

  // To be called once, before the rest.
  void finish();

  std::size_t size() const { return solids_.size(); }
  const Vesk::Geo& solid(std::uint32_t index) const { return *solids_[index].geo; }
  std::uint64_t lineOf(std::uint32_t index) const { return solids_[index].line; }
  bool isLineEnd(const PipeEnd& end) const;

 private:
  struct Solid {
    std::unique_ptr<Vesk::Geo> geo;
    std::uint64_t line;
  };

  std::vector<Solid> solids_;
  std::vector<std::uint64_t> lineEnds_;  // cells in which centre lines end
  std::vector<std::uint64_t> groups_;    // that have centre lines
};

// An end that meets nothing.
struct OpenEnd {
  enum class Kind {
    kOpen,     // faces what is further off, or nothing
    kShort,    // stops short of the side of a solid
    kBeside,   // passes beside a pipe that it almost touches
    kMissing,  // two open ends face each other, and nothing is between
  };

  Kind kind = Kind::kOpen;
  PipeEnd end;
  bool isLooked = true;     // whether it was looked what is ahead
  bool facesSolid = false;  // and something is
  std::string_view what;    // its kind: "cylinder"
  std::uint64_t line = 0;   // of its element
  double distance = 0.0;    // to it
};

// So many diameters ahead an open end looks for what it faces.
inline constexpr double kAhead = 20.0;

// Of the ends with `isFree` those that lie in no solid either, in the order of lines.
// A pair of kMissing is told once, for the later line.
void findOpenEnds(const Solids& solids, const std::vector<PipeEnd>& ends,
                  const std::vector<bool>& isFree, const JointOptions& options,
                  const std::function<void(const OpenEnd&)>& take);

}  // namespace VeskTool

#endif
