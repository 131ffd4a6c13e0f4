// SPDX-License-Identifier: MIT
#include "records/Losses.h"

#include <utility>

#include "elements/Kinds.h"
#include "findings/Catalogue.h"
#include "input/ElbowFit.h"
#include "input/Input.h"
#include "output/RecordLayout.h"
#include "text/Numbers.h"
#include "vesk/Relb.h"
#include "vesk/TovException.h"

namespace VeskTool {
namespace {

constexpr std::string_view kHarmless = "V302";  // decimals

}  // namespace

void LossReport::add(Finding finding, const std::string& file, const Vesk::RecordElement& element) {
  ++counts_[std::string(finding.code)];
  if (limit_ != 0 && ++said_ > limit_) return;
  finding.file = file;
  finding.line = element.firstLine;
  finding.message = std::string(wordOf(kindOf(*element.geo))) + ": " + finding.message;
  session_.print(finding);
}

void LossReport::sum() {
  std::string text;
  for (const auto& [code, count] : counts_) {
    text += "vesk: " + grouped(count) + " times [" + code + "] " +
            std::string(findCode(code)->title) + '\n';
  }
  if (limit_ != 0 && said_ > limit_) {
    text += "vesk: " + grouped(said_ - limit_) + " of them not shown; --limit 0 shows all\n";
  }
  if (!text.empty()) session_.remark(text);
}

bool LossReport::isHarmful() const {
  return counts_.size() > 1 || (counts_.size() == 1 && counts_.begin()->first != kHarmless);
}

std::optional<Finding> movedByReading(const Vesk::RecordFile& records, const Vesk::Geo& geo) {
  if (records.mode() != Vesk::kFixedColumns || geo.typeCode() != Vesk::Relb::kTypeCode) return {};
  const auto& relb = static_cast<const Vesk::Relb&>(geo);
  Vesk::Input in(records.lines(), records.mode());
  in.startAt(static_cast<std::uint32_t>(Vesk::kFixedColumnsLayout.data));
  const Vesk::ElbowCorners corners = Vesk::readCorners(in);
  if (Vesk::writesCorners(relb, corners)) return {};
  Finding finding;
  finding.code = "V312";
  finding.severity = Severity::kWarning;
  finding.message = "its points are out of square and move";
  try {
    finding.message += " by up to " + rounded(Vesk::stepOf(relb, corners), 4);
  } catch (const Vesk::TovException&) {
    // Without a plane it has no points.
  }
  return finding;
}

}  // namespace VeskTool
