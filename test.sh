#!/usr/bin/env bash
# Installs what is missing, builds with warnings as errors and runs every test: the headless
# suites without a display, the tests that open a window under Xvfb with Mesa's software renderer.
set -euo pipefail
root=$(cd "$(dirname "$0")" && pwd)
"$root/scripts/install-deps.sh"
build="$root/build"
echo "test: building in $build"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVELLORAN_WERROR=ON >/dev/null
cmake --build "$build"
export SDL_NO_SIGNAL_HANDLERS=1 VELLORAN_MESSAGES_TO_STDERR=1 LIBGL_ALWAYS_SOFTWARE=1
# The headless suites need no display, and are run without one to prove it.
echo "test: running the headless suites, without a display"
env -u DISPLAY -u WAYLAND_DISPLAY ctest --test-dir "$build" --output-on-failure -j2 -LE display "$@"
echo "test: running the window suites under Xvfb"
# -noreset: Xvfb otherwise resets when its last client leaves and drops connections that arrive
# meanwhile, so a game started just after another one closed could find no display.
xvfb-run -a -s "-noreset -screen 0 1024x768x24" ctest --test-dir "$build" --output-on-failure -j2 -L display "$@"
