#!/bin/bash
# Makes the manual's pictures, docs/manual/pictures/*.png, from the program's own windows on a display
# of its own, with the settings of the first day.
# Usage: manual_pictures.sh [BUILD]   (build; needs Xvfb, openbox, xdotool and ImageMagick)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build}" && pwd)
out=$root/docs/manual/pictures
book=$root/examples/loan.xlsx

for program in Xvfb openbox xdotool import convert; do
    command -v "$program" >/dev/null || { echo "$program is not installed" >&2; exit 1; }
done

work=$(mktemp -d)
mine=()
finish() {
    for pid in "${mine[@]}"; do kill "$pid" 2>/dev/null || true; done
    wait
    rm -rf "$work"
}
trap finish EXIT

export XDG_CONFIG_HOME=$work/config XDG_STATE_HOME=$work/state XDG_RUNTIME_DIR=$work/run
export QT_QPA_PLATFORM=xcb QT_STYLE_OVERRIDE=Fusion QT_SCALE_FACTOR=1 LC_ALL=C.UTF-8
unset WAYLAND_DISPLAY QT_QPA_PLATFORMTHEME
mkdir -p -m 700 "$work/run" "$work/config" "$work/state" "$out"

# The server itself chooses a display that is free.
exec 3<>"$work/display"
Xvfb -displayfd 3 -screen 0 1280x1000x24 -nolisten tcp 2>/dev/null &
mine+=($!)
until [ -s "$work/display" ]; do sleep 0.1; done
DISPLAY=:$(<"$work/display")
export DISPLAY
exec 3>&-
openbox --sm-disable 2>/dev/null &
mine+=($!)
until xdotool get_desktop >/dev/null 2>&1; do sleep 0.1; done

# start TITLE COMMAND...: waits for the window with that title and has it in $window.
start() {
    local title=$1 tries=300
    shift
    # Each picture begins with the settings of the first day.
    rm -rf "$work/config/Korvane"
    "$@" 2>"$work/log" &
    running=$!
    mine+=("$running")
    until window=$(xdotool search --onlyvisible --name "^$title\$" 2>/dev/null | tail -n 1) && [ -n "$window" ]; do
        tries=$((tries - 1))
        if [ "$tries" -eq 0 ] || ! kill -0 "$running" 2>/dev/null; then
            cat "$work/log" >&2
            echo "there is no window \"$title\"" >&2
            exit 1
        fi
        sleep 0.1
    done
    xdotool windowfocus "$window"
    sleep 1
}

# One key after another, each with time to be answered.
keys() {
    local key
    for key in "$@"; do
        xdotool key "$key"
        sleep 0.4
    done
}

# picture NAME: what is on the display, with few colours. The desktop, which is black, becomes
# transparent; black within the windows stays.
picture() {
    sleep 0.5
    xdotool mousemove 1270 990
    import -window root "$work/all.png"
    convert "$work/all.png" -trim +repage -bordercolor black -border 1 \
        -alpha set -fill none -floodfill +0+0 black -shave 1x1 +repage +dither -colors 64 \
        -strip -define png:compression-level=9 "PNG8:$out/$1.png"
    echo "$out/$1.png: $(stat -c %s "$out/$1.png") bytes"
}

stop() {
    kill "$running" 2>/dev/null || true
    wait "$running" 2>/dev/null || true
}

explore() {
    start 'Korvane Explorer' "$build/bin/korvane" explore "$book" "$@" --window
}

# Opens the part that is selected and goes to its first one. The first Down selects the cell itself.
into='Right Down'

explore 'Loan!B9'
keys Down $into Right Up
picture explorer
stop

explore 'Loan!B9'
keys Down $into $into $into Down
picture part
stop

explore 'Loan!B9'
xdotool windowsize --sync "$window" 691 600
keys Down asterisk
picture functions
stop

explore 'Loan!B9' --no-functions
keys Down asterisk Down
picture references
stop

explore 'Loan!B11'
keys Down $into $into $into Down
picture indirect
stop

explore 'Loan!B9'
keys Down $into $into $into $into $into
keys ctrl+q
sleep 1
picture further
stop

# A dialog without a spreadsheet's window below it, with its title bar on the display.
dialog() {
    start "$1" "$build/bin/show_dialog" "$2"
    xdotool windowmove "$window" 150 120
    picture "$2"
    stop
}

dialog 'Korvane Explorer Settings' settings
dialog 'About Korvane Explorer' about
