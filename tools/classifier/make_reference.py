#!/usr/bin/python3
"""Writes the reference files that tie the C++ front end and network to this
code: an input recording, the log-mel frames and the scores computed here.

    /usr/bin/python3 tools/classifier/make_reference.py

Run after every change of the model or the features.
"""
import os

import numpy as np
from scipy.io import wavfile

import features
import model

HERE = os.path.dirname(os.path.abspath(__file__))
OUT_DIR = os.path.join(HERE, "..", "..", "tests", "classify", "data")
# An odd rate exercises the general polyphase path of the resampler.
INPUT_RATE = 22050
INPUT_SECONDS = 1.6


def reference_input():
    """A plucked harmonic tone over a chirp and a little noise, 16-bit."""
    rng = np.random.default_rng(1)
    t = np.arange(int(INPUT_RATE * INPUT_SECONDS)) / INPUT_RATE
    tone = sum(np.sin(2 * np.pi * 196.0 * k * t) / k for k in range(1, 12)) * np.exp(-1.5 * t)
    chirp = 0.2 * np.sin(2 * np.pi * (300 * t + 900 * t * t))
    x = 0.25 * tone + chirp + 0.01 * rng.standard_normal(len(t))
    return np.round(np.clip(x, -1, 1) * 32767).astype(np.int16)


def main():
    os.makedirs(OUT_DIR, exist_ok=True)
    pcm = reference_input()
    wavfile.write(os.path.join(OUT_DIR, "reference_input.wav"), INPUT_RATE, pcm)
    audio = pcm.astype(np.float32) / 32768.0
    frames = features.log_mel(features.resample(audio, INPUT_RATE)).astype(np.float32)
    windows = features.patches(frames).astype(np.float32)
    scores = model.Loaded(os.path.join(model.MODEL_DIR, "sounds.bin")).scores(windows).astype(np.float32)
    frames.astype("<f4").tofile(os.path.join(OUT_DIR, "reference_logmel.f32"))
    scores.astype("<f4").tofile(os.path.join(OUT_DIR, "reference_scores.f32"))
    print(f"{len(frames)} frames, {len(scores)} windows written to {os.path.normpath(OUT_DIR)}")


if __name__ == "__main__":
    main()
