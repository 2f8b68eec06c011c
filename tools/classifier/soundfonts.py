"""Single notes of General MIDI programs rendered from Debian's soundfonts,
for the corpus's "soundfonts" source (corpus.SOUNDFONT_PROGRAMS labels them).

    /usr/bin/python3 tools/classifier/soundfonts.py [DIR]   # default: /work/data/src/soundfonts

For each soundfont and program, one MIDI file holds NOTES notes spread over
the program's range, each held HOLD seconds and left to ring GAP more;
fluidsynth renders it dry (no reverb, no chorus: the corpus's chain adds
the rooms) and each note becomes DIR/FONT/PROGRAM/NNN.wav (its MIDI note).
A program's folder appears whole or not at all, so an interrupted run
starts again where it stopped. The soundfonts come from Debian's
fluid-soundfont-gm and musescore-general-soundfont-small (MIT) and
timgm6mb-soundfont (GPL 2); tools/install-deps.sh --classifier installs
them with fluidsynth.
"""
import os
import struct
import subprocess
import sys
import tempfile

import numpy as np
import soundfile

FONTS = {"fluidr3": "/usr/share/sounds/sf2/FluidR3_GM.sf2",
         "musescore": "/usr/share/sounds/sf3/MuseScore_General_Lite.sf3",
         "timgm": "/usr/share/sounds/sf2/TimGM6mb.sf2"}
# Program folder: (General MIDI program, lowest and highest MIDI note).
PROGRAMS = {
    "grand": (0, 33, 96), "bright": (1, 33, 96), "electric-grand": (2, 33, 96), "honky-tonk": (3, 33, 96),
    "electric-piano-1": (4, 33, 96), "electric-piano-2": (5, 33, 96),
    "nylon": (24, 40, 84), "steel": (25, 40, 84), "jazz": (26, 40, 84), "clean": (27, 40, 84),
    "muted": (28, 40, 76), "overdriven": (29, 40, 84), "distortion": (30, 40, 84), "bass-finger": (33, 28, 60),
    "violin": (40, 55, 100), "fiddle": (110, 55, 96),
    "choir": (52, 48, 79), "oohs": (53, 48, 79),
    "harpsichord": (6, 36, 88), "clavinet": (7, 36, 84), "celesta": (8, 60, 96), "vibraphone": (11, 53, 89),
    "marimba": (12, 45, 96), "drawbar-organ": (16, 36, 84), "church-organ": (19, 36, 84), "accordion": (21, 48, 84),
    "harmonica": (22, 60, 84), "acoustic-bass": (32, 28, 60), "viola": (41, 48, 88), "cello": (42, 36, 76),
    "contrabass": (43, 28, 60), "pizzicato": (45, 40, 84), "harp": (46, 36, 96), "strings": (48, 40, 88),
    "trumpet": (56, 55, 82), "trombone": (57, 40, 72), "horn": (60, 41, 77), "alto-sax": (65, 49, 80),
    "tenor-sax": (66, 44, 75), "oboe": (68, 58, 91), "clarinet": (71, 50, 91), "flute": (73, 60, 96),
    "recorder": (74, 60, 96), "pan-flute": (75, 60, 96), "sitar": (104, 48, 84), "banjo": (105, 48, 84),
    "shamisen": (106, 50, 84), "koto": (107, 48, 88), "kalimba": (108, 60, 88),
}
NOTES, HOLD, GAP, RATE, SEED = 16, 3.0, 1.5, 22050, 7
TICKS_PER_SECOND = 960  # 480 a quarter note at the default 120 a minute


def _variable_length(n):
    out = [n & 0x7F]
    n >>= 7
    while n:
        out.append(0x80 | (n & 0x7F))
        n >>= 7
    return bytes(reversed(out))


def midi_file(program, notes, velocities):
    """A one-track MIDI file: the program, then each note in turn."""
    events, last = _variable_length(0) + bytes([0xC0, program]), 0
    for i, (note, velocity) in enumerate(zip(notes, velocities)):
        on = int(i * (HOLD + GAP) * TICKS_PER_SECOND)
        off = on + int(HOLD * TICKS_PER_SECOND)
        events += _variable_length(on - last) + bytes([0x90, note, velocity])
        events += _variable_length(off - on) + bytes([0x80, note, 0])
        last = off
    events += _variable_length(int(GAP * TICKS_PER_SECOND)) + b"\xff\x2f\x00"
    return (b"MThd" + struct.pack(">IHHH", 6, 0, 1, 480)
            + b"MTrk" + struct.pack(">I", len(events)) + events)


def render(out):
    rng = np.random.default_rng(SEED)
    for font, path in FONTS.items():
        for name, (program, lowest, highest) in PROGRAMS.items():
            notes = np.unique(np.linspace(lowest, highest, NOTES).round().astype(int))
            velocities = rng.integers(60, 121, len(notes))  # drawn for every program, so each keeps its own
            folder = os.path.join(out, font, name)
            if os.path.isdir(folder):
                continue
            with tempfile.TemporaryDirectory() as work:
                midi, wav = os.path.join(work, "notes.mid"), os.path.join(work, "notes.wav")
                with open(midi, "wb") as f:
                    f.write(midi_file(program, notes, velocities))
                subprocess.run(["fluidsynth", "-ni", "-q", "-g", "0.6", "-R", "0", "-C", "0", "-r", str(RATE),
                                "-F", wav, path, midi], check=True, capture_output=True)
                audio, rate = soundfile.read(wav, dtype="float32", always_2d=True)
            audio = audio.mean(axis=1)
            step = int((HOLD + GAP) * rate)
            os.makedirs(folder + ".part", exist_ok=True)
            for i, note in enumerate(notes):
                piece = audio[i * step:(i + 1) * step]
                if np.max(np.abs(piece), initial=0.0) > 1e-4:  # a program that has no sample there stays silent
                    soundfile.write(os.path.join(folder + ".part", f"{note:03d}.wav"), piece, rate, subtype="PCM_16")
            os.rename(folder + ".part", folder)
            print(f"soundfonts: {font} {name}: {len(os.listdir(folder))} notes", flush=True)


if __name__ == "__main__":
    render(sys.argv[1] if len(sys.argv) > 1 else "/work/data/src/soundfonts")
