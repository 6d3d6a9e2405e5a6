#!/usr/bin/env bash
# Takes docs/images/highlight.png from the real programs: Calc under Xvfb with the sample
# column selected, Quantavue on it, "10% highest values" chosen in its list as a user
# would (xdotool), then a picture of the screen. The office's own picture export does not
# draw conditional formats, so this is the way to see what the user sees.
# Usage: xvfb-run -a -s "-screen 0 1600x1000x24" tests/output/highlight_picture.sh [build dir]
# Needs xdotool and ImageMagick (scripts/install-deps --demo).
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
build=${1:-$top/build}
export QUANTAVUE_CONNECT="pipe,name=qvpicture$$;urp;"
work=$(mktemp -d)
cp "$top/examples/sample.ods" "$work/"
soffice --calc --norestore --nologo -env:UserInstallation="file://$work/profile" \
  --accept="$QUANTAVUE_CONNECT" "$work/sample.ods" &>/dev/null &
office=$!
cleanup() { kill "${qv:-0}" 2>/dev/null || true; pkill -KILL -P "$office" 2>/dev/null || true; rm -rf "$work"; }
trap cleanup EXIT
"$build/src/spreadsheet/qv-office" wait
"$build/src/spreadsheet/qv-office" select 0,0 0,205
"$build/src/startup/quantavue" &
qv=$!
sleep 5
win=$(xdotool search --name "Quantavue-Interactive" | head -1)
xdotool windowactivate --sync "$win" 2>/dev/null || true
xdotool windowfocus "$win"
eval "$(xdotool getwindowgeometry --shell "$win")"
# The highlight list under the histogram's help button; its third entry.
xdotool mousemove $((X + 110)) $((Y + 393)) click 1
sleep 1
xdotool key Down Down Return
sleep 3
# Another cell selected, so that the marked cells are not hidden under the selection.
"$build/src/spreadsheet/qv-office" select 2,0 2,0
sleep 1
import -window root "$work/screen.png"
convert "$work/screen.png" -crop 560x940+0+0 "$top/docs/images/highlight.png"
echo "Saved docs/images/highlight.png"
