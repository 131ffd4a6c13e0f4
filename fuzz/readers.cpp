// SPDX-License-Identifier: MIT
// One reader: what it takes is written, read and written again, and stays the
// same; what it refuses it refuses with its own exception.
//
//   1 byte the kind and the style, then the lines
#include <algorithm>
#include <memory>
#include <string>

#include "Fuzz.h"
#include "Records.h"
#include "input/Input.h"
#include "input/RecordHeading.h"
#include "vesk/ExceptionInfo.h"
#include "vesk/Relb.h"

using VeskFuzz::check;
using VeskFuzz::linesOf;

namespace {

// Null if the reader refuses the lines.
std::unique_ptr<Vesk::Geo> readFrom(const Vesk::Recs& lines, std::int32_t code, std::int32_t mode) {
  Vesk::Input in(lines, mode);
  std::unique_ptr<Vesk::Geo> geo = Vesk::makeGeo(code);
  try {
    check(geo->read(in) == 0, "reading gives 0");
  } catch (const Vesk::ExceptionInfo& e) {
    check(e.level == Vesk::ExceptionInfo::kFatal || e.level == Vesk::ExceptionInfo::kUnknownTag,
          "a level");
    check(e.message.find(", primitive ") != e.message.npos, "the primitive is named", e.message);
    return nullptr;
  }
  return geo;
}

// Empty if the primitive can't be written.
Vesk::Recs write(const Vesk::Geo& geo, std::int32_t mode) {
  Vesk::Output out;
  out.mode = mode;
  out.lineSize = mode == Vesk::kTokens ? Vesk::kTokensLineSize : Vesk::kFixedColumnsLineSize;
  out.prefix = mode == Vesk::kTokens ? "AAAAAAAABB00ADDEE00" : "60CSCSBBDDAAAAAAAA00A";
  try {
    geo.write(out);
    out.flushLine();
  } catch (const Vesk::TovException&) {
    return {};
  }
  return out.recs;
}

std::string joined(const Vesk::Recs& lines) {
  std::string text;
  for (const std::string& line : lines)
    text += line.substr(std::min<std::size_t>(line.size(), 22)) + '\n';
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  VeskFuzz::Bytes bytes(data, size);
  const int choice = bytes.byte();
  const std::int32_t code = 1 + choice / 2 % 9;
  const std::int32_t mode = choice % 2 == 0 ? Vesk::kFixedColumns : Vesk::kTokens;
  const std::unique_ptr<Vesk::Geo> geo = readFrom(linesOf(bytes.rest()), code, mode);
  if (geo == nullptr) return 0;

  const Vesk::Recs first = write(*geo, mode);
  if (first.empty() || !VeskFuzz::isTame(joined(first))) return 0;
  // Mode 2 keeps the points of an elbow, not its fields: rounded ones come back
  // within their last decimal.
  if (mode == Vesk::kFixedColumns && code == Vesk::Relb::kTypeCode) return 0;
  // A polygon of more than four corners becomes several records in mode 2.
  if (mode == Vesk::kFixedColumns && geo->pieceCount() > 1) return 0;
  const std::unique_ptr<Vesk::Geo> again = readFrom(first, code, mode);
  check(again != nullptr, "what was written can be read", joined(first));
  check(write(*again, mode) == first, "what was read is written the same",
        joined(first) + "---\n" + joined(write(*again, mode)));
  return 0;
}
