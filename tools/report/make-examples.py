#!/usr/bin/env python3
"""Renders the example recordings of docs/report.md, with their truth.

Usage: make-examples.py OUTDIR

Writes, into OUTDIR, mono 48 kHz WAV files and a truth.txt that lists every
note as played (its name and how many cents it was off):
  scale.wav     a C major scale, in tune below G4 and sharp from it up
  vibrato.wav   a melody sung with a 5.5 Hz vibrato of +-25 cents
  guitar.wav    six plucked strings being tuned: off, then closer
  violin.mid    a violin scale with known bends, for fluidsynth to render
Standard library only, so it runs wherever Python does.
"""
import math
import os
import random
import struct
import sys
import wave

RATE = 48000
A4 = 440.0
NAMES = ["C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"]


def key(name):
    """Piano key of a note name such as 'F#4' (A4 = 49)."""
    letter, octave = name[:-1], int(name[-1])
    return NAMES.index(letter) + 12 * octave - 8


def frequency(name, cents):
    return A4 * 2 ** ((key(name) - 49 + cents / 100) / 12)


def write_wav(path, samples):
    peak = max(1e-9, max(abs(s) for s in samples))
    scale = 0.7 / peak
    with wave.open(path, "wb") as w:
        w.setnchannels(1)
        w.setsampwidth(2)
        w.setframerate(RATE)
        w.writeframes(b"".join(struct.pack("<h", int(32767 * s * scale)) for s in samples))


def bowed(notes, vibrato_hz=0.0, vibrato_cents=0.0, gap=0.08, seed=1):
    """A bowed or sung tone per (name, cents, seconds): a few harmonics,
    soft attack and release, a slow random drift of about a cent."""
    rng = random.Random(seed)
    out = [0.0] * int(0.4 * RATE)
    for name, cents, seconds in notes:
        n = int(seconds * RATE)
        phase = 0.0
        drift = 0.0
        for i in range(n):
            t = i / RATE
            drift += (rng.random() - 0.5) * 0.02 - drift * 0.0005
            c = cents + drift + vibrato_cents * math.sin(2 * math.pi * vibrato_hz * t) * min(1.0, t / 0.25)
            phase += 2 * math.pi * frequency(name, c) / RATE
            env = min(1.0, t / 0.04, (seconds - t) / 0.06)
            out.append(env * (math.sin(phase) + 0.5 * math.sin(2 * phase) + 0.3 * math.sin(3 * phase)
                              + 0.15 * math.sin(4 * phase)))
        out.extend([0.0] * int(gap * RATE))
    out.extend([0.0] * int(0.4 * RATE))
    return out


def plucked(strings, seed=2):
    """Karplus-Strong plucks, each (name, cents, seconds), a pause after each."""
    rng = random.Random(seed)
    out = [0.0] * int(0.3 * RATE)
    for name, cents, seconds in strings:
        # The loop delays by its length, less half a sample for the two-point
        # average, plus the all-pass's fraction (kept from 0.1 to 1.1, where
        # its delay is flat enough).
        delay = RATE / frequency(name, cents) + 0.5
        length = int(delay - 0.1)
        fraction = delay - length
        coefficient = (1 - fraction) / (1 + fraction)
        line = [rng.uniform(-1, 1) for _ in range(length)]
        previous_in = previous_out = 0.0
        for i in range(int(seconds * RATE)):
            j = i % length
            averaged = 0.5 * (line[j] + line[(j + 1) % length]) * 0.998
            tuned = coefficient * averaged + previous_in - coefficient * previous_out
            previous_in, previous_out = averaged, tuned
            line[j] = tuned
            out.append(tuned)
        out.extend([0.0] * int(0.5 * RATE))
    return out


SCALE = [("C4", 0), ("D4", 0), ("E4", -2), ("F4", 0), ("G4", 8), ("A4", 12), ("B4", 15), ("C5", 10)]
MELODY = [("E4", 0, 0.5), ("E4", 0, 0.5), ("F4", -8, 0.5), ("G4", -4, 0.5), ("G4", -4, 0.5), ("F4", -8, 0.5),
          ("E4", 0, 0.5), ("D4", 6, 0.5), ("C4", 0, 0.5), ("C4", 0, 0.5), ("D4", 6, 0.5), ("E4", 0, 0.5),
          ("E4", 0, 0.75), ("D4", 6, 0.25), ("D4", 6, 1.2)]
GUITAR = [("E2", -30, 2.0), ("E2", -4, 2.5), ("A2", 18, 2.0), ("A2", 2, 2.5), ("D3", -2, 2.5),
          ("G3", -25, 2.0), ("G3", -6, 2.5), ("B3", 9, 2.5), ("E4", 0, 2.5)]
VIOLIN = [("G3", 0), ("A3", -5), ("B3", 10), ("C4", 0), ("D4", -5), ("E4", 10), ("F#4", 0), ("G4", -5)]


def midi(notes, path, program=40, seconds=0.9, gap=0.1):
    """A one-track MIDI file: each note bent by its cents (bend range 2 semitones)."""
    ticks = 480  # per quarter note at 120 beats a minute: 960 ticks a second
    events = [(0, bytes([0xC0, program]))]

    def delta(value):
        out = [value & 0x7F]
        value >>= 7
        while value:
            out.insert(0, 0x80 | (value & 0x7F))
            value >>= 7
        return bytes(out)

    for name, cents in notes:
        bend = 8192 + round(cents / 200 * 8192)
        number = key(name) + 20  # MIDI 69 is A4
        events.append((0, bytes([0xE0, bend & 0x7F, bend >> 7])))
        events.append((0, bytes([0x90, number, 96])))
        events.append((int(seconds * 2 * ticks), bytes([0x80, number, 0])))
        events.append((int(gap * 2 * ticks), bytes([0xB0, 121, 0])))
    track = b"".join(delta(d) + e for d, e in events) + b"\x00\xff\x2f\x00"
    with open(path, "wb") as f:
        f.write(b"MThd" + struct.pack(">IHHH", 6, 0, 1, ticks))
        f.write(b"MTrk" + struct.pack(">I", len(track)) + track)


def main():
    outdir = sys.argv[1]
    os.makedirs(outdir, exist_ok=True)
    write_wav(os.path.join(outdir, "scale.wav"), bowed([(n, c, 0.7) for n, c in SCALE]))
    write_wav(os.path.join(outdir, "vibrato.wav"), bowed(MELODY, vibrato_hz=5.5, vibrato_cents=25, gap=0.04))
    write_wav(os.path.join(outdir, "guitar.wav"), plucked(GUITAR))
    midi(VIOLIN, os.path.join(outdir, "violin.mid"))
    with open(os.path.join(outdir, "truth.txt"), "w") as f:
        for title, notes in (("scale", SCALE), ("vibrato", MELODY), ("guitar", GUITAR), ("violin", VIOLIN)):
            f.write(title + ": " + ", ".join("%s %+d" % (n[0], n[1]) for n in notes) + "\n")


if __name__ == "__main__":
    main()
