#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Sourced by the scripts beside it: strict mode, the project's folder as the
# current one, and a word about what is going on.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

jobs="${VESK_JOBS:-$(nproc)}"

say() { printf '\n== %s\n' "$*"; }
fail() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# Compiles through ccache where it is installed; its key to a source is the whole
# text, without headers that were read before.
launcher=()
if command -v ccache >/dev/null; then
  launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache
    -DVESK_PRECOMPILE=OFF)
fi

# configure PRESET, build PRESET [TARGET...]
configure() { cmake --preset "$1" "${launcher[@]}"; }
build() {
  local preset="$1"
  shift
  cmake --build --preset "$preset" -j "$jobs" ${1:+--target "$@"}
}
