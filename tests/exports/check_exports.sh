#!/bin/sh
# check_exports.sh elf|pe READER CXXFILT LIBRARY DOCUMENTED
#
# Compares what the library exports with the documented names, both ways.
set -eu

format=$1 reader=$2 cxxfilt=$3 library=$4 documented=$5

raw_names() {
    case $format in
        elf) "$reader" --dynamic --defined-only --format=posix "$library" | awk '$2 != "A" { print $1 }' ;;
        # Rows of the name table look like "	[   3] _ZN5Orbel...", and nothing else after its title does.
        pe) "$reader" -p "$library" | awk '/Ordinal\/Name Pointer/ { on = 1; next }
                                           on && /^\t\[ *[0-9]+\]/ { print $NF; next }
                                           on && !/^\t/ { on = 0 }' ;;
    esac
}

# Versioned names end in "@@VERSION".
names=$(raw_names | sed 's/@.*//' | "$cxxfilt" | sort -u)

if [ -z "$names" ]; then
    echo "no exported names found in $library"
    exit 1
fi

echo "$names" | awk -v list="$documented" -v windows="$([ "$format" = pe ] && echo 1)" '
    BEGIN {
        while ((getline line < list) > 0) documented[line] = 1
    }

    function accept(line) {
        if (!(line in documented)) return 0
        seen[line] = 1
        return 1
    }

    # The class that a member, or a table the compiler made for a class, belongs to.
    function owner(name) {
        sub(/^(virtual|non-virtual) thunk to /, "", name)
        sub(/^guard variable for /, "", name)
        if (sub(/^(vtable|VTT|typeinfo|typeinfo name) for /, "", name)) return name
        if (match(name, /^([A-Za-z_][A-Za-z_0-9]*::)+/)) return substr(name, 1, RLENGTH - 2)
        return ""
    }

    accept("class " owner($0)) { next }
    accept("variable " $0) { next }

    # A DLL exports the type information of header-only templates that derive from an exported class.
    windows && /^typeinfo for [A-Za-z_]+</ {
        template = owner($0)
        sub(/<.*$/, "", template)
        if (("template " template) in documented) next
    }

    # operator<<(std::ostream&, TYPE&)
    /^operator<<\(std::/ {
        type = $0
        sub(/^.*, /, "", type)
        sub(/( const)?&\)$/, "", type)
        if (accept("output " type)) next
    }

    {
        name = $0
        sub(/\(.*$/, "", name)
        if (accept("function " name)) next
        print "exported but not documented: " $0
        failed = 1
    }

    END {
        for (line in documented)
            if (!(line in seen) && line !~ /^template /) {
                print "documented but not exported: " line
                failed = 1
            }
        exit failed
    }'
