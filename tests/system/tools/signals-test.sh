#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Ends every command by INT or TERM at different moments, and looks that it does
# so in time, with 130, and leaves nothing behind.
#
#   signals-test.sh VESK [ELEMENTS [ROUNDS [SECONDS]]]
#
# What has ended before the signal came counts as well, with any code but a
# fault's.
set -euo pipefail
vesk="$(realpath "$1")"
elements="${2:-20000}"
rounds="${3:-2}"
seconds="${4:-5}"
folder="$(mktemp -d)"
trap 'rm -rf "$folder"' EXIT
cd "$folder"
export TMPDIR="$folder/temporary"
mkdir temporary

plant() { # SHIFT
  awk -v n="$elements" -v shift="$1" 'BEGIN {
    digits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"
    for (i = 0; i < n; ++i) {
      counter = substr(digits, int(i / 1296) % 36 + 1, 1) \
        substr(digits, int(i / 36) % 36 + 1, 1) substr(digits, i % 36 + 1, 1)
      head = sprintf("P-%04d  01%s    00", i / 40000, counter)
      x = i % 50 * 700 + shift; y = int(i / 50) % 50 * 90; z = int(i / 2500) * 90
      if (i % 3 == 0) print head "c " x " " y " " z ",800 200 0,100"
      else if (i % 3 == 1) print head "t " x " " y " " z ",0 0 -304.8,304.8 0 0,219.1"
      else print head "b " x " " y " " z ",0 300 0,0 0 400.5,200 0 0"
    }
  }'
}
plant 0 >plant.dat
plant 3 >other.dat

# Pipes, each on the end of the one before.
awk -v n="$((elements / 4))" 'BEGIN {
  print "UNITS-BORE MM\nUNITS-CO-ORDS MM\nPIPELINE-REFERENCE P-1"
  for (i = 0; i < n; ++i) {
    print "PIPE\n END-POINT " i * 500 " 0 0 100\n END-POINT " (i + 1) * 500 " 0 0 100"
    print "    ITEM-CODE C" i % 7
  }
}' >line.pcf

# The same pipe in groups of a review model.
awk -v n="$((elements / 4))" 'BEGIN {
  print "HEAD\n 1 2\na model\na note\ntoday\nsomeone\nMODL\n 1 1\nPROJECT\nMODEL"
  for (i = 0; i < n; ++i) {
    print "CNTB\n 1 2\n/P-" i "\n 0 0 0\n 1\nPRIM\n 1 1\n 8"
    print " 0.001 0 0 " i "\n 0 0.001 0 0\n 0 0 0.001 0"
    print " -50 -50 -400\n 50 50 400\n 50 800\nCNTE\n 1 2"
  }
  print "END:\n 1 1"
}' >model.rvm

# A header for each, so that their take-off is long.
awk '{ printf "%07d %s\n", NR, substr($0, 9) }' plant.dat >headers.dat

commands=(
  'info plant.dat'
  'list --sort volume plant.dat'
  'show plant.dat --size 100'
  'measure plant.dat'
  'check --joints plant.dat'
  'check --touching P-0000 plant.dat'
  'diff plant.dat other.dat'
  'clash --between elements plant.dat'
  'clash plant.dat other.dat --bcf new.bcf'
  'convert --style fixed --verify plant.dat new.dat'
  'export plant.dat -o new.glb'
  'export plant.dat -o new.obj --report'
  'export plant.dat -o new.stl'
  'export plant.dat -o new.step'
  'export plant.dat -o new.ifc'
  'export plant.dat -o new.dxf'
  'export plant.dat -o new.sqlite'
  'export plant.dat -o new.tiles/'
  'import line.pcf -o new.dat'
  'import line.pcf --json -o new.dat'
  'import model.rvm -o new.dat'
  'extract plant.dat -o new.dat --near 0,0,0,20000'
  'split plant.dat --by kind -o new.parts'
  'split plant.dat --by grid --grid 2000 -o new.parts'
  'merge plant.dat other.dat -o new.dat'
  'edit plant.dat -o new.dat --drop-duplicates --renumber elements'
  'edit plant.dat -o new.dat --sort kind,size'
  'measure --by header,size --csv plant.dat'
  'clash --between elements --json plant.dat'
  'view plant.dat -o new.html'
  'view plant.dat --no-open'
  'view plant.dat -o new.svg'
  'view plant.dat -o new.png'
  'check --view -o new.html plant.dat'
  'diff --view -o new.html plant.dat other.dat'
)

# With libxlsxwriter, which writes a file of its own and is never asked to stop.
head -n 1 plant.dat >one.dat
if "$vesk" measure one.dat --xlsx one.xlsx >answer 2>&1; then
  commands+=('measure --by header headers.dat --xlsx new.xlsx')
else
  grep -q libxlsxwriter answer
fi

# Of all files in these places.
bytes() { find "$@" -type f -print0 2>/dev/null | sort -z | xargs -0 cat | cksum; }

failed=0
moment=0
fail() {
  echo "$1"
  failed=1
}
for ((round = 0; round < rounds; ++round)); do
  for command in "${commands[@]}"; do
    # Up to a second for 20,000 elements, by no pattern.
    moment=$(((moment * 7919 + 104729) % (elements / 200 + 1)))
    signal=$(((moment + round) % 2 == 0 ? 2 : 15))
    # shellcheck disable=SC2086
    "$vesk" $command >answer 2>messages </dev/null &
    process=$!
    sleep "$(printf '%d.%02d' $(((moment + 2) / 100)) $(((moment + 2) % 100)))"
    running=yes
    kill -"$signal" "$process" 2>/dev/null || running=no
    before="${EPOCHREALTIME/./}"
    code=0
    wait "$process" || code=$?
    took=$(((${EPOCHREALTIME/./} - before) / 1000))
    what="vesk $command, signal $signal after $((moment + 2)) hundredths: "
    ((took <= seconds * 1000)) || fail "${what}took $took ms"
    case "$running $code" in
      yes\ 130 | *\ 0 | *\ 1) ;;
      # At the limit of a clash search before the signal came.
      *\ 3) grep -q 'too many elements in one place' messages || fail "${what}exit code 3" ;;
      # TERM before the program has begun.
      yes\ 143) ((moment < 20)) || fail "${what}exit code 143" ;;
      *) fail "${what}exit code $code: $(head -n 3 messages)" ;;
    esac
    left="$(find . -name '*part-*' -o -name '*.old-*' | xargs)"
    [[ -z "$left" ]] || fail "${what}left $left"
    if ((code == 130)); then
      left="$(find . -name 'new.*' -o -path './temporary/*' | sort | xargs)"
      # The signal may come when a file is whole already: then the same is made again.
      if [[ -n "$left" ]]; then
        mkdir kept
        mv new.* temporary/* kept 2>/dev/null || true
        # shellcheck disable=SC2086
        "$vesk" $command >answer 2>messages </dev/null || true
        [[ "$(bytes kept)" == "$(bytes new.* temporary)" ]] || fail "${what}left $left"
      fi
    fi
    rm -rf new.* temporary/* kept
  done
done
exit "$failed"
