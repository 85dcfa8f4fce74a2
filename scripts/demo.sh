#!/usr/bin/env bash
# The demonstration from nothing: installs what is missing, builds the release preset and
# runs the demonstration session.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh release
exec examples/demo.sh build/release/app/kelaz
