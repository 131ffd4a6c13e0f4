#include "check/FileCheck.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Numbers.h"
#include "check/NumberPlaces.h"
#include "check/ShapeRules.h"
#include "input/ParseDouble.h"

namespace VeskTool {
namespace {

using namespace Vesk;

constexpr std::string_view kTwice = "V204";

// Index of the number with the largest absolute value; the first NaN if any.
std::size_t largestNumber(const std::vector<NumberPlace>& places) {
  std::size_t found = 0;
  double largest = -1.0;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const double size = std::fabs(parseDouble(places[i].text).value_or(0.0));
    if (std::isnan(size)) return i;
    if (size > largest) {
      largest = size;
      found = i;
    }
  }
  return found;
}

// Puts the finding at these numbers, as far as they stand on the line of the first.
void place(Finding& finding, const Recs& lines, std::int32_t mode, int first, int last) {
  const std::vector<NumberPlace> places = numberPlaces(lines, mode);
  if (places.empty()) return;
  if (first == Trouble::kLargest) first = last = static_cast<int>(largestNumber(places));
  const std::size_t begin = std::min(static_cast<std::size_t>(first), places.size() - 1);
  std::size_t end = std::clamp(static_cast<std::size_t>(last), begin, places.size() - 1);
  while (places[end].line != places[begin].line) --end;
  finding.line += places[begin].line;
  finding.column = places[begin].column + 1;
  finding.endColumn = places[end].column + places[end].text.size();
  finding.sourceLine = lines[places[begin].line];
}

std::string_view codeOf(JointFault::Kind kind) {
  switch (kind) {
    case JointFault::Kind::kOffset:
      return "V202";
    case JointFault::Kind::kDiameter:
      return "V203";
    case JointFault::Kind::kGap:
    case JointFault::Kind::kOverlap:
      break;
  }
  return "V201";
}

std::string textOf(const JointFault& fault) {
  const std::string other = "the end at line " + std::to_string(fault.other.line);
  switch (fault.kind) {
    case JointFault::Kind::kGap:
      return "gap of " + rounded(fault.along, 3) + " to " + other;
    case JointFault::Kind::kOverlap:
      return "overlap of " + rounded(-fault.along, 3) + " with " + other;
    case JointFault::Kind::kOffset:
      return "axis is off by " + rounded(fault.across, 3) + " from " + other;
    case JointFault::Kind::kDiameter:
      break;
  }
  return "diameter " + shortest(fault.end.diameter) + " meets " + shortest(fault.other.diameter) +
         ", " + other;
}

std::uint64_t& countOf(std::vector<std::pair<std::string_view, std::uint64_t>>& counts,
                       std::string_view code) {
  const auto found = std::find_if(counts.begin(), counts.end(),
                                  [code](const auto& each) { return each.first == code; });
  if (found != counts.end()) return found->second;
  return counts.emplace_back(code, 0).second;
}

}  // namespace

FileCheck::FileCheck(const CheckOptions& options, Take take)
    : options_(options), take_(std::move(take)), findsTwice_(options.wants(kTwice)) {
  if (options.joints) joints_.emplace(options.joint);
}

CheckCounts FileCheck::run(RecordFile& file) {
  for (RecordFile::Found found; (found = file.next()) != RecordFile::Found::kEnd;) {
    if (found == RecordFile::Found::kElement) {
      checkElement(file);
    } else {
      // Without any record the file is none, and the caller says that.
      if (file.mode() == 0) continue;
      tellFault(file);
      if (file.fault().kind != RecordFault::Kind::kStray) {
        checkLinesOf(file, file.fault().firstLine);
      }
    }
  }
  if (joints_) joints_->find([&](const JointFault& fault) { tell(fault, file); });
  std::sort(counts_.untold.begin(), counts_.untold.end());
  return std::move(counts_);
}

void FileCheck::checkElement(RecordFile& file) {
  ++counts_.elements;
  const RecordElement& element = file.element();
  const bool isKept = findsTwice_ && countsAsDuplicate(*element.geo);
  ShapeKey key;
  if (isKept) {
    key = shapeKey(*element.geo);
    shapes_.prefetch(key);
  }
  checkLinesOf(file, element.firstLine);
  troubles_.clear();
  checkShape(*element.geo, file.mode(), troubles_);
  if (file.mode() == kFixedColumns) checkFields(file.lines(), troubles_);
  for (const Trouble& trouble : troubles_) tell(trouble, file);
  if (isKept) checkTwice(file, key);
  if (joints_) joints_->add(*element.geo, element.firstLine, file.lines(), file.mode());
}

void FileCheck::checkLinesOf(const RecordFile& file, std::uint64_t firstLine) {
  checkLines(file.lines(), file.mode(), [&](LineTrouble trouble) {
    Finding finding;
    finding.code = trouble.code;
    finding.severity = trouble.severity;
    finding.file = file.name();
    finding.line = firstLine + trouble.line;
    finding.column = trouble.column + 1;
    finding.endColumn = trouble.column + trouble.length;
    finding.message = std::move(trouble.message);
    finding.expected = std::move(trouble.expected);
    finding.sourceLine = file.lines()[trouble.line];
    tell(std::move(finding));
  });
}

void FileCheck::checkTwice(RecordFile& file, const ShapeKey& key) {
  const std::uint64_t line = file.element().firstLine;
  const std::uint64_t first = shapes_.insert(key, line);
  if (first == 0) return;
  tell({kTwice, Severity::kWarning, "same shape as the element at line " + std::to_string(first),
        "", Trouble::kWholeElement, Trouble::kWholeElement},
       file);
}

void FileCheck::tellFault(const RecordFile& file) {
  Finding finding = findingOf(file);
  const RecordFault& fault = file.fault();
  if (fault.kind == RecordFault::Kind::kStray && fault.lastLine > fault.firstLine) {
    const std::uint64_t more = fault.lastLine - fault.firstLine;
    finding.message += ", and so " + grouped(more) + (more == 1 ? " line" : " lines") + " after it";
  }
  tell(std::move(finding));
}

void FileCheck::tell(const Trouble& trouble, RecordFile& file) {
  Finding finding;
  finding.code = trouble.code;
  finding.severity = trouble.severity;
  finding.file = file.name();
  finding.line = file.element().firstLine;
  finding.message = trouble.message;
  finding.expected = trouble.expected;
  if (trouble.firstNumber == Trouble::kWholeElement) {
    finding.sourceLine = file.lines().front();
  } else {
    place(finding, file.lines(), file.mode(), trouble.firstNumber, trouble.lastNumber);
  }
  tell(std::move(finding));
}

void FileCheck::tell(const JointFault& fault, const RecordFile& file) {
  Finding finding;
  finding.code = codeOf(fault.kind);
  finding.severity = Severity::kWarning;
  finding.file = file.name();
  const bool isWidth = fault.kind == JointFault::Kind::kDiameter;
  const NumberSpan& span = isWidth ? fault.end.width : fault.end.place;
  finding.line = fault.end.line + span.line;
  finding.column = span.column;
  finding.endColumn = span.last;
  finding.insideBytes = span.inside;
  finding.message = "end at " + pointText(fault.end.point) + ": " + textOf(fault);
  tell(std::move(finding));
}

void FileCheck::tell(Finding&& finding) {
  if (finding.severity > options_.level || !options_.wants(finding.code)) return;
  ++(finding.severity == Severity::kError     ? counts_.errors
     : finding.severity == Severity::kWarning ? counts_.warnings
                                              : counts_.notes);
  if (options_.most > 0 && ++countOf(told_, finding.code) > options_.most) {
    ++countOf(counts_.untold, finding.code);
    return;
  }
  take_(std::move(finding));
}

}  // namespace VeskTool
