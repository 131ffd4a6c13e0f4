// SPDX-License-Identifier: MIT
// piping - draws a piping component file as a Vesk record file.
//
// The library vesk_pcf reads the file and makes primitives of it; this host writes them
// through the functions of vesk.h.
#include <vesk.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "pcf/Importer.h"
#include <vesk/Box.h>
#include <vesk/Cone.h>
#include <vesk/Cyl.h>
#include <vesk/Pline.h>
#include <vesk/Red.h>
#include <vesk/Torus.h>
#include <vesk/Txt.h>

namespace {

enum Exit { kDone = 0, kRemarks = 1, kUsage = 2, kInput = 3, kOutput = 4 };

constexpr char kHelp[] =
    "Usage: piping [--bore-as-diameter] FILE.pcf NAME\n"
    "Draws a piping component file as the Vesk record file veskNAME.dat.\n"
    "\n"
    "  FILE.pcf            the file to draw; - is the standard input\n"
    "  NAME                what stands between \"vesk\" and \".dat\"; the file lies in the\n"
    "                      current folder\n"
    "  --bore-as-diameter  draw pipes as wide as their bores\n"
    "  --help              print this and stop\n"
    "\n"
    "Counts go to the standard output, messages \"file:line: ...\" to standard error.\n"
    "Exit code: 0 done; 1 done, but something was left out or guessed; 2 wrong usage;\n"
    "3 the input cannot be read or holds no component; 4 the output cannot be written.\n";

struct Point {
  std::array<double, 3> at;

  explicit Point(const GePoint& p) : at{p.x, p.y, p.z} {}
  operator const double*() const { return at.data(); }  // NOLINT(google-explicit-constructor)
};

struct Vector {
  std::array<double, 3> at;

  explicit Vector(const GeVector& v) : at{v.x, v.y, v.z} {}
  operator const double*() const { return at.data(); }  // NOLINT(google-explicit-constructor)
};

// The function of vesk.h for each kind of primitive that a piping file is drawn with.
void write(const Vesk::Geo& geo) {
  if (const auto* cyl = dynamic_cast<const Vesk::Cyl*>(&geo)) {
    vk_writeCyl(Point(cyl->origin), Point(cyl->origin + cyl->axis), cyl->diameter);
  } else if (const auto* cone = dynamic_cast<const Vesk::Cone*>(&geo)) {
    vk_writeCon(Point(cone->origin), Point(cone->origin + cone->axis), cone->diameter1,
                cone->diameter2);
  } else if (const auto* torus = dynamic_cast<const Vesk::Torus*>(&geo)) {
    vk_writeTor(Point(torus->centre), Point(torus->centre + torus->startVector),
                Point(torus->centre + torus->endVector), torus->diameter);
  } else if (const auto* line = dynamic_cast<const Vesk::Pline*>(&geo)) {
    if (line->vertices.size() == 1)
      vk_writePnt(Point(line->vertices[0]));
    else
      vk_writeSeg(Point(line->vertices[0]), Point(line->vertices[1]));
  } else if (const auto* box = dynamic_cast<const Vesk::Box*>(&geo)) {
    vk_writeBox(Point(box->origin), Point(box->origin + box->edge1),
                Point(box->origin + box->edge2), Point(box->origin + box->edge3));
  } else if (const auto* red = dynamic_cast<const Vesk::Red*>(&geo)) {
    vk_writeRed(Point(red->corner(0)), Point(red->corner(1)), Point(red->corner(2)),
                Point(red->corner(3)), Point(red->corner(4)), Point(red->corner(5)),
                Point(red->corner(6)), Point(red->corner(7)));
  } else if (const auto* text = dynamic_cast<const Vesk::Txt*>(&geo)) {
    vk_writeTxt(Point(text->position), Vector(text->direction), Vector(text->upDirection),
                text->charWidth, text->height, text->alignment, text->alignmentFlag,
                text->text.c_str());
  }
}

// Opens the file for the first element, so that an older one stays as it is where
// there is nothing to draw.
class HostSink : public Vesk::Pcf::Sink {
 public:
  explicit HostSink(const char* name) : name_(name) {}

  void begin(const Vesk::Pcf::LineHeader& header) override {
    if (!isOpened_) {
      isOpened_ = true;
      errno = 0;
      if (vk_openVesk(name_) == 0) refused_ = errno != 0 ? errno : EIO;
    }
    vk_setHeader(header.f1.c_str(), header.f2.c_str(), header.number);
  }
  void put(const Vesk::Geo& geo) override {
    if (refused_ == 0) write(geo);
  }
  void end(const Vesk::SidecarRow&) override {}

  bool isOpened() const { return isOpened_; }

  // Closes the file; the reason if the system refused any of it, else 0.
  int close() {
    errno = 0;
    vk_openVesk(nullptr);
    if (refused_ == 0) refused_ = errno;
    return refused_;
  }

 private:
  const char* name_;
  bool isOpened_ = false;
  int refused_ = 0;
};

bool readFile(const char* name, std::string& bytes) {
  const bool isStdin = std::strcmp(name, "-") == 0;
  std::FILE* file = isStdin ? stdin : std::fopen(name, "rb");
  if (file == nullptr) return false;
  std::array<char, 65536> block;
  errno = 0;
  for (std::size_t read = 1; read > 0;) {
    read = std::fread(block.data(), 1, block.size(), file);
    bytes.append(block.data(), read);
  }
  const bool isWhole = std::ferror(file) == 0;
  const int number = errno;
  if (!isStdin) std::fclose(file);
  errno = number;
  return isWhole;
}

struct Arguments {
  const char* input = nullptr;
  const char* name = nullptr;
  bool boreAsDiameter = false;
  bool help = false;
};

// False, and says why, if the arguments are wrong.
bool readArguments(Arguments& arguments, int count, char** words) {
  bool optionsOver = false;
  for (int i = 1; i < count; ++i) {
    const std::string_view word = words[i];
    if (!optionsOver && word == "--") {
      optionsOver = true;
    } else if (!optionsOver && (word == "--help" || word == "-h")) {
      arguments.help = true;
      return true;
    } else if (!optionsOver && word == "--bore-as-diameter") {
      arguments.boreAsDiameter = true;
    } else if (!optionsOver && word.size() > 1 && word[0] == '-') {
      std::fprintf(stderr, "piping: error: unknown option \"%s\"\n", words[i]);
      return false;
    } else if (arguments.input == nullptr) {
      arguments.input = words[i];
    } else if (arguments.name == nullptr) {
      arguments.name = words[i];
    } else {
      std::fprintf(stderr, "piping: error: expected two names, found a third: \"%s\"\n", words[i]);
      return false;
    }
  }
  if (arguments.name != nullptr && arguments.name[0] != '\0') return true;
  std::fputs("piping: error: expected the name of a file and the name of the output\n", stderr);
  return false;
}

void print(const Vesk::Pcf::Importer& importer, const std::string& file) {
  std::printf("Written: %s\nElements: %llu\nComponents: %llu\n", file.c_str(),
              static_cast<unsigned long long>(importer.elements()),
              static_cast<unsigned long long>(importer.components()));
  for (const Vesk::Pcf::Fate& fate : importer.fates()) {
    std::printf("%8llu  %s, %s%s%s\n", static_cast<unsigned long long>(fate.count),
                fate.word.c_str(), std::string(nameOf(fate.outcome)).c_str(),
                fate.reason.empty() ? "" : ": ", fate.reason.c_str());
  }
}

Exit run(const Arguments& arguments) {
  const std::string file = std::string("vesk") + arguments.name + ".dat";
  if (file == arguments.input) {
    std::fprintf(stderr, "piping: error: %s is both input and output\n", file.c_str());
    return kUsage;
  }
  const char* name = std::strcmp(arguments.input, "-") == 0 ? "stdin" : arguments.input;
  std::string bytes;
  if (!readFile(arguments.input, bytes)) {
    std::fprintf(stderr, "%s: error: cannot be read: %s\n", name, std::strerror(errno));
    return kInput;
  }
  Vesk::Pcf::ImportOptions options;
  options.hasSidecar = false;
  if (arguments.boreAsDiameter) options.bores = Vesk::Pcf::BoreMeaning::kDiameter;
  Vesk::Pcf::Messages messages;
  HostSink sink(arguments.name);
  Vesk::Pcf::Importer importer(options, sink, messages);
  const bool isPiping = importer.add(name, std::move(bytes));
  const int refused = sink.close();
  for (const Vesk::Pcf::Message& message : messages.all()) {
    if (message.severity == Vesk::Pcf::Severity::kQuiet) continue;
    std::fprintf(stderr, "%s\n", messages.textOf(message).c_str());
  }
  if (refused != 0) {
    std::fprintf(stderr, "%s: error: incomplete: %s\n", file.c_str(), std::strerror(refused));
    return kOutput;
  }
  if (!isPiping || !sink.isOpened()) return kInput;
  print(importer, file);
  if (std::fflush(stdout) != 0) return kOutput;
  const bool isAsItWas = messages.count(Vesk::Pcf::Severity::kError) == 0 &&
                         messages.count(Vesk::Pcf::Severity::kWarning) == 0;
  return isAsItWas ? kDone : kRemarks;
}

}  // namespace

int main(int count, char** words) {
  Arguments arguments;
  if (!readArguments(arguments, count, words)) {
    std::fputs("Try \"piping --help\".\n", stderr);
    return kUsage;
  }
  if (arguments.help) {
    std::fputs(kHelp, stdout);
    return kDone;
  }
  return run(arguments);
}
