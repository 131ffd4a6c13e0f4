// SPDX-License-Identifier: MIT
#include "rvm/TextReview.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "output/NumberText.h"
#include "rvm/Axes.h"
#include "rvm/ChunkOrder.h"
#include "rvm/ReviewFault.h"

namespace Vesk {
namespace {

constexpr std::string_view kBlanks = " \t\r\v\f";
constexpr std::string_view kNames[] = {"HEAD", "MODL", "CNTB", "CNTE", "PRIM",
                                       "OBST", "INSU", "COLR", "END:"};

std::string_view trimmed(std::string_view text) {
  const std::size_t from = text.find_first_not_of(kBlanks);
  if (from == std::string_view::npos) return {};
  return text.substr(from, text.find_last_not_of(kBlanks) + 1 - from);
}

bool isKnownName(std::string_view line) {
  return std::find(std::begin(kNames), std::end(kNames), line) != std::end(kNames);
}

// Four capitals, the last one perhaps a colon.
bool isName(std::string_view line) {
  if (line.size() != 4) return false;
  return std::all_of(line.begin(), line.end(),
                     [](char c) { return (c >= 'A' && c <= 'Z') || c == ':'; });
}

class TextReader {
 public:
  TextReader(WordStream& stream, ReviewHandler& handler) : stream_(stream), handler_(handler) {}

  void read() {
    skipMark();
    while (readChunk()) {
    }
    for (; depth_ > 0; --depth_) {
      handler_.odd(ReviewOddity::kGroupLeftOpen, line_);
      handler_.endGroup();
    }
    readRest();
  }

 private:
  [[noreturn]] void fail(std::uint64_t line, const std::string& message) const {
    throw ReviewFault(line, true, message);
  }

  [[noreturn]] void failCutOff() const { fail(line_, "the file is cut off: it ends before END:"); }

  void skipMark() {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (!stream_.has(kMark.size())) return;
    for (std::size_t i = 0; i < kMark.size(); ++i) {
      if (stream_.peek(i) != static_cast<unsigned char>(kMark[i])) return;
    }
    stream_.skip(kMark.size());
  }

  // Takes the next line; false at the end of the file.
  bool advance() {
    text_.clear();
    at_ = 0;
    if (!stream_.has(1)) return false;
    ++line_;
    while (stream_.has(1)) {
      const char c = static_cast<char>(stream_.peek(0));
      stream_.skip(1);
      if (c == '\n') return true;
      if (text_.size() == ReviewLimits::kTextBytes) {
        fail(line_, "a line of more than " + countText(ReviewLimits::kTextBytes) + " bytes");
      }
      text_ += c;
    }
    isCutOff_ = true;
    return true;
  }

  std::string_view restOfLine() const {
    return trimmed(std::string_view(text_).substr(std::min(at_, text_.size())));
  }

  // The line that begins the next chunk; counts what is left of the one before.
  void findName() {
    bool isOdd = false;
    for (;; isOdd = true) {
      while (restOfLine().empty()) {
        if (!advance()) failCutOff();
      }
      const std::string_view rest = restOfLine();
      if (at_ == 0 && (isKnownName(rest) || (isName(rest) && !isOdd))) break;
      if (!isOdd && isKnown_) handler_.odd(ReviewOddity::kNewerBody, chunk_);
      text_.clear();
      at_ = 0;
    }
    name_ = restOfLine();
    chunk_ = line_;
    at_ = text_.size();
  }

  // False after END:.
  bool readChunk() {
    findName();
    isKnown_ = true;
    if (!order_.takes(name_)) handler_.odd(ReviewOddity::kOutOfOrder, chunk_);
    if (name_ == "END:") {
      endChunk();
      return false;
    }
    integer();
    version_ = integer();
    if (name_ == "CNTB") {
      beginGroup();
    } else if (name_ == "CNTE") {
      endGroup();
    } else if (name_ == "PRIM") {
      readShape(ReviewUse::kShape);
    } else if (name_ == "OBST") {
      readShape(ReviewUse::kObstruction);
    } else if (name_ == "INSU") {
      readShape(ReviewUse::kInsulation);
    } else if (name_ == "HEAD") {
      for (int i = 0; i < 4; ++i) textLine();
      isKnown_ = version_ < 2;  // then an encoding follows
    } else if (name_ == "MODL") {
      for (int i = 0; i < 2; ++i) textLine();
    } else if (name_ == "COLR") {
      handler_.colour();
      isKnown_ = false;  // its form is not certain
    } else {
      handler_.odd(ReviewOddity::kUnknownChunk, chunk_);
      isKnown_ = false;
    }
    return true;
  }

  void endChunk() {
    while (restOfLine().empty() && advance()) {
    }
    const bool isLastLine = std::exchange(isCutOff_, false);  // which need not end
    int numbers = 0;
    for (double value = 0.0; numbers < 2 && takeNumber(value);) ++numbers;
    if (isLastLine) at_ = text_.size();
    if (numbers < 2 && restOfLine().empty() && !stream_.has(1)) {
      handler_.odd(ReviewOddity::kCutOffAtEnd, chunk_);
    }
  }

  void readRest() {
    const std::uint64_t line = line_;
    bool isBlank = restOfLine().find_first_not_of('\0') == std::string_view::npos;
    while (stream_.has(1)) {
      const unsigned char c = stream_.peek(0);
      isBlank = isBlank && (c == 0 || c == '\n' ||
                            kBlanks.find(static_cast<char>(c)) != std::string_view::npos);
      stream_.skip(1);
    }
    if (!isBlank) handler_.odd(ReviewOddity::kBytesBehindEnd, line);
  }

  // The next whole line.
  std::string textLine() {
    if (!advance()) failCutOff();
    at_ = text_.size();
    return std::string(trimmed(text_));
  }

  // The number that the line goes on with.
  bool takeNumber(double& value) {
    at_ = text_.find_first_not_of(kBlanks, at_);
    if (at_ == std::string::npos) at_ = text_.size();
    const char* const end = text_.data() + text_.size();
    const char* begin = text_.data() + at_;
    if (begin != end && *begin == '+') ++begin;
    const auto [rest, error] = std::from_chars(begin, end, value);
    if (error == std::errc::result_out_of_range) {
      value = std::numeric_limits<double>::infinity();
    } else if (error != std::errc()) {
      return false;
    }
    if (rest != end && kBlanks.find(*rest) == std::string_view::npos) return false;
    if (rest == end && isCutOff_) failCutOff();  // digits may be missing
    at_ = static_cast<std::size_t>(rest - text_.data());
    return true;
  }

  double number() {
    while (restOfLine().empty()) {
      if (!advance()) failCutOff();
    }
    double value = 0.0;
    if (!takeNumber(value)) {
      fail(line_, "a number of the chunk " + name_ + " was expected, not \"" +
                      std::string(restOfLine().substr(0, 40)) + '"');
    }
    return value;
  }

  std::uint32_t integer() {
    const double value = number();
    if (!(value >= 0.0 && value <= 4294967295.0) || value != std::floor(value)) {
      fail(line_, "a whole number of the chunk " + name_ + " was expected");
    }
    return static_cast<std::uint32_t>(value);
  }

  GeVector vector() {
    const double x = number();
    const double y = number();
    return {x, y, number()};
  }

  void beginGroup() {
    if (++depth_ > ReviewLimits::kDepth) {
      fail(chunk_, "more than " + countText(ReviewLimits::kDepth) + " nested groups");
    }
    ReviewGroup group;
    group.place = chunk_;
    group.isLine = true;
    group.name = textLine();
    vector();  // the group's point moves nothing
    group.material = integer();
    isKnown_ = version_ < 3;
    handler_.beginGroup(group);
  }

  void endGroup() {
    if (depth_ == 0) {
      handler_.odd(ReviewOddity::kGroupEndTooMany, chunk_);
      return;
    }
    --depth_;
    handler_.endGroup();
  }

  void readShape(ReviewUse use) {
    shape_.place = chunk_;
    shape_.isLine = true;
    shape_.use = use;
    shape_.facets.clear();
    shape_.number = integer();
    shape_.kind = shape_.number < kReviewKinds ? static_cast<ReviewKind>(shape_.number)
                                               : ReviewKind::kUnknown;
    std::array<double, 12> rows;
    for (double& each : rows) each = number();
    const auto column = [&rows](std::size_t i) {
      return GeVector(rows[i], rows[i + 4], rows[i + 8]);
    };
    shape_.axes = {column(0), column(1), column(2)};
    shape_.origin = column(3);
    const GeVector low = vector();
    shape_.box = Extents(GePoint(low), GePoint(vector()));
    if (shape_.kind == ReviewKind::kFacets) {
      readFacets();
    } else {
      const std::size_t count = parameterCount(shape_.kind);
      for (std::size_t i = 0; i < count; ++i) shape_.parameters[i] = number();
    }
    if (shape_.kind == ReviewKind::kUnknown) isKnown_ = false;
    shape_.axesWereRepaired = repairAxes(shape_.axes);
    handler_.shape(shape_);
  }

  void readFacets() {
    ReviewFacets& facets = shape_.facets;
    for (std::uint32_t polygons = integer(); polygons > 0; --polygons) {
      for (std::uint32_t contours = integer(); contours > 0; --contours) {
        for (std::uint32_t points = integer(); points > 0; --points) {
          facets.points.push_back(GePoint(vector()));
          vector();  // the normal
        }
        facets.contourEnds.push_back(facets.points.size());
      }
      facets.polygonEnds.push_back(facets.contourEnds.size());
    }
  }

  WordStream& stream_;
  ReviewHandler& handler_;
  std::string text_;         // the line
  std::size_t at_ = 0;       // what was read of it
  bool isCutOff_ = false;    // the file ends before the line does
  std::uint64_t line_ = 0;   // its number
  std::uint64_t chunk_ = 0;  // the line on which the chunk begins
  std::string name_;
  ChunkOrder order_;
  std::uint32_t version_ = 0;
  bool isKnown_ = false;
  std::size_t depth_ = 0;
  ReviewShape shape_;
};

}  // namespace

bool isTextReview(WordStream& stream) {
  constexpr std::size_t kMost = 256;
  std::string begin;
  for (std::size_t i = 0; i < kMost && stream.has(i + 1); ++i) {
    begin += static_cast<char>(stream.peek(i));
  }
  std::string_view text = begin;
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  const std::size_t from = text.find_first_not_of(" \t\r\n");
  if (from == std::string_view::npos) return false;
  text = text.substr(from);
  return text.substr(0, 4) == "HEAD" && (text.size() == 4 || text[4] == '\n' || text[4] == '\r' ||
                                         text[4] == ' ' || text[4] == '\t');
}

void readTextReview(WordStream& stream, ReviewHandler& handler) {
  TextReader(stream, handler).read();
}

}  // namespace Vesk
