#!/bin/sh
# check_output.sh EXPECTED PROGRAM... compares what the program prints, with plain line ends.
set -eu

expected=$1
shift
"$@" >"$expected.raw"
tr -d '\r' <"$expected.raw" | diff "$expected" -
