#!/usr/bin/env bash
# Renders cvn_np_map's front-panel picture in headless Chromium and checks
# that the screenshot shows a picture: the NP colours of the ports, not a
# blank page.  Installs Debian's chromium first when it is missing (through
# scripts/setup.sh); when that is impossible the test fails.
# usage: render_svg.sh CVN_NP_MAP WORK_DIR
set -euo pipefail
tool=$1 work=$2
top=$(cd "$(dirname "$0")/../../../../../../.." && pwd)
command -v chromium >/dev/null || CVN_NP_NEED_CHROMIUM=1 bash "$top/scripts/setup.sh"
command -v chromium >/dev/null || { echo "render_svg: chromium is not installed" >&2; exit 1; }

rm -rf "$work" && mkdir -p "$work"
"$tool" 0x3D0274 --module 0:0=10ge --module 0:3=40ge --module 0:4=100ge --module 0:7=10ge \
    --svg "$work/card.svg" >/dev/null
xmllint --noout "$work/card.svg" 2>/dev/null || python3 -c \
    'import sys, xml.etree.ElementTree as E; E.parse(sys.argv[1])' "$work/card.svg"
timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run \
    --disable-background-networking --disable-component-update --disable-sync \
    --user-data-dir="$(mktemp -d)" --screenshot="$work/card.png" --window-size=1200,800 \
    "file://$work/card.svg" >/dev/null 2>&1 || true
[ -s "$work/card.png" ] || { echo "render_svg: chromium wrote no screenshot" >&2; exit 1; }

# Decode the PNG (8-bit RGB or RGBA, non-interlaced) and count its colours;
# the picture must show the port colours of NPs 0, 1, 2 and 3.
python3 - "$work/card.png" <<'PY'
import struct, sys, zlib
data = open(sys.argv[1], "rb").read()
assert data[:8] == b"\x89PNG\r\n\x1a\n", "not a PNG"
pos, idat, head = 8, b"", None
while pos < len(data):
    n, kind = struct.unpack(">I4s", data[pos:pos + 8])
    body = data[pos + 8:pos + 8 + n]
    if kind == b"IHDR":
        head = struct.unpack(">IIBBBBB", body)
    elif kind == b"IDAT":
        idat += body
    pos += 12 + n
w, h, depth, ctype, _, _, interlace = head
assert depth == 8 and ctype in (2, 6) and interlace == 0, f"unexpected PNG format {head}"
bpp = 3 if ctype == 2 else 4
raw, stride = zlib.decompress(idat), w * bpp
prev, colours, i = bytearray(stride), {}, 0
for _ in range(h):
    f, line = raw[i], bytearray(raw[i + 1:i + 1 + stride])
    i += 1 + stride
    for x in range(stride):
        a = line[x - bpp] if x >= bpp else 0
        b, c = prev[x], prev[x - bpp] if x >= bpp else 0
        if f == 1: line[x] = (line[x] + a) & 255
        elif f == 2: line[x] = (line[x] + b) & 255
        elif f == 3: line[x] = (line[x] + (a + b) // 2) & 255
        elif f == 4:
            p = a + b - c
            pa, pb, pc = abs(p - a), abs(p - b), abs(p - c)
            line[x] = (line[x] + (a if pa <= pb and pa <= pc else b if pb <= pc else c)) & 255
    for x in range(0, stride, bpp):
        px = bytes(line[x:x + 3])
        colours[px] = colours.get(px, 0) + 1
    prev = line
np_colours = [bytes.fromhex(c) for c in ("1f77b4", "ff7f0e", "2ca02c", "d62728")]
shown = [c.hex() for c in np_colours if colours.get(c, 0) >= 200]
print(f"render_svg: {w}x{h}, {len(colours)} colours, NP colours shown: {shown}")
assert len(colours) >= 10, "the screenshot is blank"
assert len(shown) == 4, "the ports' NP colours are missing"
PY
