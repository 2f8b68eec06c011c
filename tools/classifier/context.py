#!/usr/bin/python3
"""Whether the head should hear the last few windows together: scored on
runs of consecutive windows, cut every 0.48 s as the app cuts them from
whole recordings of each source, each source left out in turn as in
head.py.

    /usr/bin/python3 tools/classifier/context.py build    # the runs and their embeddings (DATA/cache/NAME.runs.npz)
    /usr/bin/python3 tools/classifier/context.py report   # per context length: the left-out means and the reaction

The corpus (corpus.py) draws its windows apart, so it cannot tell what an
average over neighbouring windows does. Here every recording is played
whole through the same phone-and-room chain, a note library's notes each
after a second of the room alone, a long take as a stretch of up to 15 s.
With context N the head's input is the mean of the last N windows'
embeddings (for a linear head, the mean of their logits), as the app
computes it. Each N gets its own calibration, fitted like the shipped one
on the other sources' runs. Counted as in the left-out table: the windows
within 30 dB of their run's loudest. The reaction is how many windows
after a note's first sounding one its category opens.

The synthetic and Debian-voice sources make utterances rather than
recordings and have no runs; they still train every head.
"""
import argparse
import os

import numpy as np
import torch

import backbone
import corpus
import features
import head
import recordings

HOP = features.PATCH_HOP_FRAMES * features.HOP_LENGTH
LEAD_SECONDS = 1.0      # the room alone before each note
NOTE_SECONDS = 6.0      # at most this much of each note
TAKE_SECONDS = 15.0     # at most this much of each long take
FILES_PER_TASK = {corpus.note_library_task: 12, corpus.take_task: 6}
CONTEXTS = (1, 2, 3, 4)
WITHOUT_RUNS = ("festival", "espeak", "synthetic")
SEED = 31


def runs_of(name, data, background):
    """(windows, run id, position in run, sounding, kind) of one source."""
    rng = np.random.default_rng(SEED + corpus.SEED_SLOTS[name])
    x, run, position, sounding, kinds = [], [], [], [], []
    for function, args in corpus.source_tasks(name, data, background):
        if function not in FILES_PER_TASK:
            continue
        files, labels, category = args[0], args[1], args[2]
        chosen = rng.choice(len(files), min(len(files), FILES_PER_TASK[function]), replace=False)
        for index in sorted(chosen):
            clip = corpus._read(files[index]) if isinstance(files[index], str) else files[index]
            if len(clip) < features.PATCH_SAMPLES or not np.any(clip):
                continue
            if function is corpus.note_library_task:
                clip = clip[recordings.onset(clip):][:int(NOTE_SECONDS * features.SAMPLE_RATE)]
                clip = np.concatenate([np.zeros(int(LEAD_SECONDS * features.SAMPLE_RATE), np.float32), clip])
            else:
                longest = int(TAKE_SECONDS * features.SAMPLE_RATE)
                first = int(rng.integers(0, max(1, len(clip) - longest)))
                clip = clip[first:first + longest]
            played = corpus.chain(rng, clip, background)
            pieces = [played[s:s + features.PATCH_SAMPLES]
                      for s in range(0, len(played) - features.PATCH_SAMPLES + 1, HOP)]
            levels = np.array([np.sqrt(np.mean(np.square(p, dtype=np.float64))) for p in pieces])
            floor = levels.max() * 10 ** (-recordings.ACTIVE_BELOW_LOUDEST_DB / 20)
            this_run = run[-1] + 1 if run else 0
            for i, piece in enumerate(pieces):
                x.append(features.log_mel(piece).astype(np.float16))
                run.append(this_run)
                position.append(i)
                sounding.append(levels[i] >= floor)
                kinds.append(corpus.kind_of(labels, category))
    return np.stack(x), np.array(run), np.array(position), np.array(sounding), np.array(kinds)


def build(args):
    net = backbone.torch_model(backbone.load(args.data))
    background = corpus.background_pool(args.data)
    for name in corpus.SOURCE_NAMES:
        if name in WITHOUT_RUNS:
            continue
        x, run, position, sounding, kinds = runs_of(name, args.data, background)
        with torch.no_grad():
            e = np.concatenate([net(torch.from_numpy(x[i:i + 128].astype(np.float32)))[0].numpy()
                                for i in range(0, len(x), 128)])
        np.savez(os.path.join(args.data, "cache", name + ".runs.npz"), e=e, run=run, position=position,
                 sounding=sounding, kinds=kinds)
        print(f"{name}: {len(set(run))} runs, {len(x)} windows ({sounding.sum()} sounding)", flush=True)


def in_context(logits, run, n):
    """Each window's logits averaged with those of the n - 1 before it in
    its run (fewer at a run's start, as the app does before its context
    fills)."""
    out = np.empty_like(logits)
    for i in range(len(logits)):
        first = i
        while first > i - n + 1 and first > 0 and run[first - 1] == run[i]:
            first -= 1
        out[i] = logits[first:i + 1].mean(axis=0)
    return out


def reaction(opened, kinds, run, sounding):
    """Per note run of a category: windows from its first sounding window
    to its category's first opening (None: never)."""
    delays = []
    for r in np.unique(run):
        mine = np.flatnonzero(run == r)
        kind = kinds[mine[0]]
        if kind not in head.CATEGORIES or not sounding[mine].any():
            continue
        start = mine[np.argmax(sounding[mine])]
        opens = np.flatnonzero(opened[start:mine[-1] + 1, head.CATEGORIES.index(kind)])
        delays.append(int(opens[0]) if len(opens) else None)
    return delays


def report(args):
    everything = head.load(args.data, corpus.SOURCE_NAMES)
    runs = {}
    for group, names in head.LOSO_GROUPS.items():
        names = [n for n in names if n not in WITHOUT_RUNS]
        if not names:
            continue
        left = np.isin(everything["sources"], head.LOSO_GROUPS[group])
        trained = np.isin(everything["sources"], corpus.TRAINED) & ~left
        fitted = head.fit(head.subset(everything, trained), head.RECIPES["shipped"])
        parts = [dict(np.load(os.path.join(args.data, "cache", n + ".runs.npz")), source=n) for n in names]
        for p in parts:
            p["run"] = p["run"] + 100000 * names.index(p["source"])
        part = {key: np.concatenate([p[key] for p in parts]) for key in ("e", "run", "sounding", "kinds")}
        part["sources"] = np.concatenate([[p["source"]] * len(p["kinds"]) for p in parts])
        with torch.no_grad():
            part["logits"] = fitted(torch.from_numpy(part["e"].astype(np.float32))).numpy()
        part["heard"] = np.array([c in everything["kinds"][trained] for c in head.CATEGORIES])
        runs[group] = part
        print(f"left out {group}", flush=True)
    for n in CONTEXTS:
        scored = {}
        for group, part in runs.items():
            s = part["sounding"]
            scored[group] = {"logits": in_context(part["logits"], part["run"], n)[s], "kinds": part["kinds"][s],
                             "sources": part["sources"][s], "heard": part["heard"]}
        rows, delays = [], []
        for group, part in runs.items():
            calibration = head.calibration_from(scored, "shipped", leaving=group)
            rows += head.table(scored[group]["kinds"], head.gate_openings(scored[group]["logits"], calibration),
                               scored[group]["sources"])
            every = in_context(part["logits"], part["run"], n)
            delays += reaction(head.gate_openings(every, calibration), part["kinds"], part["run"], part["sounding"])
        mean = head.pooled(rows)
        score = np.mean([mean[c] for c in head.CATEGORIES]) - np.mean([mean[k] for k in head.FALSE_KINDS])
        opened = [d for d in delays if d is not None]
        print(f"context {n}: " + ", ".join(f"{k} {mean[k] * 100:.1f}" for k in head.KINDS if k in mean)
              + f"; own minus false {score * 100:.1f}; notes opened {len(opened)}/{len(delays)},"
              f" at the first sounding window {np.mean([d == 0 for d in opened]) * 100:.0f} %,"
              f" within one more {np.mean([d <= 1 for d in opened]) * 100:.0f} %", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("step", choices=["build", "report"])
    parser.add_argument("--data", default=corpus.DEFAULT_DATA)
    args = parser.parse_args()
    {"build": build, "report": report}[args.step](args)


if __name__ == "__main__":
    main()
