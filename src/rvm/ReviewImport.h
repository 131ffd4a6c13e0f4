// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_REVIEWIMPORT_H
#define VESK_RVM_REVIEWIMPORT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "rvm/GroupSelection.h"
#include "rvm/ReviewAttributes.h"
#include "rvm/ReviewModel.h"
#include "rvm/ReviewNames.h"
#include "rvm/ShapeMapper.h"

namespace Vesk {

struct ReviewOptions {
  double tolerance = 1.0;  // mm, of what can't be exact
  bool obstructions = false;
  bool insulations = false;
  std::vector<std::string> groups{};  // see GroupSelection; none: all
};

// A shape and what became of it, when its elements were handed over.
struct ReviewRow {
  ReviewHeader header;
  const ReviewShape* shape = nullptr;
  const ShapeOutcome* outcome = nullptr;
  std::string path;   // of its group; see GroupSelection
  std::string group;  // its innermost name with a '/', else the outermost
  std::uint32_t material = 0;
  const ReviewAttributes::Values* values = nullptr;  // of its own group; null if none
};

// What was counted of one kind of shape.
struct ReviewKindCount {
  std::array<std::size_t, kShapeFates> fates{};
  std::size_t elements = 0;
  double deviation = 0.0;   // the largest, mm
  double volumeLost = 0.0;  // of all, mm3

  std::size_t shapes() const;
};

struct ReviewOddityCount {
  std::size_t count = 0;
  std::uint64_t first = 0;
};

// What was counted of all files.
struct ReviewCounts {
  std::array<ReviewKindCount, kReviewKinds> kinds{};
  std::array<ReviewOddityCount, kReviewOddities> oddities{};
  std::size_t groups = 0;
  std::size_t elements = 0;
  std::size_t notSelected = 0;  // shapes
  std::size_t obstructionsSkipped = 0;
  std::size_t insulationsSkipped = 0;
  std::size_t axesRepaired = 0;  // shapes of text forms
  std::size_t boxesDisagree = 0;
  std::size_t oddSnouts = 0;
  std::size_t uncertainTransparencies = 0;
  std::size_t facetsRefused = 0;
  std::size_t colours = 0;
  std::size_t transparencies = 0;  // groups and shapes that are not opaque
  std::size_t normals = 0;
  std::size_t groupsWithoutAttributes = 0;  // only counted when there are attributes
  std::size_t groupsOfNoShape = 0;          // that have attributes, which no row keeps

  std::size_t shapes() const;

  // Whether every shape was drawn, as it is, and everything was understood.
  bool isAllExact() const;
};

// Takes what review models become.
class ReviewSink {
 public:
  virtual ~ReviewSink() = default;
  virtual void element(const ReviewHeader& header, const Geo& geo) = 0;

  // After the elements of the shape; it may have had none.
  virtual void shape(const ReviewRow& row) = 0;

 protected:
  ReviewSink() = default;
  ReviewSink(const ReviewSink&) = default;
  ReviewSink& operator=(const ReviewSink&) = default;
};

// Reads review models, one after the other, into elements with headers. Memory holds
// one shape, the names of groups, and the attributes.
class ReviewImport : private ReviewHandler {
 public:
  // `attributes` and `sink` outlive this object.
  ReviewImport(const ReviewOptions& options, ReviewAttributes& attributes, ReviewSink& sink);

  // Reads a file. Throws ReviewFault, and what the bytes and the sink throw.
  void read(const ReadBytes& bytes);

  const ReviewCounts& counts() const { return counts_; }
  const ReviewNames& names() const { return names_; }
  const GroupSelection& selection() const { return selection_; }

 private:
  struct OpenGroup {
    std::string name;
    std::size_t pathBefore = 0;  // the length of the path without it
    ReviewAttributes::Block block = ReviewAttributes::kNone;
    std::uint32_t material = 0;
    bool isSelected = false;
    bool hasShape = false;
  };

  void beginGroup(const ReviewGroup& group) override;
  void endGroup() override;
  void shape(ReviewShape& shape) override;
  void colour() override { ++counts_.colours; }
  void odd(ReviewOddity oddity, std::uint64_t place) override;

  bool isWanted(const ReviewShape& shape);
  const std::string& nearestName() const;
  void count(const ReviewShape& shape, const ShapeOutcome& outcome);

  ReviewOptions options_;
  ReviewAttributes& attributes_;
  ReviewSink& sink_;
  ShapeMapper mapper_;
  GroupSelection selection_;
  ReviewNames names_;
  ReviewCounts counts_;
  std::vector<OpenGroup> open_;
  std::string path_;
  ReviewRow row_;
  PutElement put_;
};

}  // namespace Vesk

#endif
