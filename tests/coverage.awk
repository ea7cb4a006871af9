# Sums up what gcovr has counted, by folder of the library, and lists what no test reaches:
#   awk -f coverage.awk files.csv lines.txt branches.txt
# Ends with 1 when there is less than what is promised.

function percent(part, whole) {
    return whole ? 100 * part / whole : 100
}

function row(name) {
    printf "%-28s%8d%8d%9.2f%10d%8d%9.2f\n", name, lines[name], linesHit[name], percent(linesHit[name], lines[name]),
        branches[name], branchesHit[name], percent(branchesHit[name], branches[name])
}

FILENAME ~ /files\.csv$/ {
    if (FNR == 1)
        next
    split($0, cell, ",")
    folder = cell[1]
    sub("/[^/]*$", "", folder)
    if (!(folder in lines))
        folders[++count] = folder
    for (i = 1; i <= 2; ++i) {
        name = i == 1 ? folder : "total"
        lines[name] += cell[2]
        linesHit[name] += cell[3]
        branches[name] += cell[5]
        branchesHit[name] += cell[6]
    }
    next
}

# A long name stands on a line of its own, in front of its figures.
/^orbel\// { file = $1 }

/%/ {
    sub(/^[^%]*% */, "")
    if ($0 == "" || file == "")
        next
    split($0, missing, ",")
    for (i = 1; i in missing; ++i)
        print (FILENAME ~ /lines\.txt$/ ? "line not reached:   " : "branch not taken:   ") file ":" missing[i]
    file = ""
}

END {
    printf "\n%-28s%8s%8s%9s%10s%8s%9s\n", "", "lines", "reached", "%", "branches", "taken", "%"
    for (i = 1; i <= count; ++i)
        row(folders[i])
    row("total")
    if (lines["total"] && linesHit["total"] == lines["total"] && percent(branchesHit["total"], branches["total"]) >= 95)
        exit 0
    print "coverage: less than 100 % of the lines or 95 % of the branches"
    exit 1
}
