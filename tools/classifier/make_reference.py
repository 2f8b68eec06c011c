#!/usr/bin/python3
"""Writes the reference files that tie the C++ front end, network and head to
this code: an input recording, its log-mel frames, and per window YAMNet's
embedding and logits (backbone.torch_model) and the 521 confidences the
classifier answers (backbone.head_scores), all from the shipped weight file.

    cd tools/classifier && /usr/bin/python3 make_reference.py

Run after every change of the model or the features.
"""
import os
import struct
import sys

import numpy as np
import torch
from scipy.io import wavfile

import backbone
import features

HERE = os.path.dirname(os.path.abspath(__file__))
OUT_DIR = os.path.join(HERE, "..", "..", "tests", "classify", "data")
MODEL = os.path.join(HERE, "..", "..", "src", "classify", "model", "sounds.bin")
# An odd rate exercises the general polyphase path of the resampler.
INPUT_RATE = 22050
# Seven windows: more than the head's context, so that its mean over the
# last windows is exercised once the context is full.
INPUT_SECONDS = 4.0


class _Bytes:
    def __init__(self, data):
        self.data, self.at = data, 0

    def u32(self, count=None):
        values = struct.unpack_from(f"<{count or 1}I", self.data, self.at)
        self.at += 4 * (count or 1)
        return list(values) if count is not None else values[0]

    def array(self, dtype, count, shape=None):
        values = np.frombuffer(self.data, dtype, count, self.at).copy()
        self.at += values.nbytes
        return values.reshape(shape) if shape is not None else values


def _weights(data, kind, stride, inputs, outputs):
    encoding = data.u32()
    shape = {backbone.CONV: (outputs, 3, 3, inputs), backbone.DEPTHWISE: (3, 3, outputs)}.get(kind, (outputs, inputs))
    count = int(np.prod(shape))
    if encoding == 1:
        scales = data.array("<f4", outputs)
        weights = data.array(np.int8, count, shape)
    else:
        scales, weights = None, data.array("<f4", count, shape)
    return backbone.Layer(kind, stride, weights, scales, data.array("<f4", outputs))


def read_model(path):
    """The weight file that backbone.write_model wrote, read back: a dict of
    front_end, labels, layers (backbone.Layer, the classifier last),
    categories, context, head_input and head_layers."""
    data = _Bytes(open(path, "rb").read())
    if data.data[:4] != b"VLTS":
        sys.exit(f"make_reference: {path} is not a Veltra sound model")
    data.at = 4
    if data.u32() != backbone.VERSION:
        sys.exit(f"make_reference: {path} is not version {backbone.VERSION}")
    front_end = data.u32(7) + list(struct.unpack_from("<3f", data.data, data.at))
    data.at += 12
    labels = []
    for _ in range(data.u32()):
        length = data.u32()
        labels.append(data.data[data.at:data.at + length].decode())
        data.at += length
    layers = []
    for _ in range(data.u32()):
        kind, stride, inputs, outputs = data.u32(4)
        layers.append(_weights(data, kind, stride, inputs, outputs))
    outputs, inputs = data.u32(2)
    layers.append(_weights(data, backbone.POINTWISE, 1, inputs, outputs))
    categories = [data.u32(data.u32()) for _ in range(data.u32())]
    context, head_input = data.u32(2)
    head_layers = []
    for _ in range(data.u32()):
        outputs, inputs = data.u32(2)
        head_layers.append((data.array("<f4", outputs * inputs, (outputs, inputs)).astype(np.float64),
                            data.array("<f4", outputs).astype(np.float64)))
    if data.at != len(data.data):
        sys.exit(f"make_reference: {path} has data after the head")
    return dict(front_end=front_end, labels=labels, layers=layers, categories=categories, context=context,
                head_input=head_input, head_layers=head_layers)


def check_backbone(layers):
    """The file's network is YAMNet's as converted from its source, where
    that is at hand."""
    if not os.path.exists(backbone.source_path(backbone.DEFAULT_DATA, backbone.SOURCE)):
        print("make_reference: YAMNet's source file is not here; the file's backbone is used unchecked")
        return
    for i, (ours, source) in enumerate(zip(layers, backbone.load(), strict=True)):
        same = (ours.kind, ours.stride) == (source.kind, source.stride) and np.array_equal(ours.weights, source.weights)
        same = same and np.array_equal(ours.bias, source.bias) and (
            ours.scales is None and source.scales is None or np.array_equal(ours.scales, source.scales))
        if not same:
            sys.exit(f"make_reference: layer {i} of the weight file is not YAMNet's")


def reference_input():
    """A plucked harmonic tone over a chirp and a little noise, 16-bit."""
    rng = np.random.default_rng(1)
    t = np.arange(int(INPUT_RATE * INPUT_SECONDS)) / INPUT_RATE
    tone = sum(np.sin(2 * np.pi * 196.0 * k * t) / k for k in range(1, 12)) * np.exp(-1.5 * t)
    chirp = 0.2 * np.sin(2 * np.pi * (300 * t + 900 * t * t))
    x = 0.25 * tone + chirp + 0.01 * rng.standard_normal(len(t))
    return np.round(np.clip(x, -1, 1) * 32767).astype(np.int16)


def main():
    model = read_model(MODEL)
    check_backbone(model["layers"])
    os.makedirs(OUT_DIR, exist_ok=True)
    pcm = reference_input()
    wavfile.write(os.path.join(OUT_DIR, "reference_input.wav"), INPUT_RATE, pcm)
    audio = pcm.astype(np.float32) / 32768.0
    frames = features.log_mel(features.resample(audio, INPUT_RATE)).astype(np.float32)
    windows = features.patches(frames).astype(np.float32)
    with torch.no_grad():
        embeddings, logits = backbone.torch_model(model["layers"])(torch.from_numpy(windows))
    embeddings, logits = embeddings.numpy(), logits.numpy()
    scores = backbone.head_scores(embeddings, logits, model["categories"], model["context"], model["head_input"],
                                  model["head_layers"])
    outputs = dict(logmel=frames, embeddings=embeddings, logits=logits, scores=scores)
    for name, values in outputs.items():
        values.astype("<f4").tofile(os.path.join(OUT_DIR, f"reference_{name}.f32"))
    print(f"{len(frames)} frames, {len(windows)} windows (context {model['context']}) written to "
          f"{os.path.normpath(OUT_DIR)}")


if __name__ == "__main__":
    main()
