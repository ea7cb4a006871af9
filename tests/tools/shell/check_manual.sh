#!/bin/sh
# check_manual.sh PAGE ORBEL: the page has no mistakes, and every verb and option is in it.
set -eu

page=$1 program=$2
if command -v groff >/dev/null; then
    warnings=$(groff -ww -z -man "$page" 2>&1)
    [ -z "$warnings" ] || { echo "$warnings"; exit 1; }
fi

verbs=$("$program" --help | sed -n '/^Subcommands:/,$s/^  \([a-z][a-z]*\) .*/\1/p')
[ -n "$verbs" ]
has() {
    # In the source a minus is written as "\-".
    grep -qF -e "$(printf '%s' "$1" | sed 's/-/\\-/g')" "$page" || { echo "$2 is not in $page: $1"; exit 1; }
}
for verb in $verbs; do
    grep -q "^\.SS orbel $verb" "$page" || { echo "no part about $verb in $page"; exit 1; }
    for option in $("$program" "$verb" --help | grep -oE '^  (-[a-zA-Z],)?--[a-z-]+' | grep -oE -e '--[a-z-]+'); do
        has "$option" "an option of $verb"
    done
done
