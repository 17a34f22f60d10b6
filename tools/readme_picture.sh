#!/bin/bash
# Makes the picture of the README, docs/calc.png: the explorer's window over a sheet in Calc, on a
# display of its own and with a new profile.
# Usage: readme_picture.sh [BUILD]   (build; needs Xvfb, openbox, xdotool, xset and ImageMagick)
# SAL_USE_VCLPLUGIN=gtk3 gives it the look of most desktops; needs libreoffice-gtk3.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build}" && pwd)
for program in Xvfb openbox xdotool import convert; do
    command -v "$program" >/dev/null || { echo "$program is not installed" >&2; exit 1; }
done

work=$(mktemp -d)
finish() {
    # Calc is the child of what we started, which may outlive it.
    if [ -n "${calc:-}" ]; then
        kill -- "-$calc" 2>/dev/null || true
        sleep 1
        kill -KILL -- "-$calc" 2>/dev/null || true
    fi
    jobs -p | xargs -r kill 2>/dev/null || true
    wait
    rm -rf "$work"
}
trap finish EXIT

export XDG_CONFIG_HOME=$work/config XDG_STATE_HOME=$work/state XDG_RUNTIME_DIR=$work/run
export QT_STYLE_OVERRIDE=Fusion QT_SCALE_FACTOR=1 LC_ALL=C.UTF-8 SAL_USE_VCLPLUGIN=${SAL_USE_VCLPLUGIN:-gen}
unset WAYLAND_DISPLAY QT_QPA_PLATFORM QT_QPA_PLATFORMTHEME
user=$XDG_CONFIG_HOME/libreoffice/4/user
mkdir -p -m 700 "$XDG_RUNTIME_DIR" "$user"
cat >"$user/registrymodifications.xcu" <<'XCU'
<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry" xmlns:xs="http://www.w3.org/2001/XMLSchema" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="ShowTipOfTheDay" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="FirstRun" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Setup/Product"><prop oor:name="ooSetupLastVersion" oor:op="fuse"><value>7.4</value></prop></item>
</oor:items>
XCU

exec 3<>"$work/display"
Xvfb -displayfd 3 -screen 0 1120x760x24 -nolisten tcp 2>/dev/null &
until [ -s "$work/display" ]; do sleep 0.1; done
DISPLAY=:$(<"$work/display")
export DISPLAY
exec 3>&-
openbox --sm-disable 2>/dev/null &
until xdotool get_desktop >/dev/null 2>&1; do sleep 0.1; done

cp "$root/examples/loan.fods" "$work"
set -m
"$build/bin/korvane" open "$work/loan.fods" 2>"$work/log" &
calc=$!
set +m

# shows TITLE: waits for the window and has it in $window.
shows() {
    local tries=300
    until window=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -n 1) && [ -n "$window" ]; do
        tries=$((tries - 1))
        [ "$tries" -gt 0 ] || { cat "$work/log" >&2; echo "there is no window \"$1\"" >&2; exit 1; }
        sleep 0.1
    done
}
keys() {
    local key
    for key in "$@"; do
        xdotool key --delay 20 "$key"
        sleep 0.4
    done
}

shows 'fods - LibreOffice Calc'
sleep 4 # its bars are drawn
xdotool windowactivate --sync "$window"
keys ctrl+Home Right Down Down Down Down Down Down Down Down ctrl+q
shows '^Korvane Explorer$'
xdotool windowactivate --sync "$window"
xdotool windowmove --sync "$window" 330 170
keys Down Right Down Right Down Right Down Down
sleep 1
xdotool mousemove 1110 750
import -window root "$work/all.png"
convert "$work/all.png" +dither -colors 128 -strip -define png:compression-level=9 "PNG8:$root/docs/calc.png"
echo "docs/calc.png: $(stat -c %s "$root/docs/calc.png") bytes"
