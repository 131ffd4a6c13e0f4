// SPDX-License-Identifier: MIT
#include "export/Formats.h"

#include "text/Words.h"

namespace VeskTool {
namespace {

constexpr std::size_t kHelpWidth = 80;

constexpr FormatText kFormats[] = {
    {".step (.stp), AP242",
     "solids, faces, curves, points; a product with a colour for each header, kind and line of "
     "each element",
     "texts (left out), arcs, normals, marks and tags, the counter F3",
     "true surfaces; volumes within 1e-9, boxes within 0.001 mm", "the headers",
     "Open CASCADE 7.6"},
    {".ifc, IFC4",
     "products by kind and component, systems by header, quantities, the sidecar as property sets; "
     "swept solids and breps",
     "texts (left out), arcs, normals, marks and tags, colours",
     "true profiles and sweeps; faces of reducers that are not plane are triangles of the same "
     "volume",
     "headers, some 40 bytes an element", "web-ifc 0.0.78"},
    {".dxf, release 2010, UTF-8",
     "solids and faces as MESH, lines, points, texts as MTEXT; a layer for each kind; header and "
     "line as extended data",
     "arcs, normals, marks and tags", "as --tolerance or --quality says", "512 elements",
     "ezdxf 1.0"},
    {".sqlite (.db)", "every value, headers, boxes, volumes, sidecars, faults",
     "arcs only by their values", "doubles", "headers; a file beside OUT", "SQLite 3.40"},
    {".glb, .gltf, glTF 2.0",
     "solids, faces, lines, points; texts as nodes; header, kind, file and line of each element; "
     "colours of kinds",
     "arcs, marks and tags", "as --tolerance or --quality says", "the model",
     "the Khronos validator, three.js, assimp, tinygltf"},
    {".obj", "solids, faces, lines, points; an object for each element",
     "texts (left out), arcs, marks and tags, colours", "as --tolerance or --quality says",
     "the model", "assimp"},
    {".ply, binary", "solids, faces, lines, points, colours of kinds",
     "texts (left out), arcs, marks and tags, headers", "as --tolerance or --quality says",
     "the model", "assimp"},
    {".stl, binary", "solids and faces as one list of triangles",
     "texts, lines and points (left out), all names and colours",
     "as --tolerance or --quality says", "the model", "admesh, assimp"},
    {"tiles (a folder), 3D Tiles 1.1",
     "solids, faces, lines, points in a tree of tiles, coarser from afar; header, kind, file and "
     "line of each element; colours of kinds",
     "texts (left out), arcs, marks and tags", "the finest tiles as --tolerance or --quality says",
     "a tile; files beside OUT", "3d-tiles-renderer 0.4.18, the Khronos validator (the tiles)"}};

void appendPart(std::string& help, std::string_view left, std::string_view text) {
  std::string lines = wrapped(text, 11, kHelpWidth);
  lines.replace(4, left.size(), left);
  help += lines;
}

}  // namespace

std::span<const FormatText> exportFormats() { return kFormats; }

std::string formatsHelp() {
  std::string help = "What `vesk export` writes:\n";
  for (const FormatText& each : kFormats) {
    help.append("\n  ").append(each.names).append("\n");
    appendPart(help, "keeps", each.keeps);
    appendPart(help, "loses", each.loses);
    appendPart(help, "exact", each.exact);
    appendPart(help, "memory", each.memory);
    appendPart(help, "opened", each.opened);
  }
  return help +
         "\n"
         "Elements that are left out are counted in a warning; with --strict the exit\n"
         "code is then 1. Opened: by these third-party programs in our tests.\n"
         "`vesk import` reads .pcf, piping components, and .rvm and .rev, review models:\n"
         "`vesk import --help`.\n";
}

}  // namespace VeskTool
