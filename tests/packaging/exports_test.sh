#!/usr/bin/env bash
# The shared library exports just the names of exports.txt, and the public header declares just these. It goes by the
# name that programs were linked with. Usage: exports_test.sh NM READELF LIBRARY SONAME HEADER EXPORTS
set -euo pipefail
nm=$1 readelf=$2 library=$3 soname=$4 header=$5 exports=$6

sorted=$(sort "$exports")
[[ -n $sorted ]] || { echo "$exports is empty" && exit 1; }

faults=0
compare() { # WHAT NAMES: prints and counts the differences to exports.txt
    diff --label exports.txt --label "$1" -u <(echo "$sorted") <(echo "$2") || faults=1
}
compare "exported by the library" "$("$nm" -D --defined-only "$library" | awk '{ print $NF }' | sort)"
compare "declared in the header" "$(grep -oE '\bKESTO_CALL [A-Za-z0-9_]+\(' "$header" | tr -d '(' | awk '{ print $2 }' | sort)"
name=$("$readelf" -d "$library" | grep SONAME || echo "no soname")
[[ $name == *"[$soname]"* ]] || { echo "not $soname: $name" && faults=1; }
exit "$faults"
