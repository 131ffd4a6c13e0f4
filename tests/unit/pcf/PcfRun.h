// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "pcf/Importer.h"

// What an import of texts has made.
struct PcfRun {
  std::vector<std::string> records;  // of the token style, without the header
  std::vector<std::string> headers;  // 17 characters, of each record
  std::vector<Vesk::SidecarRow> rows;
  std::vector<std::string> messages;  // as they are shown, quiet ones too
  std::uint64_t errors = 0;
  std::uint64_t warnings = 0;
  std::uint64_t components = 0;
  std::uint64_t drawn = 0;
  std::uint64_t inPart = 0;
  std::uint64_t nothing = 0;
  std::uint64_t notDrawn = 0;
  bool isPiping = true;  // all of the texts

  // The records with this keyword: 'c' cylinder, 'n' cone, 't' bend, 'l' line ...
  std::vector<std::string> recordsOf(char keyword) const;

  // All messages, a line each.
  std::string messageText() const;
};

// Imports the texts as files of these names.
PcfRun runPcf(const std::vector<std::pair<std::string, std::string>>& files,
              const Vesk::Pcf::ImportOptions& options = {});

// One file, "in.pcf".
PcfRun runPcf(const std::string& text, const Vesk::Pcf::ImportOptions& options = {});

// The numbers of a record, in its order.
std::vector<double> numbersOf(const std::string& record);
