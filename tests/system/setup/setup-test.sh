#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs setup against a package system of our own, which writes down what it is
# asked for.
#
#   setup-test.sh SETUP
set -euo pipefail
setup="$1"
folder="$(mktemp -d)"
trap 'rm -rf "$folder"' EXIT

# name | group | packages that are missing | calls that fail | exit code | calls
rows='
NothingMissingAsksNothing  | build | none            | none           | 0 |
OnlyTheMissingIsInstalled  | build | cmake           | none           | 0 | update, install cmake
AllMissingInOneCall        | build | cmake g++       | none           | 0 | update, install cmake g++
OtherGroupsDontMatter      | build | cppcheck        | none           | 0 |
FailureIsTriedOnceMore     | build | cmake           | first-install  | 0 | update, install cmake, update, install cmake
SecondFailureIsFinal       | build | cmake           | every-update   | 1 | update, update
AProgramOnThePathWillDo    | hosts | nodejs          | none           | 0 |
ElseItsPackageIsInstalled  | hosts | nodejs gfortran | none           | 0 | update, install gfortran
UnknownGroupIsRefused      | bild  | cmake           | none           | 1 |
'

mkdir "$folder/bin"
cat >"$folder/bin/dpkg-query" <<'FAKE'
#!/usr/bin/env bash
if [[ " $MISSING " == *" ${!#} "* ]]; then exit 1; fi
printf installed
FAKE
cat >"$folder/bin/apt-get" <<'FAKE'
#!/usr/bin/env bash
words=()
for word in "$@"; do
  if [[ "$word" != -* ]]; then words+=("$word"); fi
done
echo "${words[*]}" >>"$CALLS"
if [[ "$FAILING" == every-update && "${words[0]}" == update ]]; then exit 100; fi
if [[ "$FAILING" == first-install && "${words[0]}" == install && "$(grep -c install "$CALLS")" == 1 ]]; then
  exit 100
fi
exit 0
FAKE
printf '#!/bin/sh\n' >"$folder/bin/sleep"
printf '#!/bin/sh\n' >"$folder/bin/node"
# What sudo is asked for runs here as it is.
printf '#!/bin/sh\nexec "$@"\n' >"$folder/bin/sudo"
chmod +x "$folder"/bin/*
# Nothing else is on the PATH, whatever is installed here.
for program in awk bash echo env grep sed sh sort xargs; do
  ln -s "$(type -P "$program")" "$folder/bin/"
done

failures=0
cases=0
while IFS='|' read -r name group missing failing expectedCode expectedCalls; do
  [[ -n "$name" ]] || continue
  cases=$((cases + 1))
  : >"$folder/calls"
  code=0
  PATH="$folder/bin" MISSING="$missing" FAILING="$(xargs <<<"$failing")" \
    CALLS="$folder/calls" "$setup" "$(xargs <<<"$group")" >"$folder/said" 2>&1 || code=$?
  calls="$(paste -sd, "$folder/calls" | sed 's/,/, /g')"
  if [[ "$code" != "$(xargs <<<"$expectedCode")" || "$calls" != "$(xargs <<<"$expectedCalls")" ]]; then
    printf '%s: exit code %d, calls "%s"\n' "$name" "$code" "$calls"
    cat "$folder/said"
    failures=$((failures + 1))
  fi
done <<<"$rows"

printf '%d cases, %d failures\n' "$cases" "$failures"
((cases > 0 && failures == 0))
