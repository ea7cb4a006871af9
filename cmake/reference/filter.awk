# What Doxygen reads of a header: the same, where a comment is repeated for the overloads that stand right below it, and
# what all classes have in common says so.
function name_of(line) {
    if (!match(line, /[A-Za-z_]+ *\(/))
        return line ~ /operator=\(/ ? "operator=" : ""
    return substr(line, RSTART, RLENGTH)
}

# The constructor that copies is followed by the assignment.
function shares_comment(line) {
    return documented != "" && (name_of(line) == documented || documented_copy && line ~ /operator=\(/)
}

function common(line) {
    if (line ~ /^    static DataType\* classType;/)
        return "The record of this class, see DataType; null until it is made."
    if (line ~ /^    static void init\(\);/)
        return "Makes the record of this class, if there is none yet."
    if (line ~ /^    static DataType\* getClassType\(\);/)
        return "The record of this class, made first if there is none yet."
    if (line ~ /^    explicit (Data[A-Za-z]*|Orbel)\(char\* name\);/)
        return "`name` is cut to its first 99 characters."
    return ""
}

# Without this, functions outside of classes are left out.
FNR == 1 {
    print "/// @file"
}

/^ *\/\/\// {
    if (!in_comment)
        comment = ""
    in_comment = 1
    comment = comment $0 "\n"
    print
    next
}

{
    if (in_comment) {
        documented = name_of($0)
        documented_copy = /\(const [A-Za-z]*&/
    } else if (shares_comment($0))
        printf "%s", comment
    else {
        documented = ""
        if (common($0) != "")
            print "    /// " common($0)
    }
    in_comment = 0
    print
}
