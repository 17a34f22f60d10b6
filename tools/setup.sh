#!/bin/sh
# Installs the Debian packages that are missing for a purpose.
# Usage: setup.sh run|test|dev
set -eu

run='g++ cmake ninja-build libcli11-dev nlohmann-json3-dev libgtest-dev libreoffice-calc libreoffice-dev qt6-base-dev qt6-svg-dev libxcb1-dev libcurl4-openssl-dev python3 python3-markdown'
test="$run openssl clang libclang-rt-dev procps xvfb openbox xdotool x11-utils libreoffice-gtk3 imagemagick fonts-wqy-microhei dbus at-spi2-core gir1.2-atspi-2.0 python3-gi dpkg-dev desktop-file-utils appstream man-db debootstrap"
dev="$test libbenchmark-dev libx11-dev libxtst-dev libxdamage-dev clang-format clang-tidy python3"

case ${1:-} in
    run) wanted=$run ;;
    test) wanted=$test ;;
    dev) wanted=$dev ;;
    *) echo "usage: setup.sh run|test|dev" >&2; exit 2 ;;
esac

if ! command -v dpkg-query >/dev/null; then
    echo "This is no Debian system. Install by hand what these Debian packages hold: $wanted" >&2
    # Perhaps it is all there: let the build say what is missing.
    exit 0
fi

missing=''
for package in $wanted; do
    state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

if [ "$(id -u)" -eq 0 ]; then
    as_root=''
elif command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
    as_root='sudo'
else
    echo "Missing Debian packages. As root, run: apt-get install$missing" >&2
    exit 1
fi

echo "Installing:$missing"
log=$(mktemp)
if ! { $as_root apt-get update && DEBIAN_FRONTEND=noninteractive \
        $as_root apt-get install -y --no-install-recommends $missing; } >"$log" 2>&1; then
    tail -n 5 "$log" >&2
    rm -f "$log"
    echo "These packages could not be installed:$missing" >&2
    exit 1
fi
rm -f "$log"
