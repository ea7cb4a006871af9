#!/usr/bin/env bash
# check_completion.sh FOLDER SCRIPTS ORBEL checks the scripts, and what the one for bash offers.
set -euo pipefail

folder=$1 scripts=$2 program=$3
rm -rf "$folder"
mkdir -p "$folder/shows"
cd "$folder"
unset QX_OBJECTS_FILE QX_OBJECTS_DIR QX_OBJECTS_PATH
printf 'City = {string name;};\nCityPlace = {City city;};\n' >types.qx

bash -n "$scripts/orbel.bash"
if command -v zsh >/dev/null; then
    zsh -n "$scripts/_orbel"
fi

# shellcheck disable=SC2317
orbel() { "$program" "$@"; }
# shellcheck source=/dev/null
source "$scripts/orbel.bash"

# offers WORDS... EXPECTED: the last word is what is typed of the next one.
offers() {
    local expected=${*: -1}
    COMP_WORDS=("${@:1:$#-1}")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _orbel
    if [[ ${COMPREPLY[*]} != "$expected" ]]; then
        echo "${COMP_WORDS[*]}: ${COMPREPLY[*]}, and not $expected"
        exit 1
    fi
}

offers orbel sh shell
offers orbel d diff
offers orbel --v --version
offers orbel run --du --dump
offers orbel types --ty --type
offers orbel types --format m markdown
offers orbel types --type CityP CityPlace
offers orbel types sh shows
offers orbel diff ty types.qx
[[ $(complete -p orbel) == *"-F _orbel"* ]]
