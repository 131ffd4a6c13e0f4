// SPDX-License-Identifier: MIT
// Piping component files: any bytes, as one file and as two. Every component has one
// fate, every body is finite and has a size, no header is given twice, and the messages
// do not grow with the junk.
#include <cmath>
#include <set>
#include <string>
#include <tuple>

#include "Fuzz.h"
#include "pcf/Importer.h"
#include "vesk/Extents.h"

using VeskFuzz::check;

namespace {

class JudgingSink : public Vesk::Pcf::Sink {
 public:
  void begin(const Vesk::Pcf::LineHeader& header) override {
    const bool isNew = headers_.emplace(header.f1, header.f2, header.number).second;
    check(isNew, "no two components have the same header", header.f1 + header.f2);
    check(header.f1.size() <= 8 && header.f2.size() == 2, "a header fits", header.f1 + header.f2);
  }

  void put(const Vesk::Geo& geo) override {
    Vesk::Extents box;
    geo.addExtents(box);
    for (const double v : {box.min.x, box.min.y, box.min.z, box.max.x, box.max.y, box.max.z})
      check(std::isfinite(v), "what is drawn is finite");
    check(geo.checkSize() == 0, "what is drawn has a size");
  }

  void end(const Vesk::SidecarRow& row) override {
    check(row.first == row.last && row.first > 0, "a component has one counter", row.f1);
  }

 private:
  std::set<std::tuple<std::string, std::string, int>> headers_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  JudgingSink sink;
  Vesk::Pcf::Messages messages;
  Vesk::Pcf::Importer importer({}, sink, messages);
  importer.add("one.pcf", bytes);
  importer.add("two.pcf", bytes);
  std::uint64_t fates = 0;
  for (const Vesk::Pcf::Fate& fate : importer.fates()) fates += fate.count;
  check(fates == importer.components(), "every component has one fate");
  for (const Vesk::Pcf::Message& message : messages.all())
    check(message.places.size() <= 3 && message.count > 0, "few places of a message", message.text);
  return 0;
}
