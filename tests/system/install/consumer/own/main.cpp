// SPDX-License-Identifier: MIT
// A host whose headers and classes have names of the library's.
#include <string>

#include "input/Input.h"
#include <vesk/Cyl.h>
#include <vesk/ExceptionInfo.h>
#include <vesk/Extents.h>
#include <vesk/RecordFile.h>
#include <vesk/RecordWriter.h>
#include <vesk/Txt.h>
#include <vesk/mesh/ElementMesh.h>

struct Extents {
  int wide = 3, high = 4;
};

// The functions on vectors are in the library's namespace.
int cross = 4;
int distance = 5;
double dot(double a, double b) { return a * b; }

class ExceptionInfo;
int tooLongText();

namespace {

int failures = 0;

void expect(bool condition) { failures += condition ? 0 : 1; }

void refuseTooLongText() {
  Vesk::RecordWriter file("own.dat");
  try {
    file.write(Vesk::Txt({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, 1, 2, 1, 0, std::string(600, 'x')));
    expect(false);
  } catch (const Vesk::ExceptionInfo& e) {
    expect(e.level == Vesk::ExceptionInfo::kFatal);
  }
  expect(file.write(Vesk::Cyl({0, 0, 0}, {0, 0, 10}, 5)) == 1);
  file.close();
}

void readBack() {
  Vesk::RecordFile file("own.dat");
  expect(file.next() == Vesk::RecordFile::Found::kElement);
  Vesk::Extents box;
  file.element().geo->addExtents(box);
  expect(box.max.z == 10.0);
  expect(file.next() == Vesk::RecordFile::Found::kEnd && file.error().empty());
}

}  // namespace

int main() {
  expect(Extents().wide == 3 && Input().keys() == 104);
  expect(cross + distance == 9 && dot(2, 3) == 6);
  expect(dot(GeVector(1, 2, 3), GeVector(4, 5, 6)) == 32);
  expect(tooLongText() == 0);
  refuseTooLongText();
  readBack();
  return failures;
}
