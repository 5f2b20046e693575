#!/usr/bin/env bash
# The headless rooms and velloran-tool must run with no window, GL or sound library. Checks with ldd,
# which follows libraries to their own dependencies, that none of their built programs loads one.
#   scripts/check-headless-links.sh [BUILD_DIR]      (default: build/)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build}
rooms=(core formats physics resources level objects fuzz)
# GL covers GLEW, GLU, GLX and GLdispatch; X11 covers X11-xcb.
forbidden='^lib(GL|OpenGL|EGL|SDL2|openal|X11)'

binaries=()
for room in "${rooms[@]}"; do
  found=0
  for f in "$build/tests/$room"/*_test; do
    if [ -f "$f" ] && [ -x "$f" ]; then binaries+=("$f"); found=1; fi
  done
  if [ $found -eq 0 ]; then
    echo "check-headless-links: no test programs in $build/tests/$room (is the build complete?)" >&2
    exit 1
  fi
done
binaries+=("$build/game/velloran-tool")

echo "check-headless-links: no libGL*, libOpenGL, libEGL, libSDL2, libopenal or libX11 in ${#binaries[@]} programs"
failed=0
for f in "${binaries[@]}"; do
  name=${f#"$build"/}
  if ! libs=$(ldd "$f" 2>&1); then
    echo "check-headless-links: FAIL: ldd cannot read $name: $libs" >&2
    failed=1
    continue
  fi
  bad=$(awk '{print $1}' <<<"$libs" | grep -E "$forbidden" || true)
  if [ -n "$bad" ]; then
    for lib in $bad; do
      echo "check-headless-links: FAIL: $name loads $lib" >&2
    done
    failed=1
  else
    echo "check-headless-links: ok   $name"
  fi
done
if [ $failed -ne 0 ]; then
  echo "check-headless-links: headless programs must not load a window, GL or sound library" >&2
  exit 1
fi
