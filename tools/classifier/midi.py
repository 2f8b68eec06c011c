"""A minimal Standard MIDI File writer: one track, enough for rendering."""
import struct

TICKS_PER_SECOND = 960  # 480 ticks per quarter at the default 120 bpm


def _vlq(value):
    out = [value & 0x7F]
    value >>= 7
    while value:
        out.append((value & 0x7F) | 0x80)
        value >>= 7
    return bytes(reversed(out))


class MidiFile:
    def __init__(self):
        self._events = []  # (tick, order, bytes): order keeps simultaneous events stable

    def _add(self, seconds, data):
        self._events.append((int(round(seconds * TICKS_PER_SECOND)), len(self._events), bytes(data)))

    def program(self, t, channel, program):
        self._add(t, [0xC0 | channel, program])

    def control(self, t, channel, number, value):
        self._add(t, [0xB0 | channel, number, value])

    def note(self, t, duration, channel, key, velocity):
        self._add(t, [0x90 | channel, key, velocity])
        self._add(t + duration, [0x80 | channel, key, 0])

    def bend(self, t, channel, value):
        """value from -1 to 1 of the channel's bend range."""
        raw = max(0, min(16383, int(round(8192 + value * 8191))))
        self._add(t, [0xE0 | channel, raw & 0x7F, raw >> 7])

    def bend_range(self, t, channel, semitones):
        for number, value in ((101, 0), (100, 0), (6, semitones), (38, 0), (101, 127), (100, 127)):
            self.control(t, channel, number, value)

    def write(self, path):
        track = bytearray()
        last = 0
        for tick, _, data in sorted(self._events):
            track += _vlq(tick - last) + data
            last = tick
        track += _vlq(0) + b"\xff\x2f\x00"
        with open(path, "wb") as f:
            f.write(b"MThd" + struct.pack(">IHHH", 6, 0, 1, TICKS_PER_SECOND // 2))
            f.write(b"MTrk" + struct.pack(">I", len(track)) + bytes(track))
