#!/usr/bin/env bash
# Installs what is missing, builds the game in Release (which generates its media) and starts
# it from its game folder. Arguments are passed to the game: a level file to play at once.
set -euo pipefail
root=$(cd "$(dirname "$0")" && pwd)
"$root/scripts/install-deps.sh"
echo "run: building in $root/build"
cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$root/build"
cd "$root/build/game"
echo "run: starting $(pwd)/velloran $*"
exec ./velloran "$@"
