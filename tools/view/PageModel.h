#ifndef VESK_TOOLS_VIEW_PAGEMODEL_H
#define VESK_TOOLS_VIEW_PAGEMODEL_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Describe.h"
#include "mesh/Fineness.h"
#include "mesh/Scene.h"
#include "mesh/SceneBuilder.h"
#include "output/Recs.h"

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

  void mark(PageMark mark) { marks_.push_back(std::move(mark)); }

  // To be called once, behind the last element; then scene() is there.
  void finish() { scene_ = builder_.finish(); }

  const Vesk::Scene& scene() const { return scene_; }
  const std::vector<PageMark>& marks() const { return marks_; }

  // By element.
  const std::vector<std::uint32_t>& counters() const { return counters_; }
  const std::vector<std::uint32_t>& layoutIds() const { return layoutIds_; }
  const std::vector<std::uint64_t>& recordStarts() const { return recordStarts_; }

  // All lines, each with its end.
  const std::string& records() const { return records_; }

  // One after the other, as the layouts say; a text is its index in strings().
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
  std::string records_;
  std::vector<double> values_;
  std::vector<std::string> strings_;
  std::map<ValueLayout, std::uint32_t> layouts_;
};

}  // namespace VeskTool

#endif
