// SPDX-License-Identifier: MIT
#ifndef VESK_SELECT_SELECTION_H
#define VESK_SELECT_SELECTION_H

#include <array>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "distance/Body.h"
#include "distance/BoxTree.h"
#include "select/Kinds.h"
#include "vesk/Geo.h"

namespace Vesk {

// What elements are chosen by.
enum class Criterion { kHeader, kOnly, kSize, kBox, kNear, kTouching, kLines };
inline constexpr std::size_t kCriteria = 7;

// What a criterion is to its users.
struct CriterionText {
  Criterion criterion;
  std::string_view option;   // "--header"
  std::string_view form;     // "TEXT"
  std::string_view what;     // one sentence
  std::string_view example;  // a text that it takes
};

// All, in the order in which help names them.
std::span<const CriterionText> criteria();

// A text of a criterion that means nothing.
class SelectionError : public std::runtime_error {
 public:
  SelectionError(const std::string& message, std::string advice)
      : std::runtime_error(message), hint(std::move(advice)) {}

  std::string hint;  // what to write instead
  std::string word;  // a word that is none of these
  std::vector<std::string> choices;
};

// An element as a selection sees it. Nothing is kept of it.
struct SelectionElement {
  const Geo& geo;
  std::string_view f1;  // header fields, blanks at the end or not
  std::string_view f2;
  std::uint64_t firstLine = 0;  // of the file, from 1; 0: unknown, in no range
  std::uint64_t lastLine = 0;
};

// Which elements are meant: the one place that knows, for every command.
//
// Texts of the same criterion are alternatives, different criteria must all be
// met, and what meets a negated text is left out:
//
//   --header P-1001 --header P-1002 --only pipe --not --size ..50
//
// the pipes of two headers but for those of 50 mm and less. Without any text all
// elements are meant.
//
//   header    a pattern for field F1, or F1 and F2 as `info --headers` prints them
//   only      kinds, KIND,KIND...; by class (cylinder) or plain word (pipe)
//   size      A..B, A.., ..B or single values within 0.05, with commas between:
//             the diameter of cylinders, tori and either end of cones, an edge of
//             boxes, width or depth of elbows; other kinds have no size
//   bbox      X1,Y1,Z1,X2,Y2,Z2: what has a point in this box
//   near      X,Y,Z,R: what has a point no further than R from this one
//   touching  what is no further than the tolerance from any element of the
//             headers that the pattern means, these elements themselves included
//   lines     A-B, A-, -B or A, with commas between: lines of the file
//
// bbox, near and touching look at the true shape (distance/Body.h), within 0.001.
// An element without a shape, such as one with a NaN, meets none of the three.
class Selection {
 public:
  // Adds a text; throws SelectionError.
  void add(Criterion criterion, std::string_view text, bool isNegated = false);

  // How far apart what is touching may be; 0 or more, at first 0.
  void setTolerance(double tolerance) { tolerance_ = tolerance; }

  bool isEmpty() const;

  // Whether all elements must be given to gather(), and finish() called, before
  // takes() is asked: true with a text of `touching`. Memory: 500 bytes for each
  // element of these headers.
  bool needsModel() const;
  void gather(const SelectionElement& element);
  void finish();

  bool takes(const SelectionElement& element) const;

 private:
  struct Range {
    double low;
    double high;
  };
  struct Sphere {
    GePoint centre;
    double radius;
  };
  // The elements of the headers that a pattern means.
  struct Neighbours {
    std::string pattern;
    std::vector<Body> bodies;
    BoxTree tree;
  };
  // The texts that count for, or those that count against.
  struct Side {
    std::vector<std::string> headers;
    std::array<bool, kKinds> kinds{};
    bool hasKinds = false;
    std::vector<Range> sizes;
    std::vector<Extents> boxes;
    std::vector<Sphere> spheres;
    std::vector<Neighbours> neighbours;
    std::vector<std::pair<std::uint64_t, std::uint64_t>> lines;
  };

  // Whether any text of the criterion is met.
  bool meets(Criterion criterion, const Side& side, const SelectionElement& element) const;
  static bool has(Criterion criterion, const Side& side);

  Side wanted_;
  Side unwanted_;
  double tolerance_ = 0.0;
};

}  // namespace Vesk

#endif
