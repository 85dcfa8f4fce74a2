#!/usr/bin/env bash
# The long version of the recovery test: a long scripted session killed with SIGKILL at KILLS
# random moments, each time rebuilt by kelaz recover and compared with an uninterrupted run of the
# lines its journal holds.   scripts/kill-recover.sh [KILLS] [PRESET]
set -euo pipefail
cd "$(dirname "$0")/.."
kills=${1:-30}
preset=${2:-ci}
cmake --build "build/$preset" -j 2 --target kelaz kelaz_app_tests
KELAZ_RECOVERY_KILLS=$kills "build/$preset/tests/kelaz_app_tests" \
    --gtest_filter='Recovery.SessionsKilledAtRandomMomentsAreRecoveredUpToTheLastLineRead'
