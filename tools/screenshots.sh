#!/bin/bash
# Pictures of the explorer window to look at, under OUT: light and dark, at the scales 1 and 2, narrow
# and wide, of a deep tree, and of texts that read from the right or are wide.
# Usage: screenshots.sh [BUILD [OUT]]   (build, BUILD/screenshots; needs Xvfb, openbox, xdotool,
# ImageMagick and a font with Chinese, Japanese and Korean characters)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build}" && pwd)
out=${2:-$build/screenshots}

for program in Xvfb openbox xdotool import convert; do
    command -v "$program" >/dev/null || { echo "$program is not installed" >&2; exit 1; }
done
for program in korvane korvane-view; do
    [ -x "$build/bin/$program" ] || { echo "$build/bin/$program is not built" >&2; exit 1; }
done

work=$(mktemp -d)
mine=()
finish() {
    local pid
    for pid in "${mine[@]}"; do kill "$pid" 2>/dev/null || true; done
    wait
    rm -rf "$work"
}
trap finish EXIT

export XDG_CONFIG_HOME=$work/config XDG_STATE_HOME=$work/state XDG_RUNTIME_DIR=$work/run
export QT_QPA_PLATFORM=xcb QT_STYLE_OVERRIDE=Fusion LC_ALL=C.UTF-8
unset WAYLAND_DISPLAY QT_QPA_PLATFORMTHEME KORVANE_VIEW
mkdir -m 700 "$work/run" "$work/config" "$work/state"
mkdir -p "$out"

# A display with a window manager: display WIDTHxHEIGHT. The server chooses a number that is free.
display() {
    mkfifo "$work/display"
    exec 3<>"$work/display"
    Xvfb -displayfd 3 -screen 0 "$1x24" -nolisten tcp 2>/dev/null &
    server=$!
    mine+=("$server")
    read -r -t 30 -u 3 number || { echo "there is no display" >&2; exit 1; }
    exec 3>&-
    rm "$work/display"
    export DISPLAY=:$number
    openbox --sm-disable >/dev/null 2>&1 &
    manager=$!
    mine+=("$manager")
    until xdotool get_desktop >/dev/null 2>&1; do sleep 0.1; done
}

end_display() {
    kill "$manager" "$server" 2>/dev/null || true
    wait "$manager" "$server" 2>/dev/null || true
}

# start ARGUMENTS...: the explorer window, with the settings of the first day; has it in $window.
start() {
    local tries=300
    rm -rf "$work/config/Korvane"
    "$build/bin/korvane" explore "$@" --window 2>"$work/log" &
    running=$!
    mine+=("$running")
    until window=$(xdotool search --onlyvisible --name '^Korvane Explorer$' 2>/dev/null | tail -n 1) &&
            [ -n "$window" ]; do
        tries=$((tries - 1))
        if [ "$tries" -eq 0 ] || ! kill -0 "$running" 2>/dev/null; then
            cat "$work/log" >&2
            echo "there is no explorer window" >&2
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
        sleep 0.3
    done
}

size() {
    xdotool windowsize "$window" "$1" "$2"
    sleep 0.7
}

# picture NAME: the window with its frame; then it is closed.
picture() {
    sleep 0.5
    import -window root "$work/all.png"
    convert "$work/all.png" -trim +repage -strip "$out/$1.png"
    echo "$out/$1.png: $(identify -format '%wx%h' "$out/$1.png")"
    kill "$running" 2>/dev/null || true
    wait "$running" 2>/dev/null || true
}

dark() {
    printf '#!/bin/sh\nexec "%s" --dark "$@"\n' "$build/bin/korvane-view" >"$work/dark-view"
    chmod +x "$work/dark-view"
    KORVANE_VIEW=$work/dark-view start "$@"
}

# ---- what is shown ------------------------------------------------------------------------------

cat >"$work/loan.json" <<'END'
{"workbooks": [{"name": "Loan.xls", "names": {"Rate": "=Loan!$B$4"}, "sheets": [{"name": "Loan",
  "cells": {"B9": {"formula": "=IF(B3>0,ROUND(SUM(B3,B5)*Rate/12,2),OFFSET(B3,1,0))", "value": 1041.67},
    "B3": {"formula": "=B5*2", "value": 200000}, "B4": 0.05, "B5": 50000}}]}],
 "active": {"workbook": "Loan.xls", "sheet": "Loan", "cell": "B9"},
 "evaluate": {"=IF(B3>0,ROUND(SUM(B3,B5)*Rate/12,2),OFFSET(B3,1,0))": {"value": 1041.67},
   "=B3>0": {"value": true}, "=ROUND(SUM(B3,B5)*Rate/12,2)": {"value": 1041.67},
   "=SUM(B3,B5)": {"value": 250000}, "=OFFSET(B3,1,0)": {"range": "Loan!B4"}},
 "literals": true}
END

# A call within a call, thirty deep.
formula=B1
evaluate=
for ((k = 1; k <= 30; ++k)); do
    formula="ABS($formula+$k)"
    evaluate+="${evaluate:+, }\"=$formula\": {\"value\": $((k * (k + 1) / 2 + 7))}"
done
cat >"$work/deep.json" <<END
{"workbooks": [{"name": "Deep.xls", "sheets": [{"name": "S",
  "cells": {"A1": {"formula": "=$formula", "value": 472}, "B1": 7}}]}],
 "evaluate": {$evaluate}, "literals": true}
END

cat >"$work/rtl.json" <<'END'
{"workbooks": [{"name": "ספר.xls", "names": {"מחיר": "='גיליון ראשון'!$B$1", "السعر": "='גיליון ראשון'!$B$2"},
  "sheets": [{"name": "גיליון ראשון", "cells": {
    "A1": {"formula": "=IF(מחיר>1,SUM(מחיר,السعر)&\"שלום עולם\",B3)", "value": "12שלום עולם"},
    "B1": {"value": 5, "text": "חמש"}, "B2": {"value": 7, "text": "سبعة"}, "B3": "مرحبا بالعالم"}}]}],
 "evaluate": {"=IF(מחיר>1,SUM(מחיר,السعر)&\"שלום עולם\",B3)": {"value": "12שלום עולם"},
   "=מחיר>1": {"value": true}, "=SUM(מחיר,السعر)&\"שלום עולם\"": {"value": "12שלום עולם"},
   "=SUM(מחיר,السعر)": {"value": 12}}, "literals": true}
END

cat >"$work/cjk.json" <<'END'
{"workbooks": [{"name": "帳簿.xls", "names": {"税率": "='売上 明細'!$B$1", "판매액": "='売上 明細'!$B$2"},
  "sheets": [{"name": "売上 明細", "cells": {
    "A1": {"formula": "=IF(税率>0,SUM(판매액,税率)&\"合計金額は税込みです\",B3)", "value": "1001合計金額は税込みです"},
    "B1": 1, "B2": 1000, "B3": "𠮷野家 😀 전체 합계"}}]}],
 "evaluate": {"=IF(税率>0,SUM(판매액,税率)&\"合計金額は税込みです\",B3)": {"value": "1001合計金額は税込みです"},
   "=税率>0": {"value": true}, "=SUM(판매액,税率)&\"合計金額は税込みです\"": {"value": "1001合計金額は税込みです"},
   "=SUM(판매액,税率)": {"value": 1001}}, "literals": true}
END

# ---- the pictures -------------------------------------------------------------------------------

# scaled NAME: one window as it is, with a selected part and all rows open, and in the dark.
scaled() {
    start --script "$work/loan.json"
    picture "$1-new"
    start --script "$work/loan.json"
    keys Down asterisk Down Down Down Down
    picture "$1-light"
    dark --script "$work/loan.json"
    keys Down asterisk Down Down Down Down
    picture "$1-dark"
}

export QT_SCALE_FACTOR=1
display 1600x1000
scaled scale1
# Narrow in one step, as a window manager's tiling does it, and as by dragging the frame.
start --script "$work/loan.json"
keys Down asterisk Down Down
size 300 260
picture narrow
start --script "$work/loan.json"
keys Down asterisk Down Down
for ((width = 680; width >= 300; width -= 20)); do
    xdotool windowsize "$window" "$width" $((width * 2 / 3))
    sleep 0.1
done
picture narrow-dragged
start --script "$work/loan.json"
keys Down asterisk Down Down
size 1500 500
picture wide
start --script "$work/deep.json"
keys Down asterisk End
picture deep
start --script "$work/deep.json"
keys Down asterisk End
size 1400 900
picture deep-large
for texts in rtl cjk; do
    start --script "$work/$texts.json"
    keys Down asterisk Down Down Down Down
    picture "$texts"
    dark --script "$work/$texts.json"
    keys Down asterisk Down Down Down Down Down
    size 900 500
    picture "$texts-dark"
done
end_display

export QT_SCALE_FACTOR=2
display 2800x1800
scaled scale2
start --script "$work/deep.json"
keys Down asterisk End
picture scale2-deep
end_display
