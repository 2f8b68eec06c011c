"""The pretrained backbone: YAMNet, a MobileNet v1 trained on AudioSet's two
million clips (521 classes; Apache License 2.0), taken from a TensorFlow
Lite file in a public repository and kept as it is there: 8-bit weights with
one scale per output channel, batch normalisation folded into the biases.

    /usr/bin/python3 tools/classifier/backbone.py check   # verifies the two copies and the class map

The file is not in this repository; bring the two repositories below in
(git clones at the named commits) under DATA/src/owner+name.
"""
import argparse
import csv
import hashlib
import os
import re
import struct
import sys

import numpy as np

import tflite

DEFAULT_DATA = "/work/data"
# The copy that is converted: per-channel weight scales.
SOURCE = dict(repo="Dhiveej/Aranyadhwani", commit="77db24fcbe31c06f30801c958fb812e6a3d827a7",
              path="yamnet.tflite", sha256="687f226c147a2caab4706fbbab5e9cecb14b9a368264bf61108078b1fddf68f5")
# A second, independent conversion (one scale per tensor) and the class map.
CHECK = dict(repo="Jaskaran197/Speaker-Detector", commit="4ec29b6938f1051fe36b46786f8d486d8b74a38e",
             path="yamnet.tflite", sha256="469be6a3421cbc52cf97e9f2f966cba984198e8e7af9854d68b3e3ebb1e04194")
CLASS_MAP = dict(CHECK, path="yamnet_class_map.csv",
                 sha256="cdf24d193e196d9e95912a2667051ae203e92a2ba09449218ccb40ef787c6df2")

# (kind, stride, output channels) of YAMNet's fourteen blocks; every
# separable block is a 3x3 depthwise then a 1x1 pointwise convolution.
CONV, DEPTHWISE, POINTWISE = 0, 1, 2
BLOCKS = [(CONV, 2, 32)] + [("separable", s, c) for s, c in
                            [(1, 64), (2, 128), (1, 128), (2, 256), (1, 256), (2, 512), (1, 512), (1, 512),
                             (1, 512), (1, 512), (1, 512), (2, 1024), (1, 1024)]]
EMBEDDING = 1024
CLASSES = 521
# AudioSet display names become lower-case snake_case labels; two of the
# tuner's labels are AudioSet's own short names for their classes.
RENAMED = {"Tapping (guitar technique)": "guitar_tapping", "Strum": "guitar_strum"}


def source_path(data, source):
    return os.path.join(data, "src", source["repo"].replace("/", "+"), source["path"])


def checked(data, source):
    path = source_path(data, source)
    if not os.path.exists(path):
        sys.exit(f"backbone: {path} is missing: check out {source['repo']} at {source['commit']} there")
    digest = hashlib.sha256(open(path, "rb").read()).hexdigest()
    if digest != source["sha256"]:
        sys.exit(f"backbone: {path} has sha256 {digest}, expected {source['sha256']}")
    return path


def label(display_name):
    return RENAMED.get(display_name) or re.sub(r"[^a-z0-9]+", "_", display_name.lower()).strip("_")


def class_labels(data=DEFAULT_DATA):
    with open(checked(data, CLASS_MAP), newline="") as f:
        rows = list(csv.reader(f))[1:]
    if [int(r[0]) for r in rows] != list(range(CLASSES)):
        sys.exit("backbone: the class map is not the 521 classes in order")
    return [label(r[2]) for r in rows]


def dequantized(tensor):
    data = tensor["data"]
    if tensor["type"] == tflite.FLOAT32:
        return data.astype(np.float32)
    scale, zero = tensor["scale"], tensor["zero"]
    shape = [1] * data.ndim
    if len(scale) > 1:
        shape[tensor["qdim"]] = len(scale)
    return (data.astype(np.float32) - zero.reshape(shape)) * scale.reshape(shape)


class Layer:
    """One convolution or the classifier, with its weights as stored: int8
    with one scale per output channel (`scales`), or float32 (`scales` None).
    Weight layouts: convolution [out][row][column][in], depthwise
    [row][column][channel], pointwise and dense [out][in]."""

    def __init__(self, kind, stride, weights, scales, bias):
        self.kind, self.stride, self.weights, self.scales, self.bias = kind, stride, weights, scales, bias

    def float_weights(self):
        if self.scales is None:
            return self.weights.astype(np.float32)
        axis = 2 if self.kind == DEPTHWISE else 0
        shape = [1] * self.weights.ndim
        shape[axis] = len(self.scales)
        return self.weights.astype(np.float32) * self.scales.reshape(shape)


def _as_layer(kind, stride, tensor, bias):
    """Keeps 8-bit weights 8-bit, with one scale per output channel; a
    per-tensor scale is repeated per channel."""
    data = tensor["data"]
    if kind == DEPTHWISE:
        data = data.reshape(data.shape[1:])          # (1, 3, 3, C) -> (3, 3, C)
    elif kind == POINTWISE:
        data = data.reshape(data.shape[0], -1)       # (O, 1, 1, I) -> (O, I)
    if tensor["type"] == tflite.FLOAT32:
        return Layer(kind, stride, data.astype(np.float32), None, bias)
    if np.any(tensor["zero"] != 0) or tensor["type"] != tflite.INT8:
        sys.exit("backbone: expected symmetric 8-bit weights")
    channels = data.shape[-1] if kind == DEPTHWISE else data.shape[0]
    scales = np.broadcast_to(tensor["scale"], (channels,)).astype(np.float32)
    return Layer(kind, stride, data.astype(np.int8), scales, bias)


def read_layers(path):
    """YAMNet's convolutions in order, then its classifier, from a TFLite file."""
    model = tflite.read(path)
    tensors = model["tensors"]
    made_by = {out: op for op in model["ops"] for out in op["outputs"]}

    def stored(index):
        # Some converters store 8-bit depthwise weights behind a DEQUANTIZE operator.
        op = made_by.get(index)
        if tensors[index]["data"] is None and op is not None and op["code"] == tflite.DEQUANTIZE:
            return tensors[op["inputs"][0]]
        return tensors[index]

    layers = []
    for op in model["ops"]:
        weights = stored(op["inputs"][1]) if len(op["inputs"]) > 1 else None
        if op["code"] == tflite.CONV_2D:
            padding, stride, _, activation = op["options"]
            kind = CONV if weights["shape"][1] == 3 else POINTWISE
        elif op["code"] == tflite.DEPTHWISE_CONV_2D:
            padding, stride, _, multiplier, activation = op["options"]
            kind = DEPTHWISE
            if multiplier != 1:
                sys.exit("backbone: expected a depth multiplier of 1")
        elif op["code"] == tflite.FULLY_CONNECTED and weights["shape"] == (CLASSES, EMBEDDING):
            padding, stride, activation, kind = tflite.SAME, 1, tflite.RELU, None
        else:
            continue
        if padding != tflite.SAME or activation != tflite.RELU and kind is not None:
            sys.exit("backbone: expected SAME padding and ReLU after every convolution")
        bias = tensors[op["inputs"][2]]["data"].astype(np.float32)
        layers.append(_as_layer(POINTWISE if kind is None else kind, stride, weights, bias))
    shapes = [(l.kind, l.stride, len(l.bias)) for l in layers[:-1]]
    expected = []
    for kind, stride, channels in BLOCKS:
        if kind == CONV:
            expected.append((CONV, stride, channels))
        else:
            expected += [(DEPTHWISE, stride, expected[-1][2]), (POINTWISE, 1, channels)]
    if shapes != expected or layers[-1].weights.shape != (CLASSES, EMBEDDING):
        sys.exit(f"backbone: {path} is not YAMNet's network")
    return layers


def load(data=DEFAULT_DATA):
    return read_layers(checked(data, SOURCE))


def torch_model(layers):
    """YAMNet in PyTorch with the stored weights, for embeddings in bulk.
    forward(windows: N x 96 x 64 log-mel) -> (embeddings N x 1024, logits N x 521)."""
    import torch
    import torch.nn.functional as F

    class YamNet(torch.nn.Module):
        def __init__(self):
            super().__init__()
            self.specs = []
            self.weights = torch.nn.ParameterList()
            self.biases = torch.nn.ParameterList()
            for layer in layers:
                w = torch.from_numpy(layer.float_weights().copy())
                if layer.kind == CONV:
                    w = w.permute(0, 3, 1, 2)               # OHWI -> OIHW
                elif layer.kind == DEPTHWISE:
                    w = w.permute(2, 0, 1).unsqueeze(1)     # HWC -> C1HW
                elif w.shape != (CLASSES, EMBEDDING):
                    w = w[:, :, None, None]
                self.specs.append((layer.kind, layer.stride))
                self.weights.append(torch.nn.Parameter(w.contiguous(), requires_grad=False))
                self.biases.append(torch.nn.Parameter(torch.from_numpy(layer.bias.copy()), requires_grad=False))

        def features(self, x, first=0, last=None):
            """Runs layers [first, last) on x (N x C x H x W)."""
            last = len(self.specs) - 1 if last is None else last
            for i in range(first, last):
                kind, stride = self.specs[i]
                w, b = self.weights[i], self.biases[i]
                if kind == POINTWISE:
                    x = F.conv2d(x, w, b)
                else:
                    x = F.conv2d(same_padding(x, stride), w, b, stride=stride,
                                 groups=x.shape[1] if kind == DEPTHWISE else 1)
                x = F.relu(x)
            return x

        def forward(self, windows):
            # Channels last: PyTorch's depthwise convolutions run twice as fast so.
            x = self.features(windows[:, None, :, :].contiguous(memory_format=torch.channels_last))
            embeddings = x.mean(dim=(2, 3))
            return embeddings, F.linear(embeddings, self.weights[-1], self.biases[-1])

    def same_padding(x, stride):
        # TensorFlow's SAME: the output is ceil(size / stride); an odd total
        # padding puts the extra row or column at the end.
        pads = []
        for size in (x.shape[3], x.shape[2]):
            total = max((-(-size // stride) - 1) * stride + 3 - size, 0)
            pads += [total // 2, total - total // 2]
        return F.pad(x, pads)

    return YamNet().eval().to(memory_format=torch.channels_last)


# The weight file (src/classify/model/sounds.bin), little-endian:
#   "VLTS", u32 version 2
#   front end: u32 sampleRate windowLength hopLength fftLength melBands patchFrames patchHopFrames,
#              f32 melMinHz melMaxHz logOffset
#   u32 label count, each label u32 length + UTF-8 bytes
#   u32 backbone layer count, each: u32 kind (0 conv 3x3, 1 depthwise 3x3, 2 pointwise),
#       u32 stride, u32 inputs, u32 outputs, u32 encoding (0 float32, 1 int8 + f32 scale per output),
#       [f32 scales], weights, f32 bias[outputs]
#   the classifier: u32 outputs (= labels), u32 inputs (= last layer's outputs), u32 encoding,
#       [f32 scales], weights, f32 bias
#   head: u32 category count, each: u32 label count + u32 label indices;
#       u32 context windows; u32 head input kind (0 embedding, 1 embedding and classifier logits);
#       u32 dense layer count, each: u32 outputs, u32 inputs, f32 weights, f32 bias
#       (ReLU between layers; the last gives one calibrated logit per category)
VERSION = 2


def _u32(*values):
    return struct.pack(f"<{len(values)}I", *values)


def _layer_bytes(layer, inputs, outputs):
    out = [_u32(layer.kind, layer.stride, inputs, outputs, 0 if layer.scales is None else 1)]
    if layer.scales is not None:
        out.append(layer.scales.astype("<f4").tobytes())
        out.append(layer.weights.astype(np.int8).tobytes())
    else:
        out.append(layer.weights.astype("<f4").tobytes())
    out.append(layer.bias.astype("<f4").tobytes())
    return b"".join(out)


def write_model(path, front_end, labels, layers, categories, context, head_input, head_layers):
    """front_end: the ten values in file order; categories: lists of label
    indices; head_layers: [(weights outputs x inputs, bias)]."""
    parts = [b"VLTS", _u32(VERSION), _u32(*front_end[:7]), struct.pack("<3f", *front_end[7:])]
    parts.append(_u32(len(labels)))
    for name in labels:
        encoded = name.encode()
        parts += [_u32(len(encoded)), encoded]
    parts.append(_u32(len(layers) - 1))
    channels = 1
    for layer in layers[:-1]:
        outputs = len(layer.bias)
        parts.append(_layer_bytes(layer, channels, outputs))
        channels = outputs
    classifier = layers[-1]
    parts.append(_u32(classifier.weights.shape[0], classifier.weights.shape[1]))
    # The layer record less its kind, stride and sizes, which are the classifier's.
    parts.append(_layer_bytes(classifier, channels, classifier.weights.shape[0])[16:])
    parts.append(_u32(len(categories)))
    for members in categories:
        parts.append(_u32(len(members), *members))
    parts.append(_u32(context, head_input, len(head_layers)))
    for weights, bias in head_layers:
        parts.append(_u32(*weights.shape))
        parts += [np.asarray(weights, "<f4").tobytes(), np.asarray(bias, "<f4").tobytes()]
    with open(path, "wb") as f:
        f.write(b"".join(parts))


def check(data):
    """The two conversions come from the same weights (they differ by at
    most one quantisation step), and the classes mean what their names say."""
    import features
    import synth
    import torch
    ours, theirs = load(data), read_layers(checked(data, CHECK))
    for i, (a, b) in enumerate(zip(ours, theirs)):
        step = max(np.max(a.scales) if a.scales is not None else 0, np.max(b.scales) if b.scales is not None else 0)
        worst = np.max(np.abs(a.float_weights() - b.float_weights()))
        if worst > step * 1.01 + 1e-6 or np.max(np.abs(a.bias - b.bias)) > 1e-5:
            sys.exit(f"backbone: the two copies differ in layer {i} by {worst}")
    labels = class_labels(data)
    net = torch_model(ours)
    rng = np.random.default_rng(0)
    seconds = features.PATCH_SAMPLES / features.SAMPLE_RATE
    sounds = {"speech": synth.speech(rng, (["en"], ["m1"]), seconds=3.0),
              "silence": np.zeros(features.PATCH_SAMPLES),
              "white_noise": 0.3 * rng.standard_normal(features.PATCH_SAMPLES)}
    # AudioSet's noises are close kin (white, pink, static): the expected
    # class must be among the three best.
    for expected, audio in sounds.items():
        window = features.log_mel(np.asarray(audio)[:features.PATCH_SAMPLES])[None, :features.PATCH_FRAMES]
        with torch.no_grad():
            _, logits = net(torch.from_numpy(window.astype(np.float32)))
        best = [labels[int(i)] for i in torch.argsort(logits[0], descending=True)[:3]]
        print(f"{expected}: heard as {', '.join(best)}")
        if expected not in best:
            sys.exit(f"backbone: {expected} is heard as {best[0]}")
    print(f"backbone: both copies agree; {len(labels)} classes check out ({seconds:.3f} s windows)")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("command", choices=["check"])
    parser.add_argument("--data", default=DEFAULT_DATA)
    args = parser.parse_args()
    check(args.data)


if __name__ == "__main__":
    main()


def sigmoid(x):
    return 1.0 / (1.0 + np.exp(-x))


def head_scores(embeddings, logits, categories, context, head_input, head_layers):
    """What the C++ classifier answers for consecutive windows of one stream
    (rows of `embeddings` and `logits`): one confidence per label. The head
    sees the mean of the last `context` windows (fewer at the start); each
    category's calibrated confidence goes to the member label that the
    backbone scores highest, and caps the other members, so that a category
    opens the gate exactly when its calibrated confidence does."""
    scores = sigmoid(logits.astype(np.float64))
    out = scores.copy()
    for n in range(len(embeddings)):
        first = max(0, n - context + 1)
        x = embeddings[first:n + 1].mean(axis=0)
        if head_input == 1:
            x = np.concatenate([x, logits[first:n + 1].mean(axis=0)])
        x = x.astype(np.float64)
        for i, (weights, bias) in enumerate(head_layers):
            x = weights @ x + bias
            if i + 1 < len(head_layers):
                x = np.maximum(x, 0.0)
        for members, confidence in zip(categories, sigmoid(x)):
            best = max(members, key=lambda j: scores[n, j])
            for j in members:
                out[n, j] = confidence if j == best else min(scores[n, j], confidence)
    return out
