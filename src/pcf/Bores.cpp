// SPDX-License-Identifier: MIT
#include "pcf/Bores.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "pcf/Numbers.h"
#include "pcf/Sizes.h"

namespace Vesk::Pcf {
namespace {

constexpr double kInch = 25.4;

// A number that is written with one decimal may be off by half of it.
constexpr double kRounding = 0.06;

// From 14 inches on the diameter is 25.4 times NPS, but for rounding.
constexpr double kBothAgree = 350;

constexpr double kLargestNps = 48;

// One number that stands as a bore, in all its places.
struct Value {
  std::uint64_t count = 0;
  std::uint32_t line = 0;  // of the first component with it

  // What it can be; a diameter of 0 for what it can't.
  double nominal = 0;   // DN or, under inches, NPS
  double inches = 0;    // NPS times 25.4
  double diameter = 0;  // an outside diameter of a table

  double outside = 0;  // as decided

  bool isDoubtful() const { return inches > 0 && diameter > 0 && std::fabs(inches - diameter) > 1; }
};

using Values = std::map<double, Value>;

void readMillimetres(double bore, Value& value) {
  if (const PipeSize* size = sizeOfDn(bore)) {
    value.nominal = size->outside;
    return;
  }
  const double toOutside = distanceToOutside(bore);
  // 76.1 is a diameter and not 3 inches, 76.2; where no diameter is near 31.8 is 1 1/4.
  const double tolerance = toOutside < 0.6 ? 0.02 : kRounding;
  if (const PipeSize* size = sizeOfNps(bore / kInch, tolerance / kInch))
    value.inches = size->outside;
  if (toOutside <= kRounding) value.diameter = bore;
}

void readInches(double bore, Value& value) {
  const bool isOutside = distanceToOutside(bore * kInch) <= kRounding;
  const PipeSize* size = sizeOfNps(bore, 0.006);
  // 1.3 stands for 1.25; but the small sizes lie closer together than such rounding.
  if (size == nullptr && !isOutside) size = sizeOfNps(bore, bore < 1 ? 0.011 : 0.061);
  if (size != nullptr) value.inches = size->outside;
  if (isOutside) value.diameter = bore * kInch;
}

class Decision {
 public:
  Decision(Plan& plan, const Joints& joints, BoreMeaning meaning, Messages& messages)
      : plan_(plan), joints_(joints), meaning_(meaning), messages_(messages) {}

  void decide();

 private:
  void collect();
  bool couldBeInchesUnderMillimetres() const;
  bool areInchesUnderMillimetres() const;
  void sayThatTheyCouldBeInches();
  bool areMillimetresUnderInches() const;
  void exchange(bool toInches);
  void vote(const Values& values);
  void settle(double bore, Value& value, bool isInches);
  double forced(double bore, const Value& value, bool isInches) const;
  void sayDecision(const Values& values);
  void sayUnknown();
  void askNeighbours();
  double toldOutside(const Point& point, const std::vector<bool>& isTold) const;
  const Value& valueOf(const Point& point) const {
    return (point.isInches ? inches_ : millimetres_).at(point.bore);
  }

  Plan& plan_;
  const Joints& joints_;
  const BoreMeaning meaning_;
  Messages& messages_;
  Values millimetres_;
  Values inches_;
  std::uint64_t votesForInches_ = 0;
  std::uint64_t votesForDiameters_ = 0;
};

void Decision::collect() {
  for (const Point& point : plan_.points) {
    if (!(point.bore > 0)) continue;
    Value& value = (point.isInches ? inches_ : millimetres_)[point.bore];
    if (++value.count == 1) value.line = plan_.components[point.component].line;
  }
  for (auto& [bore, value] : millimetres_) readMillimetres(bore, value);
  for (auto& [bore, value] : inches_) readInches(bore, value);
}

bool Decision::couldBeInchesUnderMillimetres() const {
  return !millimetres_.empty() &&
         std::all_of(millimetres_.begin(), millimetres_.end(), [](const auto& row) {
           return row.first <= kLargestNps && sizeOfNps(row.first, 0.006) != nullptr;
         });
}

// All bores can be inches, and one nothing else: like 0.5 to 4, no pipe is so thin, or
// like 14, which is neither DN nor a tube.
bool Decision::areInchesUnderMillimetres() const {
  constexpr double kThinnest = 5;
  constexpr double kTubes[] = {6, 8, 10, 12, 16, 18, 20, 22, 25};
  return couldBeInchesUnderMillimetres() &&
         std::any_of(millimetres_.begin(), millimetres_.end(), [&](const auto& row) {
           const bool isTube =
               std::find(std::begin(kTubes), std::end(kTubes), row.first) != std::end(kTubes);
           return row.first < kThinnest || !(isTube || row.second.nominal > 0);
         });
}

// A plant of nothing but the thinnest pipe is one in inches rather, but nothing proves it.
void Decision::sayThatTheyCouldBeInches() {
  constexpr double kThin = 12;
  if (!couldBeInchesUnderMillimetres() || millimetres_.rbegin()->first > kThin) return;
  const auto& [least, value] = *millimetres_.begin();
  const double most = millimetres_.rbegin()->first;
  messages_.add(Severity::kWarning, value.line,
                "all bores can be millimetres or inches: taken as millimetres; --bores inches "
                "takes them as inches",
                ", " + textOf(least) + (most > least ? " to " + textOf(most) : ""));
}

// All bores are DN, and some are no sizes in inches.
bool Decision::areMillimetresUnderInches() const {
  const auto isDn = [](const auto& row) { return sizeOfDn(row.first) != nullptr; };
  const auto isNps = [](const auto& row) { return sizeOfNps(row.first, 0.006) != nullptr; };
  return std::all_of(inches_.begin(), inches_.end(), isDn) &&
         !std::all_of(inches_.begin(), inches_.end(), isNps);
}

void Decision::exchange(bool toInches) {
  Values& values = toInches ? millimetres_ : inches_;
  const Value& first = values.begin()->second;
  messages_.add(Severity::kWarning, first.line,
                toInches ? "UNITS-BORE MM with bores that only inches can be: taken as inches"
                         : "UNITS-BORE INCH with bores that only millimetres can be: taken as "
                           "millimetres",
                ", " + textOf(values.begin()->first) + " to " + textOf(values.rbegin()->first));
  for (Point& point : plan_.points) {
    if (point.bore > 0 && point.isInches != toInches) point.isInches = toInches;
  }
  millimetres_.clear();
  inches_.clear();
  collect();
}

void Decision::vote(const Values& values) {
  for (const auto& [bore, value] : values) {
    if (value.inches >= kBothAgree || value.diameter >= kBothAgree) continue;
    if (value.inches > 0 && value.diameter <= 0) votesForInches_ += value.count;
    if (value.diameter > 0 && value.inches <= 0) votesForDiameters_ += value.count;
  }
}

double Decision::forced(double bore, const Value& value, bool isInches) const {
  const double asItIs = isInches ? bore * kInch : bore;
  if (meaning_ == BoreMeaning::kDiameter) return asItIs;
  if (meaning_ == BoreMeaning::kNominal && !isInches)
    return value.nominal > 0 ? value.nominal : asItIs;
  const double inches = isInches ? bore : bore / kInch;
  const PipeSize* size = sizeOfNps(inches, kRounding / (isInches && bore >= 1 ? 1 : kInch));
  // No size in inches is another one in millimetres.
  if (size == nullptr && !isInches && bore <= kLargestNps) size = sizeOfNps(bore, 0.006);
  return size == nullptr ? asItIs : size->outside;
}

void Decision::settle(double bore, Value& value, bool isInches) {
  if (meaning_ != BoreMeaning::kAuto) {
    value.outside = forced(bore, value, isInches);
    return;
  }
  if (value.nominal > 0) {
    value.outside = value.nominal;
    return;
  }
  const bool mostAreDiameters = votesForDiameters_ > votesForInches_;
  if (value.inches > 0 && value.diameter > 0) {
    bool isDiameter = mostAreDiameters;
    if (value.isDoubtful() && !isInches && votesForDiameters_ == votesForInches_) {
      // Nothing tells: 4 inches are common, 3 1/2 are rare, in either reading.
      isDiameter = bore < 100;
      messages_.add(Severity::kWarning, value.line,
                    isDiameter
                        ? "bore 88.9 is the diameter of 3 inches or 3 1/2 inches in millimetres: "
                          "taken as the diameter; --bores inches takes it as inches"
                        : "bore 101.6 is 4 inches in millimetres or the diameter of 3 1/2 inches: "
                          "taken as 4 inches; --bores diameter takes it as the diameter");
    }
    value.outside = isDiameter ? value.diameter : value.inches;
    return;
  }
  const double asItIs = isInches ? bore * kInch : bore;
  const bool keeps = value.inches <= 0 || (mostAreDiameters && value.inches >= kBothAgree);
  value.outside = keeps ? asItIs : value.inches;
}

// Where a file has both, a doubtful bore is that of the pipe that it meets, of the other
// ends of its component, and of doubtful ones that it meets and that were told so.
void Decision::askNeighbours() {
  std::vector<std::uint32_t> doubtful;
  for (std::uint32_t i = 0; i < plan_.points.size(); ++i) {
    if (plan_.points[i].bore > 0 && valueOf(plan_.points[i]).isDoubtful()) doubtful.push_back(i);
  }
  std::vector<bool> isTold(plan_.points.size(), false);
  constexpr int kMostSweeps = 32;
  bool isChanged = true;
  for (int sweep = 0; sweep < kMostSweeps && isChanged; ++sweep) {
    isChanged = false;
    for (const std::uint32_t i : doubtful) {
      if (isTold[i]) continue;
      const double outside = toldOutside(plan_.points[i], isTold);
      if (outside <= 0) continue;
      plan_.points[i].outside = outside;
      isTold[i] = true;
      isChanged = true;
    }
  }
}

// What the surroundings of a doubtful point tell; 0: nothing.
double Decision::toldOutside(const Point& point, const std::vector<bool>& isTold) const {
  const Value& value = valueOf(point);
  double outside = 0;
  const auto ask = [&](const Point& other) {
    if (&other == &point || !(other.bore > 0)) return;
    const auto index = static_cast<std::size_t>(&other - plan_.points.data());
    if (valueOf(other).isDoubtful() && !isTold[index]) return;
    if (std::fabs(other.outside - value.inches) < 0.2) outside = value.inches;
    if (std::fabs(other.outside - value.diameter) < 0.2) outside = value.diameter;
  };
  joints_.visit(point.at, kSamePlace, ask);
  for (const Point& other : plan_.pointsOf(plan_.components[point.component])) {
    if (outside <= 0 && other.bore == point.bore) ask(other);
  }
  return outside;
}

void Decision::sayDecision(const Values& values) {
  if (meaning_ != BoreMeaning::kAuto) return;
  const bool ofInches = &values == &inches_;
  for (const auto& [bore, value] : values) {
    const bool isTelling = value.outside < kBothAgree && (value.inches > 0 || value.diameter > 0);
    if (!isTelling || value.isDoubtful()) continue;
    if (value.inches > 0 && !ofInches) {
      messages_.add(Severity::kNote, value.line,
                    "bores are inches in millimetres (--bores gives them another meaning)",
                    ": " + textOf(bore) + " is drawn " + textOf(value.outside));
      break;
    }
  }
  for (const auto& [bore, value] : values) {
    if (value.diameter <= 0 || value.inches > 0 || value.diameter >= kBothAgree) continue;
    messages_.add(Severity::kNote, value.line,
                  "bores are outside diameters (--bores gives them another meaning)",
                  ": " + textOf(bore) + " is drawn " + textOf(value.outside));
    break;
  }
}

void Decision::sayUnknown() {
  if (meaning_ == BoreMeaning::kDiameter) return;
  std::string list;
  std::uint32_t line = 0;
  int count = 0;
  for (const Values* values : {&millimetres_, &inches_}) {
    for (const auto& [bore, value] : *values) {
      if (value.nominal > 0 || value.inches > 0 || value.diameter > 0) continue;
      if (count == 0) line = value.line;
      if (++count <= 5) list += (count > 1 ? ", " : "") + textOf(bore);
    }
  }
  if (count == 0) return;
  messages_.add(Severity::kNote, line, "bores that are in no table are drawn as they are",
                ": " + list + (count > 5 ? " ..." : ""));
}

void Decision::decide() {
  collect();
  if (meaning_ == BoreMeaning::kAuto) {
    if (areInchesUnderMillimetres()) {
      exchange(true);
    } else if (areMillimetresUnderInches()) {
      exchange(false);
    } else {
      sayThatTheyCouldBeInches();
    }
    vote(millimetres_);
    if (millimetres_.empty()) vote(inches_);
  }
  for (auto& [bore, value] : millimetres_) settle(bore, value, false);
  for (auto& [bore, value] : inches_) settle(bore, value, true);
  for (Point& point : plan_.points) {
    if (point.bore > 0) point.outside = valueOf(point).outside;
  }
  const bool isMixed = votesForInches_ > 0 && votesForDiameters_ > 0;
  if (isMixed && meaning_ == BoreMeaning::kAuto) askNeighbours();
  sayDecision(millimetres_);
  sayDecision(inches_);
  sayUnknown();
}

}  // namespace

void resolveBores(Plan& plan, const Joints& joints, BoreMeaning meaning, Messages& messages) {
  Decision(plan, joints, meaning, messages).decide();
}

}  // namespace Vesk::Pcf
