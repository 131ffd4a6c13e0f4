// SPDX-License-Identifier: MIT
// prefix WHOLE CUT - whether CUT is WHOLE cut off somewhere, and reads like that:
// first the elements of WHOLE as far as they go, then, if CUT ends inside an
// element, a fault that says so, and nothing else.
//
// Prints "E elements, cut off" or "E elements" and ends with 0, else 1.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "vesk/RecordFile.h"

using Vesk::RecordFault;
using Vesk::RecordFile;

namespace {

std::string bytesOf(const char* name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

int fail(const std::string& message) {
  std::fprintf(stderr, "prefix: %s\n", message.c_str());
  return 1;
}

}  // namespace

int main(int count, char** names) {
  if (count != 3) return fail("expected two files");
  const std::string text = bytesOf(names[2]);
  if (!bytesOf(names[1]).starts_with(text)) return fail("the file has bytes of its own");
  const bool isCutOff = !text.empty() && text.back() != '\n';

  RecordFile whole(names[1]);
  RecordFile cut(names[2]);
  int elements = 0;
  RecordFile::Found found = cut.next();
  for (; found == RecordFile::Found::kElement; found = cut.next(), ++elements) {
    if (whole.next() != RecordFile::Found::kElement) return fail("the whole file has a fault");
    // Only the last element may lack lines.
    if (whole.lines() != cut.lines() && cut.element().offset + 600 < text.size())
      return fail("element " + std::to_string(elements + 1) + " differs");
  }
  if (found == RecordFile::Found::kFault) {
    const bool isLast = cut.fault().kind == RecordFault::Kind::kCutOff;
    if (!isLast) return fail(cut.textOf(cut.fault()));
    if (!isCutOff) return fail("cut off at the end of a line: " + cut.textOf(cut.fault()));
    found = cut.next();
  } else if (isCutOff) {
    return fail("the cut-off line was not reported");
  }
  if (found != RecordFile::Found::kEnd) return fail("something follows the end");
  if (!cut.error().empty()) return fail(cut.error());
  std::printf("%d elements%s\n", elements, isCutOff ? ", cut off" : "");
  return 0;
}
