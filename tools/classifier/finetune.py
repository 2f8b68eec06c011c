#!/usr/bin/python3
"""Whether tuning YAMNet's last block on our corpus helps the gate: that
block (a 3x3 depthwise and a 1,024 x 1,024 pointwise layer) trained with a
linear head, each source left out in turn as in head.py, against the same
runs with the block frozen.

    /usr/bin/python3 tools/classifier/finetune.py            # tuned
    /usr/bin/python3 tools/classifier/finetune.py --frozen   # the same runs, the block as published

What goes into the last block is cached once per source
(DATA/cache/NAME.block.npy, 12 KB a window), so that a run costs seconds
of the block and not the whole network. Each run trains on PER_CELL windows
of every source and kind (weighted as head.window_weights weighs them),
for EPOCHS epochs; the left-out logits go to DATA/heads/RECIPE/ and are
scored as head.py report scores them.
"""
import argparse
import os
import time

import numpy as np
import torch
import torch.nn.functional as F
from torch import nn

import backbone
import corpus
import head

PER_CELL, EPOCHS, BATCH = 300, 3, 256
BLOCK_RATE, HEAD_RATE, WEIGHT_DECAY, DROPOUT = 1e-4, 1e-3, 1e-2, 0.1
SEED = 5

torch.set_num_threads(1)


def block_inputs(data, net, first):
    """Per source, what the last block receives for each corpus window."""
    out = []
    for name in corpus.SOURCE_NAMES:
        path = os.path.join(data, "cache", name + ".block.npy")
        if not os.path.exists(path):
            x = np.load(os.path.join(data, "cache", name + ".npz"))["x"]
            parts = []
            with torch.no_grad():
                for i in range(0, len(x), 128):
                    windows = torch.from_numpy(x[i:i + 128].astype(np.float32))[:, None]
                    parts.append(net.features(windows.contiguous(memory_format=torch.channels_last), 0, first)
                                 .numpy().astype(np.float16))
            np.save(path, np.concatenate(parts))
        out.append(np.load(path))
    return np.concatenate(out)


class TunedBlock(nn.Module):
    """The last block, starting from YAMNet's weights, the embedding's mean,
    and a linear head on the standardised embedding."""

    def __init__(self, net, first, mean, std):
        super().__init__()
        self.depthwise = nn.Parameter(net.weights[first].detach().clone())
        self.depthwise_bias = nn.Parameter(net.biases[first].detach().clone())
        self.pointwise = nn.Parameter(net.weights[first + 1].detach().clone())
        self.pointwise_bias = nn.Parameter(net.biases[first + 1].detach().clone())
        self.register_buffer("mean", torch.tensor(mean))
        self.register_buffer("std", torch.tensor(std))
        self.head = nn.Sequential(nn.Dropout(DROPOUT), nn.Linear(len(mean), len(head.CATEGORIES)))

    def forward(self, x):
        # Stride 1 and a 3x3 kernel: TensorFlow's SAME pads one all round.
        x = F.relu(F.conv2d(F.pad(x, [1, 1, 1, 1]), self.depthwise, self.depthwise_bias, groups=x.shape[1]))
        x = F.relu(F.conv2d(x, self.pointwise, self.pointwise_bias))
        return self.head((x.mean(dim=(2, 3)) - self.mean) / self.std)

    def block_parameters(self):
        return [self.depthwise, self.depthwise_bias, self.pointwise, self.pointwise_bias]


def sample(everything, trained, rng):
    """At most PER_CELL windows of every source and kind among `trained`."""
    cells = np.char.add(np.char.add(everything["sources"][trained].astype(str), "/"),
                        everything["kinds"][trained].astype(str))
    picked = [rng.choice(trained[cells == c], min(int((cells == c).sum()), PER_CELL), replace=False)
              for c in np.unique(cells)]
    return np.sort(np.concatenate(picked))


def run(args):
    net = backbone.torch_model(backbone.load(args.data))
    first = len(net.specs) - 3          # the last block's depthwise layer; then its pointwise, then the classifier
    blocks = block_inputs(args.data, net, first)
    everything = head.load(args.data, corpus.SOURCE_NAMES)
    recipe = "finetune-frozen" if args.frozen else "finetune"
    os.makedirs(os.path.join(args.data, "heads", recipe), exist_ok=True)
    rng = np.random.default_rng(SEED)
    for group, names in head.LOSO_GROUPS.items():
        started = time.time()
        left = np.isin(everything["sources"], names)
        picked = sample(everything, np.flatnonzero(np.isin(everything["sources"], corpus.TRAINED) & ~left), rng)
        part = head.subset(everything, picked)
        x = torch.from_numpy(blocks[picked].astype(np.float32))
        e = part["e"].astype(np.float32)
        torch.manual_seed(SEED)
        model = TunedBlock(net, first, e.mean(axis=0), e.std(axis=0) + 1e-4)
        y, weight = head.targets(part["kinds"]), head.window_weights(part["kinds"], part["sources"])
        optimiser = torch.optim.AdamW([{"params": model.block_parameters(), "lr": 0.0 if args.frozen else BLOCK_RATE},
                                       {"params": model.head.parameters(), "lr": HEAD_RATE}],
                                      weight_decay=WEIGHT_DECAY)
        model.train()
        for _epoch in range(EPOCHS):
            order = torch.randperm(len(x))
            for b in range(0, len(x) - BATCH + 1, BATCH):
                i = order[b:b + BATCH]
                loss = (F.binary_cross_entropy_with_logits(model(x[i]), y[i], reduction="none").mean(dim=1)
                        * weight[i]).mean()
                optimiser.zero_grad()
                loss.backward()
                optimiser.step()
        model.eval()
        held = np.flatnonzero(left)
        with torch.no_grad():
            logits = np.concatenate([model(torch.from_numpy(blocks[held[i:i + 512]].astype(np.float32))).numpy()
                                     for i in range(0, len(held), 512)])
        heard = np.array([c in part["kinds"] for c in head.CATEGORIES])
        np.savez(os.path.join(args.data, "heads", recipe, group + ".npz"), logits=logits,
                 kinds=everything["kinds"][held], sources=everything["sources"][held], heard=heard)
        print(f"{recipe}: left out {group} ({len(picked)} windows) in {time.time() - started:.0f}s", flush=True)
    mean = head.pooled(head.left_out_rows(args, recipe))
    score = np.mean([mean[c] for c in head.CATEGORIES]) - np.mean([mean[k] for k in head.FALSE_KINDS])
    print(f"{recipe}: " + ", ".join(f"{k} {mean[k] * 100:.1f}" for k in head.KINDS if k in mean)
          + f"; own minus false {score * 100:.1f}", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--data", default=corpus.DEFAULT_DATA)
    parser.add_argument("--frozen", action="store_true", help="the block as published: only the head learns")
    run(parser.parse_args())


if __name__ == "__main__":
    main()
