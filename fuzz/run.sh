#!/usr/bin/env bash
# fuzz/run.sh [TARGET] [SECONDS]   fuzzes one target, or each for SECONDS, several at once
# fuzz/run.sh --merge              minimises what was found so far into the committed corpus
# Called by ./dev fuzz, which builds the targets.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Whole paths, for targets may work in a folder of their own.
found=$PWD/build/fuzz/corpus
limits=(-timeout=10 -rss_limit_mb=2048 -malloc_limit_mb=1024)
max_len=4096

# fuzz TARGET SECONDS [OPTIONS] prints one line; false when there is a finding.
fuzz() {
    local target=$1 log=build/fuzz/logs/$1.log findings=$PWD/build/fuzz/findings/$1 failed=0 artifact
    mkdir -p "$found/$target" "$findings" build/fuzz/logs
    build/clang/fuzz/"fuzz_$target" -max_total_time="$2" -max_len=$max_len "${limits[@]}" -print_final_stats=1 "${@:3}" \
        -dict="fuzz/dictionaries/$target.dict" -artifact_prefix="$findings/" \
        "$found/$target" "$PWD/fuzz/corpus/$target" >"$log" 2>&1 || failed=1
    awk -v target="$target" -v findings="$failed" '
        / cov: / { for (at = 1; at < NF; ++at) { if ($at == "cov:") cov = $(at + 1); if ($at == "corp:") corpus = $(at + 1) } }
        /number_of_executed_units/ { executions = $2 }
        /average_exec_per_sec/ { rate = $2 }
        END { printf "%-18s %10d executions %7d/s  coverage %5d  corpus %-12s findings %d\n",
                     target, executions, rate, cov, corpus, findings }' "$log"
    [[ $failed == 0 ]] && return
    artifact=$(sed -n 's/.*Test unit written to //p' "$log")
    printf '  replay: build/clang/fuzz/fuzz_%s %s\n' "$target" "$artifact"
    # Where it happened, and the input itself: a log is all that is left of a run elsewhere.
    sed -n '/ERROR: \|runtime error: \|check failed: /,$ { /^0x\|^stat::/d; p }' "$log" | head -n 60 | sed 's/^/    /'
    printf '  log: %s\n' "$log"
    return 1
}

# Hand-written inputs, whose names are no hashes, stay; of all others the fewest that reach as much, and of these the
# 250 smallest: the tests replay them all.
merge() {
    local target=$1 corpus=$PWD/fuzz/corpus/$1 merged file
    merged=$(mktemp -d)
    mkdir -p "$found/$target"
    build/clang/fuzz/"fuzz_$target" -merge=1 -max_len=$max_len "${limits[@]}" "$merged" "$corpus" "$found/$target" \
        >/dev/null 2>&1
    find "$corpus" -type f -regextype posix-extended -regex '.*/[0-9a-f]{40}' -delete
    # libFuzzer names files by their SHA-1.
    sha1sum "$corpus"/* | while read -r hash _; do rm -f "$merged/$hash"; done
    find "$merged" -type f -printf '%s %p\n' | sort -n | head -n 250 | cut -d ' ' -f 2 | xargs -r cp -t "$corpus"
    rm -r "$merged"
    printf '%-18s %4d files %7d bytes\n' "$target" "$(find "$corpus" -type f | wc -l)" \
        "$(find "$corpus" -type f -printf '%s\n' | awk '{ sum += $1 } END { print sum }')"
}

export -f fuzz merge
export found max_len
# Arrays are not exported. All at once: a run that is to find something is one of a single target.
each() {
    ls fuzz/corpus | xargs -P 12 -I{} bash -c "$(declare -p limits); set -o pipefail; $1"
}

case ${1:-} in
    --merge) each 'merge {}' ;;
    # From the same seed each time: a change is to be judged by what it does, not by luck. Those who look for more name a
    # target, or keep what build/fuzz/corpus has collected.
    '') each 'fuzz {} 60 -seed=1' || exit 1 ;;
    *)
        if [[ ! -x build/clang/fuzz/fuzz_$1 ]]; then
            echo "fuzz/run.sh: there is no target $1, but: $(ls fuzz/corpus | xargs)" >&2
            exit 2
        fi
        fuzz "$1" "${2:-60}"
        ;;
esac
