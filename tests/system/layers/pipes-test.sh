#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Where a pipe fails with any of its commands, a reader that leaves at the first match
# fails it now and then: the writer is killed if it still has something to say. Prints
# the lines of such scripts that pipe into `grep -q` or the like.
#
#   pipes-test.sh PROJECT
set -euo pipefail

# hasty PROJECT: the lines, with their places.
hasty() {
  (cd "$1" && grep -rlIE '^(set -.*pipefail|source .*common\.sh)' .ci cmake scripts tests/system |
    xargs grep -nE '\| *(grep (-[a-zA-Z]+ )*(-[a-zA-Z]*q|--quiet|-m)|sed [0-9]*q)' /dev/null) || true
}

# A project of two scripts, of which one leaves its pipe early.
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir -p "$work"/{.ci,cmake,scripts,tests/system}
printf 'set -euo pipefail\nlist | grep %s name\n' -q >"$work/scripts/hasty"
printf 'set -euo pipefail\ngrep %s name <<<"$(list)"\nlist | grep name\n' -q >"$work/scripts/patient"
[[ "$(hasty "$work")" == scripts/hasty:2:* && "$(hasty "$work" | wc -l)" == 1 ]] || {
  echo "the check finds: $(hasty "$work")"
  exit 1
}

found="$(hasty "$1")"
[[ -z "$found" ]] && echo "every pipe is read to its end" && exit
echo "left early; write: grep -q WHAT <<<\"\$(COMMAND)\""
echo "$found"
exit 1
