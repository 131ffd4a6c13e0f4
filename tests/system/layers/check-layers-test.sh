#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Each row is a small source tree of one or two files and what check-layers says
# about it.
#
#   check-layers-test.sh CHECK-LAYERS
set -euo pipefail
check="$1"
folder="$(mktemp -d)"
trap 'rm -rf "$folder"' EXIT

# name | file: its line; file: its line | breach (none: the tree is right)
rows='
KernelIncludesKernel       | ge/A.h: #include "ge/B.h" |
KernelKnowsNoText          | ge/A.cpp: #include "output/Output.h" | layer: ge/A.cpp:1: includes output/Output.h
OutputThrowsKernelErrors   | output/A.cpp: #include "vesk/ExceptionInfo.h" |
PublicHeadersHaveAFolder   | prims/A.cpp: #include "vesk/GePoint.h" |
AndKeepTheLayers           | output/A.cpp: #include "vesk/GePoint.h" | layer: output/A.cpp:1: includes ge/GePoint.h
PublicIncludesPublic       | include/vesk/Cyl.h: #include <vesk/Geo.h> |
PublicIncludesNoInside     | include/vesk/Cyl.h: #include <prims/BendArc.h> | public: prims/Cyl.h:1: includes prims/BendArc.h
PublicKeepsTheLayers       | include/vesk/GePoint.h: #include <vesk/Geo.h> | layer: ge/GePoint.h:1: includes prims/Geo.h
OutputKnowsNoPoints        | output/A.cpp: #include "vesk/GePoint.h" | layer: output/A.cpp:1: includes ge/GePoint.h
OutputFileWritesTheHolder  | output/OutFile.cpp: #include "api/ElementHolder.h" |
OnlyTheSourceDoesSo        | output/OutFile.h: #include "api/ElementHolder.h" | layer: output/OutFile.h:1: includes api/ElementHolder.h
AndOnlyTheHolder           | output/OutFile.cpp: #include "api/Globals.h" | layer: output/OutFile.cpp:1: includes api/Globals.h
PrimsIncludeOutput         | prims/A.h: #include "output/Output.h" |
PrimsDontKnowTheReader     | prims/A.cpp: #include "input/Input.h" | layer: prims/A.cpp:1: includes input/Input.h
InputIncludesPrims         | input/A.cpp: #include "vesk/Cyl.h" |
InputDoesNotIncludeApi     | input/A.cpp: #include "api/Globals.h" | layer: input/A.cpp:1: includes api/Globals.h
ApiIncludesTheCHeader      | api/A.cpp: #include "vesk.h" |
NobodyElseDoes             | prims/A.cpp: #include "vesk.h" | layer: prims/A.cpp:1: includes vesk.h
NothingIncludesTools       | api/A.cpp: #include "tools/Main.h" | layer: api/A.cpp:1: includes tools/Main.h
MeshIncludesPrims          | mesh/A.cpp: #include "vesk/Cyl.h" |
MeshDoesNotRead            | mesh/A.cpp: #include "input/Input.h" | layer: mesh/A.cpp:1: includes input/Input.h
WriterTakesWhatWasRead     | api/RecordWriter.cpp: #include "vesk/RecordFile.h" |
MeshHasPublicHeadersToo    | draw/A.cpp: #include "vesk/mesh/Mesh.h" |
WhichNobodyElseIncludes    | prims/A.cpp: #include "vesk/mesh/Mesh.h" | layer: prims/A.cpp:1: includes mesh/Mesh.h
NobodyIncludesMesh         | api/A.cpp: #include "mesh/Mesh.h" | layer: api/A.cpp:1: includes mesh/Mesh.h
NewFolderNeedsARow         | view/A.h: #include "view/B.h" | layer: view/A.h:1: includes view/B.h
BlanksDontHideAnInclude    | ge/A.h:  #  include  "vesk/Cyl.h" | layer: ge/A.h:1: includes prims/Cyl.h
TwoFilesMakeALoop          | ge/A.h: #include "ge/B.h"; ge/B.h: #include "ge/A.h" | loop: ge/A.h loop: ge/B.h
HeaderUsesNamespace        | ge/A.h: using namespace std; | using: ge/A.h:1: using namespace std;
SourceMayUseNamespace      | ge/A.cpp: using namespace Vesk; |
NumbersByLocale            | ge/A.cpp: double d = std::strtod(s, nullptr) | locale: ge/A.cpp:1: strtod
PrintByLocale              | ge/A.cpp: std::snprintf(b, 9, "%f", d) | locale: ge/A.cpp:1: snprintf
StreamsByLocale            | ge/A.cpp: std::ostringstream s | locale: ge/A.cpp:1: ostringstream
ClassesByLocale            | ge/A.cpp: if (std::isspace(c)) | locale: ge/A.cpp:1: isspace
LocaleChanged              | ge/A.cpp: std::setlocale(LC_ALL, "C") | locale: ge/A.cpp:1: setlocale
CommentsMayNameThem        | ge/A.cpp: // unlike printf |
StringsToo                 | ge/A.cpp: throwIt("printf") |
CharConvIsFree             | ge/A.cpp: std::to_chars(a, b, d) |
'

trim() { sed -E 's/^[[:space:]]+|[[:space:]]+$//g' <<<"$1"; }

failures=0
cases=0
while IFS='|' read -r name files breach; do
  [[ -n "$name" ]] || continue
  tree="$folder/$((++cases))"
  while read -r file; do
    path="$tree/${file%%:*}"
    mkdir -p "$(dirname "$path")"
    printf '%s\n' "${file#*: }" >"$path"
  done < <(sed -E 's/; /\n/' <<<"$(trim "$files")")

  expected="$(trim "$breach")"
  code=0
  actual="$("$check" "$tree" | xargs -d '\n')" || code=$?
  if [[ "$actual" != "$expected" || $code != $((${#expected} > 0)) ]]; then
    printf '%s: expected "%s", got "%s" and exit code %d\n' \
      "$(trim "$name")" "$expected" "$actual" "$code"
    failures=$((failures + 1))
  fi
done <<<"$rows"

printf '%d trees, %d failures\n' "$cases" "$failures"
((cases > 0 && failures == 0))
