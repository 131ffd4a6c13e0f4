#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Completes words as each shell does, with what `vesk completion` prints.
#
#   completion-test.sh SHELL VESK
#
# Exit code 77 if the shell is not installed.
set -euo pipefail
shell="$1"
PATH="$(dirname "$2"):$PATH"
command -v "$shell" >/dev/null || {
  echo "not run: completion for $shell: $shell is not installed"
  exit 77
}
export HOME="$(mktemp -d)"
trap 'rm -rf "$HOME"' EXIT

# words so far | what completes the last one
rows='
vesk inf              | info
vesk co               | completion convert
vesk info --h         | --header --headers --help
vesk check --jo       | --jobs --joints
vesk list --bb        | --bbox
vesk convert --dry    | --dry-run
vesk help meas        | measure
vesk check --format j | json
vesk explain V50      | V501 V502 V503 V504
vesk list --only cyl  | cylinder cylinders
vesk completion po    | powershell
vesk list --color al  | always
vesk measure --by sp  | spec
'

in_bash() {
  # shellcheck disable=SC2016
  bash -c 'eval "$(vesk completion bash)"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
    _vesk; printf "%s\n" "${COMPREPLY[@]}"' - "$@"
}

# The functions of the completion system, as far as they are called.
in_zsh() {
  zsh -f -c 'compdef() { [[ $1 == _vesk && $2 == vesk ]] || echo "compdef $*" }
    offer() { local w; for w; do [[ $w == ${words[CURRENT]}* ]] && print -r -- $w; done; true }
    compadd() { shift; offer $@ }
    compset() { words[CURRENT]=${words[CURRENT]##*,} }
    _describe() { offer ${${(P)2}%%:*} }
    _files() { true }
    eval "$(vesk completion zsh)"; words=("$@"); CURRENT=$#; _vesk' - "$@"
}

in_fish() { fish --no-config -c 'vesk completion fish | source; complete -C "$argv"' "$*"; }

failed=0
while IFS='|' read -r words expected; do
  [[ -n "${words// /}" ]] || continue
  read -ra typed <<<"$words"
  got="$("in_$shell" "${typed[@]}" | cut -f1 | sort | xargs)"
  if [[ "$got" != "$(xargs <<<"$expected")" ]]; then
    echo "$shell: $words-> '$got', not '$expected'"
    failed=1
  fi
done <<<"$rows"
exit "$failed"
