#!/bin/sh
# Every shipped level must validate against docs/levels.xsd, so the schema designers check
# their levels with keeps up with what the game accepts. Usage: level_schema_check.sh SOURCE_DIR
set -u
src=$1
if ! command -v xmllint >/dev/null; then
  echo "xmllint is missing: install libxml2-utils (scripts/install-deps.sh)" >&2
  exit 1
fi
failed=0
count=0
for level in "$src"/assets/levels/*.lvl "$src"/assets/benchmarks/*.lvl; do
  [ -e "$level" ] || continue
  count=$((count + 1))
  xmllint --noout --schema "$src/docs/levels.xsd" "$level" || failed=1
done
[ "$count" -gt 0 ] || { echo "no levels found under $src/assets" >&2; exit 1; }
exit $failed
