// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CHECK_FILECHECK_H
#define VESK_TOOLS_CHECK_FILECHECK_H

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "check/Duplicates.h"
#include "check/ElementFault.h"
#include "check/Joints.h"
#include "check/LineRules.h"
#include "check/Supports.h"
#include "files/SidecarFile.h"
#include "findings/Findings.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

struct CheckOptions {
  std::vector<std::string> only;     // codes, or what they begin with; empty: all
  std::vector<std::string> ignore;   // the same
  Severity level = Severity::kNote;  // the least severe that counts
  std::uint64_t most = 0;            // findings of each code that are told; 0: all
  bool joints = false;

  // Whether the element's findings count; null: those of all do. What can't be read
  // counts always, and a joint if one of its two elements does.
  std::function<bool(const Vesk::RecordElement&)> takes;
  JointOptions joint;

  bool wants(std::string_view code) const {
    const auto fits = [code](const std::string& each) { return code.starts_with(each); };
    return (only.empty() || std::any_of(only.begin(), only.end(), fits)) &&
           std::none_of(ignore.begin(), ignore.end(), fits);
  }
};

// What was found in a file, told or not.
struct CheckCounts {
  int mode = 0;                // of all elements, or kMixedStyle
  std::uint64_t elements = 0;  // whose findings count
  std::uint64_t errors = 0;
  std::uint64_t warnings = 0;
  std::uint64_t notes = 0;
  std::vector<std::pair<std::string_view, std::uint64_t>> untold;  // by code
};

// Checks one record file from its beginning to its end. Findings come in the
// order of lines, those of joints at the end. Memory grows by up to 64 bytes for
// each element to find what is there twice, unless V204 is not wanted, and with
// `joints` by some 270 for each pipe.
class FileCheck {
 public:
  using Take = std::function<void(Finding&&)>;

  FileCheck(const CheckOptions& options, Take take);

  // With what stands beside the file its components are taken as one: what is there
  // twice is told once for each, what closes a line is not open, and supports are
  // compared. `attributes` may be null.
  CheckCounts run(Vesk::RecordFile& file, SidecarFile* attributes = nullptr);

 private:
  // What the sidecar says of the component of an element.
  struct Component {
    std::uint64_t key = 0;  // 0: unknown
    bool isClosed = false;
    bool isSupport = false;
  };

  Component componentOf(const Vesk::RecordElement& element);
  void checkElement(Vesk::RecordFile& file);
  void checkLinesOf(const Vesk::RecordFile& file, std::uint64_t firstLine);
  void checkTwice(Vesk::RecordFile& file, const ShapeKey& key, const Component& component,
                  bool isChosen);
  void tellFault(const Vesk::RecordFile& file);
  void tell(const ElementFault& fault, Vesk::RecordFile& file);
  void findJoints(const Vesk::RecordFile& file);
  void tell(const SupportFault& fault, const Vesk::RecordFile& file);
  void tell(const JointFault& fault, const Vesk::RecordFile& file);
  void tell(const OpenEnd& open, const Vesk::RecordFile& file);
  void tellEnd(const PipeEnd& end, const NumberSpan& span, std::string_view code, Severity severity,
               const std::string& text, const Vesk::RecordFile& file);
  void tell(Finding&& finding);

  const CheckOptions& options_;
  Take take_;
  CheckCounts counts_;
  std::vector<std::pair<std::string_view, std::uint64_t>> told_;
  ShapeSet shapes_;
  std::optional<Joints> joints_;
  Supports supports_;
  SidecarFile* attributes_ = nullptr;
  Component last_;               // that of the element before
  std::uint64_t lastTwice_ = 0;  // key of the last component that was told as there twice
  bool findsTwice_ = false;
  std::vector<ElementFault> faults_;
  std::vector<std::uint64_t> chosenLines_;  // first lines
};

}  // namespace VeskTool

#endif
