#!/usr/bin/python3
"""Measures the shipped classifier the way the tuner uses it: per gate
category, the share of windows that open the gate, on audio it never
trained on (the TimGM6mb soundfont, espeak-ng voices and languages left out
of training, freshly drawn noise).

    /usr/bin/python3 tools/classifier/evaluate.py [--update-manifest]

Prints a Markdown table; --update-manifest also stores the figures in
src/classify/model/sounds.json.
"""
import argparse
import json
import os
import tempfile

import numpy as np

import augment
import dataset
import features
import model
import sources
import synth

SEED = 7
SOUNDFONT = "/usr/share/sounds/sf2/TimGM6mb.sf2"
SUSTAINED_SLOTS, STYLE_SLOTS, REJECTED_SLOTS = 24, 10, 12
SPEECH_UTTERANCES, NOISE_WINDOWS, SILENCE_WINDOWS = 60, 400, 100
CONDITIONS = ("clean", "room")


def soundfont_windows(rng, work):
    """{(source, category, material): [audio windows]} from the held-out soundfont;
    category is None for what every gate must reject."""
    plan = measuring_plan(SUSTAINED_SLOTS, STYLE_SLOTS, REJECTED_SLOTS, REJECTED_SLOTS)
    return rendered_windows(rng, plan, lambda mid, wav: dataset.render(mid, SOUNDFONT, wav), work)


def measuring_plan(sustained, styles, rejected, drums):
    """Slots per program: held notes and each other playing style of the
    accepted programs, held notes of the others, drum patterns."""
    plan = []
    for program in sources.PROGRAMS:
        if program.accepted:
            plan += [(program, "sustain")] * sustained
            plan += [(program, s) for s in program.styles if s != "note" for _ in range(styles)]
        else:
            plan += [(program, "sustain")] * rejected
    return plan + [(None, "drums")] * drums


def rendered_windows(rng, plan, render, work, prefix=""):
    """Renders a plan of General MIDI slots with render(midi path, wav path)
    -> mono audio at dataset.RENDER_RATE, and cuts each slot into windows:
    every window of a held note, one window of any other playing."""
    midi, slots = sources.build_midi(plan, rng)
    midi_path, wav_path = os.path.join(work, "heldout.mid"), os.path.join(work, "heldout.wav")
    midi.write(midi_path)
    audio = render(midi_path, wav_path)
    out = {}
    size = int(sources.SLOT_SECONDS * dataset.RENDER_RATE)
    for slot in slots:
        first = int(slot.start * dataset.RENDER_RATE)
        clip = features.resample(audio[first:first + size], dataset.RENDER_RATE)
        if np.max(np.abs(clip)) < 1e-4:
            continue  # no sample for this program or note
        source, style = slot.group.split("/")
        if style == "sustain":
            pieces = features.held_windows(clip, int(sources.ONSET_SECONDS * features.SAMPLE_RATE),
                                            sources.SUSTAIN_SECONDS)
        else:
            pieces = [dataset._cut(clip, dataset._window_start(rng, 0.0, slot.sounding))]
        if slot.category is None:
            material = "drums" if source == "drums" else "other instruments"
        else:
            material = "sustained" if style == "sustain" else "other playing"
        out.setdefault((prefix + source, slot.category, material), []).extend(pieces)
    return out


def other_windows(rng):
    speech = ("espeak-ng held-out voices", None, "speech")
    out = {speech: [], ("synthetic noise", None, "noise"): [], ("near silence", None, "silence"): []}
    for _ in range(SPEECH_UTTERANCES):
        talk = synth.speech(rng, synth.HELD_OUT_VOICES)
        loud = augment._rms(talk)
        starts = range(0, len(talk) - features.PATCH_SAMPLES, features.PATCH_HOP_FRAMES * features.HOP_LENGTH)
        out[speech] += [talk[s:s + features.PATCH_SAMPLES] for s in starts
                                                    if augment._rms(talk[s:s + features.PATCH_SAMPLES]) > 0.3 * loud]
    for _ in range(NOISE_WINDOWS):
        level = rng.uniform(-60, -15)
        out[("synthetic noise", None, "noise")].append(augment.at_level(synth.noise(rng, features.PATCH_SAMPLES), level))
    for _ in range(SILENCE_WINDOWS):
        out[("near silence", None, "silence")].append(synth.silence(rng, features.PATCH_SAMPLES))
    return out


def condition(rng, name, piece):
    if name == "clean":
        return augment.at_level(piece, -25) if augment._rms(piece) > 1e-6 else piece
    return augment.acoustic(rng, piece, background=True)


def accepted_by(scores, categories):
    columns = [sources.CLASSES.index(label) for c in categories for label in sources.ACCEPTED[c]]
    return (scores[:, columns] > 0.5).any(axis=1)


def evaluate(net, windows, rng):
    """{key: {condition: {category or "all": bool per window}}}"""
    decisions = {}
    for key, pieces in sorted(windows.items(), key=lambda kv: str(kv[0])):
        decisions[key] = {}
        for name in CONDITIONS:
            levelled = [p if key[2] == "silence" else condition(rng, name, p) for p in pieces]
            scores = net.scores(np.stack([features.log_mel(p) for p in levelled]).astype(np.float32))
            decided = {c: accepted_by(scores, [c]) for c in sources.ACCEPTED}
            decided["all"] = accepted_by(scores, list(sources.ACCEPTED))
            decisions[key][name] = decided
    return decisions


def share(decisions, keys, condition_name, category):
    hits = np.concatenate([decisions[k][condition_name][category] for k in keys])
    return float(hits.mean()), len(hits)


REJECTED_MATERIALS = ("speech", "noise", "silence", "drums", "other instruments")


def summary(decisions):
    """The figures the documentation reports, as nested dicts of shares;
    keys are (source, gate category or None, material)."""
    result = {"acceptance": {}, "false_acceptance": {}, "per_source": {}}
    for category in sources.ACCEPTED:
        for material in ("sustained", "other playing"):
            keys = [k for k in decisions if k[1] == category and k[2] == material]
            if keys:
                result["acceptance"][f"{category} {material}"] = {
                    c: share(decisions, keys, c, category)[0] for c in CONDITIONS} | {
                    "windows": share(decisions, keys, "clean", category)[1]}
    for material in REJECTED_MATERIALS:
        keys = [k for k in decisions if k[1] is None and k[2] == material]
        if keys:
            result["false_acceptance"][material] = {
                c: {cat: share(decisions, keys, c, cat)[0] for cat in list(sources.ACCEPTED) + ["all"]}
                for c in CONDITIONS} | {"windows": share(decisions, keys, "clean", "all")[1]}
    for key in decisions:
        category = key[1] or "all"
        result["per_source"][f"{key[0]} ({key[1] or 'rejected'}, {key[2]})"] = {
            c: share(decisions, [key], c, category)[0] for c in CONDITIONS} | {
            "windows": share(decisions, [key], "clean", category)[1]}
    return result


def pct(x):
    return f"{100 * x:.1f} %"


def markdown(s):
    lines = ["Acceptance: share of windows that open the gate with only their own category enabled.", "",
             "| category | material | windows | clean | room + mic + noise |", "|---|---|---|---|---|"]
    for name, row in s["acceptance"].items():
        category, material = name.split(" ", 1)
        lines.append(f"| {category} | {material} | {row['windows']} | {pct(row['clean'])} | {pct(row['room'])} |")
    lines += ["", "False acceptance: share of windows that open the gate, per enabled category and with all four "
              "enabled (clean / room + mic + noise).", "",
              "| source | windows | " + " | ".join(list(sources.ACCEPTED) + ["all four"]) + " |",
              "|---|---|" + "---|" * (len(sources.ACCEPTED) + 1)]
    for name, row in s["false_acceptance"].items():
        cells = " | ".join(f"{pct(row['clean'][c])} / {pct(row['room'][c])}" for c in list(sources.ACCEPTED) + ["all"])
        lines.append(f"| {name} | {row['windows']} | {cells} |")
    lines += ["", "Per source: accepted sources opening their own category; rejected sources opening any "
              "category.", "", "| source | windows | clean | room + mic + noise |", "|---|---|---|---|"]
    for name, row in sorted(s["per_source"].items()):
        lines.append(f"| {name} | {row['windows']} | {pct(row['clean'])} | {pct(row['room'])} |")
    return "\n".join(lines)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--model", default=os.path.join(model.MODEL_DIR, "sounds.bin"))
    parser.add_argument("--update-manifest", action="store_true")
    args = parser.parse_args()
    rng = np.random.default_rng(SEED)
    net = model.Loaded(args.model)
    with tempfile.TemporaryDirectory() as work:
        windows = soundfont_windows(rng, work)
    windows.update(other_windows(rng))
    figures = summary(evaluate(net, windows, rng))
    print(markdown(figures))
    if args.update_manifest:
        path = os.path.join(os.path.dirname(args.model), "sounds.json")
        manifest = json.load(open(path))
        manifest["evaluation"] = {"command": "/usr/bin/python3 tools/classifier/evaluate.py", "seed": SEED,
                                  "soundfont": os.path.basename(SOUNDFONT), "threshold": 0.5, **figures}
        with open(path, "w") as fh:
            json.dump(manifest, fh, indent=2)
            fh.write("\n")


if __name__ == "__main__":
    main()
