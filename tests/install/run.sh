#!/usr/bin/env bash
# Installs the build tree into a fresh prefix, then builds the C99 consumer
# against what was installed: once through find_package, once through
# pkg-config.  Runs both.
#   run.sh BUILD_DIR SOURCE_DIR WORK_DIR
set -euo pipefail
build=$1 source=$2 work=$3
rm -rf "$work"
prefix="$work/prefix"
consumer="$source/tests/c99/c99_consumer.c"
unset CVN_NP_SIM_CARD_TYPE CVN_NP_SIM_IFSUBSYS

cmake --install "$build" --prefix "$prefix" >/dev/null
test -f "$prefix/lib/libcvn_np_lib.a"
test -f "$prefix/include/cvn_np/cvn_np_lib.h"
"$prefix/bin/cvn_np_map" 0x3D0274 --module 0:3=10ge --check # the installed port-map tool

echo "-- find_package(cvn_np_lib)"
cmake -S "$source/tests/install" -B "$work/cmake-build" -G Ninja \
    -DCMAKE_PREFIX_PATH="$prefix" -DCVN_NP_CONSUMER_SOURCE="$consumer" >/dev/null
cmake --build "$work/cmake-build" >/dev/null
"$work/cmake-build/consumer"

echo "-- pkg-config cvn_np_lib cvn_np_platform_sim"
export PKG_CONFIG_PATH="$prefix/lib/pkgconfig"
cc -std=c99 -Wall -Wextra -pedantic -Werror $(pkg-config --cflags cvn_np_lib cvn_np_platform_sim) \
    -c "$consumer" -o "$work/consumer.o"
cc "$work/consumer.o" $(pkg-config --libs cvn_np_lib cvn_np_platform_sim) -o "$work/consumer-pc"
"$work/consumer-pc"
