#!/usr/bin/env bash
# Static checks of the library's own sources (lib/src and lib/sim):
# clang-tidy with the checks of the root .clang-tidy, then cppcheck, both
# over the compile commands of the build tree (configured here when it has
# none).  Any finding fails the run.  CVN_NP_BUILD_DIR picks the build tree
# (default: build/).
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
CVN_NP_NEED_STATIC_CHECKS=1 bash scripts/setup.sh
build=${CVN_NP_BUILD_DIR:-$top/build}
[ -f "$build/compile_commands.json" ] || cmake -S "$top" -B "$build" -G Ninja >/dev/null

lib=platforms/corvan/lc/lc_tessel/lib
sources=("$lib"/src/*.cpp "$lib"/sim/*.cpp)

echo "== clang-tidy (${#sources[@]} files, checks from .clang-tidy)"
printf '%s\n' "${sources[@]}" |
    xargs -P "$(nproc)" -n 1 clang-tidy -p "$build" --quiet 2>&1 |
    { grep -v '^[0-9]* warnings\? generated\.$' || true; }

echo "== cppcheck (warning, performance, portability)"
cppcheck --project="$build/compile_commands.json" \
    --file-filter="*/$lib/src/*" --file-filter="*/$lib/sim/*" \
    --enable=warning,performance,portability --std=c++20 --inline-suppr \
    --error-exitcode=1 --quiet -j "$(nproc)"

echo "static checks: clean"
