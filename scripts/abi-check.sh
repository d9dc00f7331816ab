#!/usr/bin/env bash
# Checks the ABI of libcvn_np_lib.so as scripts/package.sh built it (in
# build-package/, CVN_NP_PACKAGE_DIR) against the committed baseline
# abi/libcvn_np_lib.abi, with Debian's abigail-tools: abidw describes the
# exported functions and variables and the types the public headers give
# them; abidiff must find no change at all.  A change fails until the
# baseline is updated in the same commit (scripts/abi-check.sh --update);
# when the baseline changed since the previous commit, a change abidiff
# calls incompatible must come with a new SONAME (CVN_NP_ABI_MAJOR).
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
CVN_NP_NEED_PACKAGING=1 bash scripts/setup.sh
build=${CVN_NP_PACKAGE_DIR:-$top/build-package}
so=$(readlink -f "$build/platforms/corvan/lc/lc_tessel/lib/libcvn_np_lib.so")
baseline=abi/libcvn_np_lib.abi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
abidw --no-corpus-path --no-comp-dir-path --no-show-locs \
    --headers-dir platforms/corvan/lc/lc_tessel/lib/include "$so" >"$work/built.abi"
if [ "${1:-}" = --update ]; then
    cp "$work/built.abi" "$baseline"
    echo "abi: $baseline written from $so; commit it with the change"
    exit 0
fi
soname() { sed -n "s/.*<abi-corpus .*soname='\([^']*\)'.*/\1/p" "$1" | head -1; }
if ! abidiff --no-show-locs "$baseline" "$work/built.abi" >"$work/report"; then
    cat "$work/report"
    echo "abi: libcvn_np_lib.so differs from $baseline; if the change is meant, run" \
        "scripts/abi-check.sh --update (and raise CVN_NP_ABI_MAJOR if it is incompatible)" >&2
    exit 1
fi
if git show "HEAD~1:$baseline" >"$work/previous.abi" 2>/dev/null &&
    ! cmp -s "$work/previous.abi" "$baseline"; then
    status=0
    abidiff --no-show-locs "$work/previous.abi" "$baseline" >"$work/report" || status=$?
    if [ $((status & 8)) -ne 0 ] && [ "$(soname "$work/previous.abi")" = "$(soname "$baseline")" ]; then
        cat "$work/report"
        echo "abi: an incompatible change keeps the SONAME $(soname "$baseline")" >&2
        exit 1
    fi
fi
echo "abi: $(soname "$baseline") matches $baseline ($(grep -c '<elf-symbol ' "$baseline") symbols)"
