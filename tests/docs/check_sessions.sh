#!/bin/sh
# check_sessions.sh DOCUMENT FOLDER ORBEL... types each session of the document, and compares what is answered. The types
# are those of the document's block of them.
set -eu

document=$1 folder=$2
shift 2
rm -rf "$folder"
mkdir -p "$folder/types"
cd "$folder"
awk '
    $0 == "```" { file = "" }
    file != "" { if (file ~ /session/) { if (sub(/^> /, "")) print >(file ".typed"); else print >(file ".expected") }
                 else print >file }
    $0 == "```qx" { file = "types/types.qx" }
    $0 == "```text" { file = "session" ++sessions; printf "" >(file ".typed"); printf "" >(file ".expected") }
' "$document"

ls session*.typed >/dev/null
for typed in session*.typed; do
    session=${typed%.typed}
    "$@" shell --types types <"$typed" >"$session.raw" 2>"$session.errors" || true
    tr -d '\r' <"$session.raw" >"$session.answered"
    if ! diff "$session.expected" "$session.answered" || [ -s "$session.errors" ]; then
        cat "$typed" "$session.errors"
        exit 1
    fi
done
