// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_VIEW_PAGEMODEL_H
#define VESK_TOOLS_VIEW_PAGEMODEL_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "elements/Describe.h"
#include "mesh/Scene.h"
#include "mesh/SceneBuilder.h"
#include "vesk/Recs.h"
#include "vesk/mesh/Fineness.h"

namespace VeskTool {

// Something that is to be seen at an element: a finding, or a difference.
struct PageMark {
  std::optional<std::uint32_t> element;  // none: of the file as a whole
  std::string_view level;  // error, warning, note, added, removed, moved, changed or before
  std::string_view code;   // may be empty
  std::string text;
};

// The names of an element's values with their types, as the page knows them: n a
// number, i an integer, t a text, p a place, o a vector from the element's first
// place to another one, d a direction.
using ValueLayout = std::vector<std::pair<std::string, char>>;

// What a page shows: the elements with their shapes, their records and their
// numbers, and the marks at them. It is made once and then handed to writePage.
class PageModel {
 public:
  explicit PageModel(const Vesk::Fineness& fineness) : builder_(fineness) {}

  std::uint32_t addFile(const std::string& name) { return builder_.addFile(name); }

  // Adds an element with the lines of its record; its index. `line` is its first.
  std::uint32_t add(const Vesk::Geo& geo, std::string_view header, int counter, std::uint32_t file,
                    std::uint64_t line, const Vesk::Recs& lines);

  // How an element is shown; to be called behind its add. Without a call it is a part
  // of what is to be seen.
  enum class Shown : std::uint8_t { kWhole, kContext, kHidden };
  void setShown(std::uint32_t element, Shown shown) { shown_[element] = shown; }

  // The second field of an element's header, without trailing blanks.
  void setGroup(std::uint32_t element, const std::string& group);

  // What is known of an element's component: the values of these columns. To be called
  // for each element of it, with the same key.
  void setAttributes(std::uint32_t element, const std::string& key,
                     const std::vector<std::string>& columns,
                     const std::vector<std::string>& values);

  void mark(PageMark mark) { marks_.push_back(std::move(mark)); }

  // To be called once, behind the last element; then scene() is there.
  void finish() { scene_ = builder_.finish(); }

  const Vesk::Scene& scene() const { return scene_; }
  const std::vector<PageMark>& marks() const { return marks_; }

  // By element.
  const std::vector<std::uint32_t>& counters() const { return counters_; }
  const std::vector<std::uint32_t>& layoutIds() const { return layoutIds_; }
  const std::vector<std::uint64_t>& recordStarts() const { return recordStarts_; }
  const std::vector<Shown>& shown() const { return shown_; }
  const std::vector<std::uint32_t>& groupIds() const { return groupIds_; }  // in groups()

  const std::vector<std::string>& groups() const { return groups_; }

  // What the files are called in the page, by their numbers: no more of their paths than
  // tells them apart.
  std::vector<std::string> fileNames() const;

  // The component of each element: those of one row of attributes, else neighbours with
  // one header and counter.
  std::vector<std::uint32_t> components() const;

  // The attributes: their names, and for each column the text of every row, as a number
  // in attributeTexts(), where 0 is empty.
  const std::vector<std::string>& attributeNames() const { return attributeNames_; }
  const std::vector<std::string>& attributeTexts() const { return attributeTexts_; }
  const std::vector<std::vector<std::uint32_t>>& attributeColumns() const {
    return attributeColumns_;
  }

  // By element: its row of attributes, from 1 on; 0 if it has none.
  const std::vector<std::uint32_t>& rows() const { return rows_; }

  // All lines, each with its end.
  const std::string& records() const { return records_; }

  // One after the other, as the layouts say; a text is its index in strings(), where
  // each stands once.
  const std::vector<double>& values() const { return values_; }
  const std::vector<std::string>& strings() const { return strings_; }

  // In the order of their numbers.
  std::vector<const ValueLayout*> layouts() const;

 private:
  Vesk::SceneBuilder builder_;
  Vesk::Scene scene_;
  std::vector<PageMark> marks_;
  std::vector<std::uint32_t> counters_;
  std::vector<std::uint32_t> layoutIds_;
  std::vector<std::uint64_t> recordStarts_;
  std::vector<Shown> shown_;
  std::vector<std::uint32_t> groupIds_;
  std::vector<std::string> groups_;
  std::vector<std::uint32_t> rows_;
  std::unordered_map<std::string, std::uint32_t> rowIds_;
  std::vector<std::string> attributeNames_;
  std::vector<std::vector<std::uint32_t>> attributeColumns_;
  std::vector<std::string> attributeTexts_{{}};
  std::unordered_map<std::string, std::uint32_t> attributeIds_{{{}, 0}};
  std::string records_;
  std::vector<double> values_;
  std::vector<std::string> strings_;
  std::unordered_map<std::string, std::uint32_t> stringIds_;
  std::map<ValueLayout, std::uint32_t> layouts_;
};

}  // namespace VeskTool

#endif
