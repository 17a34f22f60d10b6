#!/bin/sh
# Makes examples/loan.xlsx from its source, examples/loan.fods.
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
soffice --headless "-env:UserInstallation=file://$work/profile" \
    --convert-to xlsx --outdir "$work" "$here/examples/loan.fods" >/dev/null
mv "$work/loan.xlsx" "$here/examples/loan.xlsx"
