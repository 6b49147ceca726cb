#!/usr/bin/env bash
# scripts/interface names what has changed in a header, and asks for the changelog's line on it.
# Usage: interface_test.sh SCRIPT SOURCE_TREE FOLDER
set -euo pipefail
script=$1 tree=$2 folder=$3
header=$folder/include/kesto_road/kesto_road.h

start() { # a tree of its own, as it is now
    rm -rf "$folder"
    mkdir -p "$folder"
    (cd "$tree" && cp --parents include/kesto_road/kesto_road.h CHANGELOG.md $("$script" files) "$folder")
}
fails_with() { # WORDS WHAT: the check fails and says so
    local said
    if said=$("$script" check "$folder" 2>&1); then echo "$2: passes" && exit 1; fi
    [[ $said == *"$1"* ]] || { printf '%s: not told:\n%s\n' "$2" "$said" && exit 1; }
}
changed() { # WORDS EDIT: a header changed by sed fails
    start
    sed -i "$2" "$header"
    ! cmp -s "$header" "$tree/include/kesto_road/kesto_road.h" || { echo "$2: changes nothing" && exit 1; }
    fails_with "$1" "$2"
}

start
"$script" check "$folder"
changed "-function ClearRoad: void (RoadDesign*)" 's/ClearRoad(RoadDesign/ClearAll(RoadDesign/'
new() { echo "s|^KESTO_API void KESTO_CALL ClearRoad.*|&\n/** New. */\nKESTO_API bool KESTO_CALL $1(void);|"; }
changed "+function IsNew: bool (void)" "$(new IsNew)"
changed "+function SetStartMileage: void (RoadDesign*, int32_t)" 's/SetStartMileage(RoadDesign\* road, double/SetStartMileage(RoadDesign* road, int32_t/'
changed "+enumerator KESTO_NO_FOOT: 48" 's/KESTO_NO_FOOT = 28/KESTO_NO_FOOT = 48/'
changed "+enumerator KESTO_NEW_ONE: 1" 's/KESTO_SUCCESS = 0,/&\n    KESTO_NEW_ONE,/'
changed "+    Element.startAzimuth: double at 24, 8 bytes" '/^typedef struct Element/,/^}/s/double startY;/double z;/; s/double startAzimuth;/double startY;/; s/double z;/double startAzimuth;/'
changed "+record BrokenChain: 24 bytes" 's/double aheadMileage;/& double another;/'
changed "+    DoubleArray.count: int64_t at 8 (32 bits: 4), 8 bytes" '/^typedef struct DoubleArray/,/^}/s/int32_t count/int64_t count/'
changed "calls.inc is not what the header gives" 's/spacing (m); may be null/spacing (m)/'
changed "layout.h is not what the header gives" 's/double aheadMileage;/& double another;/'
changed "does Newly edit its road?" "$(new Newly)"
changed "not understood" 's/^typedef struct BrokenChain {/typedef union BrokenChain {/'

start
sed -i 's/KESTO_NO_FOOT = 28/KESTO_NO_FOOT = 48/' "$header"
said=$("$script" update "$folder" 2>&1) && { echo "no line is asked for" && exit 1; }
wanted=$(grep '^- Interface' <<<"$said")
fails_with "CHANGELOG.md needs a line" "a list without its line"
sed -i "0,/^- Interface/s/^- Interface/$wanted\n&/" "$folder/CHANGELOG.md"
fails_with "CHANGELOG.md needs a line" "a line without words"
sed -i '0,/: \.\.\.$/s/: \.\.\.$/: `KESTO_NO_FOOT` is 48./' "$folder/CHANGELOG.md"
"$script" check "$folder"
