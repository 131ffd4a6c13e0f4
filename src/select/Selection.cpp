// SPDX-License-Identifier: MIT
#include "select/Selection.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>

#include "prims/Visit.h"
#include "select/Pattern.h"

namespace Vesk {
namespace {

constexpr double kSameSize = 0.05;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// By criterion.
constexpr CriterionText kTexts[kCriteria] = {
    {Criterion::kHeader, "--header", "HEADER",
     "only this header: field F1 or, with a blank between, F1 and F2; * and ? stand for any "
     "characters",
     "P-1001"},
    {Criterion::kOnly, "--only", "KIND,...", "only these kinds, such as pipe,bend,box",
     "cylinder,torus"},
    {Criterion::kSize, "--size", "A..B,...",
     "only these sizes: diameters, edges of boxes, width or depth of ducts", "100..200"},
    {Criterion::kBox, "--bbox", "BOX",
     "only what touches this box: X1,Y1,Z1,X2,Y2,Z2 in the unit of the file",
     "0,0,0,1000,1000,500"},
    {Criterion::kNear, "--near", "X,Y,Z,R", "only what is no further than R from this point",
     "1000,2000,500,250"},
    {Criterion::kTouching, "--touching", "HEADER",
     "only what touches an element of this header, within --touch-tolerance", "P-1001"},
    {Criterion::kLines, "--lines", "A-B,...", "only these lines of the file", "1-100,250"},
};

[[noreturn]] void refuse(Criterion criterion, std::string_view text, const std::string& what,
                         const std::string& advice) {
  const CriterionText& known = kTexts[static_cast<std::size_t>(criterion)];
  throw SelectionError(
      std::string(known.option) + " " + std::string(text) + ": " + what,
      advice + ", for instance " + std::string(known.option) + " " + std::string(known.example));
}

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(' ');
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

// Calls take(part) for what is between commas, without blanks around it.
template <class Take>
void forEachPart(std::string_view text, Take take) {
  for (;;) {
    const std::size_t comma = text.find(',');
    take(trimmed(text.substr(0, comma)));
    if (comma == std::string_view::npos) return;
    text.remove_prefix(comma + 1);
  }
}

template <class Number>
std::optional<Number> numberOf(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  Number value{};
  const char* end = text.data() + text.size();
  const auto [last, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || last != end) return std::nullopt;
  return value;
}

std::optional<double> finiteOf(std::string_view text) {
  const std::optional<double> value = numberOf<double>(text);
  return value && std::isfinite(*value) ? value : std::nullopt;
}

// So many finite numbers, with commas or blanks between.
template <std::size_t N>
std::optional<std::array<double, N>> numbersOf(std::string_view text) {
  std::string plain(text);
  if (plain.find(',') == std::string::npos) std::replace(plain.begin(), plain.end(), ' ', ',');
  std::array<double, N> numbers{};
  std::size_t count = 0;
  bool isGood = true;
  forEachPart(plain, [&](std::string_view part) {
    const std::optional<double> value = finiteOf(part);
    if (!value || count == N) {
      isGood = false;
    } else {
      numbers[count++] = *value;
    }
  });
  if (!isGood || count != N) return std::nullopt;
  return numbers;
}

double lengthOf(const GeVector& v) { return v.length(); }

// The sizes of an element, one function for each class.
struct Sizes {
  std::vector<double> operator()(const Cyl& cyl) const { return {cyl.diameter}; }
  std::vector<double> operator()(const Torus& torus) const { return {torus.diameter}; }
  std::vector<double> operator()(const Cone& cone) const {
    return {cone.diameter1, cone.diameter2};
  }
  std::vector<double> operator()(const Box& box) const {
    return {lengthOf(box.edge1), lengthOf(box.edge2), lengthOf(box.edge3)};
  }
  std::vector<double> operator()(const Relb& relb) const { return {relb.width, relb.depth}; }
  std::vector<double> operator()(const Red&) const { return {}; }
  std::vector<double> operator()(const Pline&) const { return {}; }
  std::vector<double> operator()(const Pgon&) const { return {}; }
  std::vector<double> operator()(const Txt&) const { return {}; }
};

// Whether any size of the element passes the test.
template <class Test>
bool anySize(const Geo& geo, Test test) {
  const std::vector<double> sizes = visit(geo, Sizes(), [] { return std::vector<double>(); });
  return std::any_of(sizes.begin(), sizes.end(), test);
}

}  // namespace

std::span<const CriterionText> criteria() { return kTexts; }

void Selection::add(Criterion criterion, std::string_view text, bool isNegated) {
  Side& side = isNegated ? unwanted_ : wanted_;
  switch (criterion) {
    case Criterion::kHeader:
      if (text.empty()) refuse(criterion, "\"\"", "no header", "a header or a pattern");
      side.headers.emplace_back(text);
      return;
    case Criterion::kOnly:
      forEachPart(text, [&](std::string_view word) {
        const std::optional<Kind> kind = kindNamed(word);
        if (!kind) {
          SelectionError error("there is no kind \"" + std::string(word) + "\"",
                               "kinds: " + kindNames());
          error.word = word;
          error.choices = kindWords();
          throw error;
        }
        side.kinds[static_cast<std::size_t>(*kind)] = true;
        side.hasKinds = true;
      });
      return;
    case Criterion::kSize:
      forEachPart(text, [&](std::string_view part) {
        const std::size_t dots = part.find("..");
        const bool isRange = dots != std::string_view::npos;
        const std::string_view first = part.substr(0, dots);
        const std::string_view last = isRange ? part.substr(dots + 2) : first;
        const std::optional<double> low = first.empty() ? -kInfinity : finiteOf(first);
        const std::optional<double> high = last.empty() ? kInfinity : finiteOf(last);
        if (!low || !high || (first.empty() && last.empty())) {
          refuse(criterion, text, "\"" + std::string(part) + "\" is neither a size nor a range",
                 "A..B, A.., ..B or values");
        }
        if (*low > *high) {
          refuse(criterion, text, "\"" + std::string(part) + "\" begins above its end",
                 "the smaller one first");
        }
        side.sizes.push_back(isRange ? Range{*low, *high}
                                     : Range{*low - kSameSize, *low + kSameSize});
      });
      return;
    case Criterion::kBox: {
      const auto v = numbersOf<6>(text);
      if (!v) refuse(criterion, text, "not six numbers", "X1,Y1,Z1,X2,Y2,Z2");
      const std::array<double, 6>& n = *v;
      Extents box;
      box.add({n[0], n[1], n[2]}).add({n[3], n[4], n[5]});
      side.boxes.push_back(box);
      return;
    }
    case Criterion::kNear: {
      const auto v = numbersOf<4>(text);
      if (!v) refuse(criterion, text, "not four numbers", "X,Y,Z,R");
      const std::array<double, 4>& n = *v;
      if (n[3] < 0.0) refuse(criterion, text, "the radius is below zero", "a radius of 0 or more");
      side.spheres.push_back({{n[0], n[1], n[2]}, n[3]});
      return;
    }
    case Criterion::kTouching:
      if (text.empty()) refuse(criterion, "\"\"", "no header", "a header or a pattern");
      side.neighbours.push_back({std::string(text), {}, {}});
      return;
    case Criterion::kLines:
      forEachPart(text, [&](std::string_view part) {
        const std::size_t dash = part.find('-');
        const bool isRange = dash != std::string_view::npos;
        const std::string_view begin = part.substr(0, dash);
        const std::string_view end = isRange ? part.substr(dash + 1) : begin;
        const auto first = begin.empty() ? std::uint64_t{1} : numberOf<std::uint64_t>(begin);
        const auto last =
            end.empty() ? std::numeric_limits<std::uint64_t>::max() : numberOf<std::uint64_t>(end);
        if (!first || !last || *first == 0 || *last < *first || (begin.empty() && end.empty())) {
          refuse(criterion, text, "\"" + std::string(part) + "\" is neither a line nor a range",
                 "A-B, A-, -B or lines from 1");
        }
        side.lines.emplace_back(*first, *last);
      });
      return;
  }
}

bool Selection::has(Criterion criterion, const Side& side) {
  switch (criterion) {
    case Criterion::kHeader:
      return !side.headers.empty();
    case Criterion::kOnly:
      return side.hasKinds;
    case Criterion::kSize:
      return !side.sizes.empty();
    case Criterion::kBox:
      return !side.boxes.empty();
    case Criterion::kNear:
      return !side.spheres.empty();
    case Criterion::kTouching:
      return !side.neighbours.empty();
    case Criterion::kLines:
      break;
  }
  return !side.lines.empty();
}

bool Selection::isEmpty() const {
  return std::none_of(std::begin(kTexts), std::end(kTexts), [this](const CriterionText& each) {
    return has(each.criterion, wanted_) || has(each.criterion, unwanted_);
  });
}

bool Selection::needsModel() const {
  return !wanted_.neighbours.empty() || !unwanted_.neighbours.empty();
}

void Selection::gather(const SelectionElement& element) {
  for (Side* side : {&wanted_, &unwanted_}) {
    for (Neighbours& each : side->neighbours) {
      if (!matchesHeader(element.f1, element.f2, each.pattern)) continue;
      std::optional<Body> body = Body::of(element.geo);
      if (body) each.bodies.push_back(std::move(*body));
    }
  }
}

void Selection::finish() {
  for (Side* side : {&wanted_, &unwanted_}) {
    for (Neighbours& each : side->neighbours) {
      std::vector<Extents> boxes;
      boxes.reserve(each.bodies.size());
      for (const Body& body : each.bodies) boxes.push_back(body.box());
      each.tree = BoxTree(boxes);
    }
  }
}

bool Selection::takes(const SelectionElement& element) const {
  return std::all_of(std::begin(kTexts), std::end(kTexts), [&](const CriterionText& each) {
    const Criterion criterion = each.criterion;
    return (!has(criterion, wanted_) || meets(criterion, wanted_, element)) &&
           (!has(criterion, unwanted_) || !meets(criterion, unwanted_, element));
  });
}

bool Selection::meets(Criterion criterion, const Side& side,
                      const SelectionElement& element) const {
  const auto any = [](const auto& each, auto test) {
    return std::any_of(each.begin(), each.end(), test);
  };
  switch (criterion) {
    case Criterion::kHeader:
      return any(side.headers, [&](const std::string& pattern) {
        return matchesHeader(element.f1, element.f2, pattern);
      });
    case Criterion::kOnly:
      return side.kinds[static_cast<std::size_t>(kindOf(element.geo))];
    case Criterion::kSize:
      return anySize(element.geo, [&](double size) {
        return any(side.sizes,
                   [size](const Range& range) { return size >= range.low && size <= range.high; });
      });
    case Criterion::kLines:
      return any(side.lines, [&](const auto& range) {
        return element.firstLine > 0 && element.firstLine <= range.second &&
               std::max(element.firstLine, element.lastLine) >= range.first;
      });
    case Criterion::kBox:
    case Criterion::kNear:
    case Criterion::kTouching:
      break;
  }
  const std::optional<Body> body = Body::of(element.geo);
  if (!body) return false;
  const auto isWithin = [&](const Body& other, double reach) {
    const double most = reach + kTouchDistance;
    return gapOf(body->box(), other.box()) <= most && gapOf(*body, other, most).distance <= most;
  };
  if (criterion == Criterion::kBox) {
    return any(side.boxes, [&](const Extents& box) { return touches(*body, box); });
  }
  if (criterion == Criterion::kNear) {
    return any(side.spheres,
               [&](const Sphere& sphere) { return isWithin(Body(sphere.centre), sphere.radius); });
  }
  return any(side.neighbours, [&](const Neighbours& each) {
    return !each.tree.forEachNear(body->box(), tolerance_ + kTouchDistance, [&](std::uint32_t i) {
      return !isWithin(each.bodies[i], tolerance_);
    });
  });
}

}  // namespace Vesk
