// SPDX-License-Identifier: MIT
// soak [ELEMENTS [OPENS [FAILURES]]] - writes that many elements through the
// exports and reads all of them back, a million a file; opens and closes a file
// that often; lets that many calls fail. The memory in use may not grow.
//
// Without arguments 100000000, 10000 and 1000000. Works in the current folder,
// which needs room for one file, 60 MB. Ends with 0 if all is as it should be.
#include <vesk.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

#include "api/Globals.h"
#include "vesk/Cyl.h"
#include "vesk/GeEx.h"
#include "vesk/RecordFile.h"
#include "vesk/Torus.h"

namespace {

constexpr long kElementsOfAFile = 1000000;

// More than one block of the C library's allocator, far less than a leak of one
// byte for each call would take.
constexpr long kAllowedGrowth = 512;  // kilobytes

[[noreturn]] void fail(const std::string& message) {
  std::fprintf(stderr, "soak: %s\n", message.c_str());
  std::exit(1);
}

// Kilobytes of memory that this process alone has in use.
long usedMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("RssAnon:")) return std::atol(line.c_str() + 8);
  }
  fail("the system does not tell the memory in use");
}

// Notes what is in use after the first round, in which all buffers grow, and
// ends the program when it has become more.
class Memory {
 public:
  void check(const char* what) {
    const long used = usedMemory();
    if (first_ < 0) first_ = used;
    if (used > first_ + kAllowedGrowth) {
      fail(std::string(what) + ": " + std::to_string(used) + " KB in use, " +
           std::to_string(first_) + " KB in the beginning");
    }
    last_ = used;
  }

  void print(const char* what, long count) const {
    std::printf("%-10s %10ld, memory %ld KB, then %ld KB\n", what, count, first_, last_);
    std::fflush(stdout);
  }

 private:
  long first_ = -1;
  long last_ = 0;
};

double coordinate(long i) { return static_cast<double>(i % 1000003) / 8; }

void write(long i) {
  const double start[] = {coordinate(i), -1.5, 2};
  const double end[] = {coordinate(i), 8.5, coordinate(i + 1)};
  const double centre[] = {0, 0, coordinate(i)};
  vk_setHeader("SOAK", "01", static_cast<int>(i % 46656));
  const int lines =
      i % 2 == 0 ? vk_writeCyl(start, end, 219.1) : vk_writeTor(centre, start, end, 5);
  if (lines != 1)
    fail("element " + std::to_string(i) + " took " + std::to_string(lines) + " lines");
}

void checkElement(const Vesk::RecordElement& element, long i) {
  const std::string name = "element " + std::to_string(i);
  if (element.counter() != static_cast<int>(i % 46656)) fail(name + " has another counter");
  if (i % 2 == 0) {
    const auto* cylinder = dynamic_cast<const Vesk::Cyl*>(element.geo);
    if (cylinder == nullptr || cylinder->diameter != 219.1) fail(name + " is no such cylinder");
  } else {
    if (dynamic_cast<const Vesk::Torus*>(element.geo) == nullptr) fail(name + " is no torus");
  }
}

void writeAndRead(long elements) {
  Memory memory;
  for (long done = 0; done < elements;) {
    const long end = std::min(elements, done + kElementsOfAFile);
    if (vk_openVesk("soak") != 1) fail("cannot open vesksoak.dat");
    for (long i = done; i < end; ++i) write(i);
    vk_openVesk(nullptr);
    if (Vesk::outFile.error()) fail(Vesk::outFile.error().message());

    Vesk::RecordFile file("vesksoak.dat");
    for (; done < end; ++done) {
      if (file.next() != Vesk::RecordFile::Found::kElement)
        fail("element " + std::to_string(done) + " is missing");
      checkElement(file.element(), done);
    }
    if (file.next() != Vesk::RecordFile::Found::kEnd || !file.error().empty())
      fail("something follows the last element");
    memory.check("elements");
  }
  memory.print("elements", elements);
}

void openOften(long opens) {
  Memory memory;
  for (long i = 0; i < opens; ++i) {
    if (vk_openVesk("soak") != 1) fail("open " + std::to_string(i));
    write(i);
    if (i % 3 == 0) vk_openVesk(nullptr);
    if (i % 1000 == 999) memory.check("opens");
  }
  vk_openVesk(nullptr);
  memory.print("opens", opens);
}

void failOften(long failures) {
  Memory memory;
  const double p[] = {1, 2, 3};
  long thrown = 0;
  for (long i = 0; i < failures; ++i) {
    try {
      switch (i % 4) {
        case 0:
          vk_writeBox(p, nullptr, p, p);
          break;
        case 1:
          vk_writeElb(p, p, p, p, 1);
          break;
        case 2:
          if (vk_openVesk("no/such/folder") != 0) fail("a folder that is not there was opened");
          continue;
        default:
          if (vk_writeCyl(p, p, 1) != 0) fail("lines without a file");
          continue;
      }
    } catch (const GeEx::NullPtr&) {
      ++thrown;
    } catch (const GeEx::NullDir&) {
      ++thrown;
    }
    if (i % 10000 == 1) memory.check("failures");
  }
  if (thrown != (failures + 3) / 4 + (failures + 2) / 4) fail("a failure was not thrown");
  memory.print("failures", failures);
}

}  // namespace

int main(int count, char** words) {
  const auto number = [&](int i, long otherwise) {
    return i < count ? std::atol(words[i]) : otherwise;
  };
  writeAndRead(number(1, 100000000));
  openOften(number(2, 10000));
  failOften(number(3, 1000000));
  std::remove("vesksoak.dat");
  return 0;
}
