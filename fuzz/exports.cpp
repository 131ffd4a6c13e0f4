// SPDX-License-Identifier: MIT
// Programs of up to 64 calls of the exports, with hostile numbers and texts,
// beside a model: it knows whether a file is open, what each call returns, and
// the record of each element whose tokens fit into one line.
#include <vesk.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "Fuzz.h"
#include "api/Globals.h"
#include "vesk/GeEx.h"

using VeskFuzz::Bytes;
using VeskFuzz::check;

namespace {

constexpr std::size_t kLine = 512;

struct Xyz {
  double at[3];
};

Xyz operator-(const Xyz& a, const Xyz& b) {
  return {{a.at[0] - b.at[0], a.at[1] - b.at[1], a.at[2] - b.at[2]}};
}

std::string trimmed(double v, int decimals) {
  if (std::isnan(v)) return "nan";
  char buffer[400];
  std::snprintf(buffer, sizeof buffer, "%.*f", decimals, v);
  std::string text = buffer;
  if (std::isinf(v)) return text;
  text.resize(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

std::string triple(const Xyz& p, int decimals) {
  return trimmed(p.at[0], decimals) + ' ' + trimmed(p.at[1], decimals) + ' ' +
         trimmed(p.at[2], decimals);
}

std::string place(const Xyz& p) { return triple(p, 4); }
std::string step(const Xyz& v) { return ',' + triple(v, 6); }
std::string size(double v) { return ',' + trimmed(v, 6); }

// What the header's fields hold.
struct Header {
  std::string a = std::string(8, ' ');
  std::string b = "  ";
  std::string n = "   ";

  std::string prefix() const { return a + b + n + "    00"; }
};

std::string field(const char* text, std::size_t width) {
  std::string kept;
  for (; text != nullptr && *text != '\0' && kept.size() < width; ++text)
    kept += static_cast<unsigned char>(*text) < 32 ? ' ' : *text;
  return kept + std::string(width - kept.size(), ' ');
}

std::string base36(int n) {
  std::string digits;
  for (int i = 0; i < 3; ++i, n /= 36)
    digits.insert(digits.begin(), "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"[n % 36]);
  return digits;
}

class Program {
 public:
  explicit Program(Bytes bytes) : bytes_(bytes) {
    vk_openVesk(nullptr);
    Vesk::outFile.output() = Vesk::Output();
    Vesk::elementHolder = Vesk::ElementHolder();
  }

  void run() {
    for (int calls = 0; calls < 64 && !bytes_.empty(); ++calls) call();
    vk_openVesk(nullptr);
    if (!written_) return;
    std::ifstream file("veskfuzz.dat", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    check(text == expected_, "the file holds the lines of its elements",
          text + "---\n" + expected_);
  }

 private:
  void call() {
    const int choice = bytes_.below(16);
    if (choice == 0) return open();
    if (choice <= 2) return setHeader();
    element(choice);
  }

  void open() {
    const int how = bytes_.below(8);
    if (how == 0) {
      check(vk_openVesk(nullptr) == 0, "a null name opens nothing");
      open_ = false;
    } else if (how == 1) {
      check(vk_openVesk("no/such/folder") == 0, "no folder, no file");
      open_ = false;
    } else {
      check(vk_openVesk("fuzz") == 1, "the file is opened");
      open_ = true;
      written_ = true;
      expected_.clear();
    }
  }

  void setHeader() {
    const std::string a = bytes_.text(12);
    const std::string b = bytes_.text(4);
    const int n =
        bytes_.byte() == 0 ? bytes_.integer() : bytes_.below(256) * 256 + bytes_.below(256);
    const bool null = bytes_.below(8) == 0;
    const int result = vk_setHeader(null ? nullptr : a.c_str(), b.c_str(), n);
    header_.a = field(null ? nullptr : a.c_str(), 8);
    header_.b = field(b.c_str(), 2);
    if (n >= 0) {
      check(result == (n < 46656), "0 to 46655 fit");
      header_.n = base36(n % 46656);
    } else {
      header_.n = Vesk::elementHolder.header.f3.data();
    }
  }

  Xyz point() {
    const double x = bytes_.number();
    const double y = bytes_.number();
    return {{x, y, bytes_.number()}};
  }

  void element(int choice) {
    const Xyz p[8] = {point(), point(), point(), point(), {}, {}, {}, {}};
    const double d = bytes_.number();
    const bool null = bytes_.below(32) == 1;
    const double* const first = null ? nullptr : p[0].at;
    const Xyz* q = p;
    std::string body;
    int lines = -1;  // none was returned
    try {
      switch (choice) {
        case 3:
          body = "l pt " + place(q[0]);
          vk_writePnt(first);
          break;
        case 4:
          body = "l pt " + place(q[0]) + ",pt " + triple(q[1] - q[0], 4);
          vk_writeSeg(first, q[1].at);
          break;
        case 5:
          body = "g pt " + place(q[0]) + ",pt " + triple(q[1] - q[0], 6) + ",pt " +
                 triple(q[2] - q[0], 6);
          vk_writeTri(first, q[1].at, q[2].at);
          break;
        case 6:
          body = "g pt " + place(q[0]) + ",pt " + triple(q[1] - q[0], 6) + ",pt " +
                 triple(q[2] - q[0], 6) + ",pt " + triple(q[3] - q[0], 6);
          vk_writeQua(first, q[1].at, q[2].at, q[3].at);
          break;
        case 7:
          vk_writeBox(first, q[1].at, q[2].at, q[3].at);
          break;
        case 8:
          vk_writeRed(first, q[1].at, q[2].at, q[3].at, q[3].at, q[2].at, q[1].at, q[0].at);
          break;
        case 9:
          body = "c " + place(q[0]) + step(q[1] - q[0]) + size(d);
          lines = vk_writeCyl(first, q[1].at, d);
          break;
        case 10:
          body = "n " + place(q[0]) + step(q[1] - q[0]) + size(d) + size(q[2].at[0]);
          lines = vk_writeCon(first, q[1].at, d, q[2].at[0]);
          break;
        case 11:
          body = "t " + place(q[0]) + step(q[1] - q[0]) + step(q[2] - q[0]) + size(d);
          lines = vk_writeTor(first, q[1].at, q[2].at, d);
          break;
        case 12:
          lines = vk_writeElb(first, q[1].at, q[2].at, q[3].at, d);
          break;
        default: {
          const std::string text = bytes_.text(255);
          vk_writeTxt(first, q[1].at, q[2].at, d, q[3].at[0], bytes_.integer(), bytes_.integer(),
                      bytes_.below(16) == 0 ? nullptr : text.c_str());
        }
      }
    } catch (const GeEx::NullPtr&) {
      check(null, "only a null array is refused as such");
      return;
    } catch (const GeEx::NullDir&) {
      check(choice == 12, "only an elbow needs a direction");
      return;
    }
    check(!null, "a null array is refused");
    check(lines >= -1, "lines are counted");
    if (!open_) {
      check(lines <= 0, "no file, no lines");
      return;
    }
    const Vesk::Recs& recs = Vesk::outFile.records();
    check(lines == -1 || lines == static_cast<int>(recs.size()), "the lines printed are counted");
    const std::string prefix = header_.prefix();
    for (const std::string& line : recs) {
      check(line.compare(0, 17, prefix, 0, 17) == 0, "every line has the header", line);
      expected_ += line + '\n';
    }
    if (!body.empty() && prefix.size() + body.size() <= kLine) {
      check(recs.size() == 1 && recs[0] == prefix + body, "the record is that of the element",
            (recs.empty() ? std::string() : recs[0]) + "\n" + prefix + body);
    }
  }

  Bytes bytes_;
  Header header_;
  bool open_ = false;
  bool written_ = false;
  std::string expected_;
};

// A folder of this process alone.
void enterFolder() {
  namespace fs = std::filesystem;
  static const bool entered = [] {
    const fs::path base = fs::exists("/dev/shm") ? "/dev/shm" : fs::temp_directory_path();
    std::string name = (base / "vesk-fuzz-XXXXXX").string();
    check(mkdtemp(name.data()) != nullptr, "a folder for the file");
    fs::current_path(name);
    static const struct Leave {
      std::string path;
      ~Leave() {
        std::error_code ignored;
        fs::current_path("/", ignored);
        fs::remove_all(path, ignored);
      }
    } leave{name};
    return true;
  }();
  static_cast<void>(entered);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  enterFolder();
  Program(Bytes(data, size)).run();
  return 0;
}
