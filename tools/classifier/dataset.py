"""Renders, augments and cuts the training material into labelled log-mel
windows. Used by train.py (training set) and evaluate.py (held-out set)."""
import os
import subprocess
from concurrent.futures import ProcessPoolExecutor

import numpy as np
from scipy.io import wavfile

import augment
import features
import sources
import synth

RENDER_RATE = 48000
SLOTS_PER_FILE = 600
WINDOW_SECONDS = features.PATCH_SAMPLES / features.SAMPLE_RATE


def render(midi_path, soundfont, wav_path):
    subprocess.run(["fluidsynth", "-ni", "-q", "-R", "0", "-C", "0", "-g", "0.6", "-r", str(RENDER_RATE),
                    "-F", wav_path, soundfont, midi_path], check=True, stdout=subprocess.DEVNULL)
    rate, data = wavfile.read(wav_path)
    assert rate == RENDER_RATE
    return data.astype(np.float32).mean(axis=1) / 32768.0


def _window_start(rng, slot_start, sounding):
    onset = slot_start + sources.ONSET_SECONDS
    last = max(onset - 0.15, onset + sounding - WINDOW_SECONDS + 0.1)
    return float(np.clip(rng.uniform(onset - 0.15, last), slot_start, slot_start + sources.SLOT_SECONDS - WINDOW_SECONDS))


def _cut(audio, start_seconds):
    first = int(round(start_seconds * features.SAMPLE_RATE))
    return audio[first:first + features.PATCH_SAMPLES]


def _patch(audio):
    return features.log_mel(audio).astype(np.float16)


class Batch:
    def __init__(self):
        self.x, self.y, self.groups, self.categories = [], [], [], []

    def add(self, audio, labels, group, category):
        assert len(audio) == features.PATCH_SAMPLES
        self.x.append(_patch(audio))
        self.y.append(sources.label_vector(labels))
        self.groups.append(group)
        self.categories.append(category or "")

    def extend(self, other):
        for name in ("x", "y", "groups", "categories"):
            getattr(self, name).extend(getattr(other, name))


def soundfont_task(args):
    """Renders one plan chunk and cuts `windows` augmented windows from each slot."""
    plan, soundfont, seed, work, windows, augmented, speech_pool = args
    rng = np.random.default_rng(seed)
    midi, slots = sources.build_midi(plan, rng)
    base = os.path.join(work, f"chunk-{seed}")
    midi.write(base + ".mid")
    audio = render(base + ".mid", soundfont, base + ".wav")
    os.remove(base + ".wav")
    out = Batch()
    slot_samples = int(sources.SLOT_SECONDS * RENDER_RATE)
    for slot in slots:
        first = int(slot.start * RENDER_RATE)
        clip = features.resample(audio[first:first + slot_samples], RENDER_RATE)
        if np.max(np.abs(clip)) < 1e-4:
            continue  # the soundfont has no sample for this note
        for _ in range(windows):
            start = _window_start(rng, 0.0, slot.sounding)
            labels, mixed = slot.labels, clip
            if speech_pool is not None and rng.random() < 0.12:
                # Tuning while someone talks: both are present, both are labelled.
                talk = speech_pool[int(rng.integers(len(speech_pool)))]
                offset = int(rng.integers(0, len(talk) - len(clip)))
                talk = talk[offset:offset + len(clip)]
                mixed = clip + augment.at_level(talk, 20 * np.log10(augment._rms(clip)) + rng.uniform(-10, 3))
                labels = labels + ["speech"]
            if augmented:
                mixed = _augment(augmented, rng, mixed, speech_pool)
            out.add(_cut(mixed, start), labels, slot.group, slot.category)
    return out


def _augment(chain, rng, x, chatter=None):
    """True or "acoustic": the evaluations' chain; "realistic": the wider one
    that train.py --with-recordings uses."""
    return augment.realistic(rng, x, chatter) if chain == "realistic" else augment.acoustic(rng, x)


def speech_task(args):
    voices, utterances, windows, seed, *chain = args
    rng, out = np.random.default_rng(seed), Batch()
    for _ in range(utterances):
        talk = synth.speech(rng, voices)
        loud = augment._rms(talk)
        for _ in range(windows):
            for _attempt in range(10):  # skip the pauses between words
                first = int(rng.integers(0, max(1, len(talk) - features.PATCH_SAMPLES)))
                piece = talk[first:first + features.PATCH_SAMPLES]
                if len(piece) == features.PATCH_SAMPLES and augment._rms(piece) > 0.3 * loud:
                    out.add(_augment(chain[0] if chain else True, rng, piece), ["speech"], "speech", None)
                    break
    return out


def synthetic_task(args):
    kind, count, seed, *chain = args
    chain = chain[0] if chain else True
    rng, out, n = np.random.default_rng(seed), Batch(), features.PATCH_SAMPLES
    for _ in range(count):
        if kind == "noise":
            out.add(augment.at_level(synth.noise(rng, n), rng.uniform(-65, -12)), ["noise"], "noise", None)
        elif kind == "silence":
            out.add(synth.silence(rng, n), ["silence"], "silence", None)
        elif kind == "whistle":
            out.add(_augment(chain, rng, synth.whistle(rng, n)), ["whistling"], "synthetic_whistle", "voice")
        elif kind == "hum":
            out.add(_augment(chain, rng, synth.hum(rng, n)), ["humming"], "synthetic_hum", "voice")
    return out


def speech_clips(rng, count, voices):
    return [synth.speech(rng, voices, seconds=6.0) for _ in range(count)]


def run(tasks, workers=2):
    """Runs (function, args) tasks in parallel; results in task order."""
    total = Batch()
    with ProcessPoolExecutor(workers) as pool:
        for batch in pool.map(_call, tasks):
            total.extend(batch)
    return total


def _call(task):
    function, args = task
    return function(args)


def chunked(plan, size=SLOTS_PER_FILE):
    return [plan[i:i + size] for i in range(0, len(plan), size)]


def save(path, batch):
    np.savez(path, x=np.stack(batch.x), y=np.stack(batch.y), groups=np.array(batch.groups),
             categories=np.array(batch.categories))
