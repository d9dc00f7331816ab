#!/usr/bin/env bash
# The installed tree as another project sees it: BUILD_DIR installed with
# cmake --install, or the Debian packages in PACKAGE_DIR unpacked into a
# scratch root (dpkg-deb -x; nothing is installed on the machine).
# libcvn_np_lib.so must export exactly the names the installed headers
# declare; the C99 consumer is built through find_package (static, shared)
# and pkg-config (shared; --static with -static) and run, and so are the
# installed programs.
#   run.sh BUILD_DIR|PACKAGE_DIR SOURCE_DIR WORK_DIR
set -euo pipefail
from=$1 source=$2 work=$3
rm -rf "$work/root" "$work/cmake-build" && mkdir -p "$work/root"
unset CVN_NP_SIM_CARD_TYPE CVN_NP_SIM_IFSUBSYS
prefix="$work/root"
if compgen -G "$from/*.deb" >/dev/null; then
    for deb in "$from"/*.deb; do dpkg-deb -x "$deb" "$prefix"; done
    prefix="$prefix/usr"
else
    cmake --install "$from" --prefix "$prefix" >/dev/null
fi
lib=$(dirname "$(find "$prefix" -name libcvn_np_lib.a)") consumer="$source/tests/c99/c99_consumer.c"
export LD_LIBRARY_PATH="$lib" PKG_CONFIG_PATH="$lib/pkgconfig"

echo "-- exports of libcvn_np_lib.so"
nm -D --defined-only "$lib/libcvn_np_lib.so" | awk '{print $3}' | sort >"$work/exported"
python3 - "$prefix/include/cvn_np" >"$work/declared" <<'PY'
import re, subprocess, sys  # top-level declarations of the headers, macros expanded
out = subprocess.run(["cc", "-E", "-x", "c", sys.argv[1] + "/cvn_np_lib_tables.h"],
                     capture_output=True, text=True, check=True).stdout
ours, text, names, depth, cur = False, "", set(), 0, ""
for line in out.splitlines():
    ours = line.split('"')[1].startswith(sys.argv[1]) if line.startswith("# ") else ours
    text += line + "\n" if ours and not line.startswith("# ") else ""
for ch in text:
    depth += (ch == "{") - (ch == "}")
    if depth == 0 and ch == ";":
        s, cur = " ".join(cur.replace("}", "").split()), ""
        if s and not s.startswith("typedef"):
            fn = "(" in s and not s.startswith("extern")
            names.add(re.search(r"(\w+)\s*\(" if fn else r"(\w+)\s*(\[[^\]]*\])?$", s).group(1))
    elif depth == 0:
        cur += ch
print("\n".join(sorted(names)))
PY
diff "$work/declared" "$work/exported" && ! grep -q '^_Z' "$work/exported"
echo "$(wc -l <"$work/exported") names, as declared; $(objdump -p "$lib/libcvn_np_lib.so" | grep SONAME)"

echo "-- installed programs"
"$prefix/bin/cvn_np_map" 0x3D0274 --module 0:3=10ge --check | tail -1
"$prefix/bin/cvn_np_selftest" | grep '^Completed nplib tests for card 0x003d0274 with 12 error'

echo "-- find_package(cvn_np_lib): static, shared"
cmake -S "$source/tests/install" -B "$work/cmake-build" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    -DCVN_NP_CONSUMER_SOURCE="$consumer" >/dev/null
cmake --build "$work/cmake-build" >/dev/null
"$work/cmake-build/consumer" && "$work/cmake-build/consumer_shared"

echo "-- pkg-config cvn_np_lib cvn_np_platform_sim: shared, --static"
cc -std=c99 -Wall -Wextra -pedantic -Werror $(pkg-config --cflags cvn_np_lib) -c "$consumer" \
    -o "$work/consumer.o"
cc "$work/consumer.o" $(pkg-config --libs cvn_np_lib cvn_np_platform_sim) -o "$work/pc-shared"
cc -static "$work/consumer.o" $(pkg-config --static --libs cvn_np_lib cvn_np_platform_sim) \
    -o "$work/pc-static"
objdump -p "$work/pc-shared" | grep -q 'NEEDED *libcvn_np_lib.so.1'
! objdump -p "$work/pc-static" | grep -q NEEDED
"$work/pc-shared" && "$work/pc-static"
