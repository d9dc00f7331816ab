#!/usr/bin/env bash
# Builds the library, the platform substitute, the self-test and every test,
# then runs all the tests through ctest.  Extra arguments go to cmake's
# configure step (e.g. -DCVN_NP_SANITIZE=ON); CVN_NP_BUILD_DIR picks the
# build directory (default: build/).
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
bash "$top/scripts/setup.sh"
build=${CVN_NP_BUILD_DIR:-$top/build}
cmake -S "$top" -B "$build" -G Ninja "$@"
cmake --build "$build"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)"
