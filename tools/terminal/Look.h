// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_LOOK_H
#define VESK_TOOLS_LOOK_H

#include <string>
#include <string_view>

namespace VeskTool {

// Whether text is coloured, and how. Colour only repeats what the words say.
class Look {
 public:
  enum class Paint { kPlain, kBold, kError, kWarning, kNote, kGood, kFaint };

  Look() = default;
  explicit Look(bool coloured) : coloured_(coloured) {}

  bool isColoured() const { return coloured_; }

  void append(std::string& to, Paint paint, std::string_view text) const {
    if (!coloured_ || paint == Paint::kPlain) {
      to += text;
      return;
    }
    to += codeOf(paint);
    to += text;
    to += "\x1b[0m";
  }

 private:
  static std::string_view codeOf(Paint paint) {
    switch (paint) {
      case Paint::kBold:
        return "\x1b[1m";
      case Paint::kError:
        return "\x1b[1;31m";
      case Paint::kWarning:
        return "\x1b[1;35m";
      case Paint::kNote:
        return "\x1b[1;36m";
      case Paint::kGood:
        return "\x1b[32m";
      case Paint::kFaint:
        return "\x1b[2m";
      case Paint::kPlain:
        break;
    }
    return "";
  }

  bool coloured_ = false;
};

}  // namespace VeskTool

#endif
