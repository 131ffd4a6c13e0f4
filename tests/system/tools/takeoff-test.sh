#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs the commands of docs/takeoff.md on the sample, as they stand, and lets a program
# of its own look at what they write.
#
#   takeoff-test.sh DOCUMENT SAMPLE VESK PYTHON
set -euo pipefail
document="$(realpath "$1")"
sample="$(realpath "$2")"
here="$(dirname "$(realpath "$0")")"
PATH="$(dirname "$(realpath "$3")"):$PATH"
python="$4"
folder="$(mktemp -d)"
trap 'rm -rf "$folder"' EXIT
cd "$folder"
cp "$sample" pump.pcf

# The block of this language in the document.
block() { awk -v opening="\`\`\`$1" '$0 == opening { inside = 1; next } /^```$/ { inside = 0 } inside' "$document"; }
block sh >page.sh
block csv >walls.csv
commands="$(grep -c '^vesk ' page.sh)"
[[ "$commands" == 6 ]] || {
  echo "the page has $commands commands, not 6"
  exit 1
}
if ! grep -q '"libxlsxwriter"[^}]*"in":true' <<<"$(vesk version --json | tr -d '\n ')"; then
  code=0
  vesk measure --xlsx bill.xlsx nothing.dat 2>said.txt || code=$?
  grep -q 'needs libxlsxwriter' said.txt && ((code == 2)) || {
    echo "a build without libxlsxwriter does not say so: code $code"
    cat said.txt
    exit 1
  }
  sed -i '/--xlsx/d' page.sh
fi
bash -euo pipefail page.sh >said.txt 2>warnings.txt
"$python" "$here/takeoff-judge.py" vesk
