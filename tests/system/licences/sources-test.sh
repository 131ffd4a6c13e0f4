#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Every source names its licence within its first lines; prints those that do not.
#
#   sources-test.sh PROJECT
#
# A source is every file but documents, data and settings: a new kind of file is one
# until it stands in the list below.
set -euo pipefail
data='md txt json png dat pcf csv rvm att 1 abi npmrc'
folders=(bench cmake docs examples fuzz include scripts src tests tools viewer)

# The files of the folders of a project, but for what npm brings and Vite makes.
sources() {
  local suffix unwanted=()
  for suffix in $data; do unwanted+=(-not -name "*.$suffix"); done
  cd "$1"
  find "${folders[@]}" CMakeLists.txt '(' -name node_modules -o -path viewer/dist -o -path fuzz/corpus \
    -o -path tests/golden -o -path cmake/packages -o -name __pycache__ ')' -prune -o -type f "${unwanted[@]}" -print0
  find "${folders[@]}" CMakeLists.txt -name node_modules -prune -o -name CMakeLists.txt -print0
}

# unnamed PROJECT: the sources without the line.
unnamed() {
  (cd "$1" && sources . | xargs -0 awk '
    FNR == 1 { if (file != "" && !named) print file; file = FILENAME; named = 0 }
    FNR <= 4 && /SPDX-License-Identifier: MIT/ { named = 1 }
    END { if (file != "" && !named) print file }' | sort -u)
}

# A project of two sources, of which one has no line.
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir "${folders[@]/#/$work/}"
echo '# SPDX-License-Identifier: MIT' | tee "$work/CMakeLists.txt" >"$work/src/named.cpp"
echo 'int nothing;' >"$work/src/unnamed.cpp"
[[ "$(unnamed "$work")" == src/unnamed.cpp ]] || {
  echo "the check finds: $(unnamed "$work")"
  exit 1
}

missing="$(unnamed "$1")"
[[ -z "$missing" ]] && echo "every source names its licence" && exit
echo "no line SPDX-License-Identifier: MIT in the first lines of:"
echo "$missing"
exit 1
