// SPDX-License-Identifier: MIT
#include "rvm/ReviewWriter.h"

#include <bit>
#include <cstdio>
#include <string>

namespace VeskTest {

ReviewWriter::ReviewWriter(Form form) : binary_(form == Form::kBinary) {
  beginChunk("HEAD", 2);
  for (const char* text : {"a model", "a note", "today", "someone"}) putText(text);
  if (binary_) putText("Unicode UTF-8");
  endChunk();
  model();
}

void ReviewWriter::model() {
  beginChunk("MODL", 1);
  putText("PROJECT");
  putText("MODEL");
  endChunk();
}

void ReviewWriter::group(std::string_view name, std::uint32_t material) {
  beginChunk("CNTB", 2);
  putText(name);
  putNumbers({0, 0, 0});
  if (binary_) {
    putWord(material);
  } else {
    line("     " + std::to_string(material));
  }
  endChunk();
}

void ReviewWriter::end() {
  beginChunk("CNTE", 1);
  endChunk();
}

void ReviewWriter::shape(std::uint32_t kind, const ReviewMatrix& matrix, const Numbers& box,
                         const Numbers& parameters, const char* chunk) {
  beginChunk(chunk, 1);
  if (binary_) {
    putWord(kind);
  } else {
    line("     " + std::to_string(kind));
  }
  putPlace(matrix, box);
  putNumbers(parameters);
  endChunk();
}

void ReviewWriter::facets(const ReviewMatrix& matrix, const Numbers& box,
                          const std::vector<ReviewPolygon>& polygons) {
  beginChunk("PRIM", 1);
  const auto count = [this](std::size_t n) {
    if (binary_) {
      putWord(static_cast<std::uint32_t>(n));
    } else {
      line("     " + std::to_string(n));
    }
  };
  count(11);
  putPlace(matrix, box);
  count(polygons.size());
  for (const ReviewPolygon& polygon : polygons) {
    count(polygon.size());
    for (const ReviewContour& contour : polygon) {
      count(contour.size());
      for (const auto& p : contour) {
        putNumbers({p[0], p[1], p[2]});
        putNumbers({0, 0, 1});
      }
    }
  }
  endChunk();
}

void ReviewWriter::transparent(const char* chunk, bool before, std::uint8_t transparency,
                               std::uint32_t kind, const ReviewMatrix& matrix, const Numbers& box,
                               const Numbers& parameters) {
  beginChunk(chunk, 1);
  putWord(kind);
  if (before) putWord(std::uint32_t{transparency} << 24);
  putPlace(matrix, box);
  if (!before) putWord(std::uint32_t{transparency} << 24);
  putNumbers(parameters);
  endChunk();
}

void ReviewWriter::colour() { chunk("COLR", {1, 7, 0xFF000000U}); }

void ReviewWriter::chunk(const char* name, const std::vector<std::uint32_t>& words) {
  beginChunk(name, 1);
  if (binary_) {
    // beginChunk has written a version, which is the first word of this body.
    bytes_.resize(bytes_.size() - 4);
    for (const std::uint32_t each : words) putWord(each);
  } else {
    for (const std::uint32_t each : words) line("     " + std::to_string(each));
  }
  endChunk();
}

std::string ReviewWriter::finish() {
  beginChunk("END:", 1);
  endChunk();
  return bytes_;
}

std::uint32_t ReviewWriter::word(double number) {
  return std::bit_cast<std::uint32_t>(static_cast<float>(number));
}

void ReviewWriter::beginChunk(const char* name, std::uint32_t version) {
  if (!binary_) {
    line(name);
    line("     1     " + std::to_string(version));
    return;
  }
  for (int i = 0; i < 4; ++i) putWord(static_cast<std::uint32_t>(name[i]));
  nextAt_ = bytes_.size();
  putWord(0);
  putWord(1);
  putWord(version);
}

void ReviewWriter::endChunk() {
  if (!binary_) return;
  const auto next = static_cast<std::uint32_t>(bytes_.size());
  for (std::size_t i = 0; i < 4; ++i) {
    bytes_[nextAt_ + i] = static_cast<char>(next >> (24 - 8 * i) & 0xFFU);
  }
}

void ReviewWriter::putWord(std::uint32_t word) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    bytes_ += static_cast<char>(word >> shift & 0xFFU);
  }
}

void ReviewWriter::putNumber(double number) { putWord(word(number)); }

void ReviewWriter::putNumbers(const Numbers& numbers) {
  if (!binary_) return numberLine(numbers, 5);
  for (const double each : numbers) putNumber(each);
}

void ReviewWriter::putText(std::string_view text) {
  if (!binary_) return line(text);
  const std::size_t words = text.size() / 4 + 1;
  putWord(static_cast<std::uint32_t>(words));
  bytes_ += text;
  bytes_.append(4 * words - text.size(), '\0');
}

void ReviewWriter::putPlace(const ReviewMatrix& matrix, const Numbers& box) {
  if (binary_) {
    for (const double each : matrix) putNumber(each);
    putNumbers(box);
    return;
  }
  for (std::size_t i = 0; i < 3; ++i) {
    numberLine({matrix[i], matrix[i + 3], matrix[i + 6], matrix[i + 9]}, 5);
  }
  numberLine({box[0], box[1], box[2]}, 2);
  numberLine({box[3], box[4], box[5]}, 2);
}

void ReviewWriter::line(std::string_view text) { bytes_ += std::string(text) + '\n'; }

void ReviewWriter::numberLine(const Numbers& numbers, int decimals) {
  std::string text;
  for (const double each : numbers) {
    char number[400];
    std::snprintf(number, sizeof number, " %14.*f", decimals, each);
    text += number;
  }
  line(text);
}

}  // namespace VeskTest
