// SPDX-License-Identifier: MIT
#include "files/SceneReader.h"

#include <memory>
#include <utility>

#include "elements/Describe.h"
#include "elements/Kinds.h"
#include "elements/Shown.h"
#include "files/Files.h"
#include "mesh/SceneBuilder.h"
#include "terminal/Options.h"
#include "terminal/Streams.h"
#include "terminal/Terminal.h"

namespace VeskTool {
namespace {

// Hands over each chosen element with what the scene keeps of it. `builder` knows
// the files and headers.
template <class Take>
Exit readFile(const std::string& file, Choice& choice, Vesk::SceneBuilder& builder,
              Session& session, Take take) {
  InputCount count;
  Vesk::RecordFile records = openRecords(file, count, session);
  const std::uint32_t fileId = builder.addFile(shownName(file));
  std::uint64_t elements = 0;
  Exit exit = Exit::kDone;
  for (;;) {
    const Vesk::RecordFile::Found found = records.next();
    if (found == Vesk::RecordFile::Found::kEnd) break;
    if (found == Vesk::RecordFile::Found::kFault) {
      if (records.mode() != 0) session.say(findingOf(records));
      exit = Exit::kNo;
      continue;
    }
    ++elements;
    const Vesk::RecordElement& element = records.element();
    if (!choice.takes(element)) continue;
    take(*element.geo, shownOf(element, fileId, builder));
  }
  requireRecords(records, count, elements);
  return exit;
}

}  // namespace

void FinenessOptions::define(CLI::App& app) {
  CLI::Option* tolerance =
      app.add_option("--tolerance", tolerance_,
                     "the largest distance between a round surface and its triangles, in the unit "
                     "of the file")
          ->type_name("LENGTH")
          ->default_str("by --quality")
          ->check(aboveZero());
  app.add_option("--quality", quality_, "draft, normal or fine: 16, 32 or 64 pieces for a circle")
      ->type_name("QUALITY")
      ->check(CLI::IsMember(std::vector<std::string>{"draft", "normal", "fine"}))
      ->capture_default_str()
      ->excludes(tolerance);
}

Vesk::Fineness FinenessOptions::fineness() const {
  using Vesk::Fineness;
  if (tolerance_ > 0.0) return Fineness::ofTolerance(tolerance_);
  if (quality_ == "draft") return Fineness::ofSegments(Fineness::kDraft);
  return Fineness::ofSegments(quality_ == "fine" ? Fineness::kFine : Fineness::kNormal);
}

Exit sayFailures(const Vesk::Scene& scene, Session& session) {
  for (const Vesk::SceneFailure& failure : scene.failures) {
    const Vesk::SceneElement& element = scene.elements[failure.element];
    Finding finding;
    finding.code = "V401";
    finding.file = scene.files[element.file];
    finding.line = element.line;
    finding.message =
        std::string(wordOf(static_cast<Kind>(element.kind))) + " can't be shown: " + failure.reason;
    session.say(finding);
  }
  return scene.failures.empty() ? Exit::kDone : Exit::kNo;
}

Exit readScene(const std::vector<std::string>& files, const Vesk::Fineness& fineness,
               Choice& choice, Session& session, Vesk::Scene& scene) {
  for (const std::string& file : files) expectInput(file, session.progress());
  Vesk::SceneBuilder builder(fineness);
  Exit exit = Exit::kDone;
  for (const std::string& file : files)
    exit = worst(exit, readFile(file, choice, builder, session,
                                [&](const Vesk::Geo& geo, const Vesk::SceneElement& shown) {
                                  builder.add(geo, shown);
                                }));
  scene = builder.finish();
  return worst(exit, sayFailures(scene, session));
}

Exit readDrawnScene(const std::vector<std::string>& files, const Vesk::DrawingStyle& style,
                    Choice& choice, Session& session, Vesk::Scene& scene) {
  struct Kept {
    std::unique_ptr<Vesk::Geo> geo;
    Vesk::SceneElement shown;
  };
  for (const std::string& file : files) expectInput(file, session.progress());
  std::vector<Kept> kept;
  Vesk::SceneBuilder rough(Vesk::Fineness::ofSegments(Vesk::Fineness::kDraft));
  Exit exit = Exit::kDone;
  for (const std::string& file : files) {
    exit = worst(exit, readFile(file, choice, rough, session,
                                [&](const Vesk::Geo& geo, const Vesk::SceneElement& shown) {
                                  rough.add(geo, shown);
                                  kept.push_back({copyOf(geo), shown});
                                }));
  }
  scene = rough.finish();
  const Vesk::Fineness fineness = Vesk::Drawing::finenessFor(scene, style);
  Vesk::Scene names;
  names.files = std::move(scene.files);
  names.headers = std::move(scene.headers);
  names.groups = std::move(scene.groups);
  scene = Vesk::Scene();
  Vesk::SceneBuilder fine(fineness);
  for (Kept& each : kept) {
    checkInterrupt();
    fine.add(*each.geo, each.shown);
    each.geo.reset();
  }
  scene = fine.finish();
  scene.files = std::move(names.files);
  scene.headers = std::move(names.headers);
  scene.groups = std::move(names.groups);
  return worst(exit, sayFailures(scene, session));
}

}  // namespace VeskTool
