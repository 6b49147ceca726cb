#!/usr/bin/env bash
# The first programs stand in the README as they are built and run, and its links lead somewhere.
# Usage: readme_test.sh ROOT
set -euo pipefail
cd "$1"

for program in examples/first_program.cpp examples/first_program.c; do
    # The block behind the comment that names the file.
    awk -v mark="<!-- $program -->" '$0 == mark { on = 1; getline; next } on && /^```$/ { exit } on' README.md |
        diff --label README.md --label "$program" -u - "$program"
done

faults=0
while read -r link; do
    [[ -e $link ]] || { echo "README.md links to $link, which is not there" && faults=1; }
done < <(grep -oE '\]\([^)#]+' README.md | cut -c3- | grep -v '^http' | sort -u)
exit "$faults"
