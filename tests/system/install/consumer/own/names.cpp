// SPDX-License-Identifier: MIT
// A host with classes of its own that have names of the model's: what the library
// throws inside is the library's.
#include <vesk.h>

#include <string>

class ExceptionInfo {
 public:
  explicit ExceptionInfo(const char* t) : text(t) {}
  virtual ~ExceptionInfo() = default;
  virtual int weight() const { return 7; }
  const char* text;
};

class TovException : public ExceptionInfo {
 public:
  using ExceptionInfo::ExceptionInfo;
};

class Geo {
 public:
  virtual ~Geo() = default;
  virtual int write() const { return 7; }
};

struct Recs {
  double lines[4] = {};
};

// Out of line, so that linkers see all of them.
const ExceptionInfo& sample() {
  static const TovException exception("the host's");
  return exception;
}

const Geo& shape() {
  static const Geo geo;
  return geo;
}

int tooLongText() {
  const double p[3] = {0, 0, 0}, x[3] = {1, 0, 0}, y[3] = {0, 1, 0};
  const std::string text(600, 'x');
  if (!vk_openVesk("own")) return 1;
  vk_writeTxt(p, x, y, 1, 2, 1, 0, text.c_str());
  vk_openVesk(nullptr);
  return 0;
}
