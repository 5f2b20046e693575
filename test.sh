#!/usr/bin/env bash
# Installs what is missing, builds with warnings as errors and runs every test. Tests that open
# a window run under Xvfb with Mesa's software renderer.
set -euo pipefail
root=$(cd "$(dirname "$0")" && pwd)
"$root/scripts/install-deps.sh"
build="$root/build"
echo "test: building in $build"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVELLORAN_WERROR=ON >/dev/null
cmake --build "$build"
export SDL_NO_SIGNAL_HANDLERS=1 VELLORAN_MESSAGES_TO_STDERR=1 LIBGL_ALWAYS_SOFTWARE=1
echo "test: running the suite under Xvfb"
xvfb-run -a -s "-screen 0 1024x768x24" ctest --test-dir "$build" --output-on-failure -j2 "$@"
