#!/usr/bin/env bash
# The whole test suite from nothing: installs what is missing, builds with sanitizers
# and warnings as errors, runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh ci
ctest --preset ci -j "$(nproc)"
