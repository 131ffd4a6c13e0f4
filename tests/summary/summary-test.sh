#!/usr/bin/env bash
# Runs scripts/test in a project of its own whose build passes three tests, skips
# two and fails as many as asked for.
#
#   summary-test.sh SCRIPTS
set -euo pipefail
scripts="$1"
folder="$(mktemp -d)"
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/scripts" "$folder/bin" "$folder/build/dev/Testing/Temporary"
cp "$scripts/test" "$scripts/common.sh" "$folder/scripts/"

cat >"$folder/scripts/setup" <<'FAKE'
#!/bin/sh
if [ "$*" = hosts ]; then exit 1; fi
FAKE
printf '#!/bin/sh\n' >"$folder/bin/cmake"
cat >"$folder/bin/ctest" <<'FAKE'
#!/usr/bin/env bash
cat <<SAYS
2/5 Test #2: hosts.pascal ....................***Skipped   0.01 sec
60% tests passed, $FAILING tests failed out of $((5 + FAILING))

The following tests did not run:
$(printf '\t')  2 - hosts.pascal (Skipped)
$(printf '\t') 13 - Disk.Full (Skipped)
SAYS
cat >build/dev/Testing/Temporary/LastTest.log <<'LOG'
1/5 Testing: hosts.c
not run: of another test
2/5 Testing: hosts.pascal
1/5 Test: hosts.pascal
Output:
not run: pascal: fpc is not installed
3/5 Testing: Disk.Full
Output:
LOG
exit $((FAILING > 0))
FAKE
chmod +x "$folder"/bin/* "$folder"/scripts/*

# expect FAILING CODE: the last three lines and the exit code.
expect() {
  local code=0
  PATH="$folder/bin:$PATH" FAILING="$1" "$folder/scripts/test" dev >"$folder/said" 2>&1 || code=$?
  if [[ "$code" != "$2" ]] || ! diff <(tail -n 3 "$folder/said") - <<SAYS; then
not run: Disk.Full
not run: pascal: fpc is not installed
3 passed, $1 failed
SAYS
    cat "$folder/said"
    echo "with $1 failing tests the exit code is $code"
    exit 1
  fi
}
expect 0 0
expect 2 1
