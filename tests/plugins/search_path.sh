#!/bin/bash
# Where plug-ins are looked for, and that a process with more rights than its user does not do what that one says.
# Arguments: the program, what runs it.
set -u
program=$(realpath "$1") runner=("${@:2}")
failures=0
# expect FOLDERS VARIABLE: what stands before the folder beside the program. Paths with "/" and lists with ":" become
# Windows ones.
expect() {
  local expected=$1 list=$2 got
  if [[ $program = *.exe ]]; then
    list=${list//:/;} list=${list//\//D:\/} expected=${expected//\//D:\/}
  fi
  got=$(ZENTOR_PLUGIN_PATH=$list "${runner[@]}" "$program" | tr -d '\r')
  [[ $got = "${expected:+$expected$'\n'}"*zentor-plugins && ${got##*$'\n'} = *[/\\]zentor-plugins ]] && return
  echo "failed: '$list' gives '$got', expected '$expected'"
  failures=1
}
expect '' ''
expect '' ':'
expect /a /a
expect $'/a b\nc\n/größe' ':/a b::c:/größe:'
[ $failures = 0 ] || exit 1

# With the rights of another group.
[[ $program != *.exe ]] || exit 0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$program" "$work/privileged"
for group in $(id -G) 65534; do
  [ "$group" != "$(id -g)" ] && chgrp "$group" "$work/privileged" 2>/dev/null && break
done
chmod g+s "$work/privileged"
if [ "$(stat -c %g "$work/privileged")" = "$(id -g)" ] || findmnt -no OPTIONS -T "$work" | grep -q nosuid; then
  echo "no way here to give a program more rights"
  exit 77
fi
got=$(ZENTOR_PLUGIN_PATH=/a "$work/privileged")
[ "$got" = "$work/zentor-plugins" ] || { echo "failed: with more rights: '$got'"; exit 1; }
