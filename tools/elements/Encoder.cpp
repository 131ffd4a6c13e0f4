// SPDX-License-Identifier: MIT
#include "elements/Encoder.h"

#include <algorithm>
#include <cmath>

#include "elements/Describe.h"
#include "input/RecordHeading.h"
#include "output/NumberText.h"
#include "output/RecordLayout.h"
#include "prims/TagLines.h"
#include "prims/Visit.h"
#include "text/Numbers.h"
#include "vesk/ExceptionInfo.h"
#include "vesk/TovException.h"

namespace VeskTool {
namespace {

using Vesk::Value;

double largest(const GePoint& p) {
  return std::max({std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
}

// The largest size of a number of the element.
double reachOf(const std::vector<Property>& properties) {
  double reach = 0.0;
  for (const Property& property : properties) reach = std::max(reach, largest(property.value));
  return reach;
}

// The unit of the last digit of a number in nine characters.
double lastDigitOf(double value) {
  std::string text;
  Vesk::appendField9(text, value);
  const std::size_t e = std::min(text.find('e'), text.size());
  const std::size_t point = text.find('.');
  const double decimals = point < e ? static_cast<double>(e - point - 1) : 0.0;
  double exponent = 0.0;
  if (e < text.size()) readNumber(std::string_view(text).substr(e + 1), exponent);
  return std::pow(10.0, exponent - decimals);
}

// Whether it has more vertices than one record of columns; one for each class.
struct IsInPieces {
  bool operator()(const Vesk::Pline& pline) const { return pline.vertices.size() > 2; }
  bool operator()(const Vesk::Pgon& pgon) const { return pgon.vertices.size() > 4; }
  bool operator()(const Vesk::Cyl&) const { return false; }
  bool operator()(const Vesk::Box&) const { return false; }
  bool operator()(const Vesk::Relb&) const { return false; }
  bool operator()(const Vesk::Torus&) const { return false; }
  bool operator()(const Vesk::Red&) const { return false; }
  bool operator()(const Vesk::Cone&) const { return false; }
  bool operator()(const Vesk::Txt&) const { return false; }
};

// Whether the style writes the element in pieces.
bool isInPieces(const Vesk::Geo& geo, int mode) {
  return mode == Vesk::kFixedColumns && Vesk::visit(geo, IsInPieces(), [] { return false; });
}

std::string_view codeOfMissing(Value id) {
  if (id == Value::kArc) return "V304";
  if (id == Value::kFlag) return "V305";
  if (id == Value::kBendRadius) return "V306";
  if (id == Value::kPointSize || id == Value::kPointDirection) return "V303";
  return id == Value::kMark || id == Value::kTag ? "V310" : "V302";
}

bool differs(const Property& a, const Property& b, double tolerance) {
  if (a.text != b.text) return true;
  const GeVector d = a.value - b.value;
  return !(std::max({std::fabs(d.x), std::fabs(d.y), std::fabs(d.z)}) <= tolerance);
}

bool isFinite(const std::vector<Property>& properties) {
  return std::all_of(properties.begin(), properties.end(), [](const Property& each) {
    return std::isfinite(each.value.x) && std::isfinite(each.value.y) &&
           std::isfinite(each.value.z);
  });
}

}  // namespace

Encoder::Encoder(int mode) : mode_(mode), geos_(Vesk::kLastTypeCode + 1) { out_.setStyle(mode); }

void Encoder::lose(std::string_view code, std::string message) {
  Finding& finding = losses_.emplace_back();
  finding.code = code;
  finding.severity = Severity::kWarning;
  finding.message = std::move(message);
}

bool Encoder::encode(const Vesk::RecordElement& element) {
  losses_.clear();
  const Vesk::Geo& geo = *element.geo;
  static_cast<Vesk::HeaderFields&>(holder_.header) = element.header;
  holder_.ft = element.ft;
  holder_.tk = element.tk;
  holder_.setElement(geo);
  out_.counter = 0;
  out_.clear();
  if (!isFinite(propertiesOf(geo))) {
    lose("V309", "element not written: a number is infinite or NaN");
    return false;
  }
  try {
    holder_.writeRecords(out_);
    out_.flushLine();
  } catch (const Vesk::ExceptionInfo& e) {
    lose("V309", "element not written: " + e.message);
    return false;
  } catch (const Vesk::TovException&) {
    lose("V309", "element not written: its bend has no plane");
    return false;
  }
  records_ = static_cast<std::size_t>(std::count_if(
      out_.recs.begin(), out_.recs.end(),
      [&](const std::string& line) { return Vesk::kindOfFirstLine(line, mode_) != nullptr; }));
  if (!checkWidths(geo)) return false;
  compareHeader(element);
  try {
    compareValues(geo);
  } catch (const Vesk::TovException&) {
    lose("V309", "element not written: it could not be read again");
    return false;
  }
  return true;
}

double Encoder::toleranceOf(const Vesk::Geo& geo) const {
  // A far end may lie beyond every number of the element.
  const double reach = 4.0 * reachOf(propertiesOf(geo));
  if (mode_ == Vesk::kTokens) return 2e-4 + reach * 1e-14;
  return 2.0 * std::max(lastDigitOf(reach), lastDigitOf(-reach));
}

// A number of ten characters moves all behind it.
bool Encoder::checkWidths(const Vesk::Geo& geo) {
  if (mode_ != Vesk::kFixedColumns) return true;
  bool good = true;
  for (const std::string& line : out_.recs) {
    const std::string_view data =
        std::string_view(line).substr(std::min(line.size(), Vesk::kFixedColumnsLayout.data));
    if (data.starts_with(Vesk::TagWords::kOpening)) continue;
    if (line.starts_with(Vesk::LineNumbers::kTextThird) && geo.typeCode() == Vesk::Txt::kTypeCode)
      continue;
    good = good && data.size() % Vesk::kNumberFieldWidth == 0;
  }
  if (good) return true;
  const auto tooWide = [](double v) {
    std::string text;
    Vesk::appendField9(text, v);
    return text.size() > Vesk::kNumberFieldWidth;
  };
  std::string names;
  for (const Property& each : propertiesOf(geo)) {
    if (tooWide(each.value.x) || tooWide(each.value.y) || tooWide(each.value.z)) {
      names += (names.empty() ? "" : ", ") + each.name + ' ' + valueText(each);
    }
  }
  lose("V301",
       "element not written: a number needs ten characters" + (names.empty() ? "" : ": " + names));
  return false;
}

void Encoder::compareHeader(const Vesk::RecordElement& element) {
  if (mode_ != Vesk::kFixedColumns) return;
  const auto check = [this](const char* name, const std::string& value) {
    if (!value.empty()) lose("V308", std::string(name) + " \"" + value + "\" is lost");
  };
  check("F5", trimmedField(element.header.f5));
  check("F7", trimmedField(element.header.f7));
  if (element.ft) check("ft", std::to_string(*element.ft));
  if (element.tk) check("tk", std::to_string(*element.tk));
}

void Encoder::compareValues(const Vesk::Geo& geo) {
  const std::vector<Property> before = propertiesOf(geo);
  const double rounding = std::max(1e-9, 1e-14 * reachOf(before));
  std::vector<Property> after;
  if (isInPieces(geo, mode_)) {
    lose("V307", "becomes " + std::to_string(records_) + " records");
    // The pieces hold the vertices as they are here, each number in its field.
    for (const Property& each : before) {
      if (each.type != Property::Type::kPoint) continue;
      double v[3] = {each.value.x, each.value.y, each.value.z};
      for (double& number : v) {
        std::string text;
        Vesk::appendField9(text, number);
        readNumber(std::string_view(text).substr(text.find_first_not_of(' ')), number);
      }
      after.push_back({each.id, each.index, each.name, each.type, {v[0], v[1], v[2]}, {}});
    }
  } else {
    std::unique_ptr<Vesk::Geo>& copy = geos_[static_cast<std::size_t>(geo.typeCode())];
    if (copy == nullptr) copy = Vesk::makeGeo(geo.typeCode());
    in_.recs = out_.recs;
    in_.mode = mode_;
    in_.rewind();
    copy->read(in_);
    after = propertiesOf(*copy);
  }
  for (const Property& each : before) {
    const Property* found = findValue(after, each);
    if (found == nullptr) {
      // The mean of the vectors stands for it.
      if (each.id == Value::kBendRadius) {
        const auto& torus = static_cast<const Vesk::Torus&>(geo);
        const double mean = (torus.startVector.length() + torus.endVector.length()) / 2.0;
        if (std::fabs(mean - each.value.x) <= 0.001) continue;
      }
      lose(codeOfMissing(each.id), each.name + ' ' + valueText(each) + " is lost");
    } else if (differs(each, *found, rounding)) {
      const bool isText = each.type == Property::Type::kText;
      lose(isText ? codeOfMissing(each.id) : "V302",
           each.name + ' ' + valueText(each) + " becomes " + valueText(*found));
    }
  }
}

}  // namespace VeskTool
