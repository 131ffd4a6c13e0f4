// SPDX-License-Identifier: MIT
#include "pcf/PcfRun.h"

#include <cstdlib>

#include "api/ElementHolder.h"
#include "output/Output.h"

using namespace Vesk;

namespace {

constexpr std::size_t kHeader = 17;
constexpr std::size_t kKeyword = 19;

class RecordSink : public Pcf::Sink {
 public:
  explicit RecordSink(PcfRun& run) : run_(run) {
    out_.mode = kTokens;
    out_.format = kTokens;
  }

  void begin(const Pcf::LineHeader& header) override {
    holder_.header.set(header.f1.c_str(), header.f2.c_str(), header.number);
  }

  void put(const Geo& geo) override {
    holder_.setElement(geo);
    out_.clear();
    out_.counter = 0;
    holder_.writeRecords(out_);
    out_.flushLine();
    for (std::size_t i = 0; i < out_.recs.size(); ++i) {
      const std::string line(out_.recs[i]);
      run_.headers.push_back(line.substr(0, kHeader));
      run_.records.push_back(line.substr(kKeyword));
    }
  }

  void end(const SidecarRow& row) override { run_.rows.push_back(row); }

 private:
  PcfRun& run_;
  ElementHolder holder_;
  Output out_;
};

}  // namespace

std::vector<std::string> PcfRun::recordsOf(char keyword) const {
  std::vector<std::string> some;
  for (const std::string& record : records) {
    if (!record.empty() && record[0] == keyword) some.push_back(record);
  }
  return some;
}

std::string PcfRun::messageText() const {
  std::string text;
  for (const std::string& message : messages) text += message + '\n';
  return text;
}

PcfRun runPcf(const std::vector<std::pair<std::string, std::string>>& files,
              const Pcf::ImportOptions& options) {
  PcfRun run;
  RecordSink sink(run);
  Pcf::Messages messages;
  Pcf::Importer importer(options, sink, messages);
  for (const auto& [name, text] : files) run.isPiping = importer.add(name, text) && run.isPiping;
  for (const Pcf::Message& message : messages.all())
    run.messages.push_back(messages.textOf(message));
  run.errors = messages.count(Pcf::Severity::kError);
  run.warnings = messages.count(Pcf::Severity::kWarning);
  run.components = importer.components();
  run.drawn = importer.count(Pcf::Outcome::kDrawn);
  run.inPart = importer.count(Pcf::Outcome::kInPart);
  run.nothing = importer.count(Pcf::Outcome::kNothing);
  run.notDrawn = importer.count(Pcf::Outcome::kNotDrawn);
  return run;
}

PcfRun runPcf(const std::string& text, const Pcf::ImportOptions& options) {
  return runPcf({{"in.pcf", text}}, options);
}

std::vector<double> numbersOf(const std::string& record) {
  std::vector<double> numbers;
  const char* at = record.c_str() + 1;
  while (*at != '\0') {
    char* end = nullptr;
    const double number = std::strtod(at, &end);
    if (end == at) {
      ++at;
    } else {
      numbers.push_back(number);
      at = end;
    }
  }
  return numbers;
}
