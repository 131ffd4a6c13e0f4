#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# import-test.sh VESK HERE WORK - review models through the tool: both forms, counts,
# sidecar, selection, several files, standard output, and files that are damaged.
set -euo pipefail
export LC_ALL=C
vesk="$1" here="$2" work="$3"
command -v python3 >/dev/null || {
  echo "not run: python3"
  exit 77
}
rm -rf "$work"
mkdir -p "$work"
cd "$work"

fail() {
  echo "failed: $*"
  exit 1
}
# expect CODE COMMAND...: the exit code.
expect() {
  local code=0 wanted="$1"
  shift
  "$@" >out.txt 2>err.txt || code=$?
  ((code == wanted)) || { cat out.txt err.txt; fail "$*: exit code $code, not $wanted"; }
}
has() { grep -qF -- "$2" "$1" || { cat "$1"; fail "$1 lacks \"$2\""; }; }

python3 "$here/review-model" 200 binary plant.rvm plant.att
python3 "$here/review-model" 200 text plant.rev

# 200 shapes, of 10: 3 cylinders, 2 boxes, 1 pyramid, 2 elbows of half a turn, 1 facet, 1 line.
expect 0 "$vesk" import plant.rvm --attributes plant.att -o plant.dat
has out.txt 'plant.dat: 240 elements of 200 shapes in 46 groups'
has out.txt 'rectangular torus: 40 in pieces; 80 elements'
has out.txt '5 blocks of attributes without a group'
has plant.attributes.csv 'f1,f2,first,last,path,component,kind,written,source,transparency,material,position,owner,area,description,weight,note'
has plant.attributes.csv 'NIT-0000,01,1,1,/PLANT/UNIT-0000/EQUIPMENT 0 of /UNIT-0000,/UNIT-0000,cylinder,exact,plant.rvm'
[[ "$(wc -l <plant.attributes.csv)" == 201 ]] || fail 'a row for each shape'
expect 0 "$vesk" check plant.dat --ignore V204
expect 0 "$vesk" import plant.rev -o text.dat --json
has out.txt '"shapes": 200'
[[ "$(wc -l <text.dat)" == "$(wc -l <plant.dat)" ]] || fail 'both forms have the same elements'

# The same bytes again, also through standard output.
expect 0 "$vesk" import plant.rvm -o -
cmp out.txt plant.dat
expect 4 "$vesk" import plant.rvm -o plant.dat
expect 0 "$vesk" import -f plant.rvm --no-attributes -o plant.dat

# Parts, and several files.
expect 0 "$vesk" import plant.rvm --group /PLANT/UNIT-0001 -o unit.dat
has out.txt '150 shapes of groups that were not selected'
expect 3 "$vesk" import plant.rvm --group /NOWHERE -o nowhere.dat
expect 0 "$vesk" import plant.rvm plant.rev -o both.dat
has out.txt '480 elements of 400 shapes'
expect 2 "$vesk" import plant.rvm some.pcf -o mixed.dat

# Damaged: a message, code 3, and no file.
head -c 5000 plant.rvm >cut.rvm
expect 3 "$vesk" import cut.rvm -o cut.dat
has err.txt 'cut.rvm, byte '
[[ ! -e cut.dat && ! -e cut.attributes.csv ]] || fail 'a half file stays'
# Names of 40,000 bytes in each other: the second group's chunk begins on line 16, behind 10 lines of HEAD
# and MODL and the 5 of the first group.
{
  printf 'HEAD\n1 1\na\nb\nc\nd\nMODL\n1 1\np\nm\n'
  for _ in 1 2 3; do printf 'CNTB\n1 2\n%040000d\n0 0 0\n1\n' 7; done
} >long.rev
expect 3 "$vesk" import long.rev -o long.dat
has err.txt 'long.rev, line 16: the names of nested groups'
# A path of 300 characters is no label of IFC, which has 255 at most.
{
  printf 'HEAD\n1 1\na\nb\nc\nd\nMODL\n1 1\np\nm\nCNTB\n1 2\n/%0299d\n0 0 0\n1\n' 7
  printf 'PRIM\n1 1\n8\n0.001 0 0 0\n0 0.001 0 0\n0 0 0.001 0\n-5 -5 -50\n5 5 50\n5 100\n'
  printf 'CNTE\n1 1\nEND:\n1 1\n'
} >path.rev
expect 0 "$vesk" import path.rev -o path.dat
expect 0 "$vesk" export path.dat -o path.ifc
has path.ifc "('path',\$,IFCTEXT('/000"
has path.ifc "('kind',\$,IFCLABEL('cylinder"
echo 'this is none' >none.rvm
expect 3 "$vesk" import none.rvm -o none.dat
has err.txt 'this is not a review model'
expect 3 "$vesk" import plant.rvm --attributes plant.rvm -o wrong.dat
has err.txt 'this is not a file of attributes'
echo 'review models: done'
