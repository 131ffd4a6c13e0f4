// SPDX-License-Identifier: MIT
#include "pcf/Messages.h"

#include <charconv>

namespace Vesk::Pcf {
namespace {

std::string decimal(std::uint64_t number) {
  char digits[24];
  return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

}  // namespace

std::string_view nameOf(Severity severity) {
  switch (severity) {
    case Severity::kQuiet:
    case Severity::kNote:
      return "note";
    case Severity::kWarning:
      return "warning";
    case Severity::kError:
      break;
  }
  return "error";
}

void Messages::beginFile(std::string_view name) { files_.emplace_back(name); }

void Messages::add(Severity severity, std::uint32_t line, std::string_view text,
                   std::string_view detail) {
  std::string key(1, static_cast<char>('0' + static_cast<int>(severity)));
  key += text;
  const auto [place, isNew] = indices_.try_emplace(std::move(key), messages_.size());
  if (isNew) {
    messages_.push_back({severity, std::string(text), std::string(detail), 0, {}});
  }
  Message& message = messages_[place->second];
  ++message.count;
  if (message.places.size() >= most_) return;
  const auto file = static_cast<std::uint32_t>(files_.empty() ? 0 : files_.size() - 1);
  message.places.push_back({file, line});
}

std::uint64_t Messages::count(Severity severity) const {
  std::uint64_t count = 0;
  for (const Message& message : messages_) {
    if (message.severity == severity) count += message.count;
  }
  return count;
}

std::string Messages::nameOf(const Place& place) const {
  std::string name = place.file < files_.size() ? files_[place.file] : std::string();
  if (place.line > 0) name += ':' + decimal(place.line);
  return name;
}

std::string Messages::bodyOf(const Message& message) const {
  std::string text = message.text + message.detail;
  if (message.count < 2) return text;
  text += " (" + decimal(message.count) + " times";
  for (std::size_t i = 1; i < message.places.size(); ++i) {
    text += i == 1 ? ", also " : ", ";
    text += nameOf(message.places[i]);
  }
  if (message.count > message.places.size()) text += " ...";
  return text + ')';
}

std::string Messages::textOf(const Message& message) const {
  std::string text;
  if (!message.places.empty()) text = nameOf(message.places[0]) + ": ";
  text.append(Pcf::nameOf(message.severity)).append(": ");
  return text + bodyOf(message);
}

}  // namespace Vesk::Pcf
