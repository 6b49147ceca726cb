#!/usr/bin/env bash
# scripts/check_includes finds an upward include and lets downward ones pass. Usage: check_includes_test.sh SCRIPT FOLDER
set -euo pipefail
script=$1 folder=$2

try() { # EXPECTED FILE INCLUDE: runs the script on a tree of one file with one include
    rm -rf "$folder"
    mkdir -p "$folder/$(dirname "$2")"
    echo "#include $3" >"$folder/$2"
    local result=passes
    "$script" "$folder" >/dev/null || result=fails
    [[ $result == "$1" ]] || { echo "$2 with $3: $result, expected: $1" && exit 1; }
}
try passes io/reader.cpp '"core/result.hpp"'
try passes alignment/position.cpp '"kesto_road/kesto_road.h"'
try passes hosts/kesto-road/main.cpp '"kesto_road/kesto_road.hpp"'
try fails core/text.cpp '"alignment/position.hpp"'
try fails profile/deep/height.hpp '<design/stakes.hpp>'
try fails design/stakes.cpp '"../io/reader.hpp"'
try fails design/stakes.cpp '"hosts/kesto-road/plot.hpp"'
try fails hosts/kesto-road/main.cpp '"core/text.hpp"'
try passes hosts/kesto-road/main.cpp '"commands/commands.hpp"'
try passes hosts/kesto-road/drawing/plan.cpp '"drawing/canvas.hpp"'
try passes hosts/kesto-road/drawing/plan.cpp '"road/curves.hpp"'
try passes hosts/kesto-road/commands/plot.cpp '"terminal/output.hpp"'
try fails hosts/kesto-road/terminal/output.cpp '"road/road_line.hpp"'
try fails hosts/kesto-road/road/road_file.cpp '"drawing/canvas.hpp"'
try fails hosts/kesto-road/tables/csv.cpp '"drawing/canvas.hpp"'
try fails hosts/kesto-road/drawing/plan.cpp '"checks/findings.hpp"'
try fails hosts/kesto-road/checks/plan.cpp '"commands/commands.hpp"'
try fails examples/first_program.c '"core/text.hpp"'
try fails tests/interface/null_test.cpp '"core/guard.hpp"'
try fails tests/second/curve.hpp '"alignment/clothoid.hpp"'
try fails slope/faces.cpp '"core/result.hpp"'
