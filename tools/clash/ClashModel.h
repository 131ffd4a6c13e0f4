// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CLASH_CLASHMODEL_H
#define VESK_TOOLS_CLASH_CLASHMODEL_H

#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "check/Duplicates.h"
#include "check/Joints.h"
#include "distance/Body.h"
#include "elements/Kinds.h"
#include "export/GlobalIds.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

// An element that can clash with others.
struct ClashElement {
  Vesk::Body body;
  ShapeKey shape;
  std::uint64_t line = 0;
  std::uint32_t file = 0;
  std::uint32_t header = 0;
  std::uint32_t component = 0;  // elements of the same one, if not 0, are one thing
  std::uint32_t firstEnd = 0;   // of its ends
  std::int32_t counter = 0;
  std::uint8_t ends = 0;
  Kind kind = Kind::kPoint;
  bool isDuplicable = false;  // drawn twice it is a mistake
  bool isChosen = true;       // only pairs with such a one are looked at
};

struct ClashHeader {
  std::string group;       // F2
  std::string text;        // F1 and F2
  std::uint32_t line = 0;  // headers of the same F1, the pipeline, have the same
};

// The elements of one or more files, for the search of clashes: solids and faces;
// lines, points and texts take up no room and are only counted. About 700 bytes
// for each.
class ClashModel {
 public:
  // What is added from now on is of this file.
  void beginFile(const std::string& name) { files_.push_back(name); }

  // From now on the GlobalId of each element is kept, as in an export to IFC.
  void keepGlobalIds() { keepsGlobalIds_ = true; }

  // `component` tells components of the file apart; empty: of none.
  void add(const Vesk::RecordElement& element, const std::string& component, bool isChosen = true);

  const std::vector<std::string>& files() const { return files_; }
  const std::vector<ClashHeader>& headers() const { return headers_; }
  const std::vector<ClashElement>& elements() const { return elements_; }
  // Of each element, if they are kept.
  const std::vector<std::string>& globalIds() const { return globalIds_; }
  std::uint64_t withoutBody() const { return withoutBody_; }

  // The ends of a cylinder, cone or torus: at most two.
  std::span<const PipeEnd> endsOf(const ClashElement& element) const {
    return std::span(ends_).subspan(element.firstEnd, element.ends);
  }

 private:
  void addEnds(const Vesk::Geo& geo, ClashElement& element);
  std::uint32_t headerOf(const Vesk::HeaderFields& fields);

  std::vector<std::string> files_;
  std::vector<ClashHeader> headers_;
  std::vector<ClashElement> elements_;
  std::unordered_map<std::string, std::uint32_t> headerPlaces_;
  std::unordered_map<std::string, std::uint32_t> lines_;
  std::unordered_map<std::string, std::uint32_t> components_;
  std::vector<PipeEnd> ends_;
  GlobalIds ids_;
  std::vector<std::string> globalIds_;
  bool keepsGlobalIds_ = false;
  std::uint64_t withoutBody_ = 0;
};

}  // namespace VeskTool

#endif
