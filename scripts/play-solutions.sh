#!/usr/bin/env bash
# Plays every shipped level with its solution and lints it: one line per level.
#   scripts/play-solutions.sh [GAME_DIR]      (default: build/game)
# Exit 1 when a level has no solution, is not won by it, or lints with any problem.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
game=$(cd "${1:-$root/build/game}" && pwd)
tool="$game/velloran-tool"
[ -x "$tool" ] || { echo "play-solutions: no $tool (build first)" >&2; exit 2; }
failed=0
for level in "$game"/Media/*.lvl; do
  name=$(basename "$level" .lvl)
  solution="$root/solutions/$name.input"
  if [ ! -f "$solution" ]; then
    echo "$name: no solutions/$name.input"; failed=1; continue
  fi
  result=$("$tool" simulate "Media/$name.lvl" --root "$game" --input "$solution" 2>/dev/null |
    python3 -c 'import json,sys; r=json.load(sys.stdin); print("won at frame %s of %d" % (r["wonAtFrame"], r["frames"]) if r["won"] else "NOT WON: %d of %d balls in" % (r["collected"], r["ballCount"]))')
  problems=$("$tool" lint "Media/$name.lvl" --root "$game" 2>/dev/null |
    python3 -c 'import json,sys; print(len(json.load(sys.stdin)["problems"]))')
  echo "$name: $result; lint problems: $problems"
  case "$result" in won*) ;; *) failed=1 ;; esac
  [ "$problems" = "0" ] || failed=1
done
exit $failed
