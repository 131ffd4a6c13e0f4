// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TAKEOFF_TAKEOFF_H
#define VESK_TOOLS_TAKEOFF_TAKEOFF_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "files/SidecarFile.h"
#include "takeoff/Grouping.h"
#include "takeoff/Measures.h"
#include "takeoff/Remarks.h"
#include "takeoff/Units.h"
#include "takeoff/Walls.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

// kg/m3, where none is given: of walls, and of what flows inside of them.
inline constexpr double kSteel = 7850.0;
inline constexpr double kWater = 1000.0;

// What is asked of a take-off.
struct TakeOffOptions {
  double unit = 1.0;  // length of the files' unit, millimetres
  Units units{false};
  Walls walls;
  double insulation = 0.0;          // thickness, millimetres
  double density = 0.0;             // kg/m3
  double content = 0.0;             // the same, of what flows in it
  std::vector<Grouping> groupings;  // empty: one group of all
  bool isVerbose = false;           // every place of a remark
};

// What some elements come to. Metres, and what follows from them.
struct Amount {
  std::uint64_t elements = 0;
  std::uint64_t withoutWall = 0;  // solids that no wall is known of
  double length = 0.0;
  double lines = 0.0;
  double surface = 0.0;
  double volume = 0.0;
  double steel = 0.0;       // of solids: with walls only what these enclose
  double content = 0.0;     // inside of them
  double insulation = 0.0;  // volume
  double cladding = 0.0;    // its outer surface

  Amount& operator+=(const Amount& other);
};

struct TakeOffGroup {
  std::string description;       // of the first component that has one
  std::uint64_t components = 0;  // rows of the sidecar that have elements here
  std::uint64_t last = 0;        // the number of the last one
  Amount sum;
  std::map<Size, Amount> rows;
};

// Takes off elements, by one or more groupings. What one component of the sidecar was
// drawn as comes one after the other and counts as one component.
class TakeOff {
 public:
  using Groups = std::map<std::string, TakeOffGroup, NaturalLess>;

  // The options outlive it.
  explicit TakeOff(const TakeOffOptions& options);

  // Before the elements of a file; `sidecar` may be null.
  void begin(const std::string& file, const SidecarColumns* sidecar);

  void add(const Vesk::RecordElement& element, const Vesk::SidecarRow* row);

  // Behind what is here: the elements of another file.
  void merge(const TakeOff& later);

  // Joins rows that differ by what record files round: bends whose angles are within
  // 0.02 degrees and radii within 0.05 mm. To be called once, at the end.
  void finish();

  // One for each grouping; one if there is none.
  const std::vector<Groups>& groups() const { return groups_; }

  const TakeOffGroup& all() const { return all_; }
  const Remarks& remarks() const { return remarks_; }

  // Elements of which nothing was measured.
  std::uint64_t faults() const { return faults_; }

 private:
  // The columns of the sidecar that are looked at; -1: there is none.
  struct Columns {
    int component = -1;
    int description = -1;
  };

  Amount amountOf(const Measures& measures, const Vesk::RecordElement& element,
                  const Vesk::SidecarRow* row);
  void addWalls(Amount& to, const Measures& measures, const Vesk::RecordElement& element,
                const Vesk::SidecarRow* row);
  void count(TakeOffGroup& group, const Amount& amount, const Vesk::SidecarRow* row,
             bool isItem) const;
  void follow(const Vesk::SidecarRow* row);

  const TakeOffOptions& options_;
  std::vector<Groups> groups_;
  TakeOffGroup all_;
  Remarks remarks_;
  std::uint64_t faults_ = 0;

  std::string file_;
  std::vector<GroupValues> values_;
  Columns columns_;
  std::uint64_t component_ = 0;  // number of the one that was last seen
  std::string f1_;
  std::string f2_;
  int first_ = -1;
};

}  // namespace VeskTool

#endif
