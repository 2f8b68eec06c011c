#!/usr/bin/python3
"""Heads that see more of a window than YAMNet's mean over it.

    /usr/bin/python3 tools/classifier/pooling.py [--pooling P ...]

YAMNet's last layer leaves a 3 x 2 map (time x frequency) of 1,024
channels for each 0.975 s window, and the embedding the gate's head reads
is its mean. A plucked string and a struck one both start loud and decay;
what tells them apart might sit in how the map changes across the window,
which the mean throws away. This script keeps the whole map of every
corpus window (DATA/cache/NAME[.stretched].map.npy, about 700 MB), trains
the linear head (head.py's `linear` recipe) on other poolings of it, one
source left out at a time as head.py does (DATA/heads/pool-P/), and prints
the one-category table beside the mean's:

    max      the mean and the largest value of each channel (2,048 inputs)
    time     the mean of each of the three time steps (3,072)
    newest   the mean and the newest time step (2,048)
    bands    the mean of each of the two frequency halves (2,048)
"""
import argparse
import os
import sys

import numpy as np
import torch

import backbone
import corpus
import head

POOLINGS = {
    "max": lambda m: np.concatenate([m.mean(axis=(2, 3)), m.max(axis=(2, 3))], axis=1),
    "time": lambda m: m.mean(axis=3).reshape(len(m), -1),
    "newest": lambda m: np.concatenate([m.mean(axis=(2, 3)), m[:, :, -1, :].mean(axis=2)], axis=1),
    "bands": lambda m: m.mean(axis=2).reshape(len(m), -1),
}


def map_path(data, name, stretched):
    return os.path.join(data, "cache", name + (".stretched" if stretched else "") + ".map.npy")


def cache_maps(data):
    """The last layer's map of every window and stretched window, in the
    order of head.py's caches, whose embeddings must be the maps' means."""
    net = backbone.torch_model(backbone.load(data))
    torch.set_num_threads(os.cpu_count() or 1)
    for name in corpus.SOURCE_NAMES:
        source = os.path.join(data, "cache", name + ".npz")
        if not os.path.exists(source):
            continue
        for stretched in (False, True):
            path = map_path(data, name, stretched)
            if os.path.exists(path):
                continue
            x = np.load(source)["x"]
            if stretched:
                _index, x = head.stretched_windows(x, head.SEED + corpus.SEED_SLOTS[name])
            maps = []
            with torch.no_grad():
                for i in range(0, len(x), 128):
                    windows = torch.from_numpy(x[i:i + 128].astype(np.float32))[:, None, :, :]
                    maps.append(net.features(windows.contiguous(memory_format=torch.channels_last))
                                .numpy().astype(np.float16))
            maps = np.concatenate(maps)
            embeddings = head.embed(data, name, None, stretched)["e"].astype(np.float32)
            if np.abs(maps.astype(np.float32).mean(axis=(2, 3)) - embeddings).max() > 0.05:
                raise SystemExit(f"pooling: {name}: the maps' means are not the cached embeddings")
            np.save(path, maps)
            print(f"{name}{' stretched' if stretched else ''}: {len(maps)} maps", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--data", default=corpus.DEFAULT_DATA)
    parser.add_argument("--pooling", nargs="*", default=list(POOLINGS), choices=list(POOLINGS))
    args = parser.parse_args()
    cache_maps(args.data)
    embed = head.embed
    for pooling in args.pooling:
        def pooled(data, name, net, stretched=False, pool=POOLINGS[pooling]):
            part = embed(data, name, net, stretched)
            part["e"] = pool(np.load(map_path(data, name, stretched)).astype(np.float32))
            return part

        head.embed = pooled
        recipe = "pool-" + pooling
        head.RECIPES[recipe] = head.RECIPES["linear"]
        done = head.left_out_logits(argparse.Namespace(data=args.data), recipe)
        missing = [group for group in head.LOSO_GROUPS if group not in done]
        if missing:
            head.runs(argparse.Namespace(data=args.data, recipe=recipe, left_out=missing))
    head.embed = embed
    report = argparse.Namespace(data=args.data)
    print("| head | category on | " + " | ".join(head.KINDS) + " |")
    print("|---|---|" + "---|" * len(head.KINDS))
    for recipe in ["linear"] + ["pool-" + p for p in args.pooling]:
        means = head.one_category_means(head.left_out_one_category(report, recipe))
        for category in head.CATEGORIES:
            print(f"| {recipe} | {category} | "
                  + " | ".join(f"{means[category][k] * 100:.1f}" if k in means[category] else "" for k in head.KINDS)
                  + " |")
        print(f"| {recipe} | largest miss | {head.shortfall(means) * 100:.1f} |" + " |" * (len(head.KINDS) - 1))
    sys.stdout.flush()


if __name__ == "__main__":
    main()
