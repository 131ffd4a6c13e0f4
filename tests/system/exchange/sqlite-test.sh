#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# sqlite-test.sh VESK HERE WORK - exports a plant with sidecar and faults to SQLite twice,
# the same bytes, runs the ten questions of docs/queries.sql by another SQLite, and compares
# the tree of boxes with the boxes.
set -euo pipefail
export LC_ALL=C
vesk="$1" here="$2" work="$3"
python=/usr/bin/python3
[[ -x "$python" ]] || python=python3
"$python" -c 'import sqlite3' 2>/dev/null || {
  echo "not run: python3 without sqlite3"
  exit 77
}
rm -rf "$work"
mkdir -p "$work"
cd "$work"
"$python" "$here/generate" 270 1 >plant.dat
cat >>plant.dat <<'END'
BAD     01001    00c 0 0 0,0 0 0,10
BAD     01002    00c what is this
END
cat >plant.attributes.csv <<'END'
f1,f2,first,last,pipeline,item-code
LINE-11,01,0,999,"P-11 ""A""",PIPE 6
END
code=0
"$vesk" export -q plant.dat -o plant.sqlite || code=$?
if ((code == 2)); then
  "$vesk" version | grep -i sqlite
  echo "not run: this vesk was built without SQLite"
  exit 77
fi
((code == 1)) || { echo "failed: exit code $code"; exit 1; }
"$vesk" export -q plant.dat -o again.sqlite || true
cmp plant.sqlite again.sqlite
PYTHONPATH="$here" "$python" "$here/sqliteTest.py" plant.dat plant.sqlite "$here/../../../docs/queries.sql"
PYTHONPATH="$here" "$python" "$here/boxesTest.py" "$vesk"
