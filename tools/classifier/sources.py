"""The label set of the corpus's windows and the label groups that its
sources share."""
import numpy as np

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
    "speech", "noise", "silence", "sine_wave",
]

INSTRUMENT = ["music", "musical_instrument"]
GUITAR = INSTRUMENT + ["plucked_string_instrument", "guitar"]
KEYS = INSTRUMENT + ["keyboard_musical"]
WIND = INSTRUMENT + ["wind_instrument_woodwind_instrument"]
BRASS = INSTRUMENT + ["brass_instrument"]
DRUM_LABELS = INSTRUMENT + ["percussion", "drum", "drum_kit"]


def label_vector(labels):
    v = np.zeros(len(CLASSES), np.float32)
    for name in labels:
        v[CLASSES.index(name)] = 1.0
    return v
