#!/usr/bin/env python3
"""Writes the fuzz targets' seed corpora under corpus/: a few small, valid
inputs of each kind for libFuzzer to start its mutations from. The sound
model seeds are cut from the shipped weights, so they follow the model file
as it changes: run this again after changing its format.

    tests/fuzz/make-corpus.py
"""
import math
import pathlib
import struct

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent


def write(target, name, data):
    folder = HERE / "corpus" / target
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_bytes(data)


def sine(n, rate, hz=220.0):
    return [math.sin(2 * math.pi * hz * i / rate) for i in range(n)]


def wav(samples, rate, channels=1, fmt="int16"):
    if fmt == "int16":
        code, bits, data = 1, 16, b"".join(struct.pack("<h", int(20000 * s)) for s in samples)
    elif fmt == "uint8":
        code, bits, data = 1, 8, bytes(int(128 + 100 * s) for s in samples)
    else:
        code, bits, data = 3, 32, b"".join(struct.pack("<f", s) for s in samples)
    align = channels * bits // 8
    fmt_chunk = struct.pack("<HHIIHH", code, channels, rate, rate * align, align, bits)
    body = b"WAVE" + b"fmt " + struct.pack("<I", len(fmt_chunk)) + fmt_chunk
    body += b"data" + struct.pack("<I", len(data)) + data
    return b"RIFF" + struct.pack("<I", len(body)) + body


def extended(value):
    """An IEEE 754 80-bit extended float, as AIFF stores its sample rate."""
    exponent = int(math.floor(math.log2(value)))
    mantissa = int(value / 2.0 ** exponent * 2 ** 63)
    return struct.pack(">HQ", exponent + 16383, mantissa)


def aiff(samples, rate):
    data = b"".join(struct.pack(">h", int(20000 * s)) for s in samples)
    comm = struct.pack(">hIh", 1, len(samples), 16) + extended(rate)
    ssnd = struct.pack(">II", 0, 0) + data
    body = b"AIFF" + b"COMM" + struct.pack(">I", len(comm)) + comm
    body += b"SSND" + struct.pack(">I", len(ssnd)) + ssnd
    return b"FORM" + struct.pack(">I", len(body)) + body


# Audio: the formats and corners the reader meets.
write("audio-file", "int16-44100.wav", wav(sine(1024, 44100), 44100))
write("audio-file", "float-48000.wav", wav(sine(512, 48000), 48000, fmt="float"))
write("audio-file", "uint8-stereo-8000.wav", wav(sine(1024, 8000), 8000, channels=2, fmt="uint8"))
write("audio-file", "int16-4000.wav", wav(sine(800, 4000), 4000))
write("audio-file", "float-huge-values.wav", wav([1e30 * s for s in sine(512, 48000)], 48000, fmt="float"))
write("audio-file", "int16-22050.aiff", aiff(sine(1024, 22050), 22050))
write("audio-file", "mpeg-frames.mp3", (bytes([0xFF, 0xFB, 0x90, 0x64]) + bytes(413)) * 4)

# The sound model: the start of the shipped file and a copy cut short.
model = (ROOT / "src" / "classify" / "model" / "sounds.bin").read_bytes()
write("sound-model", "head-4k.bin", model[:4096])
write("sound-model", "cut-short.bin", model[:len(model) // 2][:65536])

# The preference file as the app writes it, and as a user edits it.
write("preference-file", "written.ini", b"[General]\nA4=440\nSharpsOnly=true\nUseML=false\n")
write("preference-file", "edited.ini", b"; mine\r\n[General]\r\nA4 = 442\r\n\r\n[Other]\r\nA4=1\r\n# end")
# As other editors save it: a byte-order mark, names in lower case.
write("preference-file", "bom-crlf-lower-case.ini", b"\xef\xbb\xbf; mine\r\n[general]\r\na4 = 440\r\n[Other]\r\nA4=1\r\n")
write("preference-file", "bom-before-a-key.ini", b"\xef\xbb\xbfLatency=12\n")

# Scala scales: ratios and cents, comments, and ones the tuner refuses.
write("scala", "werckmeister.scl", b"! werck3.scl\n!\nWerckmeister III\n 12\n!\n 256/243\n 192.18000\n 32/27\n"
      b" 390.22500\n 4/3\n 1024/729\n 696.09000\n 128/81\n 888.27000\n 16/9\n 1092.18000\n 2/1\n")
write("scala", "just-crlf.scl", b"Just\r\n12\r\n16/15\r\n9/8\r\n6/5\r\n5/4\r\n4/3\r\n45/32\r\n3/2\r\n8/5\r\n5/3\r\n"
      b"9/5\r\n15/8\r\n2\r\n")
write("scala", "pentatonic.scl", b"Five\n5\n9/8\n5/4\n3/2\n5/3\n2/1\n")
write("scala", "tritave.scl", b"Bohlen-Pierce\n12\n" + b"".join(b"%d.0\n" % (146 * i) for i in range(1, 12)) + b"3/1\n")

# Command lines, their arguments separated by NUL.
for name, line in {
    "analyze.args": ["analyze", "take.wav", "--a4", "442", "--flats", "--json"],
    "report.args": ["report", "take.wav", "-o", "out.html", "--use-ml", "--sounds", "guitar,voice"],
    "tone.args": ["tone", "A", "--octave", "5", "--seconds", "1.5", "-o", "a.wav"],
    "tone-scientific.args": ["tone", "F\u266F3", "-o", "-"],
    "classify.args": ["classify", "take.wav", "--top", "5", "--gate", "violin"],
    "tuning.args": ["analyze", "take.wav", "--temperament", "vallotti", "--tonic", "Eb", "--transpose", "Bb"],
}.items():
    write("options", name, "\0".join(line).encode())
