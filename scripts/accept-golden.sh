#!/usr/bin/env bash
# Takes the sessions the golden script tests wrote (tests/app/golden/*.golden.actual) as the new
# golden files. Review them first: git diff shows what changed once they are accepted.
set -euo pipefail
cd "$(dirname "$0")/.."
shopt -s nullglob
accepted=0
for actual in tests/app/golden/*.golden.actual; do
    mv "$actual" "${actual%.actual}"
    echo "accepted ${actual%.actual}"
    accepted=$((accepted + 1))
done
[ "$accepted" -gt 0 ] || echo "no new golden sessions"
