// SPDX-License-Identifier: MIT
#include "clash/ClashModel.h"

#include <optional>
#include <utility>

#include "elements/Describe.h"

namespace VeskTool {
namespace {

bool hasRoom(Kind kind) {
  switch (kind) {
    case Kind::kPoint:
    case Kind::kSegment:
    case Kind::kPolyline:
    case Kind::kText:
      return false;
    case Kind::kTriangle:
    case Kind::kQuadrangle:
    case Kind::kPolygon:
    case Kind::kBox:
    case Kind::kReducer:
    case Kind::kCylinder:
    case Kind::kCone:
    case Kind::kTorus:
    case Kind::kElbow:
      break;
  }
  return true;
}

}  // namespace

void ClashModel::add(const Vesk::RecordElement& element, const std::string& component,
                     bool isChosen) {
  const Vesk::Geo& geo = *element.geo;
  const Kind kind = kindOf(geo);
  std::optional<Vesk::Body> body;
  if (hasRoom(kind)) body = Vesk::Body::of(geo);
  if (!body) {
    ++withoutBody_;
    return;
  }
  ClashElement added{std::move(*body), shapeKey(geo), element.firstLine};
  added.file = static_cast<std::uint32_t>(files_.size() - 1);
  added.header = headerOf(element.header);
  added.counter = element.counter();
  added.kind = kind;
  added.isChosen = isChosen;
  added.isDuplicable = countsAsDuplicate(geo);
  addEnds(geo, added);
  if (!component.empty()) {
    const std::string name = std::to_string(added.file) + ' ' + component;
    const auto next = static_cast<std::uint32_t>(components_.size() + 1);
    added.component = components_.try_emplace(name, next).first->second;
  }
  if (keepsGlobalIds_) globalIds_.push_back(ifcGlobalId(ids_.contentOf(element)));
  elements_.push_back(std::move(added));
}

void ClashModel::addEnds(const Vesk::Geo& geo, ClashElement& element) {
  element.firstEnd = static_cast<std::uint32_t>(ends_.size());
  Joints joints{JointOptions{}};
  joints.add(geo, element.line);
  for (PipeEnd end : joints.ends()) {
    end.element = static_cast<std::uint32_t>(elements_.size());
    ends_.push_back(end);
  }
  element.ends = static_cast<std::uint8_t>(ends_.size() - element.firstEnd);
}

std::uint32_t ClashModel::headerOf(const Vesk::HeaderFields& fields) {
  const auto [place, isNew] =
      headerPlaces_.try_emplace(headerText(fields), static_cast<std::uint32_t>(headers_.size()));
  if (isNew) {
    const std::string line = trimmedField(fields.f1);
    const auto next = static_cast<std::uint32_t>(lines_.size());
    headers_.push_back(
        {trimmedField(fields.f2), place->first, lines_.try_emplace(line, next).first->second});
  }
  return place->second;
}

}  // namespace VeskTool
