#!/usr/bin/awk -f
# The headers document their members with plain line comments above a declaration and after a
# member ("int x; // what"); this turns both into Doxygen's comments for the API reference.
# A property's getter and the setter on the next line share the getter's comment: the pair
# becomes a member group, whose documentation Doxygen gives to both (DISTRIBUTE_GROUP_DOC).
function doxygen(line,    at) {
    if (line ~ /^[ \t]*\/\/$/ || line ~ /^[ \t]*\/\/[^\/]/) {
        sub(/\/\//, "///", line)
        return line
    }
    if (match(line, /[;,{][ \t]*\/\/[^\/]/)) {
        at = index(substr(line, RSTART), "//") + RSTART - 1
        return substr(line, 1, RSTART) " ///<" substr(line, at + 2)
    }
    return line
}
# The property name of a getter declaration ("TColor Color() const ..."), or "".
function getterName(line,    name) {
    if (!match(line, /[ \t*&][A-Z][A-Za-z0-9_]*\(\)/))
        return ""
    name = substr(line, RSTART + 1, RLENGTH - 3)
    return name
}
function flushComments(    i) {
    for (i = 1; i <= nComments; ++i)
        print comments[i]
    nComments = 0
}
function flushGetter() {
    if (getter == "")
        return
    flushComments()
    print getterLine
    getter = ""
}
{
    if ($0 ~ /^[ \t]*\/\//) {
        flushGetter()
        comments[++nComments] = doxygen($0)
        next
    }
    if (getter != "") {
        if ($0 ~ ("^[ \t]*(virtual )?void Set" getter "\\(")) {
            print "///@{"
            flushComments()
            print getterLine
            print doxygen($0)
            print "///@}"
            getter = ""
            next
        }
        flushGetter()
    }
    name = getterName($0)
    if (name != "" && $0 !~ /^[ \t]*\/\//) {
        getter = name
        getterLine = doxygen($0)
        next
    }
    flushComments()
    print doxygen($0)
}
END {
    flushGetter()
    flushComments()
}
