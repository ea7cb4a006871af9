# Works out from the observations alone what the weather board has to count.
#
# Every store brings one callback, and so does every copy. It is unchanged when the text it stores is the one that is
# there. A value starts as one space; further values of a field start empty.

BEGIN { FS = "," }

{ sub(/\r$/, "") }

NR == 1 { next }

function tell(differs) {
    callbacks++
    if (differs) changed++; else unchanged++
}

{
    city = $1
    if (!($2 in dates)) { dates[$2] = 1; days++ }

    for (column = 2; column <= 7; column++) {
        before = ((city, column) in texts) ? texts[city, column] : " "
        # Joined with a letter, because bare fields that look like numbers are compared as numbers.
        tell(("t" before) != ("t" $column))
        texts[city, column] = $column
        values++
    }

    seen[city]++
    highs[city, seen[city]] = $4
    count = seen[city] < 7 ? seen[city] : 7
    differs = 0
    for (slot = 7 - count; slot < 7; slot++) {
        before = ((city, slot) in week) ? week[city, slot] : (slot == 0 ? " " : "")
        now = highs[city, seen[city] - 6 + slot]
        if (("t" before) != ("t" now)) differs = 1
        week[city, slot] = now
        values++
    }
    tell(differs)

    for (slot = 0; slot < 7; slot++) {
        before = ((city, slot) in skies) ? skies[city, slot] : " "
        now = slot == 6 ? $7 : ((city, slot + 1) in skies) ? skies[city, slot + 1] : " "
        tell(before != now)
        skies[city, slot] = now
    }
}

END {
    printf "Totals: %d days, %d values, %d callbacks, %d changed, %d unchanged\n", \
        days, values, callbacks, changed, unchanged
}
