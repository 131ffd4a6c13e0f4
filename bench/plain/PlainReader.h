// SPDX-License-Identifier: MIT
#ifndef VESK_BENCH_PLAIN_PLAINREADER_H
#define VESK_BENCH_PLAIN_PLAINREADER_H

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

namespace VeskBench {

// Reads a record file as one writes it without a thought for speed: lines by
// std::getline, a copy of each line and a string for each token, sscanf for each
// number. It knows what PlainWriter writes and reads the same elements from it
// as RecordFile; anything else throws std::runtime_error. It looks for no damage
// and keeps no places.
class PlainReader {
 public:
  PlainReader(const std::string& name, int mode);

  // Goes to the next element; false at the end.
  bool next();

  // Valid until next.
  const Vesk::Geo& geo() const { return *geo_; }
  const std::string& a() const { return a_; }  // the header's fields
  const std::string& b() const { return b_; }
  const std::string& n() const { return n_; }

 private:
  bool isFirst(const std::string& line) const;
  std::unique_ptr<Vesk::Geo> readPrimitive();
  std::unique_ptr<Vesk::Geo> readFixedColumns(const std::string& word);
  std::unique_ptr<Vesk::Geo> readTokens(const std::string& word);

  bool loadLine(std::size_t index);
  bool nextLine() { return loadLine(lineIndex_ + 1); }
  bool atEnd();
  void needLine(const std::string& number);
  void skipChars(const std::string& set);
  void skipAttributes();
  bool atNonDigit();
  std::string peekToken();
  std::string getToken();
  std::string getFixedString(std::size_t length);
  double getDouble();
  double getDouble9();
  GePoint getPoint();
  GePoint getPoint9();
  GeVector getVector();
  std::vector<GePoint> readItems();

  std::ifstream file_;
  int mode_;
  std::string ahead_;  // the line behind the element
  bool hasAhead_;
  std::string a_;
  std::string b_;
  std::string n_;
  std::unique_ptr<Vesk::Geo> geo_;

  std::vector<std::string> lines_;  // of the element
  std::size_t lineIndex_ = 0;
  std::string line_;
  std::size_t cursor_ = 0;
  std::string delimiters_;
};

}  // namespace VeskBench

#endif
