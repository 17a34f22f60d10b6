#!/bin/bash
# Installs the Debian package into a system that has nothing yet, uses it there as an ordinary user,
# and removes it again.
# Usage: check_deb.sh PACKAGE.deb   (as root, with a network; needs debootstrap, Xvfb, openbox, xdotool)
set -euo pipefail
package=$(realpath "$1")
suite=bookworm
book=/usr/share/doc/korvane/examples/loan.fods

[ "$(id -u)" -eq 0 ] || { echo "only root can make a system of its own" >&2; exit 1; }
for program in debootstrap Xvfb openbox xdotool unshare; do
    command -v "$program" >/dev/null || { echo "$program is not installed" >&2; exit 1; }
done
# In namespaces of our own: what is mounted and started there ends with this script.
if [ -z "${KORVANE_CHECK_DEB:-}" ]; then
    KORVANE_CHECK_DEB=1 exec unshare --mount --pid --fork --kill-child --mount-proc "$0" "$@"
fi

work=$(mktemp -d)
root=$work/root
log=$work/log
ends() {
    local code=$?
    [ "$code" -eq 0 ] || { echo "the package failed; the last lines of the log:"; tail -n 15 "$log"; } >&2
    jobs -p | xargs -r kill 2>/dev/null || true
    umount -l "$root/proc" "$root/dev" 2>/dev/null || true
    rm -rf --one-file-system "$work"
}
trap ends EXIT
fail() { echo "$1" >&2; exit 1; }

within() { env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive chroot "$root" "$@"; }
as_user() { within setpriv --reuid tester --regid tester --clear-groups env HOME=/home/tester "$@"; }

echo "a new system"
debootstrap --variant=minbase "$suite" "$root" >"$log" 2>&1
mount -t proc proc "$root/proc"
mount --bind /dev "$root/dev"
echo "deb http://deb.debian.org/debian-security $suite-security main" >>"$root/etc/apt/sources.list"
within useradd --create-home tester
cp "$package" "$root/tmp/korvane.deb"

echo "install"
within apt-get update >>"$log" 2>&1
within apt-get install -y --no-install-recommends /tmp/korvane.deb >>"$log" 2>&1
within dpkg -L korvane | sort >"$work/installed"

echo "explore in the terminal"
tree=$(as_user korvane explore "$book" 'Loan!B9' 2>>"$log")
echo "$tree"
grep -q 'B9  *Loan  *fits' <<<"$tree" || fail "this is not the tree of the sample"
# Each time in a profile of its own, which must not take in what the package registers.
for _ in 1 2 3 4 5; do
    [ "$(as_user korvane explore "$book" 'Loan!B9' 2>>"$log")" = "$tree" ] || fail "the tree is not the same again"
done
[ "$(as_user korvane parse --count <<<'=A1+B2' | head -n 1)" = 'formulas: 1' ] || fail "korvane parse failed"
[ -z "$(within find /home/tester /tmp -name 'korvane-*')" ] || fail "the exploration left something behind"

echo "explore in Calc"
exec 3<>"$work/display"
Xvfb -displayfd 3 -screen 0 1280x1000x24 -nolisten tcp 2>>"$log" &
until [ -s "$work/display" ]; do sleep 0.1; done
DISPLAY=:$(<"$work/display")
export DISPLAY
openbox --sm-disable 2>>"$log" &
until xdotool get_desktop >/dev/null 2>&1; do sleep 0.1; done

# No tip in front of the sheet, and no end of the office on Ctrl+Q: then the key
# can be pressed until the add-in is there.
new_profile() {
    local profile=$root/home/tester/.config/libreoffice/4/user
    rm -rf "$root/home/tester/.config"
    mkdir -p "$profile"
    cat >"$profile/registrymodifications.xcu" <<'XCU'
<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry" xmlns:xs="http://www.w3.org/2001/XMLSchema" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="ShowTipOfTheDay" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="FirstRun" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Accelerators/PrimaryKeys/Global"><node oor:name="Q_MOD1" oor:op="remove"/></item>
</oor:items>
XCU
    within chown -R tester: /home/tester
}

# explores COMMAND...: starts Calc so and waits for the explorer's window.
explores() {
    new_profile
    set -m  # a process group of its own, to be ended as one
    as_user DISPLAY="$DISPLAY" SAL_USE_VCLPLUGIN=gen "$@" >>"$log" 2>&1 &
    local started=$! tries=120
    set +m
    until xdotool search --onlyvisible --name '^Korvane Explorer$' >/dev/null 2>&1; do
        tries=$((tries - 1))
        [ "$tries" -gt 0 ] || fail "no explorer window, but: $(xdotool search --onlyvisible --name . getwindowname %@ 2>&1 | tr '\n' ';')"
        kill -0 "$started" 2>/dev/null || fail "Calc ended: $*"
        # A window that is just going makes the search fail: the next one finds the other.
        xdotool search --onlyvisible --name 'fods - LibreOffice Calc' windowactivate >/dev/null 2>&1 || true
        case $(xdotool getactivewindow getwindowname 2>/dev/null) in
            *'LibreOffice Calc') xdotool key ctrl+q ;;
        esac
        sleep 0.5
    done
    kill -- "-$started"
    wait "$started" || true
}
explores soffice --calc "$book"
explores korvane open "$book"

echo "remove"
within apt-get purge -y korvane >>"$log" 2>&1
left=$(while read -r path; do [ -d "$root$path" ] || [ ! -e "$root$path" ] || echo "$path"; done <"$work/installed")
left+=$(cd "$root" && find . -xdev -name '*korvane*' ! -path './home/*' ! -path './proc/*' ! -path './tmp/korvane.deb')
[ -z "$left" ] || fail "this was left behind: $left"
[ -z "$(ls "$root/usr/lib/libreoffice/share/extensions")" ] || fail "the extension was left behind"
echo "removed without a trace"
