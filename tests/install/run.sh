#!/usr/bin/env bash
# The installed tree (BUILD_DIR after cmake --install, or PACKAGE_DIR's .deb
# files unpacked with dpkg-deb -x, nothing installed on the machine): the .so
# exports exactly what the headers declare; the C99 consumer built through
# find_package and pkg-config, static and shared, and the programs run.
#   run.sh BUILD_DIR|PACKAGE_DIR SOURCE_DIR WORK_DIR
set -euo pipefail
from=$1 source=$2 work=$3 && prefix="$3/root"
rm -rf "$work/root" "$work/cmake-build" && mkdir -p "$prefix"
unset CVN_NP_SIM_CARD_TYPE CVN_NP_SIM_IFSUBSYS
if compgen -G "$from/*.deb" >/dev/null; then
    for deb in "$from"/*.deb; do dpkg-deb -x "$deb" "$prefix"; done
    prefix="$prefix/usr"
else
    cmake --install "$from" --prefix "$prefix" >/dev/null
fi
lib=$(dirname "$(find "$prefix" -name libcvn_np_lib.a)") consumer="$source/tests/c99/c99_consumer.c"
export LD_LIBRARY_PATH="$lib" PKG_CONFIG_PATH="$lib/pkgconfig"

nm -D --defined-only "$lib/libcvn_np_lib.so" | awk '{print $3}' | sort >"$work/exported"
python3 - "$prefix/include/cvn_np" <<'PY' | sort >"$work/declared"
import re, subprocess, sys  # the headers' top-level declarations, macros expanded
out = subprocess.run(["cc", "-E", "-x", "c", sys.argv[1] + "/cvn_np_lib_tables.h"],
                     capture_output=True, text=True, check=True).stdout
ours, t = False, ""
for line in out.splitlines():
    ours, t = (sys.argv[1] in line, t) if line.startswith("# ") else (ours, t + line * ours + "\n")
while "{" in t:
    t = re.sub(r"\{[^{}]*\}", "", t)
for s in (" ".join(s.split()) for s in t.split(";")):
    if s and not s.startswith("typedef"):
        fn = "(" in s and not s.startswith("extern")
        print(re.search(r"(\w+)\s*\(" if fn else r"(\w+)(\s*\[[^\]]*\])?$", s).group(1))
PY
diff "$work/declared" "$work/exported" && ! grep -q '^_Z' "$work/exported"
echo "exports: $(wc -l <"$work/exported") names, as declared; $(objdump -p "$lib"/libcvn_np_lib.so | grep SONAME)"
"$prefix/bin/cvn_np_map" 0x3D0274 --module 0:3=10ge --check | tail -1
"$prefix/bin/cvn_np_selftest" | grep '^Completed nplib tests for card 0x003d0274 with 12 error'

cmake -S "$source/tests/install" -B "$work/cmake-build" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    -DCVN_NP_CONSUMER_SOURCE="$consumer" >/dev/null
cmake --build "$work/cmake-build" >/dev/null
"$work/cmake-build/consumer" && "$work/cmake-build/consumer_shared"
cc -std=c99 -Wall -Wextra -pedantic -Werror $(pkg-config --cflags cvn_np_lib) -c "$consumer" -o "$work/c.o"
cc "$work/c.o" $(pkg-config --libs cvn_np_lib cvn_np_platform_sim) -o "$work/pc-shared"
cc -static "$work/c.o" $(pkg-config --static --libs cvn_np_lib cvn_np_platform_sim) -o "$work/pc-static"
objdump -p "$work/pc-shared" | grep -q 'NEEDED *libcvn_np_lib.so.1'
! objdump -p "$work/pc-static" | grep -q NEEDED
"$work/pc-shared" && "$work/pc-static"
