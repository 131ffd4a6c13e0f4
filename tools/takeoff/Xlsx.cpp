// SPDX-License-Identifier: MIT
#include "takeoff/Xlsx.h"

#include <dlfcn.h>
#include <xlsxwriter.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <system_error>

#include "terminal/Exit.h"
#include "terminal/Terminal.h"
#include "text/Json.h"
#include "text/Numbers.h"
#include "text/Words.h"

namespace VeskTool {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostLines = 1048576;
constexpr std::size_t kMostLetters = 31;  // of the name of a sheet
constexpr double kWidth = 14.0;

// What is written as the time of creation: 2000-01-01.
constexpr std::time_t kCreated = 946684800;

// A file in a folder of its own, which go with the object.
class ScratchFile {
 public:
  ScratchFile() {
    std::error_code error;
    folder_ =
        fs::temp_directory_path(error) / pathOf("vesk-takeoff-" + std::to_string(processNumber()));
    if (error || !fs::create_directory(folder_, error)) {
      throw Failure(Exit::kOutput,
                    nameOf(folder_) + ": " + (error ? error.message() : "this is there already"));
    }
    path_ = folder_ / "book.xlsx";
    halves_ = {HalfFile(folder_), HalfFile(path_)};
  }
  ~ScratchFile() {
    std::error_code error;
    fs::remove_all(folder_, error);
  }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  const fs::path& path() const { return path_; }

  void copyTo(TextSink& out) const {
    std::ifstream stream(path_, std::ios::binary);
    std::array<char, 1 << 16> block;
    while (stream.read(block.data(), block.size()) || stream.gcount() > 0) {
      out.write({block.data(), static_cast<std::size_t>(stream.gcount())});
    }
    if (!stream.eof()) throw Failure(Exit::kOutput, nameOf(path_) + ": " + errorText(errno));
  }

 private:
  fs::path folder_;
  fs::path path_;
  std::array<HalfFile, 2> halves_;
};

// libxlsxwriter, opened when a workbook is asked for: it brings a library of ciphers
// along, for whose start and memory every other command would pay.
class Library {
 public:
  static const Library& get() {
    static const Library library;
    return library;
  }

#define VESK_FROM_XLSXWRITER(name) decltype(&::name) name = find<decltype(&::name)>(#name)
  VESK_FROM_XLSXWRITER(workbook_new_opt);
  VESK_FROM_XLSXWRITER(workbook_set_properties);
  VESK_FROM_XLSXWRITER(workbook_add_format);
  VESK_FROM_XLSXWRITER(workbook_add_worksheet);
  VESK_FROM_XLSXWRITER(workbook_close);
  VESK_FROM_XLSXWRITER(format_set_bold);
  VESK_FROM_XLSXWRITER(worksheet_freeze_panes);
  VESK_FROM_XLSXWRITER(worksheet_set_column);
  VESK_FROM_XLSXWRITER(worksheet_write_string);
  VESK_FROM_XLSXWRITER(worksheet_write_number);
  VESK_FROM_XLSXWRITER(lxw_strerror);
#undef VESK_FROM_XLSXWRITER

 private:
  static void* opened() {
    static void* const library = dlopen(VESK_LIBXLSXWRITER_FILE, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
      throw Failure(Exit::kUsage, std::string("--xlsx: ") + dlerror(),
                    "the library libxlsxwriter, or --csv");
    }
    return library;
  }

  template <class Function>
  static Function find(const char* name) {
    void* const found = dlsym(opened(), name);
    if (found == nullptr) throw Failure(Exit::kUsage, std::string("--xlsx: ") + dlerror());
    return reinterpret_cast<Function>(found);
  }
};

const Library& xlsx() { return Library::get(); }

void require(lxw_error error) {
  if (error == LXW_NO_ERROR) return;
  throw Failure(Exit::kOutput, std::string("the workbook: ") + xlsx().lxw_strerror(error));
}

// Closed in any case: the library gives its memory back then.
class Workbook {
 public:
  explicit Workbook(const fs::path& path) {
    // Lines go to a file of their own as they come, not into memory.
    std::string folder = path.parent_path().string();
    lxw_workbook_options options = {};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = folder.data();
    book_ = xlsx().workbook_new_opt(path.c_str(), &options);
    if (book_ == nullptr) throw Failure(Exit::kOutput, nameOf(path) + ": can't be written");
    lxw_doc_properties properties = {};
    properties.created = kCreated;
    xlsx().workbook_set_properties(book_, &properties);
    bold_ = xlsx().workbook_add_format(book_);
    xlsx().format_set_bold(bold_);
  }
  ~Workbook() {
    if (book_ != nullptr) xlsx().workbook_close(book_);
  }
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;

  void close() {
    lxw_workbook* const book = book_;
    book_ = nullptr;
    require(xlsx().workbook_close(book));
  }

  lxw_worksheet* addSheet(const std::string& name) {
    lxw_worksheet* const sheet = xlsx().workbook_add_worksheet(book_, nameFor(name).c_str());
    if (sheet == nullptr) throw Failure(Exit::kOutput, "no sheet can be named \"" + name + '"');
    return sheet;
  }

  lxw_format* bold() { return bold_; }

 private:
  // What a sheet may be called, and none is yet.
  std::string nameFor(const std::string& wanted) {
    std::string name = validUtf8(wanted);
    for (char& c : name) {
      if (std::string_view("[]:*?/\\'").find(c) != std::string_view::npos) c = '_';
    }
    std::string unique = cut(name, kMostLetters);
    for (int i = 2; !names_.insert(lower(unique)).second; ++i) {
      const std::string number = ' ' + std::to_string(i);
      unique = cut(name, kMostLetters - number.size()) + number;
    }
    return unique;
  }

  static std::string lower(std::string text) {
    for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return text;
  }

  static std::string cut(const std::string& text, std::size_t letters) {
    std::size_t end = 0;
    for (std::size_t count = 0; end < text.size(); ++end) {
      if (!isContinuationByte(text[end]) && count++ == letters) break;
    }
    return text.substr(0, end);
  }

  lxw_workbook* book_ = nullptr;
  lxw_format* bold_ = nullptr;
  std::set<std::string> names_;
};

class SheetWriter {
 public:
  SheetWriter(Workbook& book, const TakeOffOptions& options, const std::string& name)
      : book_(book), options_(options), sheet_(book.addSheet(name)) {
    const std::vector<TakeOffColumn> columns = takeOffColumns();
    xlsx().worksheet_freeze_panes(sheet_, 1, 0);
    xlsx().worksheet_set_column(sheet_, 0, static_cast<lxw_col_t>(columns.size() - 1), kWidth,
                                nullptr);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      require(xlsx().worksheet_write_string(sheet_, 0, static_cast<lxw_col_t>(i),
                                            titleOf(columns[i], options.units).c_str(),
                                            book.bold()));
    }
    columns_ = columns.size();
  }

  void add(const TakeOffLine& line) {
    if (row_ >= kMostLines) {
      throw Failure(Exit::kOutput,
                    "a sheet holds " + grouped(kMostLines) + " lines at most, and these are more",
                    "--sums, or --csv");
    }
    lxw_format* const format = line.level == Level::kRow ? nullptr : book_.bold();
    for (std::size_t i = 0; i < columns_; ++i) {
      const auto column = static_cast<lxw_col_t>(i);
      const TakeOffCell cell = cellOf(line, i, options_);
      if (const auto* text = std::get_if<std::string>(&cell)) {
        if (text->empty()) continue;
        require(
            xlsx().worksheet_write_string(sheet_, row_, column, validUtf8(*text).c_str(), format));
      } else {
        require(
            xlsx().worksheet_write_number(sheet_, row_, column, std::get<double>(cell), format));
      }
    }
    ++row_;
    constexpr lxw_row_t kSome = 1024;
    if (row_ % kSome == 0) checkInterrupt();
  }

 private:
  Workbook& book_;
  const TakeOffOptions& options_;
  lxw_worksheet* sheet_;
  std::size_t columns_ = 0;
  lxw_row_t row_ = 1;
};

}  // namespace

void writeXlsx(const TakeOff& takeOff, const TakeOffOptions& options, bool sumsOnly,
               TextSink& out) {
  const ScratchFile scratch;
  Workbook book(scratch.path());
  for (std::size_t i = 0; i < takeOff.groups().size(); ++i) {
    const std::string name =
        options.groupings.empty() ? "take-off" : "by " + options.groupings[i].by();
    SheetWriter sheet(book, options, name);
    for (const TakeOffLine& line : linesOf(takeOff, options, i, sumsOnly)) sheet.add(line);
    sheet.add(totalOf(takeOff));
  }
  book.close();
  scratch.copyTo(out);
}

}  // namespace VeskTool
