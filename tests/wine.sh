# Sourced. wine_failed EXPECTED STATUS FILE...: whether a run under Wine, with what the program said in the files, ended
# because Wine's server went away just as the program came, or took it along: Wine says so, or the program ends with
# status 0 and without a word, which for an EXPECTED of "0" is as it should be. Only such a run may be made again: it
# says nothing of the program.
wine_failed() {
  grep -q 'wine client error' "${@:3}" || { [ "$1" != 0 ] && [ "$2" = 0 ] && [ -z "$(cat "${@:3}")" ]; }
}
