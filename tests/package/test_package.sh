#!/usr/bin/env bash
# The Debian package, made from this build tree into a temporary folder: its file list,
# its control fields, lintian's errors, and the program unpacked into an empty root,
# started there. Usage: test_package.sh BUILD_DIR SOURCE_DIR VERSION
set -uo pipefail
build=$1 source=$2 version=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

arch=$(dpkg --print-architecture)
deb=$work/quantavue_${version}_${arch}.deb
if ! cpack --config "$build/CPackConfig.cmake" -B "$work" >"$work/cpack.log" 2>&1 || [ ! -f "$deb" ]; then
  cat "$work/cpack.log"
  echo "FAIL: cpack made no $(basename "$deb")"
  exit 1
fi

# The files, as installed paths.
dpkg-deb -c "$deb" | awk '{print $1, $6}' | sed 's| \./| /|' >"$work/list"
expected=(
  /usr/bin/quantavue
  /usr/share/quantavue/copy.wav
  /usr/share/quantavue/docs/help.html
  /usr/share/quantavue/docs/contact.html
  /usr/share/applications/quantavue.desktop
  /usr/share/icons/hicolor/scalable/apps/quantavue.svg
  /usr/share/icons/hicolor/48x48/apps/quantavue.png
  /usr/share/icons/hicolor/256x256/apps/quantavue.png
  /usr/share/man/man1/quantavue.1.gz
  /usr/share/doc/quantavue/copyright
  /usr/share/doc/quantavue/changelog.gz
)
for f in "$source"/HelpMessages/*; do
  [ -f "$f" ] && expected+=("/usr/share/quantavue/HelpMessages/$(basename "$f")")
done
for f in "${expected[@]}"; do
  grep -qx -- "-[rwx-]* $f" "$work/list" || fail "the package lacks $f"
done
grep -qx -- "-rwxr-xr-x /usr/bin/quantavue" "$work/list" || fail "/usr/bin/quantavue is not 0755"
# Nothing but the product: no file outside /usr, no test or benchmark program.
grep -v -E ' /usr/?' "$work/list" | grep -v -E ' /$' && fail "files outside /usr"
grep -E '/(test|bench)_' "$work/list" && fail "a test or benchmark program is packaged"

# The control fields.
field() { dpkg-deb -f "$deb" "$1"; }
[ "$(field Package)" = quantavue ] || fail "Package: $(field Package)"
[ "$(field Version)" = "$version" ] || fail "Version: $(field Version)"
[ "$(field Architecture)" = "$arch" ] || fail "Architecture: $(field Architecture)"
[ -n "$(field Maintainer)" ] || fail "no Maintainer"
[ "$(field Recommends)" = libreoffice-calc ] || fail "Recommends: $(field Recommends)"
depends=$(field Depends)
for lib in libqt6widgets6 libqt6gui6 libqt6core6 libqcustomplot libuno-cppu3 libuno-sal3 libuno-cppuhelpergcc3-3 libc6; do
  grep -q "$lib" <<<"$depends" || fail "Depends lacks $lib: $depends"
done
# The summary line read whole: a reader that stops early would break the pipe under pipefail.
summary=$(field Description | sed -n 1p)
[[ $summary == *spreadsheet* ]] || fail "Description: $summary"

# Unpacked into an empty root, the program starts; the About window either ends by itself
# (answered) or is ended after 2 s, with no crash either way.
root=$work/root
dpkg -x "$deb" "$root"
export QT_QPA_PLATFORM=offscreen QUANTAVUE_AUTO_ANSWER=500 QUANTAVUE_CLOSE_AFTER=500
"$root/usr/bin/quantavue" /612 >"$work/out" 2>"$work/err" &
pid=$!
for _ in $(seq 20); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
kill -0 "$pid" 2>/dev/null && kill -TERM "$pid"
wait "$pid"
status=$?
# 0: ended by itself; 143: ended by our SIGTERM. Anything else is a crash or an error.
[ "$status" = 0 ] || [ "$status" = 143 ] || fail "quantavue /612 ended with status $status: $(cat "$work/err")"
grep -i -E 'segmentation|abort|core dumped|cannot open shared|error while loading' "$work/err" &&
  fail "quantavue /612 printed a crash"
# The pages are found where the package puts them. The offscreen platform opens no
# browser; it names the file it was asked to open.
for page in /1003:help.html /613:contact.html; do
  "$root/usr/bin/quantavue" "${page%%:*}" >/dev/null 2>"$work/err"
  grep -q "file://$root/usr/bin/../share/quantavue/docs/${page#*:}" "$work/err" ||
    fail "quantavue ${page%%:*} did not open the installed ${page#*:}: $(cat "$work/err")"
done
# The office set-up is in the installed program: on a user with no profile it says so.
XDG_CONFIG_HOME=$work/config "$root/usr/bin/quantavue" --setup-office --yes >"$work/setup" 2>&1
[ $? = 1 ] && grep -q "no LibreOffice profile" "$work/setup" || fail "quantavue --setup-office: $(cat "$work/setup")"
[ -e "$work/config" ] && fail "--setup-office created files with no profile"

# lintian: errors fail, warnings are listed.
if ! command -v lintian >/dev/null; then
  fail "lintian is not installed (scripts/install-deps installs it)"
else
  lintian --tag-display-limit 0 --allow-root "$deb" >"$work/lintian" 2>&1
  grep -E '^[WI]: ' "$work/lintian"
  grep -E '^E: ' "$work/lintian" && fail "lintian reports errors"
fi

[ "$failures" = 0 ] && echo "package $(basename "$deb"): all checks passed"
exit $((failures > 0))
