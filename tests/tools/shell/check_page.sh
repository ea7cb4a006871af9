#!/bin/sh
# check_page.sh PAGE FOLDER ORBEL... runs what the page shows behind "$ ", and compares what is printed.
set -eu

page=$1 folder=$2
shift 2
rm -rf "$folder"
mkdir -p "$folder/bin"

{
    echo '#!/bin/sh'
    printf 'exec'
    printf " '%s'" "$@"
    echo ' "$@"'
} >"$folder/bin/orbel"
chmod +x "$folder/bin/orbel"
PATH=$folder/bin:$PATH
unset QX_OBJECTS_FILE QX_OBJECTS_DIR QX_OBJECTS_PATH QX_DUMP_CONFIG
cd "$folder"

# Files stand behind their name, sessions in blocks of "console".
awk '
    /^`[^`]*`:$/ { name = substr($0, 2, length($0) - 3); next }
    /^```console$/ { session = 1; next }
    /^```/ && !open && name != "" && !session { open = 1; next }
    /^```/ { open = session = 0; name = ""; next }
    open { print > name }
    session && /^\$ / { ++number; start = sprintf("%02d", number); print substr($0, 3) > (start ".command"); next }
    session && /^orbel> / { print substr($0, 8) > (start ".input"); next }
    session && !/^A live tree: / { print > (start ".expected") }
' "$page"

count=0
for command in ??.command; do
    number=${command%.command}
    [ -e "$number.input" ] || : >"$number.input"
    [ -e "$number.expected" ] || : >"$number.expected"
    sh "$command" <"$number.input" >"$number.raw" 2>&1 || true
    # Who types does not hear in which line a mistake is.
    tr -d '\r' <"$number.raw" | sed 's/^orbel shell: -:[0-9]*: //' >"$number.output"
    diff "$number.expected" "$number.output" || {
        cat "$command"
        exit 1
    }
    count=$((count + 1))
done
[ "$count" -ge 10 ] || {
    echo "found only $count commands"
    exit 1
}
