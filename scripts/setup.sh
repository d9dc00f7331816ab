#!/usr/bin/env bash
# Installs what the build and the tests need, from Debian's archive, when a
# piece is missing.  Safe to run again: it does nothing on a ready machine.
set -euo pipefail

need=()
command -v cmake >/dev/null || need+=(cmake)
command -v ninja >/dev/null || need+=(ninja-build)
command -v g++ >/dev/null || need+=(g++)
command -v pkg-config >/dev/null || need+=(pkgconf)
for pkg in libgtest-dev libgmock-dev libbenchmark-dev; do
    dpkg -s "$pkg" >/dev/null 2>&1 || need+=("$pkg")
done
if [ "${CVN_NP_NEED_CLANG:-0}" = 1 ]; then
    command -v clang++ >/dev/null || need+=(clang)
fi
if [ "${CVN_NP_NEED_STATIC_CHECKS:-0}" = 1 ]; then
    command -v clang-tidy >/dev/null || need+=(clang-tidy)
    command -v cppcheck >/dev/null || need+=(cppcheck)
    command -v clang-format >/dev/null || need+=(clang-format)
fi
# The port-map tool's picture test renders its SVG in headless Chromium.
if [ "${CVN_NP_NEED_CHROMIUM:-0}" = 1 ]; then
    command -v chromium >/dev/null || need+=(chromium)
    command -v xmllint >/dev/null || need+=(libxml2-utils)
fi
# The packages and their checks (scripts/package.sh, scripts/abi-check.sh,
# scripts/man-lint.sh): CPack's dependency scan, lintian, the ABI tools and
# the manual-page renderers.
if [ "${CVN_NP_NEED_PACKAGING:-0}" = 1 ]; then
    command -v dpkg-shlibdeps >/dev/null || need+=(dpkg-dev)
    command -v lintian >/dev/null || need+=(lintian)
    command -v abidiff >/dev/null || need+=(abigail-tools)
    command -v mandoc >/dev/null || need+=(mandoc)
    command -v man >/dev/null || need+=(man-db)
    command -v groff >/dev/null || need+=(groff-base)
fi

if [ ${#need[@]} -gt 0 ]; then
    echo "setup: installing ${need[*]}"
    sudo=""
    [ "$(id -u)" -eq 0 ] || sudo=sudo
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${need[@]}" >/dev/null
fi
