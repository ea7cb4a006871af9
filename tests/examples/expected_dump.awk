# Works out from the observations alone how the tree is dumped at the end.

BEGIN {
    FS = ","
    split("sun=Sunny rain=Rain drizzle=Light_rain fog=Fog snow=Snow", pairs, " ")
    for (at in pairs) { split(pairs[at], pair, "="); sub("_", " ", pair[2]); words[pair[1]] = pair[2] }
}

{ sub(/\r$/, "") }

NR == 1 { next }

{
    if (!($1 in seen)) names[cities++] = $1
    rows[$1, ++seen[$1]] = $0
}

function line(tabs, text, tab) {
    for (tab = 0; tab < tabs; tab++) printf "\t"
    print text
}

# The fields of a day, by name; a day that was never written holds one space each.
function print_day(tabs, row, parts) {
    if (split(row, parts, ",") == 0) split("- - - - - - -", parts, "-")
    line(tabs, "date=" parts[2] ";")
    line(tabs, "precipitation=" parts[3] ";")
    line(tabs, "temp_max=" parts[4] ";")
    line(tabs, "temp_min=" parts[5] ";")
    line(tabs, "weather=" parts[7] ";")
    line(tabs, "wind=" parts[6] ";")
}

function row_of_week(city, slot) {
    return seen[city] - 6 + slot > 0 ? rows[city, seen[city] - 6 + slot] : ""
}

# Of a field of several values only the first starts as a space.
function highs_of(city, slot, parts, list) {
    for (slot = 0; slot < 7; slot++) {
        if (split(row_of_week(city, slot), parts, ",") == 0) parts[4] = slot == 0 ? " " : ""
        list = list (slot == 0 ? "" : ",") parts[4]
    }
    return "highs[0-6]=" list ";"
}

function print_city(at, city, slot) {
    city = names[at]
    line(2, "City-#" at " ={")
    line(3, highs_of(city))
    line(3, "name=" city ";")
    line(3, "today ={")
    print_day(4, rows[city, seen[city]])
    line(3, "}")
    line(3, "week[0-6]={")
    for (slot = 0; slot < 7; slot++) {
        line(4, "{")
        print_day(5, row_of_week(city, slot))
        line(4, slot < 6 ? "}," : "}")
    }
    line(3, "};")
    print ""
    line(2, at < cities - 1 ? "}," : "}")
}

END {
    print "Orbel ={"
    list = names[0]
    for (at = 1; at < cities; at++) list = list "," names[at]
    line(1, "cities[" list "]={")
    for (at = 0; at < cities; at++) print_city(at)
    line(1, "};")
    print ""

    # Half way the headline has gone over to the second city.
    city = names[1]
    split(rows[city, seen[city]], last, ",")
    line(1, "headline ={")
    line(2, "caption=" toupper(city) ";")
    line(2, "city=" city ";")
    line(2, "high=" last[4] ";")
    line(2, highs_of(city))
    line(2, "weather=" last[7] ";")
    line(2, "words=" words[last[7]] ";")
    line(1, "}")
    print "}"
}
