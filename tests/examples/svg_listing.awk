# Reads an SVG drawing strictly, and lists what it shows, in its order:
#
#     text CONTENT        with its characters resolved
#     picture NAME
#     bar CLASS HEIGHT    rectangles that have a class
#
# What is not well-formed ends the listing with a line "error: ..." and exit status 1. Also refused: a picture that is
# not in the file, identifiers that occur twice, and whatever would load another file.

function fail(what) {
    print "error: " what ": " substr(rest, 1, 60)
    failed = 1
    exit 1
}

function resolve(text, at, plain) {
    while ((at = index(text, "&")) > 0) {
        plain = plain substr(text, 1, at - 1)
        text = substr(text, at)
        if (!match(text, /^&[a-z]+;/)) fail("a bare &")
        entity = substr(text, 1, RLENGTH)
        if (!(entity in entities)) fail("unknown " entity)
        plain = plain entities[entity]
        text = substr(text, RLENGTH + 1)
    }
    return plain text
}

# Fills attributes from a tag's text behind the name.
function read_attributes(text, name, value, equals) {
    split("", attributes)
    while (match(text, /^[ \n]+[A-Za-z][A-Za-z0-9-]*="[^"<]*"/)) {
        value = substr(text, 1, RLENGTH)
        text = substr(text, RLENGTH + 1)
        sub(/^[ \n]+/, "", value)
        equals = index(value, "=")
        name = substr(value, 1, equals - 1)
        if (name in attributes) fail("twice the attribute " name)
        attributes[name] = resolve(substr(value, equals + 2, length(value) - equals - 2))
    }
    if (text !~ /^[ \n]*$/) fail("no attributes: " text)
}

function open_element(name) {
    if ("id" in attributes) {
        if (attributes["id"] in ids) fail("twice the id " attributes["id"])
        ids[attributes["id"]] = 1
    }
    if (name == "script" || name == "image" || name == "style" || name == "foreignObject") fail("not for drawings: " name)
    if ("href" in attributes) {
        if (attributes["href"] !~ /^#picture-/) fail("a link: " attributes["href"])
        wanted[substr(attributes["href"], 2)] = 1
        print "picture " substr(attributes["href"], 10)
    }
    if (name == "rect" && ("class" in attributes)) print "bar " attributes["class"] " " attributes["height"]
}

function read_tag(name, tag, closes_itself) {
    if (match(rest, /^<\/[A-Za-z]+>/)) {
        name = substr(rest, 3, RLENGTH - 3)
        if (depth == 0 || name != stack[depth]) fail("closes another element")
        depth--
    } else {
        if (!match(rest, /^<[A-Za-z]+([ \n]+[A-Za-z][A-Za-z0-9-]*="[^"<]*")*[ \n]*\/?>/)) fail("no tag")
        tag = substr(rest, 2, RLENGTH - 2)
        if (depth == 0 && roots++ > 0) fail("a second root")
        closes_itself = sub(/\/$/, "", tag)
        name = tag
        sub(/[ \n].*/, "", name)
        if (depth == 0 && name != "svg") fail("the root is no svg")
        read_attributes(substr(tag, length(name) + 1))
        open_element(name)
        if (!closes_itself) stack[++depth] = name
        match(rest, /^<[A-Za-z]+([ \n]+[A-Za-z][A-Za-z0-9-]*="[^"<]*")*[ \n]*\/?>/)
    }
    rest = substr(rest, RLENGTH + 1)
}

function read_text(text) {
    match(rest, /^[^<]+/)
    text = resolve(substr(rest, 1, RLENGTH))
    match(rest, /^[^<]+/)
    if (text ~ /[\001-\010\013\014\016-\037]/) fail("a control character")
    if (depth > 0 && stack[depth] == "text") print "text " text
    else if (text ~ /[^ \n]/ && stack[depth] != "title") fail("text outside of text elements")
    rest = substr(rest, RLENGTH + 1)
}

BEGIN {
    entities["&amp;"] = "&"; entities["&lt;"] = "<"; entities["&gt;"] = ">"; entities["&quot;"] = "\""
}

{ sub(/\r$/, ""); all = all $0 "\n" }

END {
    if (failed) exit 1
    rest = all
    head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    if (substr(rest, 1, length(head)) != head) fail("no declaration")
    rest = substr(rest, length(head) + 1)
    while (rest != "")
        if (substr(rest, 1, 1) == "<") read_tag()
        else read_text()
    if (depth > 0 || roots != 1) fail("ends too early")
    for (id in wanted) if (!(id in ids)) fail("no picture " id)
}
