// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_STEPTEXT_H
#define VESK_TOOLS_EXPORT_STEPTEXT_H

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/Streams.h"
#include "vesk/GeVector.h"

namespace VeskTool {

// One part of an entity: #12, a number, a text, a list or a word as it is.
struct Word {
  std::string_view text;
};

// The text of a STEP physical file (ISO 10303-21), entity after entity, as STEP and IFC
// have it. Its numbers have the fewest digits that give the same double back.
class StepText {
 public:
  using Id = std::uint64_t;

  explicit StepText(TextSink& out) : out_(out) {}

  void raw(std::string_view text) { text_ += text; }

  // "#12=NAME(" ... ");" with its parts in between.
  template <class... Parts>
  Id add(std::string_view name, const Parts&... parts) {
    const Id id = ++last_;
    reference(id);
    text_ += '=';
    text_ += name;
    text_ += '(';
    bool first = true;
    (part(parts, first), ...);
    text_ += ");\n";
    return id;
  }

  // An entity of several types, of which the caller gives the text behind "=".
  template <class... Parts>
  Id addComplex(const Parts&... parts) {
    const Id id = ++last_;
    reference(id);
    text_ += '=';
    (plain(parts), ...);
    text_ += ";\n";
    return id;
  }

  void flush(bool all) {
    constexpr std::size_t kBlock = std::size_t{1} << 16;
    if (text_.size() < kBlock && !all) return;
    out_.write(text_);
    text_.clear();
  }

  void text(std::string_view characters);

 private:
  void reference(Id id) {
    char digits[24];
    text_ += '#';
    text_.append(digits, std::to_chars(digits, digits + sizeof digits, id).ptr);
  }

  // The fewest digits, with the point that a real number must have: 1., 0.5, 1.E-05.
  void real(double value) {
    char digits[32];
    if (value == 0.0) value = 0.0;
    const char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    std::string_view number(digits, static_cast<std::size_t>(end - digits));
    const std::size_t exponent = number.find('e');
    const std::string_view mantissa = number.substr(0, exponent);
    text_ += mantissa;
    if (mantissa.find('.') == std::string_view::npos) text_ += '.';
    if (exponent != std::string_view::npos) {
      text_ += 'E';
      text_ += number.substr(exponent + 1);
    }
  }

  void plain(Id id) { reference(id); }
  void plain(double value) { real(value); }
  void plain(std::string_view word) { text_ += word; }
  void plain(const char* word) { text_ += word; }
  void plain(const Word& word) { text_ += word.text; }
  void plain(const std::string& characters) { text(characters); }
  void plain(const std::vector<Id>& ids) {
    text_ += '(';
    for (std::size_t i = 0; i < ids.size(); ++i) {
      if (i > 0) text_ += ',';
      reference(ids[i]);
    }
    text_ += ')';
  }
  void plain(const GeVector& v) {
    text_ += '(';
    real(v.x);
    text_ += ',';
    real(v.y);
    text_ += ',';
    real(v.z);
    text_ += ')';
  }

  template <class Part>
  void part(const Part& value, bool& first) {
    if (!first) text_ += ',';
    first = false;
    plain(value);
  }

  TextSink& out_;
  std::string text_;
  Id last_ = 0;
};

}  // namespace VeskTool

#endif
