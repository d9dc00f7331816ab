#!/usr/bin/env bash
# Formats every C and C++ source the repository tracks with the root
# .clang-format; with --check, changes nothing and fails if a file is not
# formatted.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
mapfile -t files < <(git ls-files '*.c' '*.cpp' '*.h')
if [ "${1:-}" = --check ]; then
    clang-format --dry-run --Werror "${files[@]}"
    echo "format: ${#files[@]} files formatted"
else
    clang-format -i "${files[@]}"
fi
