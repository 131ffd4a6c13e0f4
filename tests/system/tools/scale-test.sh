#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs the scripts of docs/scale.md on three zones, task by task as a job array
# would, and looks at the joined report.
#
#   scale-test.sh DOCUMENT VESK
#
# Exit code 77 if jq or GNU parallel is not installed.
set -euo pipefail
document="$(realpath "$1")"
PATH="$(dirname "$(realpath "$2")"):$PATH"
for program in jq parallel; do
  command -v "$program" >/dev/null || {
    echo "not run: the scripts of docs/scale.md: $program is not installed"
    exit 77
  }
done
folder="$(mktemp -d)"
trap 'rm -rf "$folder"' EXIT
cd "$folder"

# The Nth block of shell in the document.
block() { awk -v n="$1" '/^```sh$/ { k += 1; inside = k == n; next } /^```$/ { inside = 0 } inside' "$document"; }
block 1 >parallel.sh
block 2 >zone.sh
block 3 >join.sh

expect() { # WHAT GOT WANTED
  [[ "$2" == "$3" ]] || {
    echo "$1: '$2', not '$3'"
    exit 1
  }
}

pipe='P-1     01001    00c 0 0 0,0 0 1000,100'
mkdir zones
echo "$pipe" >zones/east.dat
printf '%s\n%s\n' "$pipe" 'P-1     01002    00c 0 0 1000.5,0 0 1000,100' >zones/north.dat
printf '%s\n%s\n' "$pipe" 'P-1     01002    00c 0 0 9x,0 0 1000,100' >zones/west.dat

codes=''
for task in 0 1 2; do
  code=0
  SLURM_ARRAY_TASK_ID=$task bash zone.sh || code=$?
  codes+="$code "
done
expect 'codes of the tasks' "$codes" '0 0 0 '
code=0
bash join.sh || code=$?
expect 'code of the plant' "$code" 1
expect 'sums' "$(jq -c '[.elements, .errors, .warnings]' report.json)" '[4,1,1]'
expect 'zones' "$(jq -r '[.zones[].file] | join(" ")' report.json)" \
  'zones/east.dat zones/north.dat zones/west.dat'
# A pipe alone has two open ends (V205): one in east, one in west, whose second
# pipe can't be read. In north two pipes meet with a gap (V201), so two ends are open.
expect 'findings' "$(jq -r '.findings[] | "\(.file):\(.line):\(.column) \(.code)"' report.json | xargs)" \
  'zones/east.dat:1:22 V205 zones/east.dat:1:28 V205 zones/north.dat:2:22 V201 zones/north.dat:1:22 V205 zones/north.dat:2:33 V205 zones/west.dat:2:26 V021 zones/west.dat:1:22 V205 zones/west.dat:1:28 V205'
expect 'what was said' "$(cat report.log)" ''

# A zone that can't be read stops the task, and is in the report.
echo 'no record' >zones/west.dat
code=0
SLURM_ARRAY_TASK_ID=2 bash zone.sh || code=$?
expect 'code of a task that failed' "$code" 1
code=0
bash join.sh || code=$?
expect 'code of a plant that failed' "$code" 3
expect 'what was said' "$(grep -c 'west.dat: this is not a record file' report.log)" 1

rm zones/west.dat zones/*.json
PARALLEL_HOME="$folder" bash parallel.sh 2>/dev/null
expect 'sums by parallel' "$(jq -c '[.elements, .errors]' sums.json)" '[3,0]'
