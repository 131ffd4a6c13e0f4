// SPDX-License-Identifier: MIT
#include "plain/PlainWriter.h"

#include "plain/PlainText.h"
#include "vesk/GeDirect.h"

using namespace Vesk;

namespace VeskBench {
namespace {

constexpr int kPointDecimals = 4;
constexpr int kValueDecimals = 6;

std::string padded(const std::string& text, std::size_t width) {
  std::string field = text.substr(0, width);
  field.resize(width, ' ');
  return field;
}

std::string base36(int n) {
  constexpr const char* kDigits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  std::string digits;
  for (const int place : {36 * 36, 36, 1}) digits += kDigits[n / place % 36];
  return digits;
}

}  // namespace

bool PlainWriter::open(const std::string& name, int mode) {
  close();
  file_ = std::fopen(name.c_str(), "wt");
  mode_ = mode;
  return file_ != nullptr;
}

void PlainWriter::close() {
  if (file_ != nullptr) std::fclose(file_);
  file_ = nullptr;
}

void PlainWriter::setHeader(const std::string& a, const std::string& b, int n) {
  a_ = padded(a, 8);
  b_ = padded(b, 2);
  n_ = base36(n);
}

void PlainWriter::begin() {
  lines_.clear();
  const std::string two = padded("", 2);
  const std::string four = padded("", 4);
  prefix_ = mode_ == 2 ? "60" + four + b_ + two + a_ + n_ : a_ + b_ + n_ + two + two + "00";
}

int PlainWriter::finish() {
  flushLine();
  for (const std::string& line : lines_) std::fprintf(file_, "%s\n", line.c_str());
  return static_cast<int>(lines_.size());
}

void PlainWriter::beginRecord(const std::string& word) {
  keyword_ = word;
  line_.clear();
  if (word == "TXT") prefix_[0] = '7';
  addText(prefix_);
  addText(keyword_);
}

void PlainWriter::addText(const std::string& text, bool comma) {
  std::string token = text;
  if (comma) token += ",";
  if (line_.size() + token.size() > (mode_ == 2 ? 256 : 512)) nextLine();
  line_ += token;
}

void PlainWriter::addNumber(double v) { addText(plainField9(v)); }

void PlainWriter::addFixed(double v, int decimals, bool comma, int width) {
  addText(plainFixed(v, decimals, width), comma);
}

void PlainWriter::nextLine() {
  flushLine();
  const std::size_t column = mode_ == 2 ? 0 : 17;
  const int number = std::stoi(prefix_.substr(column, 2)) + 1;
  std::string digits = number < 10 ? "0" : "";
  digits += std::to_string(number);
  prefix_ = prefix_.substr(0, column) + digits + prefix_.substr(column + 2);
  addText(prefix_);
  addText(keyword_);
}

void PlainWriter::startLine(const std::string& number) {
  flushLine();
  prefix_ = number + prefix_.substr(2);
  addText(prefix_);
  addText(keyword_);
}

void PlainWriter::flushLine() {
  if (!line_.empty()) lines_.push_back(line_);
  line_.clear();
}

void PlainWriter::writeRecord(const Cyl& cyl) {
  if (mode_ == 2) {
    beginRecord("CYL");
    addPoint9(cyl.origin);
    addPoint9(cyl.origin + cyl.axis);
    addNumber(cyl.diameter);
  } else {
    beginRecord("c ");
    addPoint(cyl.origin, kPointDecimals, true);
    addPoint(cyl.axis, kValueDecimals, true);
    addFixed(cyl.diameter, kValueDecimals, false);
  }
}

void PlainWriter::writeRecord(const Box& box) {
  if (mode_ == 2) {
    beginRecord("BOX");
    addPoint9(box.origin);
    addPoint9(box.origin + box.edge1);
    addPoint9(box.origin + box.edge2);
    addPoint9(box.origin + box.edge3);
  } else {
    beginRecord("b ");
    addPoint(box.edge1, kValueDecimals, true);
    addPoint(box.origin, kPointDecimals, true);
    addPoint(box.edge2, kValueDecimals, true);
    addPoint(box.edge3, kValueDecimals, false);
  }
}

void PlainWriter::writeRecord(const Relb& relb) {
  if (mode_ == 2) {
    const GeVector axis = GeDirect(cross(relb.startVector, relb.endVector)) * (relb.width / 2.0);
    const GePoint a = relb.centre + axis;
    beginRecord("ELB");
    addPoint9(a);
    addPoint9(relb.centre - axis);
    addPoint9(a + relb.startVector + GeDirect(relb.startVector) * relb.depth / 2.0);
    addPoint9(a + relb.endVector + GeDirect(relb.endVector) * relb.depth / 2.0);
    nextLine();
    addNumber(relb.startVector.length() - 0.5 * relb.depth);
  } else {
    beginRecord("e ");
    addPoint(relb.centre, kPointDecimals, true);
    addPoint(relb.startVector, kValueDecimals, true);
    addPoint(relb.endVector, kValueDecimals, true);
    addFixed(relb.depth, kValueDecimals, true);
    addFixed(relb.width, kValueDecimals, false);
  }
}

void PlainWriter::writeRecord(const Torus& torus) {
  if (mode_ == 2) {
    beginRecord("TOR");
    addPoint9(torus.centre);
    addPoint9(torus.centre + torus.startVector);
    addPoint9(torus.centre + torus.endVector);
    addNumber((torus.startVector.length() + torus.endVector.length()) / 2.0);
    addNumber(torus.diameter);
  } else {
    beginRecord("t ");
    addPoint(torus.centre, kPointDecimals, true);
    addPoint(torus.startVector, kValueDecimals, true);
    addPoint(torus.endVector, kValueDecimals, true);
    addFixed(torus.diameter, kValueDecimals, false);
  }
}

void PlainWriter::writeRecord(const Red& red) {
  if (mode_ == 2) {
    beginRecord("RED");
    for (int k = 0; k < 8; ++k) {
      if (k == 4) nextLine();
      addPoint9(red.corner(k));
    }
  } else {
    beginRecord("r ");
    addPoint(red.origin, kPointDecimals, true);
    for (const GeVector& v : red.cornerVectors) {
      addPoint(v, kValueDecimals, &v != &red.cornerVectors.back());
    }
  }
}

void PlainWriter::writeRecord(const Cone& cone) {
  if (mode_ == 2) {
    beginRecord("CON");
    addPoint9(cone.origin);
    addPoint9(cone.origin + cone.axis);
    addNumber(cone.diameter1);
    addNumber(cone.diameter2);
  } else {
    beginRecord("n ");
    addPoint(cone.origin, kPointDecimals, true);
    addPoint(cone.axis, kValueDecimals, true);
    addFixed(cone.diameter1, kValueDecimals, true);
    addFixed(cone.diameter2, kValueDecimals, false);
  }
}

void PlainWriter::writeRecord(const Pline& pline) {
  if (mode_ == 2) {
    beginRecord(pline.vertices.size() == 1 ? "PNT" : "SEG");
    for (const GePoint& vertex : pline.vertices) addPoint9(vertex);
    return;
  }
  beginRecord("l ");
  for (std::size_t i = 0; i < pline.vertices.size(); ++i) {
    const GeVector p = pline.vertices[i] - (i == 0 ? GePoint() : pline.vertices.front());
    addText("pt " + plainFixed(p.x, kPointDecimals) + " " + plainFixed(p.y, kPointDecimals) + " " +
                plainFixed(p.z, kPointDecimals),
            i + 1 < pline.vertices.size());
  }
}

void PlainWriter::writeRecord(const Pgon& pgon) {
  if (mode_ == 2) {
    beginRecord(pgon.vertices.size() == 3 ? "TRI" : "QUA");
    for (const PgonVertex& vertex : pgon.vertices) addPoint9(vertex.point);
    return;
  }
  beginRecord("g ");
  for (std::size_t i = 0; i < pgon.vertices.size(); ++i) {
    addText(i == 0 ? "pt " : ",");
    if (i > 0) addText("pt ");
    if (i == 0) addPoint(pgon.vertices[i].point, kPointDecimals, false);
    if (i > 0) addPoint(pgon.vertices[i].point - pgon.vertices[0].point, kValueDecimals, false);
  }
}

void PlainWriter::writeRecord(const Txt& txt) {
  const double alignment = txt.alignment + (txt.alignmentFlag != 0 ? 0.2 : 0.0);
  const double length = static_cast<double>(txt.text.size());
  if (mode_ == 2) {
    beginRecord("TXT");
    addPoint9(txt.position);
    addPoint9(txt.direction);
    addPoint9(txt.upDirection);
    addNumber(txt.height);
    addNumber(txt.charWidth);
    addNumber(alignment);
    startLine("71");
    startLine("72");
    addFixed(length, 0, false, 3);
  } else {
    beginRecord("x ");
    addPoint(txt.position, kPointDecimals, true);
    addPoint(txt.direction, kValueDecimals, true);
    addPoint(txt.upDirection, kValueDecimals, true);
    addFixed(txt.height, kValueDecimals, true);
    addFixed(txt.charWidth, kValueDecimals, true);
    addFixed(alignment, 0, true);
    addFixed(length, 0, false);
    nextLine();
  }
  addText(txt.text);
}

}  // namespace VeskBench
