#!/usr/bin/env bash
# Builds everything with AddressSanitizer and UndefinedBehaviorSanitizer in build-asan/ and runs the
# whole suite there as ./test.sh does: the headless suites without a display, the window suites
# under Xvfb. Any sanitizer report fails the run.
# Arguments go to ctest, e.g. scripts/sanitize.sh -R GraphicsSystemTest
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
build="$root/build-asan"

# Set before the build too: it runs the media generator and lists the tests, both sanitized.
export ASAN_OPTIONS="detect_leaks=1:halt_on_error=1:check_initialization_order=1:strict_init_order=1:detect_stack_use_after_return=1"
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"
export LSAN_OPTIONS="suppressions=$root/scripts/sanitizers/lsan.supp"
echo "sanitize: ASAN_OPTIONS=$ASAN_OPTIONS"
echo "sanitize: UBSAN_OPTIONS=$UBSAN_OPTIONS"
echo "sanitize: LSAN_OPTIONS=$LSAN_OPTIONS"

echo "sanitize: building in $build"
start=$SECONDS
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DVELLORAN_WERROR=ON -DVELLORAN_SANITIZE=ON >/dev/null
cmake --build "$build"
echo "sanitize: built in $((SECONDS - start)) s"

export SDL_NO_SIGNAL_HANDLERS=1 VELLORAN_MESSAGES_TO_STDERR=1 LIBGL_ALWAYS_SOFTWARE=1
start=$SECONDS
echo "sanitize: running the headless suites, without a display"
# --timeout: a hang under the sanitizers should cost minutes, not the whole CI budget.
env -u DISPLAY -u WAYLAND_DISPLAY ctest --test-dir "$build" --output-on-failure -j2 --timeout 300 -LE display "$@"

# Mesa unloads its software driver when a test closes its last window. The driver's one-time
# allocations, held by its globals, then look lost, and LeakSanitizer cannot even name the code
# that made them. Loaded up front, the driver stays mapped until exit and those blocks stay
# reachable. The sanitizer runtime is then no longer first in the load order, which its check
# would refuse.
preload=()
dri=""
drivers_path=${LIBGL_DRIVERS_PATH:-}
for dir in ${drivers_path//:/ } "/usr/lib/$(cc -print-multiarch)/dri" /usr/lib/dri; do
  if [ -f "$dir/swrast_dri.so" ]; then dri="$dir/swrast_dri.so"; break; fi
done
if [ -n "$dri" ]; then
  echo "sanitize: keeping Mesa's $dri loaded in the window suites"
  preload=(LD_PRELOAD="$dri${LD_PRELOAD:+ $LD_PRELOAD}" ASAN_OPTIONS="$ASAN_OPTIONS:verify_asan_link_order=0")
else
  echo "sanitize: no swrast_dri.so found; leaks in Mesa's unloaded driver will be reported" >&2
fi

# -noreset: by default Xvfb resets whenever its last client leaves and drops connections that
# arrive meanwhile, so a game started just after another one closed may find no display.
echo "sanitize: running the window suites under Xvfb"
xvfb-run -a -s "-noreset -screen 0 1024x768x24" env "${preload[@]}" \
  ctest --test-dir "$build" --output-on-failure -j2 --timeout 300 -L display "$@"
echo "sanitize: every suite passed in $((SECONDS - start)) s"
