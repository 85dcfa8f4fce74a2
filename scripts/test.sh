#!/usr/bin/env bash
# The whole test suite from nothing: installs what is missing, builds with sanitizers
# and warnings as errors, runs every test, then a minute of the mutation fuzz of the files kelaz
# reads (drawings, projects, scripts) against the sanitizer build.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh ci
ctest --preset ci -j "$(nproc)"
/usr/bin/python3 scripts/fuzz-inputs.py build/ci/app/kelaz --seconds "${KELAZ_FUZZ_SECONDS:-60}" \
    --jobs "$(nproc)"
