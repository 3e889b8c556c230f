#!/usr/bin/awk -f
# The headers document their members with plain line comments above a declaration and after a
# member ("int x; // what"); this turns both into Doxygen's comments for the API reference.
# A comment above several declarations with no blank line between them (a property's getter and
# setter, the signals emitted together, "the counts of the last search") speaks for all of them:
# such a run becomes a member group, whose documentation Doxygen gives to each member that has
# none of its own (DISTRIBUTE_GROUP_DOC). A new comment, a blank line or an access specifier
# ends the run.
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
# The code of a line without its trailing comment and blanks.
function code(line) {
    sub(/[ \t]*\/\/.*$/, "", line)
    sub(/[ \t]+$/, "", line)
    return line
}
function braces(line,    opened, closed) {
    line = code(line)
    opened = gsub(/\{/, "{", line)
    closed = gsub(/\}/, "}", line)
    return opened - closed
}
function flushComments(    i) {
    for (i = 1; i <= nComments; ++i)
        print comments[i]
    nComments = 0
}
function flushRun(    i) {
    if (statements > 1)
        print "///@{"
    flushComments()
    for (i = 1; i <= nRun; ++i)
        print run[i]
    if (statements > 1)
        print "///@}"
    nRun = 0
    statements = 0
}
function ends(line) {
    line = code(line)
    return line ~ /^[ \t]*$/ || line ~ /^[ \t]*(public|protected|private|signals|Q_SIGNALS)( slots)?:/ ||
           line ~ /^[ \t]*}/ || line ~ /^[ \t]*#/ || line ~ /^[ \t]*Q_[A-Z_]+(\(.*\))?$/
}
# A destructor, a deleted or defaulted member and an override are documented by their own comment
# or by their base, never by the comment of the run they follow.
function standsAlone(text) {
    return text ~ /^[ \t]*(virtual[ \t]+)?~/ || text ~ /=[ \t]*(delete|default)[ \t]*;/ ||
           text ~ /[) \t]override([ \t;{]|$)/
}
# A class, struct, enum or namespace holds members of its own and is never part of a run.
function opensScope(line) {
    return line ~ /^[ \t]*(template[ \t]*<.*>[ \t]*)?(class|struct|union|enum|namespace)([ \t]|$)/
}
# A declaration is complete: it joins the run, starts one under a comment, or stands alone.
function statementDone(    i, text) {
    text = ""
    for (i = 1; i <= nStmt; ++i)
        text = text " " code(stmt[i])
    if (nRun > 0 && standsAlone(text))
        flushRun()
    if (nRun == 0 && nComments == 0) {
        for (i = 1; i <= nStmt; ++i)
            print stmt[i]
    } else {
        for (i = 1; i <= nStmt; ++i)
            run[++nRun] = stmt[i]
        ++statements
    }
    nStmt = 0
}
{
    # Enumerators are no declarations; their comments only change form.
    if (inEnum) {
        print doxygen($0)
        if (code($0) ~ /^[ \t]*}/)
            inEnum = 0
        next
    }
    # A macro's continuation lines belong to it.
    if (continued) {
        print $0
        continued = $0 ~ /\\$/
        next
    }
    if (nStmt > 0) {
        stmt[++nStmt] = doxygen($0)
        depth += braces($0)
        if (depth == 0 && code($0) ~ /[;}]$/)
            statementDone()
        next
    }
    if ($0 ~ /^[ \t]*\/\// || ends($0) || opensScope($0)) {
        if (nRun > 0)
            flushRun()
        if ($0 ~ /^[ \t]*\/\//) {
            comments[++nComments] = doxygen($0)
            next
        }
        flushComments()
        print doxygen($0)
        continued = $0 ~ /^[ \t]*#.*\\$/
        if (code($0) ~ /^[ \t]*enum[ \t]/ && braces($0) > 0)
            inEnum = 1
        next
    }
    stmt[++nStmt] = doxygen($0)
    depth = braces($0)
    if (depth == 0 && code($0) ~ /[;}]$/)
        statementDone()
}
END {
    if (nStmt > 0)
        print FILENAME ": unfinished declaration: " stmt[1] > "/dev/stderr"
    for (i = 1; i <= nStmt; ++i)
        print stmt[i]
    if (nRun > 0)
        flushRun()
    flushComments()
}
