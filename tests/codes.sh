#!/bin/bash
# Error codes have names: the table of failures uses those of the public header and no others, every name of the header
# is raised somewhere, and neither code nor comments call a code by its number.
set -euo pipefail
cd "$1"
header=include/zentor/error_codes.h
table=src/errors/error_table.h
bad=0
fail() {
    echo "$*" >&2
    bad=1
}

names=$(grep -oE '^ +ZT_[A-Z0-9_]+ =' "$header" | tr -d ' =')
rows=$(grep -cE '^ +X\(k' "$table")
named=$(grep -cE '^ +X\(k[A-Za-z0-9]+, ZT_[A-Z0-9_]+, "' "$table")
[ "$rows" -gt 100 ] || fail "the table of failures was not found in $table"
[ "$rows" = "$named" ] || fail "$((rows - named)) rows of $table do not name their code"

uses=$(find src -name '*.h' -o -name '*.cpp' | xargs sed -e 's://.*$::' | grep -ohE '\bZT_[A-Z0-9_]+\b' | sort -u)
for name in $names; do
    [ "$name" = ZT_UNKNOWN_NODE_KIND ] && continue  # reserved: all kinds of nodes are the library's own
    grep -qx "$name" <<<"$uses" || fail "$name is in $header and nowhere raised"
done

# "codes 14, 15", "ZT_FILE_OPEN, 21"; but not "code 0", which is no failure.
numbers=$(grep -rnE '//.*(\b[Cc]odes?|ZT_[A-Z_]+,|ZT_[A-Z_]+ and) [1-9][0-9]{0,3}\b([,;.)]|$)' include src cli plugins \
    --include='*.h' --include='*.cpp' || true)
[ -z "$numbers" ] || fail "codes without their names:"$'\n'"$numbers"
raised=$(grep -rnE '(ZT_PluginException|[^a-zA-Z]Fail)\([1-9][0-9]*[,)]' src cli plugins --include='*.h' --include='*.cpp' || true)
[ -z "$raised" ] || fail "codes raised by number:"$'\n'"$raised"
exit $bad
