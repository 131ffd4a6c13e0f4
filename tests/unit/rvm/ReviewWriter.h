// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_RVM_REVIEWWRITER_H
#define VESK_TESTS_RVM_REVIEWWRITER_H

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace VeskTest {

using Numbers = std::vector<double>;

// Local axes x, y, z in metres for a millimetre, and the origin in metres.
using ReviewMatrix = std::array<double, 12>;

inline constexpr ReviewMatrix kUpright = {0.001, 0, 0, 0, 0.001, 0, 0, 0, 0.001, 1, 2, 3};

// A polygon of contours of points; the normals are (0, 0, 1).
using ReviewContour = std::vector<std::array<double, 3>>;
using ReviewPolygon = std::vector<ReviewContour>;

// Writes review models, by the description of the format and not by the reader.
class ReviewWriter {
 public:
  enum class Form { kBinary, kText };

  // With HEAD and MODL.
  explicit ReviewWriter(Form form);

  // Once more.
  void model();

  void group(std::string_view name, std::uint32_t material = 1);
  void end();
  void shape(std::uint32_t kind, const ReviewMatrix& matrix, const Numbers& box,
             const Numbers& parameters, const char* chunk = "PRIM");
  void facets(const ReviewMatrix& matrix, const Numbers& box,
              const std::vector<ReviewPolygon>& polygons);

  // OBST or INSU of the binary form with its transparency before the matrix or
  // behind the box.
  void transparent(const char* chunk, bool before, std::uint8_t transparency, std::uint32_t kind,
                   const ReviewMatrix& matrix, const Numbers& box, const Numbers& parameters);

  void colour();

  // Any chunk; in the binary form a body of words.
  void chunk(const char* name, const std::vector<std::uint32_t>& words);

  // With END:.
  std::string finish();

  // So far.
  std::string& bytes() { return bytes_; }

  // For bodies by hand.
  static std::uint32_t word(double number);

 private:
  void beginChunk(const char* name, std::uint32_t version);
  void endChunk();
  void putWord(std::uint32_t word);
  void putNumber(double number);
  void putNumbers(const Numbers& numbers);
  void putText(std::string_view text);
  void putPlace(const ReviewMatrix& matrix, const Numbers& box);
  void line(std::string_view text);
  void numberLine(const Numbers& numbers, int decimals);

  bool binary_;
  std::string bytes_;
  std::size_t nextAt_ = 0;
};

}  // namespace VeskTest

#endif
