// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_SQLITESTATEMENT_H
#define VESK_TOOLS_EXPORT_SQLITESTATEMENT_H

#include <sqlite3.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "terminal/Exit.h"
#include "text/Json.h"

namespace VeskTool {

[[noreturn]] inline void failSqlite(sqlite3* database) {
  throw Failure(Exit::kOutput, std::string("SQLite: ") + sqlite3_errmsg(database));
}

// A statement that is prepared once and run often, or read row by row. The database outlives
// it. Throws a Failure for what SQLite refuses.
class SqliteStatement {
 public:
  SqliteStatement(sqlite3* database, const char* text) : database_(database) {
    if (sqlite3_prepare_v3(database, text, -1, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr) !=
        SQLITE_OK) {
      failSqlite(database);
    }
  }
  ~SqliteStatement() { sqlite3_finalize(statement_); }
  SqliteStatement(const SqliteStatement&) = delete;
  SqliteStatement& operator=(const SqliteStatement&) = delete;

  // The value of the next parameter.
  SqliteStatement& add(std::int64_t value) {
    return checked(sqlite3_bind_int64(statement_, ++at_, value));
  }
  SqliteStatement& add(double value) {
    if (!std::isfinite(value)) return null();
    return checked(sqlite3_bind_double(statement_, ++at_, value));
  }
  // Bytes that are no UTF-8 become U+FFFD.
  SqliteStatement& add(std::string_view text) {
    const std::string valid = validUtf8(text);
    return checked(sqlite3_bind_text(statement_, ++at_, valid.data(),
                                     static_cast<int>(valid.size()), SQLITE_TRANSIENT));
  }
  SqliteStatement& addBytes(std::string_view bytes) {
    return checked(sqlite3_bind_blob(statement_, ++at_, bytes.data(),
                                     static_cast<int>(bytes.size()), SQLITE_TRANSIENT));
  }
  SqliteStatement& null() { return checked(sqlite3_bind_null(statement_, ++at_)); }

  void run() {
    if (sqlite3_step(statement_) != SQLITE_DONE) failSqlite(database_);
    sqlite3_reset(statement_);
    at_ = 0;
  }

  // The next row of the answer, or false.
  bool next() {
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) failSqlite(database_);
    return code == SQLITE_ROW;
  }
  std::int64_t integer(int column) { return sqlite3_column_int64(statement_, column); }
  double number(int column) { return sqlite3_column_double(statement_, column); }

 private:
  SqliteStatement& checked(int code) {
    if (code != SQLITE_OK) failSqlite(database_);
    return *this;
  }

  sqlite3* database_;
  sqlite3_stmt* statement_ = nullptr;
  int at_ = 0;
};

}  // namespace VeskTool

#endif
