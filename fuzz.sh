#!/usr/bin/env bash
# Fuzzes every reader of outside bytes with libFuzzer, under AddressSanitizer and
# UndefinedBehaviorSanitizer, for SECONDS each (default 60), in build-fuzz/ built with clang.
#   ./fuzz.sh [SECONDS]
# Each target starts from its committed seeds (tests/fuzz/seeds/), every input that ever failed
# (tests/fuzz/regressions/), seeds made by the game's own writers, the media of a normal build
# in build/ when there is one, and what earlier runs kept (build-fuzz/corpus/). A crash, a
# broken promise, a timeout, a leak or a memory blow-up is copied into
# tests/fuzz/regressions/<target>/, which the normal build replays as its fuzz-regression
# tests; the script then exits 1. Exit 2 on a usage error.
set -euo pipefail
root=$(cd "$(dirname "$0")" && pwd)

seconds=${1:-60}
if [ $# -gt 1 ] || ! [[ "$seconds" =~ ^[1-9][0-9]*$ ]]; then
  echo "usage: ./fuzz.sh [SECONDS]   (seconds per target, default 60)" >&2
  exit 2
fi

targets=(fuzz_tga fuzz_3ds fuzz_wav fuzz_level fuzz_collision_map fuzz_input_script)
# The largest input of each target: room for the seeds, small enough that every input stays
# quick (a level cannot hold more objects than 16 KB describe).
declare -A max_len=([fuzz_tga]=16384 [fuzz_3ds]=65536 [fuzz_wav]=16384 [fuzz_level]=16384 [fuzz_collision_map]=4096
                    [fuzz_input_script]=4096)
# The normal build's media that seed each target.
declare -A media_glob=([fuzz_tga]='*.tga' [fuzz_3ds]='*.3DS' [fuzz_wav]='*.wav' [fuzz_level]='*.lvl')

"$root/scripts/install-deps.sh"

build="$root/build-fuzz"
fuzz_src="$root/tests/fuzz"
echo "fuzz: building the targets with clang in $build"
start=$SECONDS
# Asserts stay on (no NDEBUG): a broken invariant is a finding too.
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O2 -g" -DVELLORAN_FUZZ=ON >/dev/null
# The build's own output goes to a file: clang's warnings about other rooms are not news here.
if ! cmake --build "$build" --target fuzzers >"$build/build.log" 2>&1; then
  tail -n 40 "$build/build.log" | sed 's/^/fuzz:   | /' >&2
  echo "fuzz: the build failed; its whole output is in $build/build.log" >&2
  exit 1
fi
echo "fuzz: built in $((SECONDS - start)) s (output in $build/build.log)"

export UBSAN_OPTIONS="print_stacktrace=1"
export LSAN_OPTIONS="suppressions=$root/scripts/sanitizers/lsan.supp"
export VELLORAN_MESSAGES_TO_STDERR=1

# Seeds made now, so they follow the formats as they are today.
generated="$build/seeds"
rm -rf "$generated"
"$build/tests/fuzz/fuzz_seed_writer" "$generated"
media="$root/build/game/Media"
if [ -d "$media" ]; then
  echo "fuzz: seeding from the normal build's media in $media"
else
  echo "fuzz: no $media (build the game first to seed from its media too); going on without it"
fi
mkdir -p "$generated/fuzz_level"
for f in "$root"/assets/levels/*.lvl "$root"/assets/benchmarks/*.lvl; do
  if [ -f "$f" ]; then cp "$f" "$generated/fuzz_level/"; fi
done

# Copies the media files of the glob that fit the target's inputs; prints how many.
seed_from_media() {
  local target=$1 glob=$2 copied=0 f
  [ -d "$media" ] || { echo 0; return; }
  mkdir -p "$generated/$target"
  for f in "$media"/$glob; do
    [ -f "$f" ] || continue
    if [ "$(stat -c %s "$f")" -le "${max_len[$target]}" ]; then
      cp "$f" "$generated/$target/"
      copied=$((copied + 1))
    fi
  done
  echo $copied
}

# The last status line's value of a field ("cov", "ft", "corp", "exec/s") in a libFuzzer log.
status_field() {
  local log=$1 field=$2
  grep -a -E '^#[0-9]+' "$log" | grep -a -o -E "(^| )$field: [0-9]+" | tail -1 | grep -o -E '[0-9]+$' || true
}

final_stat() {
  grep -a -o -E "^stat::$2: *[0-9]+" "$1" | tail -1 | grep -o -E '[0-9]+$' || true
}

# What a finding said, from its first report line to the sanitizer's summary, so the console
# shows why.
show_report() {
  local log=$1
  local first='broken promise|Assertion .* failed|ERROR: (AddressSanitizer|LeakSanitizer|libFuzzer)|runtime error|ALARM'
  grep -a -n -m1 -E "$first" "$log" | cut -d: -f1 | {
    read -r line || exit 0
    sed -n "${line},$((line + 40))p" "$log" | sed '/^SUMMARY: /q' | sed 's/^/fuzz:   | /'
  }
}

declare -A summary
failed=0
index=0
for target in "${targets[@]}"; do
  index=$((index + 1))
  corpus="$build/corpus/$target"
  findings="$build/findings/$target"
  log="$build/logs/$target.log"
  mkdir -p "$corpus" "$build/logs"
  rm -rf "$findings"
  mkdir -p "$findings"
  from_media=0
  if [ -n "${media_glob[$target]:-}" ]; then from_media=$(seed_from_media "$target" "${media_glob[$target]}"); fi

  # New inputs go to the first folder only; the others are read.
  dirs=("$corpus")
  for d in "$generated/$target" "$fuzz_src/seeds/$target" "$fuzz_src/regressions/$target"; do
    [ -d "$d" ] && dirs+=("$d")
  done
  echo "fuzz: [$index/${#targets[@]}] $target for $seconds s (inputs up to ${max_len[$target]} bytes," \
       "$(find "$corpus" -type f | wc -l) kept from earlier runs, $from_media from the media)"

  start=$SECONDS
  # Every path is absolute: the level target changes the working directory.
  "$build/tests/fuzz/$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
    -max_len="${max_len[$target]}" -dict="$fuzz_src/dicts/$target.dict" -artifact_prefix="$findings/" \
    -print_final_stats=1 "${dirs[@]}" >"$log" 2>&1 &
  pid=$!
  # A background job ignores Ctrl-C; this script does not.
  trap 'kill "$pid" 2>/dev/null; exit 130' INT TERM
  # A line every ten seconds, so a person sees it is alive and getting somewhere.
  next=10
  while kill -0 "$pid" 2>/dev/null; do
    sleep 1
    elapsed=$((SECONDS - start))
    if [ "$elapsed" -ge "$next" ] && kill -0 "$pid" 2>/dev/null; then
      next=$((next + 10))
      echo "fuzz:   $target ${elapsed}/${seconds} s: coverage $(status_field "$log" cov)," \
           "features $(status_field "$log" ft), corpus $(status_field "$log" corp)," \
           "$(status_field "$log" exec/s) runs/s"
    fi
  done
  set +e
  wait "$pid"
  status=$?
  set -e

  runs=$(final_stat "$log" number_of_executed_units)
  rate=$(final_stat "$log" average_exec_per_sec)
  added=$(final_stat "$log" new_units_added)
  seeds_cov=$(grep -a -E '^#[0-9]+[[:space:]]+INITED' "$log" | grep -o -E 'cov: [0-9]+' | grep -o -E '[0-9]+$' || true)
  cov=$(status_field "$log" cov)
  ft=$(status_field "$log" ft)

  found=()
  for f in "$findings"/*; do [ -f "$f" ] && found+=("$f"); done
  result="none"
  if [ ${#found[@]} -gt 0 ]; then
    failed=1
    result="${#found[@]} ($(for f in "${found[@]}"; do basename "$f" | cut -d- -f1; done | sort | uniq -c |
                            awk '{printf "%s%s %s", sep, $1, $2; sep=", "}'))"
    echo "fuzz: FINDING in $target after $((SECONDS - start)) s; the log is $log"
    show_report "$log" || true
    regressions="$fuzz_src/regressions/$target"
    mkdir -p "$regressions"
    for f in "${found[@]}"; do
      name=$(basename "$f")
      known=""
      for r in "$regressions"/*; do
        if [ -f "$r" ] && cmp -s "$f" "$r"; then known=$r; fi
      done
      if [ -n "$known" ]; then
        echo "fuzz: ${known#"$root"/} still fails: it is already a regression test"
      else
        cp "$f" "$regressions/$name"
        echo "fuzz: saved tests/fuzz/regressions/$target/$name ($(stat -c %s "$f") bytes)"
        echo "fuzz: add it to git: it is now a regular test (ctest -L fuzz-regression replays it)"
      fi
    done
  elif [ "$status" -ne 0 ]; then
    failed=1
    result="error: exit $status, no input kept"
    echo "fuzz: $target stopped with exit status $status but left no input; the log is $log" >&2
    tail -n 20 "$log" | sed 's/^/fuzz:   | /' >&2
  fi
  summary[$target]=$(printf '%-20s %10s %8s %10s %8s %6s  %s' "$target" "${runs:-?}" "${rate:-?}" \
                            "${seeds_cov:-?}->${cov:-?}" "${ft:-?}" "${added:-?}" "$result")
done

echo "fuzz: summary, $seconds s per target (coverage: edges when the seeds were loaded -> at the end)"
printf 'fuzz: %-20s %10s %8s %10s %8s %6s  %s\n' target runs runs/s coverage features new findings
for target in "${targets[@]}"; do echo "fuzz: ${summary[$target]}"; done
if [ $failed -ne 0 ]; then
  echo "fuzz: FAILED: see the findings above" >&2
  exit 1
fi
echo "fuzz: no findings"
