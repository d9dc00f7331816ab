#!/usr/bin/env bash
# Renders cvn_np_map's front-panel pictures in headless Chromium, one page
# with a card of every family (a split-EP tolvar card among them, and the
# longest box labels: split_one with 40ge_alt, 20x10ge_b), and checks in the
# laid-out page that every label lies inside its box or port and that the
# brisca card shows the colours of its four NPs.  Installs Debian's chromium
# first when it is missing (scripts/setup.sh); when that is impossible the
# test fails.  The screenshot stays in WORK_DIR/cards.png for a person.
# usage: render_svg.sh CVN_NP_MAP WORK_DIR
set -euo pipefail
tool=$1 work=$2
top=$(cd "$(dirname "$0")/../../../../../../.." && pwd)
command -v chromium >/dev/null || CVN_NP_NEED_CHROMIUM=1 bash "$top/scripts/setup.sh"
command -v chromium >/dev/null || { echo "render_svg: chromium is not installed" >&2; exit 1; }
mkdir -p "$work" && rm -f "$work"/*.svg "$work/cards.html" "$work/cards.png"
n=0
while read -r -a card; do
    n=$((n + 1)) args=("${card[0]}")
    for m in "${card[@]:1}"; do args+=(--module "$m"); done
    "$tool" "${args[@]}" --svg "$work/$n.svg" >/dev/null
    sed 1d "$work/$n.svg" >>"$work/cards.html"
done <<'CARDS'
0x3D0274 0:0=10ge 0:3=40ge 0:4=100ge 0:7=10ge
0x3D0296 1:any=split 1:0=100ge 1:1=10ge
0x3D0296 0:any=split_one 0:0=40ge_alt 0:1=40ge_alt 1:any=20x10ge_b
0x3D028C 0:any=split_b 0:0=40ge 0:1=10ge 1:any=16x10ge
0x3D0278 0:0=40ge_alt 0:1=10ge
0x3D0267 0:0=100ge 0:5=10ge
0x3D02C3 0:2=100ge
0x3D02C1
0x3D02C7
CARDS
cat >>"$work/cards.html" <<'JS'
<script>
const outside = [], fills = new Set();
let labels = 0;
for (const t of document.querySelectorAll('g text')) {
  let r = t.previousElementSibling; // its port, or for a box's label the box
  while (r.tagName !== 'rect') r = r.previousElementSibling;
  const b = t.getBBox(), R = r.getBBox();
  labels++;
  if (b.x < R.x || b.y < R.y || b.x + b.width > R.x + R.width || b.y + b.height > R.y + R.height)
    outside.push(t.textContent);
}
for (const p of document.querySelector('svg').querySelectorAll('rect.port'))
  fills.add(getComputedStyle(p).fill);
document.body.insertAdjacentHTML('beforeend', '<pre id="result">labels ' + labels +
  ' outside ' + JSON.stringify(outside) + ' brisca_np_colours ' + fills.size + '</pre>');
</script>
JS
run_chromium() {
    timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run \
        --disable-background-networking --disable-component-update --disable-sync \
        --user-data-dir="$(mktemp -d)" "$@" "file://$work/cards.html" 2>/dev/null
}
run_chromium --screenshot="$work/cards.png" --window-size=1200,2400 >/dev/null || true
result=$(run_chromium --dump-dom | sed -n 's/.*<pre id="result">\(.*\)<\/pre>.*/\1/p')
echo "render_svg: $n cards: ${result:-no result}"
[ -s "$work/cards.png" ] || { echo "render_svg: chromium wrote no screenshot" >&2; exit 1; }
[[ $result =~ ^labels\ ([0-9]+)\ outside\ \[\]\ brisca_np_colours\ 4$ ]] &&
    [ "${BASH_REMATCH[1]}" -gt 100 ]
