"""What the classifier hears in training: the label set, the General MIDI
programs that stand for each kind of sound, and the playing styles that are
rendered from them."""
import numpy as np

from midi import MidiFile

# AudioSet class names in lower-case snake_case. The first thirteen are the
# labels the tuner's gate accepts; the rest exist so that what must not open
# the gate has somewhere better to go.
CLASSES = [
    "guitar", "electric_guitar", "bass_guitar", "acoustic_guitar",
    "steel_guitar_slide_guitar", "guitar_tapping", "guitar_strum",
    "violin_fiddle", "piano", "electric_piano", "singing", "humming", "whistling",
    "music", "musical_instrument", "plucked_string_instrument", "bowed_string_instrument",
    "keyboard_musical", "cello", "double_bass", "harp", "banjo", "sitar", "zither",
    "harpsichord", "organ", "accordion", "harmonica", "mallet_percussion",
    "brass_instrument", "trumpet", "trombone", "french_horn",
    "wind_instrument_woodwind_instrument", "flute", "clarinet", "saxophone", "oboe", "bassoon",
    "synthesizer", "choir", "drum", "drum_kit", "percussion", "timpani",
    "speech", "noise", "silence",
]

ACCEPTED = {
    "guitar": CLASSES[0:7],
    "violin": ["violin_fiddle"],
    "piano": ["piano", "electric_piano"],
    "voice": ["singing", "humming", "whistling"],
}

INSTRUMENT = ["music", "musical_instrument"]
GUITAR = INSTRUMENT + ["plucked_string_instrument", "guitar"]
KEYS = INSTRUMENT + ["keyboard_musical"]
WIND = INSTRUMENT + ["wind_instrument_woodwind_instrument"]
BRASS = INSTRUMENT + ["brass_instrument"]


class Program:
    def __init__(self, number, name, labels, low, high, styles, accepted):
        self.number, self.name, self.labels = number, name, labels
        self.low, self.high, self.styles = low, high, styles
        self.accepted = accepted  # gate category or None


# (GM program 0-127, name, labels, key range, styles, gate category)
PROGRAMS = [Program(*p) for p in [
    (0, "grand_piano", KEYS + ["piano"], 28, 100, ("note", "phrase", "chord"), "piano"),
    (1, "bright_piano", KEYS + ["piano"], 28, 100, ("note", "phrase", "chord"), "piano"),
    (2, "electric_grand", KEYS + ["piano", "electric_piano"], 36, 96, ("note", "phrase", "chord"), "piano"),
    (3, "honky_tonk", KEYS + ["piano"], 36, 96, ("note", "phrase"), "piano"),
    (4, "rhodes", KEYS + ["piano", "electric_piano"], 36, 96, ("note", "phrase", "chord"), "piano"),
    (5, "fm_piano", KEYS + ["piano", "electric_piano"], 36, 96, ("note", "phrase", "chord"), "piano"),
    (24, "nylon_guitar", GUITAR + ["acoustic_guitar"], 40, 84, ("note", "phrase", "strum", "slide"), "guitar"),
    (25, "steel_guitar", GUITAR + ["acoustic_guitar"], 40, 84, ("note", "phrase", "strum", "slide"), "guitar"),
    (26, "jazz_guitar", GUITAR + ["electric_guitar"], 40, 84, ("note", "phrase", "strum", "slide", "tapping"), "guitar"),
    (27, "clean_guitar", GUITAR + ["electric_guitar"], 40, 86, ("note", "phrase", "strum", "slide", "tapping"), "guitar"),
    (28, "muted_guitar", GUITAR + ["electric_guitar"], 40, 76, ("note", "phrase"), "guitar"),
    (29, "overdrive_guitar", GUITAR + ["electric_guitar"], 40, 86, ("note", "phrase", "strum", "slide", "tapping"), "guitar"),
    (30, "distortion_guitar", GUITAR + ["electric_guitar"], 40, 86, ("note", "phrase", "slide", "tapping"), "guitar"),
    (32, "acoustic_bass", GUITAR + ["bass_guitar"], 28, 60, ("note", "phrase", "slide"), "guitar"),
    (33, "finger_bass", GUITAR + ["bass_guitar"], 28, 64, ("note", "phrase", "slide"), "guitar"),
    (34, "pick_bass", GUITAR + ["bass_guitar"], 28, 64, ("note", "phrase"), "guitar"),
    (35, "fretless_bass", GUITAR + ["bass_guitar"], 28, 64, ("note", "phrase", "slide"), "guitar"),
    (40, "violin", INSTRUMENT + ["bowed_string_instrument", "violin_fiddle"], 55, 100, ("note", "phrase"), "violin"),
    (52, "choir_aahs", ["music", "singing", "choir"], 48, 79, ("note", "phrase", "chord"), "voice"),
    (53, "voice_oohs", ["music", "humming"], 45, 79, ("note", "phrase"), "voice"),
    (78, "whistle", ["whistling"], 72, 96, ("note", "phrase"), "voice"),
    # Everything below must be rejected by every gate category.
    (6, "harpsichord", KEYS + ["harpsichord"], 36, 89, ("note", "phrase"), None),
    (8, "celesta", INSTRUMENT + ["mallet_percussion"], 60, 96, ("note", "phrase"), None),
    (11, "vibraphone", INSTRUMENT + ["mallet_percussion"], 53, 89, ("note", "phrase"), None),
    (12, "marimba", INSTRUMENT + ["mallet_percussion"], 45, 96, ("note", "phrase"), None),
    (16, "drawbar_organ", KEYS + ["organ"], 36, 96, ("note", "phrase", "chord"), None),
    (19, "church_organ", KEYS + ["organ"], 36, 96, ("note", "chord"), None),
    (21, "accordion", KEYS + ["accordion"], 53, 89, ("note", "phrase"), None),
    (22, "harmonica", INSTRUMENT + ["harmonica"], 60, 84, ("note", "phrase"), None),
    (42, "cello", INSTRUMENT + ["bowed_string_instrument", "cello"], 36, 76, ("note", "phrase"), None),
    (43, "contrabass", INSTRUMENT + ["bowed_string_instrument", "double_bass"], 28, 60, ("note", "phrase"), None),
    (46, "harp", INSTRUMENT + ["plucked_string_instrument", "harp"], 36, 96, ("note", "phrase"), None),
    (47, "timpani", INSTRUMENT + ["percussion", "drum", "timpani"], 40, 55, ("note", "phrase"), None),
    (56, "trumpet", BRASS + ["trumpet"], 55, 82, ("note", "phrase"), None),
    (57, "trombone", BRASS + ["trombone"], 40, 72, ("note", "phrase"), None),
    (60, "french_horn", BRASS + ["french_horn"], 41, 77, ("note", "phrase"), None),
    (61, "brass_section", BRASS, 48, 80, ("note", "chord"), None),
    (65, "alto_sax", WIND + ["saxophone"], 49, 81, ("note", "phrase"), None),
    (66, "tenor_sax", WIND + ["saxophone"], 44, 76, ("note", "phrase"), None),
    (68, "oboe", WIND + ["oboe"], 58, 91, ("note", "phrase"), None),
    (70, "bassoon", WIND + ["bassoon"], 34, 72, ("note", "phrase"), None),
    (71, "clarinet", WIND + ["clarinet"], 50, 91, ("note", "phrase"), None),
    (73, "flute", WIND + ["flute"], 60, 96, ("note", "phrase"), None),
    (80, "square_lead", INSTRUMENT + ["synthesizer"], 48, 84, ("note", "phrase"), None),
    (81, "saw_lead", INSTRUMENT + ["synthesizer"], 48, 84, ("note", "phrase"), None),
    (88, "new_age_pad", INSTRUMENT + ["synthesizer"], 48, 84, ("note", "chord"), None),
    (104, "sitar", INSTRUMENT + ["plucked_string_instrument", "sitar"], 48, 77, ("note", "phrase"), None),
    (105, "banjo", INSTRUMENT + ["plucked_string_instrument", "banjo"], 48, 79, ("note", "phrase"), None),
    (107, "koto", INSTRUMENT + ["plucked_string_instrument", "zither"], 55, 84, ("note", "phrase"), None),
]]

DRUM_LABELS = INSTRUMENT + ["percussion", "drum", "drum_kit"]
DRUM_KITS = [0, 8, 16, 24, 25, 32, 40, 48]
STYLE_LABELS = {"strum": ["guitar_strum"], "slide": ["steel_guitar_slide_guitar"], "tapping": ["guitar_tapping"]}

SLOT_SECONDS = 2.5   # one musical gesture per slot; the rest lets it ring out
ONSET_SECONDS = 0.05
SUSTAIN_SECONDS = 2.2
CHORD_SHAPES = [(0, 7, 12, 16, 19, 24), (0, 7, 12, 15, 19, 24), (0, 7, 12), (0, 7, 10, 16, 19),
                (0, 5, 10, 15, 19, 24), (0, 4, 7, 12, 16), (0, 3, 7, 12, 15)]


def label_vector(labels):
    v = np.zeros(len(CLASSES), np.float32)
    for name in labels:
        v[CLASSES.index(name)] = 1.0
    return v


def _key(rng, program):
    return int(rng.integers(program.low, program.high + 1))


def _slot_setup(midi, t, rng, channel, program_number, vibrato):
    midi.control(t, channel, 123, 0)
    midi.program(t, channel, program_number)
    midi.bend_range(t, channel, 12)
    midi.control(t, channel, 7, 110)
    midi.control(t, channel, 11, int(rng.integers(70, 128)))
    midi.control(t, channel, 1, int(rng.integers(0, 60)) if vibrato else 0)
    # A small detune: instruments are rarely tuned exactly when they need a tuner.
    midi.bend(t, channel, rng.uniform(-0.6, 0.6) / 12.0)


def _note(midi, t, rng, p):
    duration = rng.uniform(0.9, 1.9)
    midi.note(t, duration, 0, _key(rng, p), int(rng.integers(45, 128)))
    return duration


def _sustain(midi, t, rng, p):
    """A long held note: what a player gives a tuner."""
    midi.note(t, SUSTAIN_SECONDS, 0, _key(rng, p), int(rng.integers(60, 128)))
    return SUSTAIN_SECONDS


def _phrase(midi, t, rng, p):
    duration, key = rng.uniform(1.4, 1.9), _key(rng, p)
    end = t + duration
    while t < end - 0.1:
        step = min(rng.uniform(0.12, 0.5), end - t)
        midi.note(t, step * rng.uniform(0.8, 1.05), 0, key, int(rng.integers(45, 128)))
        key = int(np.clip(key + rng.integers(-5, 6), p.low, p.high))
        t += step
    return duration


def _chord(midi, t, rng, p):
    duration, root = rng.uniform(0.9, 1.9), int(rng.integers(p.low, max(p.low + 1, p.high - 12)))
    for interval in rng.choice([0, 3, 4, 7, 10, 12], size=int(rng.integers(2, 5)), replace=False):
        midi.note(t, duration, 0, min(p.high, root + int(interval)), int(rng.integers(45, 120)))
    return duration


def _strum(midi, t, rng, p):
    duration = rng.uniform(1.2, 1.9)
    end = t + duration
    strums = int(rng.integers(1, 5))
    shape = CHORD_SHAPES[int(rng.integers(len(CHORD_SHAPES)))]
    root = int(rng.integers(40, 58))
    strings = [root + i for i in shape][: int(rng.integers(3, len(shape) + 1))]
    length = (end - t) / strums
    for s in range(strums):
        start, order = t + s * length, strings if s % 2 == 0 else strings[::-1]
        gap, velocity = rng.uniform(0.008, 0.04), int(rng.integers(50, 128))
        for i, key in enumerate(order):
            midi.note(start + i * gap, length - i * gap, 0, key, max(1, velocity - int(rng.integers(0, 15))))
    return duration


def _slide(midi, t, rng, p):
    duration = rng.uniform(1.2, 1.9)
    midi.note(t, duration, 0, int(rng.integers(p.low, p.high - 6)), int(rng.integers(60, 128)))
    bend, when = 0.0, t + rng.uniform(0.15, 0.5)
    for _ in range(int(rng.integers(1, 3))):
        target = float(np.clip(bend + rng.choice([-1, 1]) * rng.integers(2, 8) / 12.0, -0.9, 0.9))
        glide = rng.uniform(0.15, 0.6)
        for step in np.linspace(0, 1, max(2, int(glide / 0.02))):
            midi.bend(when + step * glide, 0, bend + (target - bend) * step)
        bend, when = target, when + glide + rng.uniform(0.1, 0.4)
    return duration


def _tapping(midi, t, rng, p):
    duration, rate = rng.uniform(1.4, 1.9), rng.uniform(8.0, 16.0)
    end = t + duration
    root = int(rng.integers(52, 72))
    pattern = [root + i for i in CHORD_SHAPES[int(rng.integers(len(CHORD_SHAPES)))][:4]]
    i = 0
    while t < end:
        midi.note(t, 1.0 / rate + 0.01, 0, pattern[i % len(pattern)], int(rng.integers(70, 120)))
        t, i = t + 1.0 / rate, i + 1
    return duration


def _drums(midi, t, rng):
    midi.control(t, 9, 123, 0)
    midi.program(t, 9, int(rng.choice(DRUM_KITS)))
    grid = 60.0 / rng.uniform(80, 170) / 4
    for step in range(int(1.9 / grid)):
        for key, chance in ((36, 0.3), (38, 0.2), (42, 0.6), (46, 0.05), (45, 0.07), (49, 0.04), (51, 0.1)):
            if rng.random() < chance:
                midi.note(t + step * grid, grid, 9, key + int(rng.integers(0, 2)) * (key in (36, 38)),
                          int(rng.integers(40, 128)))
    return 1.9


STYLES = {"sustain": _sustain, "note": _note, "phrase": _phrase, "chord": _chord, "strum": _strum, "slide": _slide, "tapping": _tapping}


class Slot:
    def __init__(self, start, sounding, labels, group, category):
        self.start, self.sounding, self.labels = start, sounding, labels
        self.group, self.category = group, category


def build_midi(plan, rng):
    """plan: list of (program or None for drums, style). Returns (MidiFile, slots)."""
    midi, slots = MidiFile(), []
    for i, (program, style) in enumerate(plan):
        t = i * SLOT_SECONDS
        if program is None:
            sounding = _drums(midi, t + ONSET_SECONDS, rng)
            slots.append(Slot(t, sounding, DRUM_LABELS, "drums/pattern", None))
            continue
        vibrato = program.number in (40, 42, 43, 52, 53, 78, 56, 65, 66, 68, 71, 73)
        _slot_setup(midi, t, rng, 0, program.number, vibrato)
        sounding = STYLES[style](midi, t + ONSET_SECONDS, rng, program)
        labels = program.labels + STYLE_LABELS.get(style, [])
        slots.append(Slot(t, sounding, labels, f"{program.name}/{style}", program.accepted))
    return midi, slots
