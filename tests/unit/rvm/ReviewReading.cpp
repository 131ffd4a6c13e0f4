// SPDX-License-Identifier: MIT
#include "rvm/ReviewReading.h"

#include <algorithm>
#include <cmath>

#include "api/ElementHolder.h"
#include "rvm/ReviewFault.h"
#include "vesk/Pgon.h"

namespace VeskTest {
namespace {

class Sink : public Vesk::ReviewSink {
 public:
  Sink(ReviewReading& to, const Vesk::ReviewAttributes& attributes)
      : to_(to), attributes_(attributes) {
    out_.mode = Vesk::kTokens;
  }

  void element(const Vesk::ReviewHeader& header, const Vesk::Geo& geo) override {
    holder_.setElement(geo);
    out_.clear();
    holder_.writeRecords(out_);
    out_.flushLine();
    std::string text;
    for (const std::string& line : out_.recs) text += line.substr(19);
    to_.elements.push_back(text);
    to_.headers.push_back(header.f1 + ' ' + header.f2 + ' ' + std::to_string(header.number));
    to_.volume += std::fabs(geo.volume());
    geo.addExtents(to_.box);
    if (const auto* face = dynamic_cast<const Vesk::Pgon*>(&geo)) {
      GeVector area;
      for (std::size_t i = 2; i < face->vertices.size(); ++i) {
        area += cross(face->point(i - 1) - face->point(0), face->point(i) - face->point(0)) * 0.5;
      }
      to_.area += area.length();
    }
  }

  void shape(const Vesk::ReviewRow& row) override {
    to_.rows.push_back(row.header.f1 + ' ' + row.header.f2 + ' ' +
                       std::to_string(row.header.number) + ' ' + row.path + ' ' +
                       nameOf(row.shape->kind) + ' ' + nameOf(row.outcome->fate) + ' ' +
                       std::to_string(row.outcome->elements));
    std::string values;
    if (row.values != nullptr) {
      for (const auto& [key, value] : *row.values) {
        values += (values.empty() ? "" : " ") + attributes_.keys()[key] + '=' + value;
      }
    }
    to_.values.push_back(values);
  }

 private:
  ReviewReading& to_;
  const Vesk::ReviewAttributes& attributes_;
  Vesk::ElementHolder holder_;
  Vesk::Output out_;
};

}  // namespace

std::string ReviewReading::lines() const {
  std::string text;
  for (const std::string& each : elements) text += each + '\n';
  return text;
}

Vesk::ReadBytes bytesOf(std::string_view text, std::size_t piece) {
  return [text, piece](char* buffer, std::size_t size) mutable {
    const std::size_t count = text.copy(buffer, std::min(size, piece));
    text.remove_prefix(count);
    return count;
  };
}

ReviewReading readReviewText(std::string_view bytes, const Vesk::ReviewOptions& options,
                             std::string_view attributes, std::size_t piece) {
  ReviewReading reading;
  Vesk::ReviewAttributes blocks;
  Sink sink(reading, blocks);
  try {
    if (!attributes.empty()) blocks.read(bytesOf(attributes, piece));
    Vesk::ReviewImport import(options, blocks, sink);
    try {
      import.read(bytesOf(bytes, piece));
    } catch (const Vesk::ReviewFault& fault) {
      reading.fault = fault.what();
    }
    reading.counts = import.counts();
  } catch (const Vesk::ReviewFault& fault) {
    reading.fault = fault.what();
  }
  return reading;
}

}  // namespace VeskTest
