#!/usr/bin/env bash
# Installs the package without network into a new environment that sees the system's packages, as a user does, and
# checks that nothing is left in the tree. Usage: install.sh PYTHON LIBRARY ENVIRONMENT
set -euo pipefail
python=$1 library=$2 environment=$3
tree=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

list() { find "$tree" -not -name '*.pyc' -not -name __pycache__ | sort; }
before=$(list)
rm -rf "$environment"
"$python" -m venv --system-site-packages "$environment"
KESTO_ROAD_LIBRARY=$library "$environment/bin/pip" wheel --no-build-isolation --no-index --no-deps \
    --wheel-dir "$environment/wheels" "$tree"
wheel=$(ls "$environment"/wheels/kesto_road-*-py3-none-*.whl)
[[ $wheel != *-any.whl ]] || { echo "the wheel says that it runs on every platform" >&2 && exit 1; }
"$environment/bin/pip" install --no-index "$wheel"
cd / && "$environment/bin/python" -c 'import kesto_road; print(kesto_road.__version__, kesto_road.__file__)'
[[ $(list) == "$before" ]] || { echo "the build wrote into $tree" >&2 && exit 1; }
