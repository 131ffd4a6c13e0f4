// SPDX-License-Identifier: MIT
// The whole-file reader: any bytes, also in pieces of 1 and 7; a file behind
// itself reads as the sum; what was written again reads and writes the same.
//
//   1 byte the style (0: found out), then the file
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "Fuzz.h"
#include "Records.h"

using VeskFuzz::check;
using VeskFuzz::readAll;
using VeskFuzz::Reading;

namespace {

class PieceSource : public Vesk::ByteSource {
 public:
  PieceSource(std::string_view text, std::size_t size) : text_(text), size_(size) {}

  std::size_t read(char* buffer, std::size_t size) override {
    const std::size_t count = text_.copy(buffer, std::min(size, size_));
    text_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view text_;
  std::size_t size_;
};

void checkSame(const Reading& one, const Reading& other, const char* promise) {
  check(one.text == other.text && one.lines == other.lines && one.report == other.report &&
            one.elements == other.elements && one.faults == other.faults,
        promise, one.report + "---\n" + other.report);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  VeskFuzz::Bytes bytes(data, size);
  constexpr std::int32_t kModes[] = {0, Vesk::kFixedColumns, Vesk::kTokens};
  const std::int32_t mode = kModes[bytes.below(3)];
  const std::string text = bytes.rest();

  const Reading whole = readAll(text, mode);
  for (const std::size_t piece : {std::size_t{1}, std::size_t{7}}) {
    checkSame(whole, readAll(std::make_unique<PieceSource>(text, piece), mode),
              "pieces of any size read the same");
  }

  if (whole.faults == 0 && mode != 0 && text.ends_with('\n')) {
    const Reading twice = readAll(text + text, mode);
    check(twice.faults == 0 && twice.elements == 2 * whole.elements &&
              twice.text == whole.text + whole.text,
          "a file behind itself reads as the sum", twice.report);
  }
  // Mode 2 keeps the points of an elbow, not its fields: rounded ones come back
  // within their last decimal.
  const bool hasElbow = mode == Vesk::kFixedColumns && whole.text.find("ELB") != text.npos;
  if (mode != 0 && !hasElbow && whole.elements > 0 && whole.unwritable == 0 &&
      VeskFuzz::isTame(whole.text) && VeskFuzz::isTame(whole.lines)) {
    const Reading again = readAll(whole.text, mode);
    check(again.text == whole.text, "what was read is written and read again",
          again.report + whole.text + "---\n" + again.text);
  }
  return 0;
}
