#!/usr/bin/env bash
# Our patches to Pure Data (tools/libpd/patches) make sigmund~ faster and must
# change nothing it reports: every frequency the patch sends, over generated
# tones and noise and over real recordings, is the same bit for bit with our
# libpd as with the same Pure Data source built without the patches.
#
#   tests/dsp/same-readings-as-stock-pd.sh PATCHED STOCK [FILE...]
#
# PATCHED and STOCK are patch_readings built against each library (with an
# emulator's command before each where they run through one); FILE are
# recordings, beside the generated inputs.
set -u
patched=$1 stock=$2
shift 2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# shellcheck disable=SC2086 # an emulator's command, then the program
$patched "$@" >"$work/patched.txt" || { echo "FAIL: the patched build stopped"; exit 1; }
# shellcheck disable=SC2086
$stock "$@" >"$work/stock.txt" || { echo "FAIL: the stock build stopped"; exit 1; }

readings=$(wc -l <"$work/stock.txt")
inputs=$(awk '{ $NF = ""; $(NF - 1) = ""; print }' "$work/stock.txt" | uniq | wc -l)
if [[ $readings -gt 0 ]] && cmp -s "$work/patched.txt" "$work/stock.txt"; then
    echo "ok: $readings readings over $inputs inputs, the same bit for bit"
    exit 0
fi
echo "FAIL: the readings differ from stock Pure Data's ($readings readings over $inputs inputs):"
diff "$work/stock.txt" "$work/patched.txt" | head -n 20
exit 1
