#!/usr/bin/env bash
# What the patch costs in instructions per second of audio, with our libpd
# and with stock Pure Data's built from the same source, counted by
# callgrind on a held G3 sawtooth at 48 kHz (every harmonic, like a string),
# and what that would take of a Cortex-A53 phone core. Counts do not drift
# with a shared machine's load, so they tell a change of a few per cent from
# noise; the CPU-time ratios are in bench_patch and bench/app-cpu.sh.
#
#   bench/patch-instructions.sh [BUILD_DIR]      # default: build
#
# Each program runs 2 s and 12 s of the tone; the difference, over 10 s,
# leaves out starting the program and opening the patch.
#
# The Cortex-A53 estimate (docs/platform.md): x86-64's instruction count
# stands in for A64's; the divider does not pipeline, so each division and
# square root costs its occupancy of it (LLVM's model of the core: double
# division 29 cycles, single 14, square roots 28 and 13), and every other
# instruction between 0.7 and 1.4 cycles (the core issues two simple
# instructions a cycle, in order, and waits out the floating-point
# pipeline's latencies). Percentages are of one core at 1.5 GHz.
#
# Needs valgrind, objdump and python3; prints a Markdown table and whether
# the patched build costs at most half the stock one; exits 1 when not.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build}" && pwd)
for tool in valgrind objdump python3; do
  command -v $tool >/dev/null || { echo "patch-instructions: $tool is missing (tools/install-deps.sh)" >&2; exit 2; }
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

ratio_max=0.5
short=2 long=12

# count PROGRAM SECONDS -> "instructions div_sd div_ss sqrt_sd sqrt_ss"
count() {
  local out=$work/$(basename "$1").$2
  valgrind --tool=callgrind --dump-instr=yes --callgrind-out-file="$out" "$1" --held "$2" >/dev/null 2>"$out.log" || {
    echo "patch-instructions: $1 failed under callgrind (see below)" >&2; cat "$out.log" >&2; exit 2; }
  python3 "$root/bench/support/callgrind-ops.py" "$out" | awk '{ v[$1] = $2 }
    END { print v["instructions"], v["div_sd"], v["div_ss"], v["sqrt_sd"], v["sqrt_ss"] }'
}

printf '| libpd | instructions per audio second | divisions and square roots | Cortex-A53 at 1.5 GHz |\n|---|---|---|---|\n'
declare -A per_second
for variant in stock patched; do
  program=$build/tests/patch_readings$([[ $variant == stock ]] && echo _stock || true)
  [[ -x $program ]] || { echo "patch-instructions: build first: $program is missing" >&2; exit 2; }
  read -r -a a <<<"$(count "$program" $short)"
  read -r -a b <<<"$(count "$program" $long)"
  row=$(awk -v s=$((long - short)) -v name=$variant \
      -v i="$(( b[0] - a[0] ))" -v dsd="$(( b[1] - a[1] ))" -v dss="$(( b[2] - a[2] ))" \
      -v qsd="$(( b[3] - a[3] ))" -v qss="$(( b[4] - a[4] ))" 'BEGIN {
    i /= s; dsd /= s; dss /= s; qsd /= s; qss /= s
    slow = dsd * 29 + dss * 14 + qsd * 28 + qss * 13
    other = i - dsd - dss - qsd - qss
    printf "%.0f\t| %s | %.0f M | %.1f M | %.0f-%.0f %% |\n", i, name, i / 1e6, (dsd + dss + qsd + qss) / 1e6,
      100 * (other * 0.7 + slow) / 1.5e9, 100 * (other * 1.4 + slow) / 1.5e9 }')
  per_second[$variant]=${row%%$'\t'*}
  printf '%s\n' "${row#*$'\t'}"
done
echo
awk -v p="${per_second[patched]}" -v s="${per_second[stock]}" -v max=$ratio_max 'BEGIN {
  r = p / s
  printf "patched / stock: %.2fx the instructions (target at most %.2fx): %s\n", r, max, r <= max ? "holds" : "MISSED"
  exit r <= max ? 0 : 1 }'
