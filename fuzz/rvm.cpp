// SPDX-License-Identifier: MIT
// The reader of review models and of their attributes: any bytes, also in pieces of
// 1 and 7; no header twice, no number that is not finite.
//
//   1 byte: bits 0 and 1 take obstructions and insulations, bit 2 makes the rest a
//   file of attributes, bit 3 fine; then the file
#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <string_view>

#include "Fuzz.h"
#include "rvm/ReviewFault.h"
#include "rvm/ReviewImport.h"

using VeskFuzz::check;

namespace {

Vesk::ReadBytes piecesOf(std::string_view text, std::size_t piece) {
  return [text, piece](char* buffer, std::size_t size) mutable {
    const std::size_t count = text.copy(buffer, std::min(size, piece));
    text.remove_prefix(count);
    return count;
  };
}

class Sink : public Vesk::ReviewSink {
 public:
  void element(const Vesk::ReviewHeader& header, const Vesk::Geo& geo) override {
    Vesk::Extents box;
    geo.addExtents(box);
    for (const double each : {box.min.x, box.min.y, box.min.z, box.max.x, box.max.y, box.max.z}) {
      check(std::isfinite(each), "numbers are finite");
    }
    check(header.f1.size() <= 8 && header.f2.size() == 2, "headers fit their fields");
    ++elements;
  }

  void shape(const Vesk::ReviewRow& row) override {
    const std::string header =
        row.header.f1 + '\n' + row.header.f2 + '\n' + std::to_string(row.header.number);
    check(headers.insert(header).second, "no header is given twice", header);
    check(row.outcome->deviation >= 0.0 && std::isfinite(row.outcome->volumeLost),
          "deviations and volumes are numbers");
    report += header + row.path + nameOf(row.outcome->fate) + row.outcome->reason;
  }

  std::size_t elements = 0;
  std::set<std::string> headers;
  std::string report;
};

std::string readModel(std::string_view text, std::size_t piece, int options) {
  Vesk::ReviewOptions chosen;
  chosen.obstructions = (options & 1) != 0;
  chosen.insulations = (options & 2) != 0;
  chosen.tolerance = (options & 8) != 0 ? 5.0 : 50.0;
  Vesk::ReviewAttributes attributes;
  Sink sink;
  Vesk::ReviewImport import(chosen, attributes, sink);
  try {
    import.read(piecesOf(text, piece));
  } catch (const Vesk::ReviewFault& fault) {
    sink.report += fault.what();
  }
  check(import.counts().elements == sink.elements, "the elements are counted");
  check(import.counts().shapes() == sink.headers.size(), "the shapes are counted");
  return sink.report;
}

std::string readAttributes(std::string_view text, std::size_t piece) {
  Vesk::ReviewAttributes attributes;
  std::string report;
  try {
    attributes.read(piecesOf(text, piece));
  } catch (const Vesk::ReviewFault& fault) {
    report = fault.what();
  }
  for (const std::string& key : attributes.keys()) report += key;
  return report + std::to_string(attributes.blockCount());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  VeskFuzz::Bytes bytes(data, size);
  const int options = bytes.byte();
  const std::string text = bytes.rest();
  const auto read = [&](std::size_t piece) {
    return (options & 4) != 0 ? readAttributes(text, piece) : readModel(text, piece, options);
  };
  const std::string whole = read(text.size() + 1);
  for (const std::size_t piece : {std::size_t{1}, std::size_t{7}}) {
    check(read(piece) == whole, "pieces of any size read the same");
  }
  return 0;
}
