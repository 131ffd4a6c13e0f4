// SPDX-License-Identifier: MIT
#include <cstddef>

#include "pcf/Bores.h"

namespace Vesk::Pcf {
namespace {

bool isLineEnd(const Point& point) { return point.role != Role::kCentre; }

// Whether its ends may have different bores.
bool reduces(Family family) {
  return family == Family::kReducer || family == Family::kFlangeReducing || family == Family::kOlet;
}

class Filling {
 public:
  Filling(Plan& plan, const Joints& joints, Messages& messages)
      : plan_(plan), joints_(joints), messages_(messages) {}

  void fill();

 private:
  bool isBody(const Component& component) const {
    const Kind& kind = plan_.kindOf(component);
    return (kind.meaning == Word::kBody || kind.meaning == Word::kUnknown) &&
           !isSupport(kind.family);
  }
  bool sweep();
  bool fill(const Component& component);
  double ofNeighbour(const Point& point, bool onlyGiven) const;
  void fillByWhatIsGiven(const Component& component);
  double ofComponent(const Component& component, const Point& point) const;
  void fillByAnyOther(const Component& component);

  Plan& plan_;
  const Joints& joints_;
  Messages& messages_;
};

double Filling::ofNeighbour(const Point& point, bool onlyGiven) const {
  double outside = 0;
  joints_.visit(point.at, kSamePlace, [&](const Point& other) {
    if (other.component == point.component || other.outside <= 0) return;
    if (onlyGiven && !(other.bore > 0)) return;
    const Kind& kind = plan_.kindOf(plan_.components[other.component]);
    if (isSupport(kind.family) || kind.meaning == Word::kMessage) return;
    outside = std::max(outside, other.outside);
  });
  return outside;
}

// Of the other end of its run; a branch has none.
double Filling::ofComponent(const Component& component, const Point& point) const {
  if (point.role == Role::kBranch || reduces(plan_.kindOf(component).family)) return 0;
  for (const Point& other : plan_.pointsOf(component)) {
    if (other.role == Role::kEnd && other.outside > 0) return other.outside;
  }
  return 0;
}

void Filling::fillByWhatIsGiven(const Component& component) {
  for (Point& point : plan_.pointsOf(component)) {
    if (isLineEnd(point) && point.outside <= 0) point.outside = ofNeighbour(point, true);
  }
}

bool Filling::fill(const Component& component) {
  bool isFilled = false;
  for (Point& point : plan_.pointsOf(component)) {
    if (!isLineEnd(point) || point.outside > 0) continue;
    point.outside = ofComponent(component, point);
    if (point.outside <= 0) point.outside = ofNeighbour(point, false);
    isFilled = isFilled || point.outside > 0;
  }
  return isFilled;
}

bool Filling::sweep() {
  bool isFilled = false;
  for (const Component& component : plan_.components) {
    if (isBody(component)) isFilled = fill(component) || isFilled;
  }
  return isFilled;
}

void Filling::fillByAnyOther(const Component& component) {
  double widest = 0;
  for (const Point& point : plan_.pointsOf(component)) {
    if (isLineEnd(point)) widest = std::max(widest, point.outside);
  }
  if (widest <= 0) return;
  for (Point& point : plan_.pointsOf(component)) {
    if (!isLineEnd(point) || point.outside > 0) continue;
    point.outside = widest;
    messages_.add(Severity::kWarning, component.line,
                  plan_.kindOf(component).word +
                      ": expected a bore after each of its points; the one given is taken for all");
  }
}

void Filling::fill() {
  bool isMissing = false;
  for (const Point& point : plan_.points)
    isMissing = isMissing || (isLineEnd(point) && point.outside <= 0);
  if (!isMissing) return;
  for (const Component& component : plan_.components) {
    if (isBody(component)) fillByWhatIsGiven(component);
  }
  // A chain of components without bores takes as many sweeps as it has against the
  // order of the file.
  constexpr int kMostSweeps = 32;
  for (int i = 0; i < kMostSweeps && sweep(); ++i) {
  }
  for (const Component& component : plan_.components) {
    if (isBody(component)) fillByAnyOther(component);
  }
  sweep();
}

}  // namespace

void resolveMissingBores(Plan& plan, const Joints& joints, Messages& messages) {
  Filling(plan, joints, messages).fill();
}

}  // namespace Vesk::Pcf
