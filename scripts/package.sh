#!/usr/bin/env bash
# Builds the Debian packages into build-package/ (CVN_NP_PACKAGE_DIR): a
# RelWithDebInfo build installed to /usr with the self-test and cvn_np_map
# linked to libcvn_np_lib.so (debug information free of the checkout's
# path, for scripts/abi-check.sh), cut into libcvn-np-lib1, libcvn-np-lib-dev and
# cvn-np-tools by CPack (stripped), then checked by lintian, which must
# report no error.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
CVN_NP_NEED_PACKAGING=1 bash scripts/setup.sh
build=${CVN_NP_PACKAGE_DIR:-$top/build-package}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_INSTALL_PREFIX=/usr \
    -DCVN_NP_TOOLS_SHARED=ON -DCVN_NP_BUILD_TESTS=OFF -DCVN_NP_BUILD_BENCH=OFF \
    -DCMAKE_CXX_FLAGS="-fdebug-prefix-map=$top=." -DCMAKE_C_FLAGS="-fdebug-prefix-map=$top=." \
    >/dev/null
cmake --build "$build" >/dev/null
rm -f "$build"/*.deb
(cd "$build" && cpack -G DEB >/dev/null)
for deb in "$build"/*.deb; do
    echo "$(basename "$deb"): $(dpkg-deb -f "$deb" Package Version Depends | paste -sd' ')"
done
lintian --fail-on error --no-tag-display-limit "$build"/*.deb
echo "package: $(ls "$build"/*.deb | wc -l) packages in $build, lintian: no error"
