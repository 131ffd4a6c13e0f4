#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The manual page has no flaw that mandoc knows.
#
#   man-test.sh PAGE
#
# Exit code 77 if mandoc is not installed.
set -euo pipefail
command -v mandoc >/dev/null || {
  echo "not run: the manual page: mandoc is not installed"
  exit 77
}
flaws="$(mandoc -T lint -W style "$1" || true)"
if [[ -n "$flaws" ]]; then
  echo "$flaws"
  exit 1
fi
