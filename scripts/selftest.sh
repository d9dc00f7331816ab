#!/usr/bin/env bash
# Builds the self-test program and runs it: with no arguments the coverage
# run (a fenna card, then a brisca card); -b runs the board test on the card
# type the platform substitute reports (CVN_NP_SIM_CARD_TYPE).
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
bash "$top/scripts/setup.sh"
build=${CVN_NP_BUILD_DIR:-$top/build}
cmake -S "$top" -B "$build" -G Ninja >/dev/null
cmake --build "$build" --target cvn_np_selftest >/dev/null
exec "$build/platforms/corvan/lc/lc_tessel/lib/tool/cvn_np_selftest" "$@"
