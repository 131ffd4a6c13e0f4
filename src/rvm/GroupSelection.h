// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_GROUPSELECTION_H
#define VESK_RVM_GROUPSELECTION_H

#include <string>
#include <string_view>
#include <vector>

namespace Vesk {

// Which groups are meant. A group's path is the names from the outermost one on, each
// with a '/' before it unless it begins with one: "/SITE-1/ZONE-2/BRANCH 1". A
// selection means the groups whose path ends with it, from a name's beginning on; *
// stands for any characters, ? for one byte. What lies in such a group is meant too.
// Names and patterns may be UTF-8 or Windows-1252, each for itself.
class GroupSelection {
 public:
  explicit GroupSelection(const std::vector<std::string>& patterns);

  // Without patterns all groups are.
  bool isAll() const { return patterns_.empty(); }

  // Whether the group itself is meant, by its path.
  bool matches(std::string_view path);

  // Whether the pattern has found a group, for each of them.
  const std::vector<bool>& found() const { return found_; }

 private:
  std::vector<std::string> patterns_;
  std::vector<bool> found_;
};

// Adds a name to a path: "/A" and "B" give "/A/B".
void appendToPath(std::string& path, std::string_view name);

}  // namespace Vesk

#endif
