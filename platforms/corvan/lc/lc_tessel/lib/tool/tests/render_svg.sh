#!/usr/bin/env bash
# cvn_np_map's pictures of a card of every family (a split-EP tolvar card; the longest labels:
# split_one with 40ge_alt, 20x10ge_b) laid out on one page by headless Chromium: every label
# inside its box or port; the brisca card's ports, labels and NP colours.  Screenshot:
# WORK_DIR/cards.png.   usage: render_svg.sh CVN_NP_MAP WORK_DIR
set -euo pipefail
tool=$1 work=$2
command -v chromium >/dev/null || CVN_NP_NEED_CHROMIUM=1 bash "${0%/*}/../../../../../../../scripts/setup.sh"
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
# brisca (front 16c + p, NP c div 2): 40GE in odd cage 3 from NP-local 96,
# 100GE in even cage 4 at 117, 10GE in odd cage 7 from 192.
cat >>"$work/cards.html" <<'JS'
<script>
const out = [], fills = new Set(), brisca = document.querySelector('svg'), texts = [];
const all = document.querySelectorAll('g text');
for (const t of all) {
  let r = t.previousElementSibling; // its port, or for a box's label the box
  while (r.tagName !== 'rect') r = r.previousElementSibling;
  const b = t.getBBox(), R = r.getBBox();
  if (b.x < R.x || b.y < R.y || b.x + b.width > R.x + R.width || b.y + b.height > R.y + R.height)
    out.push(t.textContent);
}
brisca.querySelectorAll('rect.port').forEach(p => fills.add(getComputedStyle(p).fill));
brisca.querySelectorAll('text').forEach(t => texts.push(t.textContent));
const missing = ['cage 3: 40ge', '0x31', 'np 97', '0x40', 'np 117', '0x79', 'np 201', 'NP 3']
  .filter(x => !texts.includes(x));
document.body.insertAdjacentHTML('beforeend', `<pre id="r">labels ${all.length} outside ${
  JSON.stringify(out)} brisca ${fills.size} colours ${brisca.querySelectorAll('rect.port').length
  } ports ${brisca.querySelectorAll('g.empty').length} empty missing ${JSON.stringify(missing)}</pre>`);
</script>
JS
chromium=(timeout 120 chromium --headless --no-sandbox --disable-gpu --no-first-run --disable-sync
    --disable-background-networking --disable-component-update --user-data-dir="$work/profile")
"${chromium[@]}" --screenshot="$work/cards.png" --window-size=1200,2400 "file://$work/cards.html" &>/dev/null || true
result=$("${chromium[@]}" --dump-dom "file://$work/cards.html" 2>/dev/null | sed -n 's/.*<pre id="r">\(.*\)<\/pre>.*/\1/p')
echo "render_svg: $n cards: ${result:-no result}"
[ -s "$work/cards.png" ] && [[ $result =~ ^labels\ ([0-9]+)\ outside\ \[\]\ brisca\ 4\ colours\ 23\ ports\ 4\ empty\ missing\ \[\]$ ]] &&
    [ "${BASH_REMATCH[1]}" -gt 400 ]
