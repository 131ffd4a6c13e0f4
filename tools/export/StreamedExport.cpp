// SPDX-License-Identifier: MIT
#include "export/StreamedExport.h"

#include "elements/Kinds.h"
#include "files/FileNames.h"
#include "files/Files.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

std::string listOf(const std::map<std::string, std::uint64_t>& counts) {
  std::string text;
  for (const auto& [what, count] : counts) {
    text += (text.empty() ? "" : ", ") + counted(count, what.c_str());
  }
  return text;
}

void sayTrouble(const std::string& file, const Vesk::RecordElement& element,
                const std::string& trouble, Session& session) {
  Finding finding;
  finding.code = "V401";
  finding.file = file;
  finding.line = element.firstLine;
  finding.message = std::string(wordOf(kindOf(*element.geo))) + " can't be shown: " + trouble;
  session.say(finding);
}

// `handedOn` is its name in what is written.
Exit exportFile(const std::string& file, const std::string& handedOn, Choice& choice,
                ElementWriter& writer, Session& session) {
  InputCount count;
  Vesk::RecordFile records = openRecords(file, count, session);
  const std::string name = shownName(file);
  std::uint64_t elements = 0;
  Exit exit = Exit::kDone;
  writer.beginFile(file, handedOn);
  for (Vesk::RecordFile::Found found; (found = records.next()) != Vesk::RecordFile::Found::kEnd;) {
    if (found == Vesk::RecordFile::Found::kFault) {
      if (records.mode() != 0) session.say(findingOf(records));
      writer.fault(records.fault());
      exit = Exit::kNo;
      continue;
    }
    ++elements;
    if (!choice.takes(records.element())) continue;
    const std::string trouble = writer.add({records.element(), name});
    if (trouble.empty()) continue;
    sayTrouble(name, records.element(), trouble, session);
    exit = Exit::kNo;
  }
  requireRecords(records, count, elements);
  return exit;
}

}  // namespace

Exit exportStream(const std::vector<std::string>& files, std::string_view ending, Choice& choice,
                  ElementWriter& writer, bool isStrict, Session& session) {
  for (const std::string& file : files) expectInput(file, session.progress());
  Exit exit = Exit::kDone;
  std::vector<std::string> shown;
  for (const std::string& file : files) shown.push_back(shownName(file));
  const std::vector<std::string> handedOn = handedOnNames(shown);
  for (std::size_t i = 0; i < files.size(); ++i)
    exit = worst(exit, exportFile(files[i], handedOn[i], choice, writer, session));
  writer.finish();
  const std::string lost = listOf(writer.lost());
  if (!lost.empty()) session.warning("not kept: " + lost);
  const std::string leftOut = listOf(writer.leftOut());
  if (leftOut.empty()) return exit;
  session.warning(
      "left out: " + leftOut,
      (ending == "tiles" ? "a tileset" : "." + std::string(ending)) + " has no place for them");
  return isStrict ? worst(exit, Exit::kNo) : exit;
}

}  // namespace VeskTool
