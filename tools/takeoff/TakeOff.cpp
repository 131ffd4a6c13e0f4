// SPDX-License-Identifier: MIT
#include "takeoff/TakeOff.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace VeskTool {
namespace {

constexpr double kSameAngle = 0.02;   // degrees
constexpr double kSameRadius = 0.05;  // mm

constexpr double kMillimetre = 1e-3;  // metres

// Components of piping that are pipe by themselves; others, such as flanges and valves, are
// drawn with the diameter of a pipe too, and have no wall of a schedule.
constexpr std::string_view kPipeWords[] = {"PIPE",
                                           "PIPE-FIXED",
                                           "PIPE-BLOCK-FIXED",
                                           "PIPE-BLOCK-VARIABLE",
                                           "PULLED-BEND",
                                           "BEND",
                                           "ELBOW",
                                           "TEE",
                                           "TEE-STUB",
                                           "TEE-SET-ON",
                                           "CROSS",
                                           "Y-PIECE",
                                           "Y-PIECE-FITTING",
                                           "OLET",
                                           "NIPPLE",
                                           "REDUCER-CONCENTRIC",
                                           "REDUCER-ECCENTRIC"};

bool isPipeWord(std::string_view word) {
  return std::find(std::begin(kPipeWords), std::end(kPipeWords), word) != std::end(kPipeWords);
}

int columnOf(const SidecarColumns& sidecar, std::string_view name) {
  const auto& columns = sidecar.columns();
  const auto found = std::find(columns.begin(), columns.end(), name);
  return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

using Row = std::pair<Size, Amount>;

// Gives the neighbours of sorted rows, as far as no gap is larger than this, the value of
// the one with most elements.
template <class Value>
void joinNeighbours(std::vector<Row>::iterator begin, std::vector<Row>::iterator end, Value value,
                    double gap) {
  std::sort(begin, end, [&](Row& a, Row& b) { return value(a) < value(b); });
  while (begin != end) {
    auto behind = begin + 1;
    while (behind != end && value(*behind) - value(*(behind - 1)) <= gap) ++behind;
    const auto most = std::max_element(begin, behind, [](const Row& a, const Row& b) {
      return a.second.elements < b.second.elements;
    });
    const double common = value(*most);
    for (; begin != behind; ++begin) value(*begin) = common;
  }
}

bool areSameButForTheBend(Size a, const Size& b) {
  a.angle = b.angle;
  a.radius = b.radius;
  return !(a < b) && !(b < a);
}

// The end of the rows from here on for which `same` holds with the first of them.
template <class Same>
std::vector<Row>::iterator endOf(std::vector<Row>::iterator begin, std::vector<Row>::iterator end,
                                 Same same) {
  return std::find_if(begin, end, [&](const Row& row) { return !same(begin->first, row.first); });
}

void joinBends(std::map<Size, Amount>& rows) {
  std::vector<Row> all(rows.begin(), rows.end());
  for (auto begin = all.begin(); begin != all.end();) {
    const auto end = endOf(begin, all.end(), areSameButForTheBend);
    joinNeighbours(
        begin, end, [](Row& row) -> double& { return row.first.angle; }, kSameAngle);
    for (auto some = begin; some != end;) {
      const auto behind =
          endOf(some, end, [](const Size& a, const Size& b) { return a.angle == b.angle; });
      joinNeighbours(
          some, behind, [](Row& row) -> double& { return row.first.radius; }, kSameRadius);
      some = behind;
    }
    begin = end;
  }
  rows.clear();
  for (const Row& row : all) rows[row.first] += row.second;
}

void mergeGroup(TakeOffGroup& to, const TakeOffGroup& from) {
  if (to.description.empty()) to.description = from.description;
  to.components += from.components;
  to.sum += from.sum;
  for (const auto& [size, amount] : from.rows) to.rows[size] += amount;
}

}  // namespace

Amount& Amount::operator+=(const Amount& other) {
  elements += other.elements;
  withoutWall += other.withoutWall;
  length += other.length;
  lines += other.lines;
  surface += other.surface;
  volume += other.volume;
  steel += other.steel;
  content += other.content;
  insulation += other.insulation;
  cladding += other.cladding;
  return *this;
}

TakeOff::TakeOff(const TakeOffOptions& options)
    : options_(options),
      groups_(std::max<std::size_t>(options.groupings.size(), 1)),
      remarks_(options.isVerbose) {}

void TakeOff::begin(const std::string& file, const SidecarColumns* sidecar) {
  file_ = file;
  values_.clear();
  for (const Grouping& grouping : options_.groupings) values_.emplace_back(grouping, sidecar);
  columns_ = {};
  first_ = -1;
  if (sidecar == nullptr) return;
  columns_.component = columnOf(*sidecar, "component");
  columns_.description = columnOf(*sidecar, "description");
}

void TakeOff::add(const Vesk::RecordElement& element, const Vesk::SidecarRow* row) {
  follow(row);
  const Measures measures = measure(*element.geo, options_.unit * kMillimetre);
  const Amount amount = amountOf(measures, element, row);
  count(all_, amount, row, false);
  for (std::size_t i = 0; i < groups_.size(); ++i) {
    const bool isGrouped = !values_.empty();
    TakeOffGroup& group =
        groups_[i][isGrouped ? values_[i].of(element, row, measures.size, options_.units)
                             : std::string()];
    count(group, amount, row, isGrouped && options_.groupings[i].isItem());
    group.rows[measures.size] += amount;
  }
}

// A component is new when its key is.
void TakeOff::follow(const Vesk::SidecarRow* row) {
  if (row == nullptr || (row->first == first_ && row->f1 == f1_ && row->f2 == f2_)) return;
  ++component_;
  f1_ = row->f1;
  f2_ = row->f2;
  first_ = row->first;
}

void TakeOff::count(TakeOffGroup& group, const Amount& amount, const Vesk::SidecarRow* row,
                    bool isItem) const {
  group.sum += amount;
  if (row == nullptr || group.last == component_) return;
  group.last = component_;
  ++group.components;
  if (isItem && columns_.description >= 0 && group.description.empty()) {
    group.description = row->values[static_cast<std::size_t>(columns_.description)];
  }
}

Amount TakeOff::amountOf(const Measures& measures, const Vesk::RecordElement& element,
                         const Vesk::SidecarRow* row) {
  Amount amount;
  amount.elements = 1;
  amount.length = measures.length;
  amount.lines = measures.lines;
  amount.surface = measures.surface;
  amount.volume = measures.volume;
  if (!measures.fault.empty()) {
    ++faults_;
    remarks_.add("not measured: " + measures.fault, file_, element.firstLine);
  } else {
    if (!measures.remark.empty()) remarks_.add(measures.remark, file_, element.firstLine);
    addWalls(amount, measures, element, row);
  }
  return amount;
}

void TakeOff::addWalls(Amount& to, const Measures& measures, const Vesk::RecordElement& element,
                       const Vesk::SidecarRow* row) {
  if (!measures.isSolid) return;
  const std::string_view component =
      row == nullptr || columns_.component < 0
          ? std::string_view()
          : row->values[static_cast<std::size_t>(columns_.component)];
  const bool isPipe = component.empty() || isPipeWord(component);
  if (options_.insulation > 0.0 && isPipe) {
    const Insulation insulation = insulationOf(measures, options_.insulation);
    to.insulation = insulation.volume;
    to.cladding = insulation.surface;
  }
  if (options_.walls.isEmpty()) {
    to.steel = measures.volume;
    return;
  }
  const auto walls = isPipe ? options_.walls.of(measures) : std::pair(0.0, 0.0);
  if (walls.first > 0.0) {
    const Hollow hollow = hollowOf(measures, walls);
    to.steel = hollow.steel;
    to.content = hollow.content;
    return;
  }
  to.withoutWall = 1;
  const std::string size = options_.units.sizeText(measures.size);
  remarks_.add(!isPipe ? "no wall: " + std::string(component)
                       : "no wall: " + std::string(wordOf(measures.size.kind)) +
                             (size.empty() ? ""
                                           : " of " + size + ' ' +
                                                 std::string(options_.units.of(Quantity::kSize))),
               file_, element.firstLine);
}

void TakeOff::merge(const TakeOff& later) {
  for (std::size_t i = 0; i < groups_.size(); ++i) {
    for (const auto& [value, group] : later.groups_[i]) mergeGroup(groups_[i][value], group);
  }
  mergeGroup(all_, later.all_);
  remarks_.merge(later.remarks_);
  faults_ += later.faults_;
}

void TakeOff::finish() {
  for (Groups& groups : groups_) {
    for (auto& [value, group] : groups) joinBends(group.rows);
  }
}

}  // namespace VeskTool
