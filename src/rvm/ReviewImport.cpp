// SPDX-License-Identifier: MIT
#include "rvm/ReviewImport.h"

#include <algorithm>
#include <numeric>

#include "output/NumberText.h"
#include "rvm/ReviewFault.h"

namespace Vesk {
namespace {

// Of all names of a path: a row repeats it.
constexpr std::size_t kMostPath = std::size_t{1} << 16;

std::size_t at(ShapeFate fate) { return static_cast<std::size_t>(fate); }

}  // namespace

std::size_t ReviewKindCount::shapes() const {
  return std::accumulate(fates.begin(), fates.end(), std::size_t{0});
}

std::size_t ReviewCounts::shapes() const {
  return std::accumulate(
      kinds.begin(), kinds.end(), std::size_t{0},
      [](std::size_t sum, const ReviewKindCount& kind) { return sum + kind.shapes(); });
}

bool ReviewCounts::isAllExact() const {
  const auto isExact = [](const ReviewKindCount& kind) {
    return kind.shapes() ==
           kind.fates[at(ShapeFate::kExact)] + kind.fates[at(ShapeFate::kInPieces)];
  };
  const auto has = [this](ReviewOddity oddity) {
    return oddities[static_cast<std::size_t>(oddity)].count > 0;
  };
  return std::all_of(kinds.begin(), kinds.end(), isExact) && facetsRefused == 0 &&
         obstructionsSkipped == 0 && insulationsSkipped == 0 && !has(ReviewOddity::kUnknownChunk) &&
         !has(ReviewOddity::kNewerBody) && !has(ReviewOddity::kCutOffAtEnd) &&
         !has(ReviewOddity::kBytesBehindEnd);
}

ReviewImport::ReviewImport(const ReviewOptions& options, ReviewAttributes& attributes,
                           ReviewSink& sink)
    : options_(options),
      attributes_(attributes),
      sink_(sink),
      mapper_(options.tolerance),
      selection_(options.groups),
      put_([this](const Geo& geo) { sink_.element(row_.header, geo); }) {}

void ReviewImport::read(const ReadBytes& bytes) {
  open_.clear();
  path_.clear();
  readReview(bytes, *this);
}

void ReviewImport::beginGroup(const ReviewGroup& group) {
  ++counts_.groups;
  if (group.transparency > 0) ++counts_.transparencies;
  OpenGroup opened;
  opened.name = group.name;
  opened.material = group.material;
  opened.pathBefore = path_.size();
  appendToPath(path_, group.name);
  if (path_.size() > kMostPath) {
    throw ReviewFault(
        group.place, group.isLine,
        "the names of nested groups have more than " + countText(kMostPath) + " bytes together");
  }
  const bool isOutermost = open_.empty();
  opened.isSelected =
      selection_.isAll() || (!isOutermost && open_.back().isSelected) || selection_.matches(path_);
  if (attributes_.blockCount() > 0) {
    opened.block =
        attributes_.find(isOutermost ? ReviewAttributes::kTop : open_.back().block, group.name);
    if (opened.block == ReviewAttributes::kNone) ++counts_.groupsWithoutAttributes;
  }
  open_.push_back(std::move(opened));
}

void ReviewImport::endGroup() {
  const OpenGroup& group = open_.back();
  if (!group.hasShape && group.block != ReviewAttributes::kNone &&
      !attributes_.valuesOf(group.block).empty()) {
    ++counts_.groupsOfNoShape;
  }
  path_.resize(group.pathBefore);
  open_.pop_back();
}

const std::string& ReviewImport::nearestName() const {
  const auto named = std::find_if(open_.rbegin(), open_.rend(), [](const OpenGroup& group) {
    return group.name.starts_with('/');
  });
  return named == open_.rend() ? open_.front().name : named->name;
}

bool ReviewImport::isWanted(const ReviewShape& shape) {
  if (open_.empty() ? !selection_.isAll() : !open_.back().isSelected) {
    ++counts_.notSelected;
    return false;
  }
  if (shape.use == ReviewUse::kObstruction && !options_.obstructions) {
    ++counts_.obstructionsSkipped;
    return false;
  }
  if (shape.use == ReviewUse::kInsulation && !options_.insulations) {
    ++counts_.insulationsSkipped;
    return false;
  }
  return true;
}

void ReviewImport::shape(ReviewShape& shape) {
  if (!isWanted(shape)) return;
  static const std::string kNoName;
  row_.group = open_.empty() ? kNoName : nearestName();
  row_.path = path_;
  row_.header = names_.next(row_.group);
  row_.material = open_.empty() ? 0 : open_.back().material;
  row_.values = nullptr;
  if (!open_.empty()) {
    open_.back().hasShape = true;
    if (open_.back().block != ReviewAttributes::kNone) {
      row_.values = &attributes_.valuesOf(open_.back().block);
    }
  }
  const ShapeOutcome outcome = mapper_.map(shape, put_);
  count(shape, outcome);
  row_.shape = &shape;
  row_.outcome = &outcome;
  sink_.shape(row_);
  row_.shape = nullptr;
  row_.outcome = nullptr;
}

void ReviewImport::count(const ReviewShape& shape, const ShapeOutcome& outcome) {
  ReviewKindCount& kind = counts_.kinds[static_cast<std::size_t>(shape.kind)];
  ++kind.fates[at(outcome.fate)];
  kind.elements += outcome.elements;
  kind.deviation = std::max(kind.deviation, outcome.deviation);
  kind.volumeLost += outcome.volumeLost;
  counts_.elements += outcome.elements;
  counts_.facetsRefused += outcome.fate == ShapeFate::kRefused ? 0 : outcome.facetsRefused;
  counts_.normals += outcome.normals;
  if (shape.axesWereRepaired) ++counts_.axesRepaired;
  if (outcome.boxDisagrees) ++counts_.boxesDisagree;
  if (outcome.isOddSnout) ++counts_.oddSnouts;
  if (shape.isUncertain) ++counts_.uncertainTransparencies;
  if (shape.transparency > 0) ++counts_.transparencies;
}

void ReviewImport::odd(ReviewOddity oddity, std::uint64_t place) {
  ReviewOddityCount& counted = counts_.oddities[static_cast<std::size_t>(oddity)];
  if (counted.count++ == 0) counted.first = place;
}

}  // namespace Vesk
