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

#include "Findings.h"
#include "check/Duplicates.h"
#include "check/Joints.h"
#include "check/LineRules.h"
#include "check/Trouble.h"
#include "input/RecordFile.h"

namespace VeskTool {

struct CheckOptions {
  std::vector<std::string> only;     // codes, or what they begin with; empty: all
  std::vector<std::string> ignore;   // the same
  Severity level = Severity::kNote;  // the least severe that counts
  std::uint64_t most = 0;            // findings of each code that are told; 0: all
  bool joints = false;
  JointOptions joint;

  bool wants(std::string_view code) const {
    const auto fits = [code](const std::string& each) { return code.starts_with(each); };
    return (only.empty() || std::any_of(only.begin(), only.end(), fits)) &&
           std::none_of(ignore.begin(), ignore.end(), fits);
  }
};

// What was found in a file, told or not.
struct CheckCounts {
  std::uint64_t elements = 0;
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

  CheckCounts run(Vesk::RecordFile& file);

 private:
  void checkElement(Vesk::RecordFile& file);
  void checkLinesOf(const Vesk::RecordFile& file, std::uint64_t firstLine);
  void checkTwice(Vesk::RecordFile& file, const ShapeKey& key);
  void tellFault(const Vesk::RecordFile& file);
  void tell(const Trouble& trouble, Vesk::RecordFile& file);
  void tell(const JointFault& fault, const Vesk::RecordFile& file);
  void tell(Finding&& finding);

  const CheckOptions& options_;
  Take take_;
  CheckCounts counts_;
  std::vector<std::pair<std::string_view, std::uint64_t>> told_;
  ShapeSet shapes_;
  std::optional<Joints> joints_;
  bool findsTwice_ = false;
  std::vector<Trouble> troubles_;
};

}  // namespace VeskTool

#endif
