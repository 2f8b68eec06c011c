"""A minimal reader of TensorFlow Lite model files (FlatBuffers): tensors
with their data and quantisation, and operators with their options, enough
to take a convolutional network out of one. Only what backbone.py needs."""
import struct

import numpy as np

# TensorType values, operator codes and option values of the file format.
FLOAT32, INT32, INT8 = 0, 2, 9
DTYPES = {0: np.float32, 1: np.float16, 2: np.int32, 3: np.uint8, 4: np.int64, 7: np.int16, 9: np.int8}
CONV_2D, DEPTHWISE_CONV_2D, DEQUANTIZE, FULLY_CONNECTED = 3, 4, 6, 9
SAME, RELU = 0, 1
# Conv2DOptions: padding, stride_w, stride_h, fused activation.
# DepthwiseConv2DOptions: padding, stride_w, stride_h, depth multiplier, fused activation.
# FullyConnectedOptions: fused activation.
OPTION_FIELDS = {CONV_2D: "biib", DEPTHWISE_CONV_2D: "biiib", FULLY_CONNECTED: "b"}


class Table:
    """One FlatBuffers table: fields by index, absent fields as defaults."""

    def __init__(self, buf, pos):
        self.buf, self.pos = buf, pos
        vtable = pos - struct.unpack_from("<i", buf, pos)[0]
        size = struct.unpack_from("<H", buf, vtable)[0]
        self.offsets = struct.unpack_from(f"<{(size - 4) // 2}H", buf, vtable + 4)

    def _field(self, i):
        return self.offsets[i] if i < len(self.offsets) else 0

    def scalar(self, i, fmt, default=0):
        o = self._field(i)
        return struct.unpack_from("<" + fmt, self.buf, self.pos + o)[0] if o else default

    def _target(self, i):
        o = self._field(i)
        if not o:
            return None
        return self.pos + o + struct.unpack_from("<I", self.buf, self.pos + o)[0]

    def table(self, i):
        p = self._target(i)
        return None if p is None else Table(self.buf, p)

    def string(self, i):
        p = self._target(i)
        if p is None:
            return None
        return self.buf[p + 4:p + 4 + struct.unpack_from("<I", self.buf, p)[0]].decode()

    def vector(self, i, dtype):
        p = self._target(i)
        if p is None:
            return np.zeros(0, dtype)
        return np.frombuffer(self.buf, dtype, struct.unpack_from("<I", self.buf, p)[0], p + 4)

    def tables(self, i):
        p = self._target(i)
        if p is None:
            return []
        items = range(p + 4, p + 4 + 4 * struct.unpack_from("<I", self.buf, p)[0], 4)
        return [Table(self.buf, q + struct.unpack_from("<I", self.buf, q)[0]) for q in items]


def read(path):
    """{tensors: [{name, shape, type, data, scale, zero, qdim}], ops: [{code,
    inputs, outputs, options}], inputs, outputs} of the first subgraph."""
    with open(path, "rb") as f:
        buf = f.read()
    if buf[4:8] != b"TFL3":
        raise ValueError(f"{path}: not a TensorFlow Lite file")
    model = Table(buf, struct.unpack_from("<I", buf, 0)[0])
    # Model: 1 operator codes, 2 subgraphs, 4 buffers. OperatorCode: 0 the
    # old one-byte code, 3 the full code.
    codes = [max(c.scalar(0, "b"), c.scalar(3, "i")) for c in model.tables(1)]
    buffers = [b.vector(0, np.uint8) for b in model.tables(4)]
    graph = model.tables(2)[0]
    tensors = []
    # SubGraph: 0 tensors, 1 inputs, 2 outputs, 3 operators. Tensor: 0 shape,
    # 1 type, 2 buffer, 3 name, 4 quantisation (2 scale, 3 zero point,
    # 6 quantised dimension).
    for t in graph.tables(0):
        shape = tuple(int(s) for s in t.vector(0, np.int32))
        kind = t.scalar(1, "b")
        raw = buffers[t.scalar(2, "I")]
        data = None
        if kind in DTYPES and len(raw):
            data = np.frombuffer(raw.tobytes(), DTYPES[kind]).reshape(shape)
        q = t.table(4)
        tensors.append(dict(name=t.string(3), shape=shape, type=kind, data=data,
                            scale=q.vector(2, np.float32) if q else None,
                            zero=q.vector(3, np.int64) if q else None,
                            qdim=q.scalar(6, "i") if q else 0))
    ops = []
    # Operator: 0 opcode index, 1 inputs, 2 outputs, 4 builtin options.
    for o in graph.tables(3):
        code = codes[o.scalar(0, "I")]
        table = o.table(4)
        fields = OPTION_FIELDS.get(code, "")
        options = tuple(table.scalar(i, f) if table else 0 for i, f in enumerate(fields))
        ops.append(dict(code=code, inputs=list(o.vector(1, np.int32)), outputs=list(o.vector(2, np.int32)),
                        options=options))
    return dict(tensors=tensors, ops=ops, inputs=list(graph.vector(1, np.int32)),
                outputs=list(graph.vector(2, np.int32)))
