// SPDX-License-Identifier: MIT
#include "pcf/Importer.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "pcf/Attributes.h"
#include "pcf/Joints.h"
#include "pcf/PlanReader.h"
#include "pcf/Resolver.h"
#include "sidecar/Utf8.h"
#include <vesk/Cyl.h>
#include <vesk/Pline.h>
#include <vesk/Txt.h>

namespace Vesk::Pcf {
namespace {

constexpr double kTextHeight = 50;
constexpr std::size_t kLongestText = 512;

constexpr auto kUnknownFate = static_cast<std::size_t>(-1);

bool hasPoints(const Component& component) { return component.points > 0; }

// CO-ORDS, else the centre, else the middle of the first two points.
GePoint placeOf(std::span<const Point> points) {
  const Point* ends[2] = {nullptr, nullptr};
  for (const Point& point : points) {
    if (point.role == Role::kPlace || point.role == Role::kCentre) return point.at;
    if (ends[0] == nullptr) {
      ends[0] = &point;
    } else if (ends[1] == nullptr) {
      ends[1] = &point;
    }
  }
  if (ends[1] == nullptr) return ends[0]->at;
  return ends[0]->at + (ends[1]->at - ends[0]->at) * 0.5;
}

double distanceTo(const Stretch& stretch, const GePoint& at) {
  const GeVector axis = stretch.to - stretch.from;
  const double square = dot(axis, axis);
  const double part =
      square > 0 ? std::clamp(dot(at - stretch.from, axis) / square, 0.0, 1.0) : 0.0;
  return distance(at, stretch.from + axis * part);
}

// Whether the centre line that was drawn comes to every end. What stands on a pipe has
// none, and the one end of an olet lies on the pipe.
bool reachesAllEnds(const Part& part, const Drawn& drawn) {
  if (drawn.covered.empty()) return true;
  const auto isReached = [&](const End& end) {
    return std::any_of(drawn.covered.begin(), drawn.covered.end(), [&](const Stretch& stretch) {
      return distanceTo(stretch, end.at) <= kSamePlace;
    });
  };
  const bool isOnPipe = part.family == Family::kOlet && part.ends.size() == 1;
  return (isOnPipe || std::all_of(part.ends.begin(), part.ends.end(), isReached)) &&
         std::all_of(part.branches.begin(), part.branches.end(), isReached);
}

// Legs that follow their bodies one by one, as they are drawn.
bool isLegByLeg(Family family) {
  return family == Family::kTee || family == Family::kYPiece || family == Family::kOlet ||
         isValve(family);
}

}  // namespace

std::string_view nameOf(Outcome outcome) {
  constexpr std::string_view kNames[] = {"drawn", "drawn in part", "nothing to draw", "not drawn"};
  return kNames[static_cast<std::size_t>(outcome)];
}

// Draws the components of one file.
class Importer::FileDrawing {
 public:
  FileDrawing(Importer& importer, const Plan& plan, const Joints& joints, std::string_view name)
      : importer_(importer),
        plan_(plan),
        name_(name),
        resolver_(plan, joints, importer.options_.tolerance, importer.messages_) {}

  void draw();

 private:
  void draw(const Component& component);
  void drawBody(const Component& component);
  void drawWeld(const Component& component);
  void drawMessage(const Component& component);
  void drawMark(const Component& component);
  void put(const Drawn& drawn, Family family);
  void putSegment(const GePoint& from, const GePoint& to) {
    if (distance(from, to) >= kShortest) put(Pline{from, to});
  }
  void putTexts(const Component& component, const std::vector<std::string>& texts, GePoint at);
  void put(const Geo& geo);
  void begin(std::size_t index);
  void end(const Component& component);
  bool findPlace(const Component& component, GePoint& at) const;

  void finish(const Component& component, Outcome outcome, std::string_view reason = {});
  void add(Severity severity, const Component& component, std::string_view text) {
    importer_.messages_.add(severity, component.line,
                            plan_.kindOf(component).word + ": " + std::string(text));
  }

  Importer& importer_;
  const Plan& plan_;
  const std::string name_;
  Resolver resolver_;
  LineHeader header_;
  SidecarRow row_;
  std::vector<std::size_t> drawnFates_;  // by kind: that of components which are drawn
  bool hasElements_ = false;
};

void Importer::FileDrawing::begin(std::size_t index) {
  header_ = importer_.headers_.headerOf(index, plan_.components[index].pipeline);
  hasElements_ = false;
}

void Importer::FileDrawing::put(const Geo& geo) {
  if (!hasElements_) importer_.sink_.begin(header_);
  hasElements_ = true;
  ++importer_.elements_;
  importer_.sink_.put(geo);
}

void Importer::FileDrawing::end(const Component& component) {
  if (!hasElements_) return;
  row_.f1 = header_.f1;
  row_.f2 = header_.f2;
  row_.first = row_.last = header_.number;
  if (importer_.options_.hasSidecar) fillSidecarValues(row_.values, plan_, component, name_);
  importer_.sink_.end(row_);
}

void Importer::FileDrawing::draw() {
  for (std::size_t i = 0; i < plan_.components.size(); ++i) {
    begin(i);
    draw(plan_.components[i]);
    end(plan_.components[i]);
  }
}

void Importer::FileDrawing::finish(const Component& component, Outcome outcome,
                                   std::string_view reason) {
  const std::string& word = plan_.kindOf(component).word;
  // Nearly all components share a few fates.
  if (outcome == Outcome::kDrawn) {
    drawnFates_.resize(plan_.kinds.size(), kUnknownFate);
    std::size_t& fate = drawnFates_[component.kind];
    if (fate == kUnknownFate) fate = importer_.fateOf(word, outcome, reason, component.line);
    importer_.tally(fate);
    return;
  }
  importer_.tally(importer_.fateOf(word, outcome, reason, component.line));
  if (outcome != Outcome::kNotDrawn && outcome != Outcome::kInPart) return;
  importer_.messages_.add(Severity::kError, component.line,
                          word + ' ' + std::string(nameOf(outcome)) + ": " + std::string(reason));
}

void Importer::FileDrawing::draw(const Component& component) {
  const Word meaning = plan_.kindOf(component).meaning;
  if (meaning == Word::kNothing) {
    finish(component, Outcome::kNothing);
  } else if (component.isRepeated) {
    if (meaning != Word::kWeld)
      add(Severity::kNote, component, "the same component is already in this file; drawn once");
    finish(component, Outcome::kNothing, "drawn before");
  } else if (meaning == Word::kMessage) {
    drawMessage(component);
  } else if (!hasPoints(component) && meaning == Word::kMark) {
    finish(component, Outcome::kNothing, "has no place");
  } else if (!hasPoints(component)) {
    finish(component, Outcome::kNotDrawn,
           component.isDamaged ? "its points can't be read" : "it has no points");
  } else if (meaning == Word::kWeld) {
    drawWeld(component);
  } else if (meaning == Word::kMark) {
    drawMark(component);
  } else {
    drawBody(component);
  }
}

void Importer::FileDrawing::put(const Drawn& drawn, Family family) {
  const bool legByLeg = isLegByLeg(family) && drawn.bodies.size() == drawn.covered.size();
  for (std::size_t i = 0; i < drawn.bodies.size(); ++i) {
    put(*drawn.bodies[i]);
    if (legByLeg) putSegment(drawn.covered[i].from, drawn.covered[i].to);
  }
  if (legByLeg) return;
  for (const Stretch& stretch : drawn.covered) putSegment(stretch.from, stretch.to);
}

void Importer::FileDrawing::drawBody(const Component& component) {
  if (component.isInAFileBefore)
    add(Severity::kNote, component, "the same component is in an earlier file; drawn for both");
  const Resolved resolved = resolver_.resolve(component);
  if (!resolved.failure.empty()) {
    finish(component, Outcome::kNotDrawn, resolved.failure);
    return;
  }
  const Drawn drawn = Pcf::draw(resolved.part);
  put(drawn, resolved.part.family);
  for (const std::string_view remark : drawn.remarks) {
    // Spindles are no part of the line.
    const bool isOfLine = remark.find("spindle") == std::string_view::npos;
    add(isOfLine ? Severity::kWarning : Severity::kNote, component, remark);
  }
  const bool isWhole = reachesAllEnds(resolved.part, drawn);
  if (drawn.missing.empty() && !component.isDamaged && isWhole) {
    finish(component, Outcome::kDrawn);
    return;
  }
  std::string_view reason = "one of its points can't be read";
  if (!component.isDamaged) reason = "its lines do not come to all of its points";
  if (!drawn.missing.empty()) reason = drawn.missing.front();
  finish(component, drawn.bodies.empty() ? Outcome::kNotDrawn : Outcome::kInPart, reason);
}

// A place; a gap that is given as a length is closed.
void Importer::FileDrawing::drawWeld(const Component& component) {
  const std::span<const Point> points = plan_.pointsOf(component);
  const Point* ends[2] = {nullptr, nullptr};
  for (const Point& point : points) {
    if (point.role == Role::kEnd) ends[ends[0] == nullptr ? 0 : 1] = &point;
  }
  const bool isGap =
      ends[1] != nullptr && ends[0]->outside > 0 && distance(ends[0]->at, ends[1]->at) >= kShortest;
  if (isGap) {
    const auto vectorOf = [](const GePoint& at) { return GeVector(at.x, at.y, at.z); };
    put(Cyl(vectorOf(ends[0]->at), vectorOf(ends[1]->at), ends[0]->outside));
    putSegment(ends[0]->at, ends[1]->at);
  } else {
    put(Pline{placeOf(points)});
  }
  finish(component, Outcome::kDrawn);
}

// Its own place, else that of the component that follows.
bool Importer::FileDrawing::findPlace(const Component& component, GePoint& at) const {
  const auto own = static_cast<std::size_t>(&component - plan_.components.data());
  for (std::size_t i = own; i < plan_.components.size(); ++i) {
    const Component& next = plan_.components[i];
    const bool isOther = i != own && plan_.kindOf(next).meaning == Word::kMessage;
    if (isOther || !hasPoints(next)) continue;
    at = placeOf(plan_.pointsOf(next));
    return true;
  }
  return false;
}

void Importer::FileDrawing::drawMessage(const Component& component) {
  const std::vector<std::string> texts = textsOfMessage(plan_, component);
  GePoint at;
  if (texts.empty()) {
    add(Severity::kNote, component, "has no text");
    finish(component, Outcome::kNothing, "has no text");
  } else if (!findPlace(component, at)) {
    add(Severity::kNote, component, "has no place, and no component follows");
    finish(component, Outcome::kNothing, "has no place");
  } else {
    putTexts(component, texts, at);
    finish(component, Outcome::kDrawn);
  }
}

void Importer::FileDrawing::drawMark(const Component& component) {
  const GePoint at = placeOf(plan_.pointsOf(component));
  put(Pline{at});
  putTexts(component, textsOfMark(plan_, component), at);
  finish(component, Outcome::kDrawn);
}

// A line feed or another control character in a text would break its record.
void Importer::FileDrawing::putTexts(const Component& component,
                                     const std::vector<std::string>& texts, GePoint at) {
  for (const std::string& whole : texts) {
    std::string text(cutUtf8(whole, kLongestText));
    if (text.size() < whole.size())
      add(Severity::kNote, component, "its text is cut off after 512 bytes");
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    put(Txt(at, {1, 0, 0}, {0, 0, 1}, kTextHeight * 0.6, kTextHeight, 1, 0, std::move(text)));
    at.z -= kTextHeight * 1.5;
  }
}

Importer::Importer(const ImportOptions& options, Sink& sink, Messages& messages)
    : options_(options), sink_(sink), messages_(messages) {}

bool Importer::add(std::string_view name, std::string bytes) {
  messages_.beginFile(name);
  Plan plan = readPlan(std::move(bytes), messages_);
  if (!hasComponents(plan)) {
    messages_.add(Severity::kError, 0,
                  "this is not a piping component file: a component begins with its name, PIPE or "
                  "ELBOW, and has points below it");
    return false;
  }
  const Joints joints(plan);
  resolveBores(plan, joints, options_.bores, messages_);
  resolveMissingBores(plan, joints, messages_);
  markRepeats(plan, options_.tellsRepeats ? &seen_ : nullptr);
  headers_.beginFile(plan);
  FileDrawing(*this, plan, joints, name).draw();
  return true;
}

std::uint64_t Importer::components() const {
  std::uint64_t sum = 0;
  for (const std::uint64_t outcome : outcomes_) sum += outcome;
  return sum;
}

std::size_t Importer::fateOf(const std::string& word, Outcome outcome, std::string_view reason,
                             std::uint32_t line) {
  std::string key = word;
  key.append(1, static_cast<char>('0' + static_cast<int>(outcome))).append(reason);
  const auto [place, isNew] = fateIndices_.try_emplace(std::move(key), fates_.size());
  if (isNew) {
    const auto file = static_cast<std::uint32_t>(messages_.files().size() - 1);
    fates_.push_back({word, outcome, std::string(reason), 0, {file, line}});
  }
  return place->second;
}

void Importer::tally(std::size_t fate) {
  ++outcomes_[static_cast<std::size_t>(fates_[fate].outcome)];
  ++fates_[fate].count;
}

}  // namespace Vesk::Pcf
