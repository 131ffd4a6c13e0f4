// SPDX-License-Identifier: MIT
#ifndef VESK_SIDECAR_SIDECAR_H
#define VESK_SIDECAR_SIDECAR_H

#include <cstdint>
#include <deque>
#include <istream>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_set>
#include <vector>

#include "sidecar/SidecarFormat.h"

namespace Vesk {

// What is known of one component beyond what fits into the header of its elements.
//
// The key is f1, f2, first and last: the component's elements are those whose header
// fields F1 and F2 are these (without trailing blanks) and whose counter F3 is first
// to last. No two rows of a file have an element in common.
struct SidecarRow {
  std::string f1;
  std::string f2;
  int first = 0;                    // 0 to 46655
  int last = 0;                     // first or more
  std::vector<std::string> values;  // one for each column behind the key
};

// Writes a sidecar: a CSV file in UTF-8 with LF, quoted as RFC 4180 says, one row for
// each component in the order of the record file, the names of the columns above.
//
//   f1,f2,first,last,pipeline,item-code
//   P-1001-8,01,1,1,P-1001-8"-A1A,"PIPE, 6"""
//
// A text that a spreadsheet would take for a formula gets an apostrophe in front,
// which the reader takes off again. Texts that are no UTF-8 are taken for Windows-1252.
class SidecarWriter {
 public:
  // `columns` are the names behind the key. The stream outlives the writer; whether
  // it took all is its owner's question.
  SidecarWriter(std::ostream& out, std::vector<std::string> columns);

  // Missing values are empty; more values than columns are dropped.
  void add(const SidecarRow& row);

 private:
  std::ostream& out_;
  std::vector<std::string> columns_;
  std::string line_;
};

// Reads one row after the other. The four columns of the key may stand anywhere, the
// names of the columns in any case; lines may end with CR LF, and a byte order mark is skipped.
class SidecarReader {
 public:
  // Reads the first line; see fault. The stream outlives the reader; `name` is for messages.
  SidecarReader(std::istream& in, std::string name);

  // The columns behind the key, in the order of the file.
  const std::vector<std::string>& columns() const { return columns_; }

  // The place of a column among them; -1 if there is none.
  int columnOf(std::string_view name) const;

  // False at the end and at a fault; nothing is read behind a fault.
  bool next(SidecarRow& row);

  // Why the file could not be read to its end, as "plant.attributes.csv:7: what was
  // found"; empty if it could.
  const std::string& fault() const { return fault_; }

  const std::string& name() const { return name_; }

  static constexpr std::size_t kLongestField = std::size_t{1} << 20;

 private:
  bool readRecord();
  bool readField(bool& isLast);
  int get();
  bool fail(std::string_view what);
  bool takeKey(SidecarRow& row);
  bool readNumber(std::size_t field, std::string_view column, int& number);

  std::istream& in_;
  std::string name_;
  std::string fault_;
  std::vector<std::string> columns_;
  std::vector<std::size_t> places_;     // of the columns among the fields
  std::size_t key_[kSidecarKeys] = {};  // of f1, f2, first, last
  std::size_t width_ = 0;               // fields in a row
  std::vector<std::string> fields_;     // of the record being read
  std::uint64_t line_ = 0;              // of its first byte
  std::uint64_t nextLine_ = 1;
};

// Finds the rows for the elements of a record file while both are read from their
// beginning to their end. Both have the same order, so that of the rows only those
// near the last one found are in memory: as many before and behind as the limits say.
//
//   SidecarReader reader(stream, name);
//   SidecarJoin join(reader);
//   ... for each element: if (const SidecarRow* row = join.find(f1, f2, counter)) use(*row);
//   join.finish();
class SidecarJoin {
 public:
  // The reader outlives it and is read by nobody else.
  explicit SidecarJoin(SidecarReader& reader) : reader_(reader) {}
  SidecarJoin(const SidecarJoin&) = delete;
  SidecarJoin& operator=(const SidecarJoin&) = delete;

  // The row of the element with these header fields (trailing blanks do not count);
  // null if there is none. Valid until the next call.
  const SidecarRow* find(std::string_view f1, std::string_view f2, int counter);

  // To be called behind the last element: reads the rows that are left.
  void finish();

  std::uint64_t rows() const { return rows_; }
  std::uint64_t rowsWithoutElements() const { return rowsWithoutElements_; }
  std::uint64_t elementsWithoutRows() const { return elementsWithoutRows_; }

  // How many of both belong together but stand farther apart than the limits: more than 0
  // says that the files have different orders. Counted as far as kMostRemembered goes.
  std::uint64_t outOfOrder() const { return outOfOrder_; }

  const SidecarReader& reader() const { return reader_; }

  static constexpr std::size_t kMostAhead = 16384;
  static constexpr std::size_t kMostBehind = 1024;
  static constexpr std::size_t kMostRemembered = 65536;

 private:
  struct Kept {
    SidecarRow row;
    std::uint64_t number = 0;
    bool isUsed = false;
  };
  using Key = std::tuple<std::string_view, std::string_view, int>;  // f1, f2, first

  bool readOne();
  void dropFirst();
  void remember(const SidecarRow& row);
  bool isMissed(const SidecarRow& row) const;
  Kept* keptOf(std::string_view f1, std::string_view f2, int counter);

  SidecarReader& reader_;
  std::deque<Kept> kept_;
  std::map<Key, Kept*> places_;
  std::uint64_t last_ = 0;  // the number of the last row found
  std::uint64_t rows_ = 0;
  std::uint64_t rowsWithoutElements_ = 0;
  std::uint64_t elementsWithoutRows_ = 0;
  std::uint64_t outOfOrder_ = 0;
  std::unordered_set<std::uint64_t> missed_;  // elements whose row had not come
  std::unordered_set<std::uint64_t> passed_;  // and rows whose elements had not
};

// The sidecar beside a record file: "plant.dat" gives "plant.attributes.csv", a name
// without ".dat" the name with that behind it.
std::string sidecarNameOf(std::string_view recordFile);

}  // namespace Vesk

#endif
