#!/usr/bin/env bash
# Runs every test program of a build twice over in one process, in a shuffled order, so a test
# that leans on another's leftovers (a global, a file, a clock) fails here. Window tests run
# under Xvfb, one program at a time.
#   scripts/repeat-tests.sh [BUILD_DIR]   (default: build)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build}" && pwd)
export SDL_NO_SIGNAL_HANDLERS=1 VELLORAN_MESSAGES_TO_STDERR=1 LIBGL_ALWAYS_SOFTWARE=1
failed=0
count=0
# The test programs CTest knows, not whatever an older build left in the folder, nor the
# checks it runs through a shell (those have no tests to shuffle).
programs=$(ctest --test-dir "$build" -N -V | sed -n 's/^[0-9]*: Test command: \([^ ]*\) .*/\1/p' | sort -u |
             grep "^$build/")
for program in $programs; do
  count=$((count + 1))
  name=${program#"$build"/}
  if xvfb-run -a -s "-noreset -screen 0 1024x768x24" "$program" --gtest_repeat=2 --gtest_shuffle --gtest_brief=1 \
       >"$build/repeat.log" 2>&1; then
    echo "repeat-tests: $name passed twice, shuffled"
  else
    echo "repeat-tests: $name FAILED when repeated and shuffled:" >&2
    tail -40 "$build/repeat.log" >&2
    failed=$((failed + 1))
  fi
done
rm -f "$build/repeat.log"
if [ "$count" -eq 0 ]; then
  echo "repeat-tests: no test programs found under $build/tests" >&2
  exit 1
fi
echo "repeat-tests: $((count - failed)) of $count test programs passed repeated and shuffled"
[ "$failed" -eq 0 ]
