// SPDX-License-Identifier: MIT
#ifndef VESK_OUTPUT_OUTPUT_H
#define VESK_OUTPUT_OUTPUT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "output/RecordLayout.h"
#include "vesk/Recs.h"

namespace Vesk {

// The line assembler: packs the tokens of one element's records into lines.
//
// A primitive begins a record with its keyword and appends text and number
// tokens. A token that no longer fits goes to a continuation line, which opens
// with the prefix, its line number one higher, and the keyword again. Finished
// lines collect in `recs`.
//
//   mode 2, prefix "60" H, attributes A, keyword K, tokens t1 and t2 with comma:
//       60HKAt1,t2,
//       61Ht3...          when t3 does not fit; A is not repeated
//
// The state is open to its owner. Operations that add text throw ExceptionInfo of
// level kFatal:
//
//   "Output: line size is not set"         lineSize is 0
//   "Output: line too big for output"      the token alone, or prefix and
//                                          keyword together, exceed lineSize
//
// Nothing is rolled back then: `recs` and `line` keep what they hold.
class Output {
 public:
  Recs recs;
  std::int32_t format = 0;   // copy of the mode, set when the file is opened
  std::int32_t counter = 0;  // set to 0 before every element

  // Opens every line; its line number and counter stand where RecordLayout
  // says. Any length.
  std::string prefix;

  // Written after the keyword on the first line of each record only.
  std::string attributes;

  std::int32_t valueDecimals = 6;  // of vectors and scalar values in mode 3
  std::int32_t pointDecimals = 4;  // of point coordinates in mode 3
  bool writeTags = true;           // whether mode 2 writes the tag lines "63" and "64"
  std::string keyword;             // of the current record

  // The most characters that a token may fill a line up to; 0: unset. A
  // continuation line may become longer: its first token is measured without
  // the prefix and keyword before it.
  std::uint32_t lineSize = 512;

  // The first lineLength characters of `line` are the line being built; behind
  // them is room, in which numbers are written before they are a part of it.
  std::uint32_t lineLength = 0;
  std::string line;
  std::int32_t mode = 0;  // kFixedColumns, kTokens; with any other nothing is written

  Output() = default;
  Output(const Output&) = default;
  Output& operator=(const Output&) = default;
  virtual ~Output() = default;

  // Makes the assembler one for this style: its mode, its line size and the
  // decimals of a new file.
  void setStyle(std::int32_t style);

  // Without the room; valid until the next operation.
  std::string_view lineText() const { return {line.data(), lineLength}; }

  // Starts a record: drops the line being built, takes the first four
  // characters of `word` as the keyword and writes prefix, keyword and
  // attributes. With resetNumber the line number starts again at "60" (mode 2)
  // or "00" (mode 3), and a keyword that begins with "TXT" sets the first
  // character of the prefix to '7', in any mode.
  void beginRecord(std::string_view word, bool resetNumber);

  // Appends one token, and a comma that counts as part of it. The text may be
  // one of the assembler's own.
  void addText(std::string_view text, bool comma = false);

  // Appends the value in the nine-character form.
  void addNumber(double value);

  // Appends the value in the trimmed fixed form; see appendFixed.
  void addFixed(double value, int decimals, bool comma, int width = 0);

  // Appends three values in the trimmed fixed form, the comma after the last.
  // With width 0 a blank, a token of its own, follows the first and the second.
  void addPoint(double x, double y, double z, int decimals, bool comma, int width = 0);

  template <class Point>
  void addPoint(const Point& p, int decimals, bool comma, int width = 0) {
    addPoint(p.x, p.y, p.z, decimals, comma, width);
  }

  // Appends `word` and three values in the trimmed fixed form, a blank between
  // each two, all as one token.
  void addPointToken(std::string_view word, double x, double y, double z, int decimals, bool comma);

  // Appends three values in the nine-character form.
  void addPoint9(double x, double y, double z);

  template <class Point>
  void addPoint9(const Point& p) {
    addPoint9(p.x, p.y, p.z);
  }

  // Finishes the line and opens a continuation line. At line number 99 the
  // number stays.
  void nextLine();

  // Finishes the line and opens one with `text` as its line number (mode 2,
  // first two characters) or as its keyword from now on (mode 3).
  void startLine(std::string_view text);

  // Adds the line to `recs` unless it is empty. Returns the number of lines in
  // `recs`.
  int flushLine();

  // Adds one to the line number. False, and nothing changed, when it would
  // reach 100 or the mode has none. In mode 2 a result below 10 is one digit
  // and cuts the prefix short after it.
  bool incrementLineNumber();

  // The counter in the prefix.
  int counterValue() const;

  // Adds one to the counter in the prefix; true when the old value was below
  // kMaxCounter. The digits are written in either case.
  bool incrementCounter();

  // Forgets the lines and the line being built, for the next element. The
  // memory of up to kMostSpareLines of them serves the lines to come, so that
  // an element like those before it allocates nothing here.
  void clear();

  static constexpr std::size_t kMostSpareLines = 16;

 private:
  bool fits(std::size_t length) const;
  void checkLength(std::size_t length) const;
  void lengthen(std::size_t length);
  char* room(std::size_t count);
  void takeToken(const char* end);
  void append(std::string_view text);
  void appendToFullText(std::string_view text);
  void wrap(std::string_view text);
  void addHeading();
  void overwritePrefix(std::size_t position, std::string_view text);
  std::size_t counterColumn() const;
  std::string_view prefixPart(std::size_t position, std::size_t length) const;

  std::string wrapped_;                              // a token that did not fit
  std::array<std::string, kMostSpareLines> spares_;  // earlier lines, for their memory
  std::size_t spareCount_ = 0;
};

}  // namespace Vesk

#endif
