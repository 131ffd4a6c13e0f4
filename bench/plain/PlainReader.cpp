// SPDX-License-Identifier: MIT
#include "plain/PlainReader.h"

#include <cctype>
#include <cstdio>
#include <initializer_list>
#include <stdexcept>

#include "input/ElbowFit.h"
#include "input/ReaderFrame.h"

using namespace Vesk;

namespace VeskBench {
namespace {

// "12.5x" is not exactly one number.
double numberOf(const std::string& token) {
  double value = 0.0;
  char rest = 0;
  if (std::sscanf(token.c_str(), "%lf %c", &value, &rest) != 1) {
    throw std::runtime_error("can't get double from \"" + token + '"');
  }
  return value;
}

GeVector fromOrigin(const GePoint& p) { return p - GePoint(); }

}  // namespace

PlainReader::PlainReader(const std::string& name, int mode) : file_(name), mode_(mode) {
  hasAhead_ = static_cast<bool>(std::getline(file_, ahead_));
}

bool PlainReader::next() {
  lines_.clear();
  if (!hasAhead_) return false;
  do {
    lines_.push_back(ahead_);
    hasAhead_ = static_cast<bool>(std::getline(file_, ahead_));
  } while (hasAhead_ && !isFirst(ahead_));
  const std::string& first = lines_.front();
  a_ = first.substr(mode_ == 2 ? 10 : 0, 8);
  b_ = first.substr(mode_ == 2 ? 6 : 8, 2);
  n_ = first.substr(mode_ == 2 ? 18 : 10, 3);
  geo_ = readPrimitive();
  return true;
}

bool PlainReader::isFirst(const std::string& line) const {
  const std::string number = line.substr(mode_ == 2 ? 0 : 17, 2);
  return mode_ == 2 ? number == "60" || number == "70" : number == "00";
}

std::unique_ptr<Geo> PlainReader::readPrimitive() {
  delimiters_ = " ,";
  loadLine(0);
  const std::string word = line_.substr(mode_ == 2 ? 21 : 19, mode_ == 2 ? 3 : 2);
  std::unique_ptr<Geo> geo = mode_ == 2 ? readFixedColumns(word) : readTokens(word);
  if (geo == nullptr) throw std::runtime_error("unknown keyword \"" + word + '"');
  return geo;
}

std::unique_ptr<Geo> PlainReader::readFixedColumns(const std::string& word) {
  needLine(word == "TXT" ? "70" : "60");
  if (word == "CYL") {
    auto cyl = std::make_unique<Cyl>();
    cyl->origin = getPoint9();
    cyl->axis = vectorBetween(cyl->origin, getPoint9());
    cyl->diameter = getDouble9();
    return cyl;
  }
  if (word == "CON") {
    auto cone = std::make_unique<Cone>();
    cone->origin = getPoint9();
    cone->axis = vectorBetween(cone->origin, getPoint9());
    cone->diameter1 = getDouble9();
    cone->diameter2 = getDouble9();
    return cone;
  }
  if (word == "BOX") {
    auto box = std::make_unique<Box>();
    box->origin = getPoint9();
    for (GeVector* edge : {&box->edge1, &box->edge2, &box->edge3}) {
      *edge = vectorBetween(box->origin, getPoint9());
    }
    return box;
  }
  if (word == "TOR") {
    auto torus = std::make_unique<Torus>();
    torus->centre = getPoint9();
    torus->startVector = vectorBetween(torus->centre, getPoint9());
    torus->endVector = vectorBetween(torus->centre, getPoint9());
    torus->bendRadius = getDouble9();
    torus->diameter = getDouble9();
    return torus;
  }
  if (word == "ELB") {
    ElbowCorners corners;
    for (GePoint* p : {&corners.a, &corners.b, &corners.c, &corners.e}) *p = getPoint9();
    needLine("61");
    corners.innerRadius = getDouble9();
    return std::make_unique<Relb>(fitElbow(corners));
  }
  if (word == "RED") {
    auto red = std::make_unique<Red>();
    red->origin = getPoint9();
    for (std::size_t k = 0; k < 7; ++k) {
      if (k == 3) needLine("61");
      red->cornerVectors[k] = vectorBetween(red->origin, getPoint9());
    }
    return red;
  }
  if (word == "PNT" || word == "SEG") {
    auto pline = std::make_unique<Pline>();
    for (int i = 0; i < (word == "PNT" ? 1 : 2); ++i) pline->vertices.push_back(getPoint9());
    return pline;
  }
  if (word == "TRI" || word == "QUA") {
    auto pgon = std::make_unique<Pgon>();
    for (int i = 0; i < (word == "TRI" ? 3 : 4); ++i) pgon->addVertex(getPoint9());
    return pgon;
  }
  if (word == "TXT") {
    auto txt = std::make_unique<Txt>();
    txt->position = getPoint9();
    txt->direction = fromOrigin(getPoint9());
    txt->upDirection = fromOrigin(getPoint9());
    txt->height = getDouble9();
    txt->charWidth = getDouble9();
    const double alignment = getDouble9();
    txt->alignment = static_cast<int>(alignment);
    txt->alignmentFlag = alignment - txt->alignment > 0.0 ? 1 : 0;
    needLine("72");
    getFixedString(3);  // the length
    delimiters_.clear();
    txt->text = getToken();
    return txt;
  }
  return nullptr;
}

std::unique_ptr<Geo> PlainReader::readTokens(const std::string& word) {
  if (word == "c ") {
    auto cyl = std::make_unique<Cyl>();
    cyl->origin = getPoint();
    cyl->axis = getVector();
    cyl->diameter = getDouble();
    return cyl;
  }
  if (word == "n ") {
    auto cone = std::make_unique<Cone>();
    cone->origin = getPoint();
    cone->axis = getVector();
    cone->diameter1 = getDouble();
    cone->diameter2 = getDouble();
    return cone;
  }
  if (word == "b ") {
    auto box = std::make_unique<Box>();
    box->edge1 = getVector();
    box->origin = getPoint();
    box->edge2 = getVector();
    box->edge3 = getVector();
    return box;
  }
  if (word == "t ") {
    auto torus = std::make_unique<Torus>();
    torus->centre = getPoint();
    torus->startVector = getVector();
    torus->endVector = getVector();
    torus->diameter = getDouble();
    torus->bendRadius = -1.0;
    return torus;
  }
  if (word == "e ") {
    auto relb = std::make_unique<Relb>();
    relb->centre = getPoint();
    relb->startVector = getVector();
    relb->endVector = getVector();
    relb->depth = getDouble();
    relb->width = getDouble();
    return relb;
  }
  if (word == "r ") {
    auto red = std::make_unique<Red>();
    red->origin = getPoint();
    for (GeVector& v : red->cornerVectors) v = getVector();
    return red;
  }
  if (word == "l ") {
    auto pline = std::make_unique<Pline>();
    pline->vertices = readItems();
    return pline;
  }
  if (word == "g ") {
    auto pgon = std::make_unique<Pgon>();
    for (const GePoint& p : readItems()) pgon->addVertex(p);
    return pgon;
  }
  if (word == "x ") {
    auto txt = std::make_unique<Txt>();
    txt->position = getPoint();
    txt->direction = getVector();
    txt->upDirection = getVector();
    txt->height = getDouble();
    txt->charWidth = getDouble();
    txt->alignment = static_cast<int>(getDouble());
    getDouble();  // the length; goes on to the line of the text
    delimiters_.clear();
    txt->text = getToken();
    return txt;
  }
  return nullptr;
}

// The vertices of a polyline or polygon: all but the first are relative to it.
std::vector<GePoint> PlainReader::readItems() {
  std::vector<GePoint> points;
  for (;;) {
    delimiters_ = " ,";
    skipChars(" ,");
    if (atEnd()) return points;
    const std::string tag = peekToken();
    if (tag != "pt") throw std::runtime_error("unknown identifier \"" + tag + '"');
    getFixedString(2);
    const GeVector v = getVector();
    points.push_back(points.empty() ? GePoint(v) : pointAt(points.front(), v));
  }
}

bool PlainReader::loadLine(std::size_t index) {
  if (index >= lines_.size()) {
    cursor_ = line_.size();
    return false;
  }
  lineIndex_ = index;
  line_ = lines_[index];
  cursor_ = mode_ == 2 ? 24 : 21;
  skipAttributes();
  return true;
}

bool PlainReader::atEnd() {
  while (cursor_ >= line_.size()) {
    if (!nextLine()) return true;
  }
  return false;
}

void PlainReader::needLine(const std::string& number) {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (lines_[i].substr(0, 2) != number) continue;
    loadLine(i);
    return;
  }
  throw std::runtime_error("line \"" + number + "\" not found");
}

void PlainReader::skipChars(const std::string& set) {
  while (!atEnd() && set.find(line_[cursor_]) != std::string::npos) ++cursor_;
}

void PlainReader::skipAttributes() {
  if (mode_ != 3) return;
  const std::string delimiters = delimiters_;
  while (atNonDigit()) {
    delimiters_ = ",";
    skipChars(" ");
    const std::string token = peekToken();
    if (token.substr(0, 2) != "cs" && token.substr(0, 2) != "sp") break;
    getToken();
    if (cursor_ < line_.size() && line_[cursor_] == ',') ++cursor_;
  }
  delimiters_ = delimiters;
}

bool PlainReader::atNonDigit() {
  skipChars(" ");
  return !atEnd() && std::isdigit(static_cast<unsigned char>(line_[cursor_])) == 0;
}

std::string PlainReader::peekToken() {
  if (atEnd()) return "";
  return line_.substr(cursor_, line_.find_first_of(delimiters_, cursor_) - cursor_);
}

std::string PlainReader::getToken() {
  if (atEnd()) throw std::runtime_error("can't get string value");
  std::string token = peekToken();
  cursor_ += token.size();
  return token;
}

std::string PlainReader::getFixedString(std::size_t length) {
  if (atEnd()) return "";
  std::string text = line_.substr(cursor_, length);
  cursor_ += text.size();
  return text;
}

double PlainReader::getDouble() {
  skipChars(" ");
  const std::string token = getToken();
  skipChars(delimiters_);
  return numberOf(token);
}

double PlainReader::getDouble9() { return numberOf(getFixedString(9)); }

GePoint PlainReader::getPoint() {
  skipChars(" ");
  delimiters_ = " ";
  GePoint p;
  p.x = getDouble();
  p.y = getDouble();
  delimiters_ = ",";
  p.z = getDouble();
  return p;
}

GePoint PlainReader::getPoint9() {
  GePoint p;
  p.x = getDouble9();
  p.y = getDouble9();
  p.z = getDouble9();
  return p;
}

GeVector PlainReader::getVector() { return fromOrigin(getPoint()); }

}  // namespace VeskBench
