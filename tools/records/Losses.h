// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_RECORDS_LOSSES_H
#define VESK_TOOLS_RECORDS_LOSSES_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "findings/Findings.h"
#include "terminal/Session.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

// Says what is lost: each value while there are few of them, all by their counts.
class LossReport {
 public:
  // The session outlives it; 0 for `limit` names all.
  LossReport(Session& session, std::uint64_t limit) : session_(session), limit_(limit) {}

  void add(Finding finding, const std::string& file, const Vesk::RecordElement& element);

  // To be called once, behind the last.
  void sum();

  // Whether anything but decimals was lost.
  bool isHarmful() const;

 private:
  Session& session_;
  std::uint64_t limit_;
  std::uint64_t said_ = 0;
  std::map<std::string, std::uint64_t> counts_;
};

// What reading alone has moved: no duct elbow has the points of this record. The
// element is the one that the file is at.
std::optional<Finding> movedByReading(const Vesk::RecordFile& records, const Vesk::Geo& geo);

}  // namespace VeskTool

#endif
