// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_MESSAGES_H
#define VESK_PCF_MESSAGES_H

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Vesk::Pcf {

enum class Severity {
  kQuiet,    // a note that only those want who ask for all
  kNote,     // taken for what it is; said so that nobody wonders
  kWarning,  // drawn, but a guess changed the geometry
  kError,    // something is missing from the drawing
};

struct Place {
  std::uint32_t file = 0;  // index into the names
  std::uint32_t line = 0;  // 0: the file as a whole
};

// The same fault in all its places.
struct Message {
  Severity severity = Severity::kNote;
  std::string text;    // "PIPE not drawn: has no length"
  std::string detail;  // of the first place, with what joins it: ", found none"; may be empty
  std::uint64_t count = 0;
  std::vector<Place> places;  // the first of them
};

// What is to be said about the files of an import: the same fault many times is one
// message with a count and its first places.
class Messages {
 public:
  // How many places of a message are kept; see Message.
  explicit Messages(std::size_t places = 3) : most_(places) {}

  // A new file, to which the lines belong from now on.
  void beginFile(std::string_view name);

  void add(Severity severity, std::uint32_t line, std::string_view text,
           std::string_view detail = {});

  const std::vector<Message>& all() const { return messages_; }
  const std::vector<std::string>& files() const { return files_; }
  std::uint64_t count(Severity severity) const;  // of faults, not of messages

  // What a message says without its first place: "text (74 times, also a.pcf:20, b.pcf:7)".
  std::string bodyOf(const Message& message) const;

  // "a.pcf:12: warning: text (74 times, also a.pcf:20, b.pcf:7)", without a line end.
  std::string textOf(const Message& message) const;

 private:
  std::string nameOf(const Place& place) const;

  std::size_t most_;
  std::vector<std::string> files_;
  std::vector<Message> messages_;
  std::unordered_map<std::string, std::size_t> indices_;
};

std::string_view nameOf(Severity severity);

}  // namespace Vesk::Pcf

#endif
