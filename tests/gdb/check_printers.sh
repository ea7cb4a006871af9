#!/bin/sh
# check_printers.sh PRINTERS TYPES CLIENT SOURCE WORK
#
# Runs the commands of SOURCE under gdb, with the printers laid out as they are installed; 77 where there is no gdb.
set -eu

printers=$1 types=$2 client=$3 source=$4 work=$5

if ! command -v gdb >/dev/null || ! gdb -q -nx -batch -ex 'python import gdb.printing' 2>/dev/null; then
    echo "there is no gdb with Python here"
    exit 77
fi

folder="$work/a folder"
mkdir -p "$folder"
cp "$printers" "$folder/orbel.py"
cp "$types" "$folder/orbel-types.o"
# As the file does that gdb loads together with the library.
echo "import gdb; gdb.execute('source $folder/orbel.py')" >"$work/first.py"
# The address sanitizer looks for leaks in a way that no debugger allows.
ASAN_OPTIONS=detect_leaks=0 LC_ALL=C.UTF-8 PYTHONDONTWRITEBYTECODE=1 DEBUGINFOD_URLS='' \
    gdb -q -nx -batch -ex "source $work/first.py" -x "$source/commands.gdb" "$client" </dev/null >"$work/log" 2>&1
sed -n '/^[a-zA-Z*()]*\(1\)*: /p; /rror:/p; /Traceback/p' "$work/log" >"$work/printed"
if ! diff -u "$source/expected.txt" "$work/printed"; then
    cat "$work/log"
    exit 1
fi
