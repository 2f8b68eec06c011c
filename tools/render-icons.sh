#!/usr/bin/env bash
# Renders the application icon's PNG sizes from data/icons/veltra.svg.
# The renderings are committed, so building needs no SVG renderer; run this
# after changing the SVG (needs rsvg-convert from librsvg2-bin).
set -euo pipefail
cd "$(dirname "$0")/../data/icons"
for size in 16 24 32 48 64 128 256 512; do
  rsvg-convert --width "$size" --height "$size" veltra.svg --output "veltra-$size.png"
done
