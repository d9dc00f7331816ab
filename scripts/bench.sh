#!/usr/bin/env bash
# Builds the benchmarks in Release into build-bench/ and runs them: every
# lookup kind of every family beside its flat-array baseline, 5 repetitions
# each.  Prints the machine, the compiler and the table of medians; the
# whole output is kept in build-bench/bench.txt.  Extra arguments go to the
# benchmark program (e.g. --benchmark_filter=brisca).
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
build="${CVN_NP_BENCH_DIR:-$top/build-bench}"

bash scripts/setup.sh
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCVN_NP_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --target cvn_np_bench >/dev/null

echo "machine:  $(lscpu | sed -n 's/^Model name: *//p' | head -1), $(nproc) CPUs"
cxx=$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' "$build/CMakeCache.txt")
echo "compiler: $("$cxx" --version | head -1), CMAKE_BUILD_TYPE=Release"
env -u CVN_NP_SIM_CARD_TYPE -u CVN_NP_SIM_IFSUBSYS "$build/bench/cvn_np_bench" \
    --benchmark_repetitions=5 --benchmark_min_time=0.05 --benchmark_color=false "$@" \
    >"$build/bench.txt"
sed -n '/^family /,$p' "$build/bench.txt"
