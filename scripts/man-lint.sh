#!/usr/bin/env bash
# Renders every manual page in man/ with warnings on, as lintian does
# (man-db over groff) and with mandoc's linter; any warning fails.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
CVN_NP_NEED_PACKAGING=1 bash scripts/setup.sh
found=0
for page in man/*.[1-9]; do
    warnings=$( { LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" \
        >/dev/null; mandoc -T lint -W warning "$page"; } 2>&1 || true)
    [ -z "$warnings" ] || { echo "$warnings"; found=1; }
done
[ $found = 0 ] && echo "man-lint: $(ls man/*.[1-9] | wc -l) pages, no warning"
