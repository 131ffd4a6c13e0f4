// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_ELEMENTWRITER_H
#define VESK_TOOLS_EXPORT_ELEMENTWRITER_H

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "vesk/RecordFile.h"

namespace VeskTool {

// An element on its way into a file of another format.
struct ExportedElement {
  const Vesk::RecordElement& record;
  std::string_view file;  // as messages show it
};

// Writes one format, element after element, in a stream.
class ElementWriter {
 public:
  virtual ~ElementWriter() = default;
  ElementWriter(const ElementWriter&) = delete;
  ElementWriter& operator=(const ElementWriter&) = delete;

  // Before the elements of a file; `name` is its own, "-" for standard input;
  // `handedOn` is what it is called in the output.
  virtual void beginFile(const std::string& /*name*/, const std::string& /*handedOn*/) {}

  // What of a file is no element.
  virtual void fault(const Vesk::RecordFault& fault) { static_cast<void>(fault); }

  // Returns why the element can't be in the file; empty if it is, or is counted in
  // `leftOut`.
  virtual std::string add(const ExportedElement& element) = 0;

  // To be called once behind the last element.
  virtual void finish() = 0;

  // Elements that the format has no place for, by their name: "text".
  const std::map<std::string, std::uint64_t>& leftOut() const { return leftOut_; }

  // What elements that are in the file have lost: "arc", "normal".
  const std::map<std::string, std::uint64_t>& lost() const { return lost_; }

 protected:
  ElementWriter() = default;

  // Counts what hardly any format keeps: arcs, normals, marks and tags.
  void countLosses(const Vesk::RecordElement& record);

  std::map<std::string, std::uint64_t> leftOut_;
  std::map<std::string, std::uint64_t> lost_;
};

}  // namespace VeskTool

#endif
