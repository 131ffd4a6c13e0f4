// SPDX-License-Identifier: MIT
#ifndef VESK_FIXSTRB_H
#define VESK_FIXSTRB_H

#include <cstddef>

namespace Vesk {

// What fixed-width text fields of every width have in common; see FixStr.
class FixStrB {
 public:
  // The characters of the field, followed by a terminator.
  virtual const char* data() const = 0;

  // Copies at most width() characters of `text` and pads the rest. A null text
  // gives a blank field. With blankControls every control character (codes 0
  // to 31) becomes a blank; other bytes, those above 127 too, stay.
  virtual void assign(const char* text, bool blankControls) = 0;

  // The number of characters, always the same for one field.
  virtual std::size_t width() const = 0;

  virtual char padChar() const = 0;

  // Whether the field holds pad characters only.
  virtual bool isBlank() const;

 protected:
  FixStrB() = default;
  FixStrB(const FixStrB&) = default;
  FixStrB& operator=(const FixStrB&) = default;
  ~FixStrB() = default;
};

// Whether both fields have the same text.
bool operator==(const FixStrB& a, const FixStrB& b);

}  // namespace Vesk

#endif
