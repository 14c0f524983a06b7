#!/bin/sh
# Rules of the house that a compiler does not check. Prints each breach; fails if there is one.
set -u
cd "$1" || exit 1
breaches=$(mktemp)
trap 'rm -f "$breaches"' EXIT
files=$(find src tools tests bench fuzz -name '*.cpp' -o -name '*.h' | sort)
[ -n "$files" ] || { echo "no sources found"; exit 1; }
headers=$(echo "$files" | grep '\.h$')

# A room includes only rooms before it; ado and controls don't know each other. tsql and report have rooms
# inside, their doors on top of them; who is not in the room comes in by what the order says of the room alone.
# shellcheck disable=SC2086
awk '
function room(path,   part, n) {
    n = split(path, part, "/")
    if (path ~ /^platform\/report\/viewer\//) return "viewer"
    if (path ~ /^platform\/(tsql|report)\//) return n > 3 ? part[2] "/" part[3] : part[2]
    if (path ~ /^platform\//) return part[2]
    return n > 1 ? part[1] : "main"
}
BEGIN {
    n = split("base tsql/text tsql/reading tsql/meaning tsql/engines tsql ado controls " \
              "report/formula report/definition report/query report/pages report/output report viewer " \
              "shell accounts vouchers institute reports admin main", order, " ")
    for (i = 1; i <= n; i++) rank[order[i]] = i
}
FILENAME ~ /^src\// && /^#include "/ {
    mine = room(substr(FILENAME, 5))
    split($0, quoted, "\"")
    if (quoted[2] !~ /\//) next
    theirs = room(quoted[2])
    if (rank[theirs] > rank[mine] || (mine == "controls" && theirs ~ /^(ado|tsql)/) || !(theirs in rank))
        print FILENAME ":" FNR ": " mine " includes " theirs
}' $files >>"$breaches"

# shellcheck disable=SC2086
{
    grep -nE '[[:blank:]]+$' $files | sed 's/$/  <- blank at the end of the line/'
    grep -nE '\b(TODO|FIXME|XXX|HACK)\b' $files | sed 's/$/  <- unfinished/'
    # Text that no compiler saw as a literal comes in where its author is no user of a screen.
    grep -n 'Sql::trusted' $(echo "$files" | grep '^src/') |
        grep -vE '^src/platform/(base/sql|report/(definition/definition_reader|report))\.' |
        sed 's/$/  <- a foreign piece or a Literal/'
    grep -nE '^using namespace' $headers | sed 's/$/  <- using namespace in a header/'
    for f in $headers; do
        grep -q '^#pragma once' "$f" || echo "$f: no #pragma once"
    done
    # A source over 350 lines says why at its head, in a comment that names its size.
    for f in $(echo "$files" | grep '^src/'); do
        lines=$(wc -l <"$f")
        [ "$lines" -le 350 ] || head -n 40 "$f" | grep -qi 'one file' || echo "$f: $lines lines, and its head does not say why it is one file"
    done
} >>"$breaches"

if [ -s "$breaches" ]; then
    cat "$breaches"
    exit 1
fi
echo "$(echo "$files" | wc -l) files, no breach"
