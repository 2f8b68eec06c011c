#!/usr/bin/python3
"""Leave one source out: trains without each source of the corpus
(corpus.py) and scores on it, then trains the model to ship on every
source's training part, calibrated on the left-out scores only.

    /usr/bin/python3 tools/classifier/loso.py runs [--left-out NAME ...]   # one model per left-out source
    /usr/bin/python3 tools/classifier/loso.py final [--out DIR]            # the model to ship
    /usr/bin/python3 tools/classifier/loso.py report [--model FILE]        # the tables of docs/classifier.md

What is trained is the network's dense part. The convolutions are the base
weight file's (--base, by default the one in the tree; train.py made them
from soundfont renderings); each corpus window is run through them once
and its 64 pooled values are kept (DATA/cache/NAME.emb-SHA.npy). The dense
part then learns from real recordings, three layers instead of two (or,
with --from-base, the base file's own two layers trained further), at a
cost of seconds per model, which is what makes one model per left-out
source affordable on two shared cores. With --whole, every layer is
trained further instead, from the base file's weights (its calibration
taken out), on the cached log-mel windows themselves: four epochs, 3.5 to
5 minutes per model on two free cores. docs/classifier.md has the
figures: none of the three beat the base file, which stays the shipped
model.

"runs" keeps, for every window of the left-out source, the logits of the
model that never heard that source (DATA/loso/NAME.npz). "final" fits the
calibration on those logits (calibrate.fit, then the budgets below) and
folds it into the weights. "report" prints, per source, how often each
kind of window opens the gate with all four categories on: the left-out
figures under a calibration fitted on the other sources' left-out logits,
the new model's on each source's held-out part, and the base weight file
(as shipped, with its own calibration) on both.
"""
import argparse
import hashlib
import json
import os
import time

import numpy as np
import torch
from torch import nn

import calibrate
import corpus
import model
import sources
import train

# Small matrices: a second thread costs more in hand-overs than it saves.
torch.set_num_threads(1)
HIDDEN = (128, 128)
EPOCHS, BATCH, LEARNING_RATE, WEIGHT_DECAY, DROPOUT = 8, 512, 3e-3, 1e-3, 0.1
# --whole: every layer trained further from the base file's weights.
WHOLE_EPOCHS, WHOLE_LEARNING_RATE = 4, 1e-3
# Left out together with its kin: the synthesised and diphone voices are
# one origin of speech, the two small sets of everyday noise another.
LOSO_GROUPS = {"philharmonia": ["philharmonia"], "tonejs": ["tonejs"], "salamander": ["salamander"],
               "makam": ["makam"], "freepats": ["freepats"], "soundfonts": ["soundfonts"], "sonicpi": ["sonicpi"],
               "fsdd": ["fsdd"], "emotiontts": ["emotiontts"], "festival+espeak": ["festival", "espeak"],
               "water+everyday": ["water", "everyday"], "dirt": ["dirt"]}
# Per category, the share of left-out windows that may open it: speech and
# everyday noise, other instruments. Four categories together stay within
# about four times these.
BUDGETS = {"speech": 0.0125, "noise": 0.0125, "other": 0.05}
KINDS = ["guitar", "violin", "piano", "voice", "speech", "noise", "other"]


def embed(data, name, base):
    """The base network's pooled convolution outputs for a source's windows,
    cached beside them."""
    tag = hashlib.sha1(base.data[:base.dense_start]).hexdigest()[:8]
    path = os.path.join(data, "cache", f"{name}.emb-{tag}.npy")
    if not os.path.exists(path):
        net = model.net_from(base).eval()
        x = np.load(os.path.join(data, "cache", name + ".npz"))["x"]
        with torch.no_grad():
            pooled = [net.body(((torch.from_numpy(x[i:i + 256].astype(np.float32)) - net.mean) / net.std)
                               .unsqueeze(1)).mean(dim=(2, 3)).numpy() for i in range(0, len(x), 256)]
        np.save(path, np.concatenate(pooled).astype(np.float32))
    return np.load(path)


def load(data, names, base, windows=False):
    """The sources' labels, kinds and held-out marks, with either the base
    network's pooled values ("e") or, with `windows`, the log-mel windows
    themselves ("x", float16 as cached)."""
    parts = []
    for name in names:
        stored = np.load(os.path.join(data, "cache", name + ".npz"))
        part = {key: stored[key] for key in ("y", "groups", "kinds", "held")}
        if windows:
            part["x"] = stored["x"]
        else:
            part["e"] = embed(data, name, base)
        part["sources"] = np.array([name] * len(part["y"]))
        parts.append(part)
    return {key: np.concatenate([p[key] for p in parts]) for key in parts[0]}


class Head(nn.Module):
    """The dense part: standardised pooled values, hidden layers with ReLU,
    one logit per class."""

    def __init__(self, mean, std, hidden=HIDDEN):
        super().__init__()
        self.register_buffer("mean", torch.tensor(mean))
        self.register_buffer("std", torch.tensor(std))
        widths = (len(mean),) + tuple(hidden)
        layers = []
        for a, b in zip(widths, widths[1:]):
            layers += [nn.Linear(a, b), nn.ReLU(), nn.Dropout(DROPOUT)]
        self.body = nn.Sequential(*layers, nn.Linear(widths[-1], len(sources.CLASSES)))

    def forward(self, e):
        return self.body((e - self.mean) / self.std)

    def dense_layers(self):
        """The layers as the weight file holds them, the standardisation
        folded into the first."""
        linears = [m for m in self.body if isinstance(m, nn.Linear)]
        out = []
        for i, layer in enumerate(linears):
            weight, bias = layer.weight.detach().double().numpy(), layer.bias.detach().double().numpy()
            if i == 0:
                inv = 1.0 / self.std.double().numpy()
                bias = bias - weight @ (self.mean.double().numpy() * inv)
                weight = weight * inv[None, :]
            out.append((weight.astype(np.float32), bias.astype(np.float32)))
        return out


def kind_weights(kinds):
    """Per window, a loss weight that makes every kind of window (the four
    categories, speech, noise, other instruments) weigh the same."""
    names, index, counts = np.unique(kinds, return_inverse=True, return_counts=True)
    return torch.from_numpy((len(kinds) / (len(names) * counts[index])).astype(np.float32))


def optimise(module, inputs, data, rate, epochs, augment=None):
    """AdamW with a one-cycle schedule over `inputs` (a tensor, cast to
    float32 a batch at a time), binary cross-entropy per class weighted by
    kind. Batch norms stay in eval mode: the weight file's are folded into
    the convolutions."""
    torch.manual_seed(train.SEED)
    y = torch.from_numpy(data["y"].astype(np.float32))
    weight = kind_weights(data["kinds"])
    optimiser = torch.optim.AdamW(module.parameters(), lr=rate, weight_decay=WEIGHT_DECAY)
    batches = len(inputs) // BATCH
    schedule = torch.optim.lr_scheduler.OneCycleLR(optimiser, rate, total_steps=epochs * batches, pct_start=0.1)
    generator = torch.Generator().manual_seed(train.SEED)
    module.train()
    for norm in module.modules():
        if isinstance(norm, nn.BatchNorm2d):
            norm.eval()
    started = time.time()
    for epoch in range(epochs):
        order = torch.randperm(len(inputs), generator=generator)
        total = 0.0
        for b in range(batches):
            index = order[b * BATCH:(b + 1) * BATCH]
            batch = inputs[index].float()
            if augment:
                batch = augment(batch, generator)
            loss = (nn.functional.binary_cross_entropy_with_logits(module(batch), y[index], reduction="none")
                    .mean(dim=1) * weight[index]).mean()
            optimiser.zero_grad()
            loss.backward()
            optimiser.step()
            schedule.step()
            total += loss.item()
        if epochs > 1:
            print(f"  epoch {epoch + 1}/{epochs} loss {total / batches:.4f} {time.time() - started:.0f}s",
                  flush=True)
    return module.eval()


def fit(data, start=None):
    """Trains a head. With `start` (a weight file), the head has that
    file's dense layers and starts from their weights, at a tenth of the
    learning rate."""
    torch.manual_seed(train.SEED)
    e = torch.from_numpy(data["e"])
    if start is None:
        head, rate = Head(e.mean(dim=0).numpy(), e.std(dim=0).numpy() + 1e-6), LEARNING_RATE
    else:
        width = e.shape[1]
        head = Head(np.zeros(width, np.float32), np.ones(width, np.float32), [len(b) for _w, b in start.denses[:-1]])
        with torch.no_grad():
            for layer, (w, b) in zip([m for m in head.body if isinstance(m, nn.Linear)], start.denses):
                layer.weight.copy_(torch.from_numpy(w))
                layer.bias.copy_(torch.from_numpy(b))
        rate = LEARNING_RATE / 10
    return optimise(head, e, data, rate, EPOCHS)


def uncalibrated(path):
    """A weight file with the calibration that its manifest names taken
    back out of its last layer."""
    loaded = model.Loaded(path)
    manifest = json.load(open(os.path.join(os.path.dirname(path), "sounds.json")))
    if manifest.get("calibration"):
        model.remove_calibration(loaded, manifest["calibration"]["per_category"], sources.ACCEPTED, sources.CLASSES)
    return loaded


def fit_whole(data, start):
    """Trains the whole network, convolutions included, from a weight
    file's weights (uncalibrated) on the log-mel windows, with one band
    range and one time range masked at random."""
    net = model.net_from(start)
    return optimise(net, torch.from_numpy(data["x"]), data, WHOLE_LEARNING_RATE, WHOLE_EPOCHS,
                    train.mask_bands_and_frames)


def net_logits(net, x):
    """A network's logits for log-mel windows, a batch at a time."""
    with torch.no_grad():
        return np.concatenate([net(torch.from_numpy(x[i:i + BATCH].astype(np.float32))).numpy()
                               for i in range(0, len(x), BATCH)])


def logits_of(head, e):
    with torch.no_grad():
        return head(torch.from_numpy(e)).numpy()


def category_margin(logits, category):
    return logits[:, [sources.CLASSES.index(label) for label in sources.ACCEPTED[category]]].max(axis=1)


def fit_calibration(logits, kinds):
    """Per category, sigmoid(a * m + b) on the strongest label's logit m,
    then b lowered until each negative kind keeps within its budget."""
    result = {}
    for category in sources.ACCEPTED:
        m = category_margin(logits, category)
        a, b = calibrate.fit(m, (kinds == category).astype(np.float64))
        negatives = {kind: ~np.isin(kinds, list(sources.ACCEPTED)) & (kinds == kind) for kind in BUDGETS}
        for kind, budget in BUDGETS.items():
            b = min(b, calibrate.within_budget(a * m, negatives[kind], budget))
        result[category] = {"scale": a, "offset": b}
    return result


def gate_openings(logits, calibration):
    """(windows x categories) booleans: which categories open at 0.5."""
    return np.stack([c["scale"] * category_margin(logits, category) + c["offset"] > 0
                     for category, c in calibration.items()], axis=1)


def table(kinds, opened, sources_of):
    """Rows per source and kind: windows, share accepted as its own
    category (accepted kinds) or opening any category (the others)."""
    rows = []
    names = list(sources.ACCEPTED)
    for source in dict.fromkeys(sources_of):
        for kind in KINDS:
            mine = (sources_of == source) & (kinds == kind)
            if not mine.any():
                continue
            share = opened[mine, names.index(kind)].mean() if kind in names else opened[mine].any(axis=1).mean()
            rows.append((source, kind, int(mine.sum()), float(share)))
    return rows


def runs(args):
    base = model.Loaded(args.base)
    start = uncalibrated(args.base) if args.whole else None
    os.makedirs(os.path.join(args.data, args.logits), exist_ok=True)
    for group in args.left_out:
        started = time.time()
        left = LOSO_GROUPS[group]
        kept = [name for name in corpus.SOURCE_NAMES if name not in left]
        held = load(args.data, left, base, windows=args.whole)
        if args.whole:
            logits = net_logits(fit_whole(load(args.data, kept, base, windows=True), start), held["x"])
        else:
            logits = logits_of(fit(load(args.data, kept, base), base if args.from_base else None), held["e"])
        np.savez(os.path.join(args.data, args.logits, group + ".npz"), logits=logits,
                 kinds=held["kinds"], sources=held["sources"], groups=held["groups"])
        print(f"left out {group}: {time.time() - started:.0f}s", flush=True)


def loso_logits(data, folder):
    parts = {}
    for group in LOSO_GROUPS:
        path = os.path.join(data, folder, group + ".npz")
        if os.path.exists(path):
            parts[group] = dict(np.load(path))
    return parts


def final(args):
    parts = loso_logits(args.data, args.logits)
    calibration = fit_calibration(np.concatenate([p["logits"] for p in parts.values()]),
                                  np.concatenate([p["kinds"] for p in parts.values()]))
    base = model.Loaded(args.base)
    everything = load(args.data, corpus.SOURCE_NAMES, base, windows=args.whole)
    keep = ~everything["held"]
    started = time.time()
    training_part = {key: value[keep] for key, value in everything.items()}
    os.makedirs(args.out, exist_ok=True)
    path = os.path.join(args.out, "sounds.bin")
    if args.whole:
        model.export(fit_whole(training_part, uncalibrated(args.base)), sources.CLASSES, path)
    else:
        base.write_with_dense_layers(path, fit(training_part, base if args.from_base else None).dense_layers())
    calibrate.apply(model.Loaded(path), calibration, path)
    written = model.Loaded(path)
    flag = " --whole" if args.whole else ""
    manifest = {"file": "sounds.bin", "classes": sources.CLASSES, "accepted_labels": sources.ACCEPTED,
                "network": {"conv_channels": [len(b) for _w, b, _p in written.convs], "pooled_blocks": model.POOLED,
                            "dense": [list(w.shape) for w, _b in written.denses],
                            "parameters": int(sum(w.size + b.size for w, b, _p in written.convs)
                                              + sum(w.size + b.size for w, b in written.denses))},
                "training": {("started_from" if args.whole else "convolutions_from"): {
                                 "sha1": hashlib.sha1(base.data if args.whole else base.data[:base.dense_start]).hexdigest(),
                                 "made_by": "/usr/bin/python3 tools/classifier/train.py"},
                             "trained": "every layer" if args.whole else "the dense layers",
                             "command": "/usr/bin/python3 tools/classifier/corpus.py && "
                                        f"/usr/bin/python3 tools/classifier/loso.py runs{flag} && "
                                        f"/usr/bin/python3 tools/classifier/loso.py final{flag}",
                             "git_sources": corpus.GIT_SOURCES, "npm_sources": corpus.NPM_SOURCES,
                             "debian": ["fluid-soundfont-gm", "musescore-general-soundfont", "csound-soundfont",
                                        "freepats", "festival voices", "espeak-ng"],
                             "windows": int(keep.sum()), "seed": train.SEED,
                             "epochs": WHOLE_EPOCHS if args.whole else EPOCHS, "batch": BATCH,
                             "learning_rate": WHOLE_LEARNING_RATE if args.whole else LEARNING_RATE,
                             "weight_decay": WEIGHT_DECAY, "dropout": 0.0 if args.whole else DROPOUT,
                             "optimiser": "AdamW, one-cycle",
                             "loss": "binary cross-entropy per class, every kind of window weighing the same",
                             "seconds": round(time.time() - started), "torch": torch.__version__},
                "calibration": {"fitted_on": "left-out logits of every source (loso.py runs)",
                                "budgets": BUDGETS, "per_category": calibration}}
    with open(os.path.join(args.out, "sounds.json"), "w") as fh:
        json.dump(manifest, fh, indent=2)
        fh.write("\n")
    print("wrote", path, flush=True)


def print_table(title, rows_by_model):
    print(f"\n{title}\n")
    names = list(rows_by_model)
    print("| source | kind | windows | " + " | ".join(names) + " |")
    print("|---|---|---|" + "---|" * len(names))
    first = rows_by_model[names[0]]
    for i, (source, kind, count, _share) in enumerate(first):
        shares = " | ".join(f"{rows_by_model[n][i][3] * 100:.1f} %" for n in names)
        print(f"| {source} | {kind} | {count} | {shares} |")


def pooled(rows):
    """Per kind, the mean over sources (each source weighs the same)."""
    out = {}
    for _source, kind, _count, share in rows:
        out.setdefault(kind, []).append(share)
    return {kind: float(np.mean(v)) for kind, v in out.items()}


def report(args):
    parts = loso_logits(args.data, args.logits)
    base = model.Loaded(args.base)
    identity = {c: {"scale": 1.0, "offset": 0.0} for c in sources.ACCEPTED}
    loso_rows, base_rows = [], []
    for group, part in parts.items():
        others = [p for g, p in parts.items() if g != group]
        calibration = fit_calibration(np.concatenate([p["logits"] for p in others]),
                                      np.concatenate([p["kinds"] for p in others]))
        loso_rows += table(part["kinds"], gate_openings(part["logits"], calibration), part["sources"])
        data = load(args.data, LOSO_GROUPS[group], base)
        base_rows += table(data["kinds"], gate_openings(base_logits(base, data["e"]), identity), data["sources"])
    print_table("Left out (never heard the source) against the base file on the same windows",
                {"left out": loso_rows, "base": base_rows})
    for name, rows in (("left out", loso_rows), ("base", base_rows)):
        print(name, json.dumps({k: round(v * 100, 1) for k, v in pooled(rows).items()}))
    if args.model:
        held = load(args.data, corpus.SOURCE_NAMES, base, windows=True)
        held = {key: value[held["held"]] for key, value in held.items()}
        rows = {name: table(held["kinds"], gate_openings(net_logits(model.net_from(model.Loaded(path)), held["x"]),
                                                          identity), held["sources"])
                for name, path in (("new model", args.model), ("base", args.base))}
        print_table("Held-out parts (every fifth recording of each source)", rows)
        for name, r in rows.items():
            print(name, json.dumps({k: round(v * 100, 1) for k, v in pooled(r).items()}))


def base_logits(loaded, e):
    """A weight file's logits from pooled values (its dense layers)."""
    v = e.astype(np.float32)
    for i, (weight, bias) in enumerate(loaded.denses):
        v = v @ weight.T + bias
        if i + 1 < len(loaded.denses):
            v = np.maximum(v, 0.0)
    return v


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("step", choices=["runs", "final", "report"])
    parser.add_argument("--data", default=corpus.DEFAULT_DATA)
    parser.add_argument("--left-out", nargs="*", default=list(LOSO_GROUPS))
    parser.add_argument("--out", default=model.MODEL_DIR)
    parser.add_argument("--base", default=os.path.join(model.MODEL_DIR, "sounds.bin"),
                        help="the weight file whose convolutions are kept (and the baseline of the report)")
    parser.add_argument("--model", default=None, help="the new weight file, for the held-out table")
    parser.add_argument("--from-base", action="store_true",
                        help="train the base file's own dense layers further instead of new, wider ones")
    parser.add_argument("--whole", action="store_true",
                        help="train every layer further from the base file, on the windows themselves")
    parser.add_argument("--logits", default=None,
                        help="folder under --data for the left-out logits (loso, or loso-whole with --whole)")
    parser.add_argument("--budgets", nargs=3, type=float, metavar=("SPEECH", "NOISE", "OTHER"),
                        help="the shares that may open a category, instead of the defaults (report: "
                             "0.05 0.05 0.2 sets the new models at the base file's false acceptance)")
    args = parser.parse_args()
    if args.budgets:
        BUDGETS.update(zip(("speech", "noise", "other"), args.budgets))
    args.logits = args.logits or ("loso-whole" if args.whole else "loso")
    if args.whole:
        torch.set_num_threads(2)
    {"runs": runs, "final": final, "report": report}[args.step](args)


if __name__ == "__main__":
    main()
