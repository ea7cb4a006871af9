#!/bin/sh
# check_getting_started.sh DOCUMENT SOURCE BUILD FOLDER runs what the document has typed, behind the clone and the demo.
set -eu

document=$1 source=$2 build=$3 folder=$4
rm -rf "$folder"
mkdir -p "$folder"

# The N-th block of a language.
block() {
    awk -v start="\`\`\`$1" -v wanted="$2" '
        $0 == "```" { inside = 0 }
        inside { print }
        $0 == start && ++count == wanted { inside = 1 }' "$document"
}
run() {
    block sh "$1" | sed "s|\.\./orbellib/build/release|\"$build\"|g; s|\.\./orbellib|\"$source\"|g" >>"$folder/typed.sh"
}

block sh 1 | grep -q 'dev demo$'
cd "$folder"
echo "set -eux" >typed.sh
run 2
run 3
run 4
mkdir stars
block cpp 1 >stars/DataStars.cpp
block json 1 >stars/scene.json
sh typed.sh >out 2>err || {
    cat out err
    exit 1
}
stars=$(sed -n 's/^The terminal shows `\([^`]*\)`.*/\1/p' "$document")
grep -q ">$stars<" stars/rating.svg
grep -q "$stars" out
