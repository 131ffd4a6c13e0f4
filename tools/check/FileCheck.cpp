// SPDX-License-Identifier: MIT
#include "check/FileCheck.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "check/NumberPlaces.h"
#include "check/ShapeRules.h"
#include "elements/Kinds.h"
#include "input/ParseDouble.h"
#include "pcf/shapes/Families.h"
#include "text/Numbers.h"

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
  if (first == ElementFault::kLargest) first = last = static_cast<int>(largestNumber(places));
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

std::string_view codeOf(OpenEnd::Kind kind) {
  switch (kind) {
    case OpenEnd::Kind::kShort:
    case OpenEnd::Kind::kBeside:
      return "V206";
    case OpenEnd::Kind::kMissing:
      return "V207";
    case OpenEnd::Kind::kOpen:
      break;
  }
  return "V205";
}

// The text of a row in this column; empty without such a column.
std::string_view textOf(const SidecarRow& row, std::string_view column, const SidecarFile& file) {
  const auto found = std::find(file.columns().begin(), file.columns().end(), column);
  const auto place = static_cast<std::size_t>(found - file.columns().begin());
  return place < row.values.size() ? std::string_view(row.values[place]) : std::string_view();
}

std::string textOf(const OpenEnd& open) {
  const std::string faced =
      "the " + std::string(open.what) + " at line " + std::to_string(open.line);
  const std::string distance = rounded(open.distance, 3);
  switch (open.kind) {
    case OpenEnd::Kind::kShort:
      return "stops " + distance + " short of " + faced;
    case OpenEnd::Kind::kBeside:
      return "passes beside " + faced + ", " + distance + " away";
    case OpenEnd::Kind::kMissing:
      return "nothing for " + distance + " up to the open end at line " + std::to_string(open.line);
    case OpenEnd::Kind::kOpen:
      break;
  }
  const std::string text = "open, " + shortest(open.end.diameter) + " wide, ";
  if (!open.isLooked) return text + "among too many elements to see what it faces";
  if (!open.facesSolid)
    return text + "faces nothing within " + rounded(kAhead * open.end.diameter, 3);
  return text + "faces " + faced + ", " + distance + " away";
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

CheckCounts FileCheck::run(RecordFile& file, SidecarFile* attributes) {
  attributes_ = attributes;
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
  if (joints_) findJoints(file);
  std::sort(counts_.untold.begin(), counts_.untold.end());
  return std::move(counts_);
}

void FileCheck::findJoints(const RecordFile& file) {
  const auto isChosen = [this](std::uint64_t line) {
    return !options_.takes || std::binary_search(chosenLines_.begin(), chosenLines_.end(), line);
  };
  const auto takeOpen = [&](const OpenEnd& open) {
    if (isChosen(open.end.line)) tell(open, file);
  };
  const bool findsOpen = options_.wants("V205") || options_.wants("V206") || options_.wants("V207");
  joints_->find(
      [&](const JointFault& fault) {
        if (isChosen(fault.end.line) || isChosen(fault.other.line)) tell(fault, file);
      },
      findsOpen ? takeOpen : std::function<void(const OpenEnd&)>());
  supports_.find(options_.joint.reach, [&](const SupportFault& fault) {
    if (isChosen(fault.line) || isChosen(fault.other)) tell(fault, file);
  });
}

// By its key, since the elements of a component follow each other.
FileCheck::Component FileCheck::componentOf(const RecordElement& element) {
  const SidecarRow* row = attributes_ == nullptr ? nullptr : attributes_->find(element);
  if (row == nullptr) return {};
  Component component;
  component.key = Solids::groupOf(element.header) ^ (static_cast<std::uint64_t>(row->first) + 1);
  if (component.key == last_.key) return last_;
  const Pcf::Family family =
      Pcf::familyOf(textOf(*row, "component", *attributes_), textOf(*row, "skey", *attributes_));
  component.isClosed = Pcf::closesLine(family);
  component.isSupport = Pcf::isSupport(family);
  if (component.isSupport && joints_ && options_.wants("V208"))
    supports_.add(*element.geo, std::string(Pcf::nameOf(family)), element.firstLine);
  return component;
}

void FileCheck::checkElement(RecordFile& file) {
  const RecordElement& element = file.element();
  counts_.mode = joinedStyle(counts_.mode, file.mode());
  const Component component = last_ = componentOf(element);
  // Supports are compared as a whole.
  const bool isKept =
      findsTwice_ && countsAsDuplicate(*element.geo) && !(component.isSupport && joints_);
  ShapeKey key;
  if (isKept) {
    key = shapeKey(*element.geo);
    shapes_.prefetch(key);
  }
  const bool isChosen = !options_.takes || options_.takes(element);
  if (joints_) {
    joints_->add(*element.geo, element.firstLine, file.lines(), file.mode(),
                 Solids::groupOf(element.header), component.isClosed);
  }
  if (!isChosen) {
    if (isKept) checkTwice(file, key, component, false);
    return;
  }
  ++counts_.elements;
  if (options_.takes) chosenLines_.push_back(element.firstLine);
  checkLinesOf(file, element.firstLine);
  faults_.clear();
  checkShape(*element.geo, file.mode(), faults_);
  if (file.mode() == kFixedColumns) checkFields(file.lines(), faults_);
  for (const ElementFault& fault : faults_) tell(fault, file);
  if (isKept) checkTwice(file, key, component, true);
}

void FileCheck::checkLinesOf(const RecordFile& file, std::uint64_t firstLine) {
  checkLines(file.lines(), file.mode(), [&](LineFault fault) {
    Finding finding;
    finding.code = fault.code;
    finding.severity = fault.severity;
    finding.file = file.name();
    finding.line = firstLine + fault.line;
    finding.column = fault.column + 1;
    finding.endColumn = fault.column + fault.length;
    finding.message = std::move(fault.message);
    finding.expected = std::move(fault.expected);
    finding.sourceLine = file.lines()[fault.line];
    tell(std::move(finding));
  });
}

void FileCheck::checkTwice(RecordFile& file, const ShapeKey& key, const Component& component,
                           bool isChosen) {
  const std::uint64_t line = file.element().firstLine;
  const std::uint64_t first = shapes_.insert(key, line);
  const bool isTold = component.key != 0 && component.key == lastTwice_;
  if (first == 0 || isTold) return;
  if (!isChosen && !std::binary_search(chosenLines_.begin(), chosenLines_.end(), first)) return;
  lastTwice_ = component.key;
  tell({kTwice, Severity::kWarning, "same shape as the element at line " + std::to_string(first),
        "", ElementFault::kWholeElement, ElementFault::kWholeElement},
       file);
}

void FileCheck::tellFault(const RecordFile& file) {
  Finding finding = findingOf(file);
  const RecordFault& fault = file.fault();
  const bool isStray = fault.kind == RecordFault::Kind::kStray && finding.code != kOtherStyle;
  if (isStray && fault.lastLine > fault.firstLine) {
    const std::uint64_t more = fault.lastLine - fault.firstLine;
    finding.message += std::string(", and so ") +
                       (more == 1 ? "is the line" : "are the " + grouped(more) + " lines") +
                       " after it";
  }
  tell(std::move(finding));
}

void FileCheck::tell(const ElementFault& fault, RecordFile& file) {
  Finding finding;
  finding.code = fault.code;
  finding.severity = fault.severity;
  finding.file = file.name();
  finding.line = file.element().firstLine;
  finding.message = fault.message;
  finding.expected = fault.expected;
  if (fault.firstNumber == ElementFault::kWholeElement) {
    finding.sourceLine = file.lines().front();
  } else {
    place(finding, file.lines(), file.mode(), fault.firstNumber, fault.lastNumber);
  }
  tell(std::move(finding));
}

void FileCheck::tell(const JointFault& fault, const RecordFile& file) {
  const bool isWidth = fault.kind == JointFault::Kind::kDiameter;
  tellEnd(fault.end, isWidth ? fault.end.width : fault.end.place, codeOf(fault.kind),
          Severity::kWarning, textOf(fault), file);
}

void FileCheck::tell(const SupportFault& fault, const RecordFile& file) {
  Finding finding;
  finding.code = "V208";
  finding.severity = Severity::kWarning;
  finding.file = file.name();
  finding.line = fault.line;
  finding.message = fault.kind + " at " + pointText(fault.at) + ": another stands " +
                    rounded(fault.distance, 3) + " away, at line " + std::to_string(fault.other);
  tell(std::move(finding));
}

void FileCheck::tell(const OpenEnd& open, const RecordFile& file) {
  const bool isOpen = open.kind == OpenEnd::Kind::kOpen;
  tellEnd(open.end, open.end.place, codeOf(open.kind),
          isOpen ? Severity::kNote : Severity::kWarning, textOf(open), file);
}

void FileCheck::tellEnd(const PipeEnd& end, const NumberSpan& span, std::string_view code,
                        Severity severity, const std::string& text, const RecordFile& file) {
  Finding finding;
  finding.code = code;
  finding.severity = severity;
  finding.file = file.name();
  finding.line = end.line + span.line;
  finding.column = span.column;
  finding.endColumn = span.last;
  finding.insideBytes = span.inside;
  finding.message = "end at " + pointText(end.point) + ": " + text;
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
