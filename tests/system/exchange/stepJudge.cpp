// SPDX-License-Identifier: MIT
// stepJudge RECORDS STEP - reads a STEP file with Open CASCADE and compares it with the
// record file that it was made of, element by element: every solid is valid, its volume
// is that of the record within 1e-9, its box within 0.001; names and colours are there.
// Prints what it has seen. Exit code 1 if something differs.
#include <BRepBndLib.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <Bnd_Box.hxx>
#include <GProp_GProps.hxx>
#include <Interface_Static.hxx>
#include <Quantity_Color.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <StepRepr_RepresentationItem.hxx>
#include <StepShape_ManifoldSolidBrep.hxx>
#include <StepShape_ShellBasedSurfaceModel.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <cmath>
#include <cstdio>
#include <gp_Trsf.hxx>
#include <gp_Vec.hxx>
#include <map>
#include <set>
#include <string>

#include "elements/Describe.h"
#include "export/ExactShape.h"
#include "vesk/RecordFile.h"

namespace {

int failures = 0;

void fail(const std::string& what) {
  std::printf("failed: %s\n", what.c_str());
  ++failures;
}

struct Expected {
  double volume = 0.0;
  Vesk::Extents box;
  std::string header;
};

// By the line of the element.
std::map<std::uint64_t, Expected> expectedOf(const char* path, std::size_t& faces) {
  std::map<std::uint64_t, Expected> expected;
  Vesk::RecordFile file{std::string(path)};
  for (Vesk::RecordFile::Found found; (found = file.next()) != Vesk::RecordFile::Found::kEnd;) {
    if (found != Vesk::RecordFile::Found::kElement) continue;
    const Vesk::RecordElement& element = file.element();
    VeskTool::ExactShape shape;
    if (!makeExact(*element.geo, shape).empty()) continue;
    if (std::holds_alternative<VeskTool::ExactFace>(shape)) ++faces;
    if (!element.geo->isSolid()) continue;
    Expected each;
    each.volume = volumeOf(shape);
    element.geo->addExtents(each.box);
    each.header = VeskTool::headerText(element.header);
    expected.emplace(element.firstLine, each);
  }
  return expected;
}

void compare(const TopoDS_Shape& shape, const std::string& name, const Expected& expected) {
  if (!BRepCheck_Analyzer(shape).IsValid()) fail(name + " is not valid");
  // Near the origin, where the integral over the surfaces keeps its digits.
  gp_Trsf home;
  home.SetTranslation(gp_Vec(-expected.box.min.x, -expected.box.min.y, -expected.box.min.z));
  GProp_GProps properties;
  BRepGProp::VolumeProperties(shape.Moved(TopLoc_Location(home)), properties, 1e-11, Standard_True);
  const double volume = properties.Mass();
  if (!(std::fabs(volume - expected.volume) <= 1e-9 * expected.volume)) {
    char text[200];
    std::snprintf(text, sizeof text, " has volume %.12g, not %.12g: %.2g", volume, expected.volume,
                  (volume - expected.volume) / expected.volume);
    fail(name + text);
  }
  Bnd_Box box;
  BRepBndLib::AddOptimal(shape, box, Standard_False, Standard_False);
  double low[3];
  double high[3];
  box.Get(low[0], low[1], low[2], high[0], high[1], high[2]);
  const double wanted[2][3] = {{expected.box.min.x, expected.box.min.y, expected.box.min.z},
                               {expected.box.max.x, expected.box.max.y, expected.box.max.z}};
  for (int i = 0; i < 3; ++i) {
    if (std::fabs(low[i] - wanted[0][i]) > 0.001 || std::fabs(high[i] - wanted[1][i]) > 0.001) {
      char text[200];
      std::snprintf(text, sizeof text, " lies at %.6f..%.6f, not %.6f..%.6f, along axis %d", low[i],
                    high[i], wanted[0][i], wanted[1][i], i);
      fail(name + text);
    }
  }
}

std::string nameOf(const TDF_Label& label) {
  Handle(TDataStd_Name) name;
  if (!label.FindAttribute(TDataStd_Name::GetID(), name)) return {};
  std::string text(static_cast<std::size_t>(name->Get().LengthOfCString()) + 1, '\0');
  Standard_PCharacter buffer = text.data();
  text.resize(static_cast<std::size_t>(name->Get().ToUTF8CString(buffer)));
  return text;
}

}  // namespace

int main(int count, char** words) {
  if (count != 3) {
    std::fputs("stepJudge RECORDS STEP\n", stderr);
    return 2;
  }
  std::size_t faces = 0;
  const std::map<std::uint64_t, Expected> expected = expectedOf(words[1], faces);

  Handle(TDocStd_Document) document;
  XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
  STEPCAFControl_Reader reader;
  if (reader.ReadFile(words[2]) != IFSelect_RetDone || !reader.Transfer(document)) {
    fail("the file can't be read");
    return 1;
  }

  // Solids by the entities that they came from.
  const Handle(XSControl_WorkSession) session = reader.Reader().WS();
  const Handle(Interface_InterfaceModel) model = session->Model();
  const Handle(Transfer_TransientProcess) process = session->TransferReader()->TransientProcess();
  std::set<std::uint64_t> seen;
  std::size_t surfaces = 0;
  for (int i = 1; i <= model->NbEntities(); ++i) {
    if (model->Value(i)->IsKind(STANDARD_TYPE(StepShape_ShellBasedSurfaceModel))) {
      const TopoDS_Shape shape = TransferBRep::ShapeResult(process, model->Value(i));
      if (shape.IsNull() || !BRepCheck_Analyzer(shape).IsValid()) {
        fail("a face is not valid");
      }
      ++surfaces;
    }
    const auto solid = Handle(StepShape_ManifoldSolidBrep)::DownCast(model->Value(i));
    if (solid.IsNull()) continue;
    const std::string name = solid->Name()->ToCString();
    const std::uint64_t line = std::strtoull(name.c_str() + name.find(':') + 1, nullptr, 10);
    const auto found = expected.find(line);
    if (found == expected.end()) {
      fail(name + " is no solid of the record file");
      continue;
    }
    seen.insert(line);
    const TopoDS_Shape shape = TransferBRep::ShapeResult(process, solid);
    if (shape.IsNull()) {
      fail(name + " was not taken");
    } else {
      compare(shape, name, found->second);
    }
  }
  if (seen.size() != expected.size()) {
    fail(std::to_string(expected.size() - seen.size()) + " solids are missing");
  }
  if (surfaces != faces) fail("faces are missing");

  // Products by their names, each with a colour on what it consists of.
  const Handle(XCAFDoc_ShapeTool) shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
  const Handle(XCAFDoc_ColorTool) colours = XCAFDoc_DocumentTool::ColorTool(document->Main());
  TDF_LabelSequence free;
  shapes->GetFreeShapes(free);
  if (free.Length() != 1) fail(std::to_string(free.Length()) + " assemblies instead of one");
  std::map<std::string, std::size_t> solidsOf;
  std::size_t coloured = 0;
  TDF_LabelSequence components;
  if (free.Length() == 1) XCAFDoc_ShapeTool::GetComponents(free.Value(1), components);
  for (int i = 1; i <= components.Length(); ++i) {
    TDF_Label product;
    XCAFDoc_ShapeTool::GetReferredShape(components.Value(i), product);
    const std::string name = nameOf(product);
    if (solidsOf.count(name) > 0) fail("the product " + name + " is there twice");
    solidsOf[name] = 0;
    for (TopExp_Explorer each(XCAFDoc_ShapeTool::GetShape(product), TopAbs_SOLID); each.More();
         each.Next()) {
      ++solidsOf[name];
      Quantity_Color colour;
      if (colours->GetColor(each.Current(), XCAFDoc_ColorSurf, colour) ||
          colours->GetColor(each.Current(), XCAFDoc_ColorGen, colour)) {
        ++coloured;
      }
    }
  }
  std::map<std::string, std::size_t> wantedOf;
  for (const auto& [line, each] : expected)
    ++wantedOf[each.header.empty() ? "(none)" : each.header];
  for (const auto& [header, solids] : wantedOf) {
    if (solidsOf[header] != solids) {
      fail("the product " + header + " has " + std::to_string(solidsOf[header]) +
           " solids instead of " + std::to_string(solids));
    }
  }
  if (coloured != expected.size()) fail(std::to_string(coloured) + " solids have a colour");
  std::printf("%zu solids, %zu faces, %zu products, %zu coloured, %d failures\n", seen.size(),
              surfaces, solidsOf.size(), coloured, failures);
  return failures > 0 ? 1 : 0;
}
