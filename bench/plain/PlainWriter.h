// SPDX-License-Identifier: MIT
#ifndef VESK_BENCH_PLAIN_PLAINWRITER_H
#define VESK_BENCH_PLAIN_PLAINWRITER_H

#include <cstdio>
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

// The way of an element from the call to the file as one writes it without a
// thought for speed: a string for each token, the C library's formatted print
// for each number, a string on the heap for each line, a formatted print for
// each line. It knows the eleven elements of the exports in both modes, with
// their continuation lines, and writes the same bytes as the library.
class PlainWriter {
 public:
  ~PlainWriter() { close(); }

  bool open(const std::string& name, int mode);
  void close();
  void setHeader(const std::string& a, const std::string& b, int n);

  // Writes a copy of the primitive; returns the number of lines.
  template <class Primitive>
  int write(const Primitive& primitive) {
    element_ = std::make_unique<Primitive>(primitive);
    begin();
    writeRecord(static_cast<const Primitive&>(*element_));
    return finish();
  }

 private:
  void begin();
  int finish();

  void beginRecord(const std::string& word);
  void addText(const std::string& text, bool comma = false);
  void addNumber(double v);
  void addFixed(double v, int decimals, bool comma, int width = 0);
  void nextLine();
  void startLine(const std::string& number);
  void flushLine();

  template <class Point>
  void addPoint(const Point& p, int decimals, bool comma) {
    addFixed(p.x, decimals, false);
    addText(" ");
    addFixed(p.y, decimals, false);
    addText(" ");
    addFixed(p.z, decimals, comma);
  }

  template <class Point>
  void addPoint9(const Point& p) {
    addNumber(p.x);
    addNumber(p.y);
    addNumber(p.z);
  }

  void writeRecord(const Vesk::Cyl& cyl);
  void writeRecord(const Vesk::Box& box);
  void writeRecord(const Vesk::Relb& relb);
  void writeRecord(const Vesk::Torus& torus);
  void writeRecord(const Vesk::Red& red);
  void writeRecord(const Vesk::Cone& cone);
  void writeRecord(const Vesk::Pline& pline);
  void writeRecord(const Vesk::Pgon& pgon);
  void writeRecord(const Vesk::Txt& txt);

  std::FILE* file_ = nullptr;
  int mode_ = 0;
  std::string a_ = std::string(8, ' ');
  std::string b_ = std::string(2, ' ');
  std::string n_ = std::string(3, ' ');
  std::unique_ptr<Vesk::Geo> element_;
  std::string prefix_;
  std::string keyword_;
  std::string line_;
  std::vector<std::string> lines_;
};

}  // namespace VeskBench

#endif
