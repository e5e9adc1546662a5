#!/bin/bash
# The folders include what the map in docs/architecture.md says, and nothing else. Argument: the root of the sources.
set -u
cd "$1" || exit 1
map=docs/architecture.md
failures=0
folders=$(sed -nE 's/^\| `src\/([a-z]+)` \|.*/\1/p' $map)
for folder in src/*/; do
  folder=$(basename "$folder")
  grep -qx "$folder" <<<"$folders" || { echo "not in the map: src/$folder"; failures=$((failures + 1)); }
done
alternatives=$(tr '\n' '|' <<<"$folders" | sed 's/|$//')
for folder in $folders; do
  told=$(sed -nE "s/^\| \`src\/$folder\` \|.*\|([^|]*)\|\$/\1/p" $map | grep -oE '[a-z]+' | sort)
  found=$(grep -rhoE "#include \"($alternatives)/" "src/$folder" | sed -E 's/.*"([a-z]+)\//\1/' | sort -u | grep -vx "$folder")
  [ "$told" = "$found" ] && continue
  printf 'src/%s includes:\n%s\nthe map says:\n%s\n' "$folder" "$found" "$told"
  failures=$((failures + 1))
done
used=$(grep -rhoE "#include \"($alternatives)/" cli | sed -E 's/.*"([a-z]+)\//\1/' | sort -u)
[ "$used" = util ] || { echo "cli includes: $used"; failures=$((failures + 1)); }
system=$(grep -rlE '#include <(windows|shellapi|io|unistd|fcntl|dirent|dlfcn|pthread|signal|sys/[a-z]+)\.h>' src cli |
  grep -vE '^src/util/(posix|win32)/')
[ -z "$system" ] || { echo "includes of the system: $system"; failures=$((failures + 1)); }
exit $((failures != 0))
