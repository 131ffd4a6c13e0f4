// SPDX-License-Identifier: MIT
// Sidecars: any bytes. What is read of them is written, read and written again: the same bytes,
// no row less; the row that is found for an element is one of its own.
#include "sidecar/Sidecar.h"

#include <sstream>
#include <string>
#include <vector>

#include "Fuzz.h"

using VeskFuzz::check;

namespace {

struct Sidecar {
  std::vector<std::string> columns;
  std::vector<Vesk::SidecarRow> rows;
};

Sidecar readAll(const std::string& bytes, std::string& fault) {
  std::istringstream stream(bytes);
  Vesk::SidecarReader reader(stream, "in.csv");
  Sidecar all{reader.columns(), {}};
  for (Vesk::SidecarRow row; reader.next(row);) {
    check(row.values.size() == all.columns.size(), "a row has a value for each column", row.f1);
    check(row.first >= 0 && row.first <= row.last && row.last <= 46655, "counters are in order");
    all.rows.push_back(row);
  }
  fault = reader.fault();
  return all;
}

std::string written(const Sidecar& all) {
  std::ostringstream stream;
  Vesk::SidecarWriter writer(stream, all.columns);
  for (const Vesk::SidecarRow& row : all.rows) writer.add(row);
  return stream.str();
}

// The writer puts no row that it can't read.
void comesBack(const Sidecar& all) {
  const std::string once = written(all);
  std::string fault;
  const Sidecar again = readAll(once, fault);
  check(fault.empty(), "what is written is read", fault + '\n' + once);
  check(again.rows.size() == all.rows.size(), "no row is lost", once);
  check(written(again) == once, "written again it is the same", once);
}

void findsItsOwn(const Sidecar& all) {
  std::istringstream stream(written(all));
  Vesk::SidecarReader reader(stream, "in.csv");
  Vesk::SidecarJoin join(reader);
  for (const Vesk::SidecarRow& row : all.rows) {
    for (const int counter : {row.first, row.last}) {
      const Vesk::SidecarRow* found = join.find(row.f1, row.f2, counter);
      check(found == nullptr || (found->first <= counter && counter <= found->last),
            "what is found has the counter", row.f1);
    }
  }
  join.finish();
  check(join.rows() <= all.rows.size(), "no row is counted twice");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string fault;
  const Sidecar all = readAll(std::string(reinterpret_cast<const char*>(data), size), fault);
  check(fault.empty() || fault.starts_with("in.csv:"), "a fault has its place", fault);
  if (all.rows.empty()) return 0;
  comesBack(all);
  findsItsOwn(all);
  return 0;
}
