// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_RESOLVER_H
#define VESK_PCF_RESOLVER_H

#include <memory>
#include <optional>
#include <string_view>

#include "pcf/Joints.h"
#include "pcf/Messages.h"
#include "pcf/Neighbours.h"
#include "pcf/Plan.h"
#include "pcf/Runs.h"

namespace Vesk::Pcf {

// A component with all that its bodies need, or why it can't have any.
struct Resolved {
  Part part;
  std::string_view failure;  // empty, or words that fit behind the component's name
};

// Finds out what the points of a component mean, from the whole file.
class Resolver {
 public:
  // The plan has its diameters. All three outlive it.
  Resolver(const Plan& plan, const Joints& joints, double tolerance, Messages& messages);

  // Of a component that has a point. What was guessed is said.
  Resolved resolve(const Component& component);

 private:
  struct Points;

  End endOf(const Point& point) const;
  void addEnds(Resolved& resolved, const Points& points) const;
  void resolveBend(Resolved& resolved, const Points& points, const Component& component);
  void resolveReducer(Resolved& resolved, const Points& points, const Component& component);
  GeVector reducerAxisOf(const Part& part, const Component& component) const;
  void resolveWay(Resolved& resolved, const Points& points, const Component& component);
  void resolveTee(Resolved& resolved, const Component& component);
  void resolveOlet(Resolved& resolved, const Points& points, const Component& component);
  void resolveFace(Resolved& resolved, const Points& points, const Component& component);
  void resolveGasket(Resolved& resolved, const Points& points);
  void resolveSpot(Resolved& resolved, const Points& points);
  void resolveStraight(Resolved& resolved, const Points& points, const Component& component);
  void requireBores(Resolved& resolved) const;
  void askForAllEnds(const Part& part, const Component& component);
  std::string_view completeBend(Part& part, const Points& points, const Component& component) const;
  void checkBend(const Part& part, const Component& component);
  GeVector halfTurnOf(const Points& points, const Component& component) const;
  GeVector halfTurnByLines(const Points& points, const Component& component) const;
  std::optional<GePoint> cornerOf(const Points& points) const;
  std::optional<GePoint> cornerByOneLine(const Points& points, const Component& component) const;
  void warn(const Component& component, std::string_view text);
  void note(const Component& component, std::string_view text, std::string_view detail = {});
  const Runs& runs();

  const Plan& plan_;
  const double tolerance_;
  Messages& messages_;
  Neighbours neighbours_;
  std::unique_ptr<Runs> runs_;  // once they are asked for
};

}  // namespace Vesk::Pcf

#endif
