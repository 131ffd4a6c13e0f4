// SPDX-License-Identifier: MIT
#include "rvm/BinaryReview.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

#include "output/NumberText.h"
#include "rvm/Axes.h"
#include "rvm/ChunkOrder.h"
#include "rvm/ReviewFault.h"

namespace Vesk {
namespace {

constexpr std::size_t kWord = 4;
constexpr std::size_t kLetters = 4;
constexpr std::size_t kMatrixWords = 12;
constexpr std::size_t kBoxWords = 6;

double numberOf(std::uint32_t bits) { return double{std::bit_cast<float>(bits)}; }

// The shortest decimal number that these 32 bits stand for: 0.001 and not
// 0.0010000000474974513. For sizes and axes, of which people gave the decimals; a
// place is the outcome of calculations and stays as it is.
double decimalOf(std::uint32_t bits) {
  const float number = std::bit_cast<float>(bits);
  if (!std::isfinite(number)) return double{number};
  std::array<char, 32> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  double value = 0.0;
  std::from_chars(text.data(), end, value);
  return value;
}

// A transparency in percent, the other three bytes null.
bool isTransparency(std::uint32_t word) { return (word & 0xFFFFFFU) == 0 && word >> 24 <= 100; }

int transparencyOf(std::uint32_t word) { return static_cast<int>(std::min(word >> 24, 100U)); }

class BinaryReader {
 public:
  BinaryReader(WordStream& stream, ReviewHandler& handler) : stream_(stream), handler_(handler) {}

  void read() {
    while (readChunk()) {
    }
    for (; depth_ > 0; --depth_) {
      handler_.odd(ReviewOddity::kGroupLeftOpen, stream_.place());
      handler_.endGroup();
    }
    readRest();
  }

 private:
  [[noreturn]] void fail(const std::string& message) const {
    throw ReviewFault(chunk_, false, message);
  }

  [[noreturn]] void failCutOff() const {
    fail("the file is cut off: it ends before END:, in the chunk " + name_ + " that begins here");
  }

  // False after END:.
  bool readChunk() {
    chunk_ = stream_.place();
    readName();
    if (!order_.takes(name_)) handler_.odd(ReviewOddity::kOutOfOrder, chunk_);
    if (name_ == "END:") {
      endChunk();
      return false;
    }
    if (!stream_.has(2 * kWord)) failCutOff();
    next_ = stream_.word();
    stream_.skip(kWord);
    if (next_ < stream_.place()) {
      fail("the chunk " + name_ + " leads back to byte " + countText(next_) + " of the file");
    }
    readBody();
    // What is left is of a newer version.
    if (stream_.place() < next_) {
      if (isKnown_) handler_.odd(ReviewOddity::kNewerBody, chunk_);
      skipToNext();
    }
    return true;
  }

  void readName() {
    if (!stream_.has(kLetters * kWord)) {
      name_ = "at its end";
      failCutOff();
    }
    name_.clear();
    for (std::size_t i = 0; i < kLetters; ++i) {
      const std::uint32_t letter = stream_.word();
      if (letter < ' ' || letter > '~') {
        throw ReviewFault(chunk_, false,
                          "no chunk begins here; the four letters of its name were expected");
      }
      name_ += static_cast<char>(letter);
    }
  }

  void endChunk() {
    constexpr std::size_t kRest = 3 * kWord;  // next, 1, version
    if (!stream_.has(kRest)) {
      handler_.odd(ReviewOddity::kCutOffAtEnd, chunk_);
      while (stream_.has(1)) stream_.skip(1);
    } else {
      stream_.skip(kRest);
    }
  }

  void readRest() {
    const std::uint64_t place = stream_.place();
    bool zeros = true;
    while (stream_.has(1)) {
      zeros = zeros && stream_.peek(0) == 0;
      stream_.skip(1);
    }
    if (!zeros) handler_.odd(ReviewOddity::kBytesBehindEnd, place);
  }

  void skipToNext() {
    while (stream_.place() < next_) {
      const std::uint64_t left = next_ - stream_.place();
      const std::size_t count =
          left < WordStream::kBlock ? static_cast<std::size_t>(left) : WordStream::kBlock;
      if (!stream_.has(count)) {
        fail("the chunk " + name_ + " says that it ends at byte " + countText(next_) +
             ", but the file ends before");
      }
      stream_.skip(count);
    }
  }

  void readBody() {
    isKnown_ = true;
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
    } else if (name_ == "COLR") {
      for (int i = 0; i < 3; ++i) word();
      handler_.colour();
    } else if (name_ == "HEAD") {
      const std::uint32_t version = word();
      for (int i = 0; i < (version >= 2 ? 5 : 4); ++i) text();
    } else if (name_ == "MODL") {
      word();
      for (int i = 0; i < 2; ++i) text();
    } else {
      isKnown_ = false;
      handler_.odd(ReviewOddity::kUnknownChunk, chunk_);
    }
  }

  std::uint64_t left() const { return next_ - stream_.place(); }

  void require(std::uint64_t words) {
    if (left() / kWord < words) {
      fail("the chunk " + name_ + " ends at byte " + countText(next_) + ", inside its own body");
    }
  }

  std::uint32_t word() {
    require(1);
    if (!stream_.has(kWord)) failCutOff();
    return stream_.word();
  }

  double number() { return numberOf(word()); }

  GeVector vector() {
    const double x = number();
    const double y = number();
    return {x, y, number()};
  }

  // Up to the first NUL.
  std::string text() {
    const std::uint32_t words = word();
    require(words);
    if (words > ReviewLimits::kTextBytes / kWord) {
      fail("a text of " + countText(std::uint64_t{words} * kWord) + " bytes; at most " +
           countText(ReviewLimits::kTextBytes) + " are taken");
    }
    const std::size_t size = words * kWord;
    if (!stream_.has(size)) failCutOff();
    std::string text;
    for (std::size_t i = 0; i < size && stream_.peek(i) != 0; ++i) {
      text += static_cast<char>(stream_.peek(i));
    }
    stream_.skip(size);
    return text;
  }

  void beginGroup() {
    if (++depth_ > ReviewLimits::kDepth) {
      fail("more than " + countText(ReviewLimits::kDepth) + " nested groups");
    }
    ReviewGroup group;
    group.place = chunk_;
    const std::uint32_t version = word();
    group.name = text();
    vector();  // the group's point moves nothing
    group.material = word();
    if (version == 3 && left() >= kWord) {
      group.transparency = transparencyOf(word());
    } else if (version == 4 && left() >= 7 * kWord) {
      for (int i = 0; i < 7; ++i) word();
    }
    handler_.beginGroup(group);
  }

  void endGroup() {
    word();
    if (depth_ == 0) {
      handler_.odd(ReviewOddity::kGroupEndTooMany, chunk_);
      return;
    }
    --depth_;
    handler_.endGroup();
  }

  void readShape(ReviewUse use) {
    shape_.place = chunk_;
    shape_.use = use;
    shape_.transparency = 0;
    shape_.isUncertain = false;
    shape_.axesWereRepaired = false;
    shape_.facets.clear();
    word();
    shape_.number = word();
    shape_.kind = shape_.number < kReviewKinds ? static_cast<ReviewKind>(shape_.number)
                                               : ReviewKind::kUnknown;
    if (use == ReviewUse::kShape) {
      readPlace();
    } else {
      readTransparentPlace();
    }
    if (shape_.kind == ReviewKind::kFacets) {
      readFacets();
    } else {
      const std::size_t count = parameterCount(shape_.kind);
      for (std::size_t i = 0; i < count; ++i) shape_.parameters[i] = decimalOf(word());
    }
    if (shape_.kind == ReviewKind::kUnknown) isKnown_ = false;
    handler_.shape(shape_);
  }

  void readPlace() {
    std::array<std::uint32_t, kMatrixWords + kBoxWords> words;
    for (std::uint32_t& each : words) each = word();
    placeShape(words.data());
  }

  void placeShape(const std::uint32_t* words) {
    const auto at = [words](std::size_t i) {
      return GeVector(numberOf(words[i]), numberOf(words[i + 1]), numberOf(words[i + 2]));
    };
    const auto axis = [words](std::size_t i) {
      return GeVector(decimalOf(words[i]), decimalOf(words[i + 1]), decimalOf(words[i + 2]));
    };
    shape_.axes = {axis(0), axis(3), axis(6)};
    shape_.origin = at(9);
    shape_.box = Extents(GePoint(at(12)), GePoint(at(15)));
  }

  bool isPlausible() const {
    return isFrame(shape_.axes) && shape_.box.min.x <= shape_.box.max.x &&
           shape_.box.min.y <= shape_.box.max.y && shape_.box.min.z <= shape_.box.max.z;
  }

  // Whether the chunk ends with the shape although that has no transparency.
  bool lacksTransparency() const {
    return shape_.kind != ReviewKind::kFacets && shape_.kind != ReviewKind::kUnknown &&
           left() / kWord == kMatrixWords + kBoxWords + parameterCount(shape_.kind);
  }

  // The word of the transparency stands behind the box or before the matrix.
  void readTransparentPlace() {
    if (lacksTransparency()) {
      readPlace();
      shape_.isUncertain = true;
      return;
    }
    std::array<std::uint32_t, kMatrixWords + kBoxWords + 1> words;
    for (std::uint32_t& each : words) each = word();
    const bool maybeBehind = isTransparency(words.back());
    const bool maybeBefore = isTransparency(words.front());
    if (!maybeBehind && !maybeBefore) {
      shape_.isUncertain = true;
      placeShape(words.data());
      return;
    }
    if (maybeBehind) {
      placeShape(words.data());
      shape_.transparency = transparencyOf(words.back());
      if (!maybeBefore || isPlausible()) return;
    }
    placeShape(words.data() + 1);
    shape_.transparency = transparencyOf(words.front());
    if (!maybeBehind || isPlausible()) return;
    placeShape(words.data());
    shape_.transparency = transparencyOf(words.back());
    shape_.isUncertain = true;
  }

  // A count of things, each of at least so many words.
  std::uint32_t count(std::uint64_t words, const char* things) {
    const std::uint32_t value = word();
    if (left() / kWord / words < value) {
      fail(countText(value) + ' ' + things + " don't fit into the " + countText(left()) +
           " bytes that are left of the chunk");
    }
    return value;
  }

  void readFacets() {
    ReviewFacets& facets = shape_.facets;
    for (std::uint32_t polygons = count(1, "polygons"); polygons > 0; --polygons) {
      for (std::uint32_t contours = count(1, "contours"); contours > 0; --contours) {
        for (std::uint32_t points = count(6, "corners"); points > 0; --points) {
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
  std::uint64_t chunk_ = 0;  // its first byte
  std::uint64_t next_ = 0;   // the first byte behind it
  std::string name_;
  ChunkOrder order_;
  bool isKnown_ = true;
  std::size_t depth_ = 0;
  ReviewShape shape_;
};

}  // namespace

bool isBinaryReview(WordStream& stream) {
  constexpr std::string_view kBegin("\0\0\0H\0\0\0E\0\0\0A\0\0\0D", 16);
  if (!stream.has(kBegin.size())) return false;
  for (std::size_t i = 0; i < kBegin.size(); ++i) {
    if (stream.peek(i) != static_cast<unsigned char>(kBegin[i])) return false;
  }
  return true;
}

void readBinaryReview(WordStream& stream, ReviewHandler& handler) {
  BinaryReader(stream, handler).read();
}

}  // namespace Vesk
