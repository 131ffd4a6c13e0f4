#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Lets the system refuse each call of the tool in turn, and kills it at each write.
#
#   refusals-test.sh VESK ELEMENTS.dat PIPING.pcf
#
# After a refusal: the exit code for outputs or inputs, the reason on stderr, the old
# file as it was and nothing half. After a kill: the old file as it was.
#
# Exit code 77 where strace may not watch a process; with CI=true that is a failure.
set -uo pipefail

vesk="$1" elements="$2" pcf="$3"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1

# strace and LeakSanitizer both want to be the one who watches the process.
export ASAN_OPTIONS="${ASAN_OPTIONS:-}:detect_leaks=0"
failures=0
checks=0

failed() {
  printf 'failed: %s\n' "$*"
  failures=$((failures + 1))
}

# injected CALL FAULT COMMAND...: the FAULT happens to the CALL of the command; with
# `path` set only where it is that file's.
path=
injected() {
  local call="$1" fault="$2"
  shift 2
  strace -qqq -f -o strace.txt ${path:+-P "$path" -P "$PWD/$path"} -e trace="$call" \
    -e inject="$call:$fault" -e signal=none "$@"
}

if ! injected write error=ENOSPC:when=9999 true 2>/dev/null; then
  echo "not run: strace may not watch a process"
  [[ "${CI:-}" == true ]] && exit 1
  exit 77
fi

# More than one block of the tool's; enough for meshes.
for ((i = 0; i < 150; ++i)); do cat "$elements"; done >many.dat
for ((i = 0; i < 10; ++i)); do cat "$elements"; done >some.dat

echo old >old

# turns EXIT CALL FAULT REASON TARGET ARGUMENT...: the FAULT strikes the first CALL, then
# the second, until there is no further one. TARGET is the file that the tool replaces.
turns() {
  local exit="$1" call="$2" fault="$3" reason="$4" target="$5" n=0 said code
  shift 5
  if [[ "$fault" == signal=KILL ]]; then "$vesk" -q "$@" >out ; cp "$target" whole; fi
  while ((n < 200)); do
    n=$((n + 1))
    rm -f *.part-*
    cp old "$target"
    said="$(injected "$call" "$fault:when=$n" "$vesk" -q "$@" 2>&1 >out)" && code=0 || code=$?
    if [[ "$fault" == signal=KILL ]]; then
      ((code == 137)) || break
    else
      grep -q INJECTED strace.txt || break
      ((code == exit)) || failed "vesk $*: $call $n, $fault: exit code $code, not $exit"
      [[ "$said" == *"error: "*"$reason"* ]] || failed "vesk $*: $call $n, $fault: said '$said'"
      ! compgen -G '*.part-*' || failed "vesk $*: $call $n, $fault: a half file is left"
    fi
    checks=$((checks + 1))
    # The word of success comes last: it may fail when the file is there.
    cmp -s old "$target" || [[ "$said" == *"standard output"* ]] || cmp -s whole "$target" ||
      failed "vesk $*: $call $n, $fault: neither the old file nor the whole new one"
  done
  ((n > 1)) || failed "vesk $*: there is no $call"
  printf '%-6s %-13s %3d times: vesk %s\n' "$call" "${fault#*=}" $((n - 1)) "$*"
}

full="No space left on device"
lost="Input/output error"
writers=(
  "new.dat convert -f many.dat new.dat --style fixed"
  "pump.dat import -f $pcf -o pump.dat --no-attributes"
  "new.dat extract -f some.dat -o new.dat"
  "new.dat merge -f some.dat some.dat -o new.dat"
  "new.dat edit -f some.dat -o new.dat --renumber elements"
  "new.glb export -f some.dat -o new.glb"
  "new.obj export -f some.dat -o new.obj"
  "new.stl export -f some.dat -o new.stl"
  "new.svg view -f $elements -o new.svg"
  "new.png view -f $elements -o new.png"
)
# Without the page the tool says so at once.
if "$vesk" view -f -q "$elements" -o new.html >/dev/null 2>&1; then
  writers+=("new.html view -f $elements -o new.html")
fi
for each in "${writers[@]}"; do
  read -r target command <<<"$each"
  turns 4 write error=ENOSPC "$full" "$target" $command
  turns 4 fsync error=EIO "$lost" "$target" $command
  turns 4 rename error=EIO "$lost" "$target" $command
  turns 4 write signal=KILL "" "$target" $command
done
turns 4 write error=EDQUOT "Disk quota exceeded" new.dat convert -f many.dat new.dat
for each in "info many.dat" "list many.dat" "measure many.dat" "check many.dat" \
  "show many.dat:7" "diff --json many.dat many.dat" "convert many.dat -" "explain"; do
  turns 4 write error=ENOSPC "$full" none $each
done

# Records and attributes appear together, and so do all parts.
cp some.dat with.dat
printf 'f1,f2,first,last,spec\nDUCT-7,A1,1,11,S\n' >with.attributes.csv
together=(
  "extract with.dat -o made.dat"
  "merge with.dat with.dat -o made.dat"
  "edit with.dat -o made.dat --renumber elements"
  "split with.dat --by kind -o made"
)
for each in "${together[@]}"; do
  for n in 1 2; do
    injected rename error=EIO:when=$n "$vesk" -q $each >out 2>&1 && code=0 || code=$?
    checks=$((checks + 1))
    ((code == 4)) || failed "vesk $each: rename $n: exit code $code, not 4"
    ! compgen -G 'made*' || failed "vesk $each: rename $n: something is left"
    rm -rf made*
  done
done

path=many.dat
for each in "info many.dat" "list many.dat" "measure many.dat" "check many.dat" \
  "diff many.dat many.dat" "convert -f many.dat new.dat" \
  "export -f many.dat --report"; do
  turns 3 openat error=EACCES "Permission denied" new.dat $each
  turns 3 read error=EIO "$lost" new.dat $each
done

# Records and their sidecar appear both or neither: pairs STATE ARGUMENT... refuses each
# rename in turn. STATE "old": both are there before and replaced; "none": neither is.
pairs() {
  local state="$1" n=0 said code
  shift
  while ((n < 20)); do
    n=$((n + 1))
    rm -f pair.*
    if [[ "$state" == old ]]; then cp old pair.dat; cp old pair.attributes.csv; fi
    said="$(injected rename "error=EIO:when=$n" "$vesk" -q "$@" 2>&1 >out)" && code=0 || code=$?
    grep -q INJECTED strace.txt || break
    checks=$((checks + 1))
    ((code == 4)) || failed "vesk $*: rename $n: exit code $code, not 4"
    [[ "$said" == *"error: pair."*"$lost"* ]] || failed "vesk $*: rename $n: said '$said'"
    if [[ "$state" == none ]]; then
      ! compgen -G 'pair.*' || failed "vesk $*: rename $n: something is left"
      continue
    fi
    cmp -s old pair.dat || failed "vesk $*: rename $n: the old records are gone"
    cmp -s old pair.attributes.csv || failed "vesk $*: rename $n: the old sidecar is gone"
    [[ "$(compgen -G 'pair.*' | wc -l)" == 2 ]] || failed "vesk $*: rename $n: $(echo pair.*)"
  done
  ((n > 2)) || failed "vesk $*: there are no two renames"
  printf '%-6s %-13s %3d times: vesk %s, %s\n' rename EIO $((n - 1)) "$*" "$state"
}
path=""
pairs none import "$pcf" -o pair.dat
pairs old import -f "$pcf" -o pair.dat

printf '%d refusals and kills, %d failed\n' "$checks" "$failures"
((failures == 0))
