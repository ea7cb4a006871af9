#!/bin/sh
# check_pipe.sh FOLDER ORBEL... reads the shell's lines from a pipe.
set -eu

folder=$1
shift
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"

status=0
printf 'create string:title\nwatch title\ntitle = Hello\ntitel = Ho\nquit\ntitle = never\n' |
    "$@" shell >out.raw 2>err.raw || status=$?
tr -d '\r' <out.raw >out
tr -d '\r' <err.raw >err
[ "$status" -eq 1 ] || { echo "exit code $status"; exit 1; }
# Neither prompt nor colours.
printf 'title = Hello\n' | diff - out
printf 'orbel shell: -:4: nothing at titel; did you mean title?\n' | diff - err

status=0
printf 'create string:title' | "$@" shell >out 2>err || status=$?
[ "$status" -eq 0 ] && [ ! -s out ] && [ ! -s err ]
