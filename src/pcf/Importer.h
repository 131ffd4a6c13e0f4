// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_IMPORTER_H
#define VESK_PCF_IMPORTER_H

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pcf/Bores.h"
#include "pcf/LineHeaders.h"
#include "pcf/Messages.h"
#include "pcf/Plan.h"
#include "pcf/Repeats.h"
#include "sidecar/Sidecar.h"

namespace Vesk::Pcf {

// What has become of a component.
enum class Outcome {
  kDrawn,     // its whole centre line
  kInPart,    // some of it
  kNothing,   // there is nothing to draw by its nature: bolts, flow arrows
  kNotDrawn,  // it should have been drawn
  kOutcomes
};

std::string_view nameOf(Outcome outcome);

// Components of one word with one fate.
struct Fate {
  std::string word;
  Outcome outcome = Outcome::kDrawn;
  std::string reason;  // of what is missing
  std::uint64_t count = 0;
  Place first;
};

// Where the drawing goes, component by component.
class Sink {
 public:
  virtual ~Sink() = default;

  // The elements that follow are of this component.
  virtual void begin(const LineHeader& header) = 0;
  virtual void put(const Geo& geo) = 0;

  // Behind the elements of a component that has any. The row's values are those of
  // sidecarColumns().
  virtual void end(const SidecarRow& row) = 0;

 protected:
  Sink() = default;
  Sink(const Sink&) = default;
  Sink& operator=(const Sink&) = default;
};

struct ImportOptions {
  BoreMeaning bores = BoreMeaning::kAuto;
  double tolerance = 1;    // millimetres; see Part::tolerance
  bool hasSidecar = true;  // whether rows are made

  // Whether components that stand in two files are told, for up to 24 bytes of each.
  bool tellsRepeats = true;
};

// Draws piping component files, one after the other; one is in memory at a time.
class Importer {
 public:
  // The sink and the messages outlive it.
  Importer(const ImportOptions& options, Sink& sink, Messages& messages);

  // Draws a file; the name is for messages and the sidecar. False, with a message, if
  // it is no piping component file or holds no component.
  bool add(std::string_view name, std::string bytes);

  std::uint64_t components() const;
  std::uint64_t count(Outcome outcome) const {
    return outcomes_[static_cast<std::size_t>(outcome)];
  }
  std::uint64_t elements() const { return elements_; }
  const std::vector<Fate>& fates() const { return fates_; }

 private:
  class FileDrawing;

  std::size_t fateOf(const std::string& word, Outcome outcome, std::string_view reason,
                     std::uint32_t line);
  void tally(std::size_t fate);

  const ImportOptions options_;
  Sink& sink_;
  Messages& messages_;
  LineHeaders headers_;
  SeenComponents seen_;
  std::uint64_t elements_ = 0;
  std::array<std::uint64_t, static_cast<std::size_t>(Outcome::kOutcomes)> outcomes_{};
  std::vector<Fate> fates_;
  std::unordered_map<std::string, std::size_t> fateIndices_;
};

}  // namespace Vesk::Pcf

#endif
