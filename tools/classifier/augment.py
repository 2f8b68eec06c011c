"""Acoustic augmentation: what a phone or laptop microphone in a room does
to a recording, so that the corpus's windows sound as the tuner hears them."""
import numpy as np
from scipy.signal import butter, sosfilt, fftconvolve

from features import SAMPLE_RATE
import synth


def _rms(x):
    return float(np.sqrt(np.mean(np.square(x, dtype=np.float64)) + 1e-20))


def change_speed(rng, x):
    """Shifts pitch and tempo together by a few percent."""
    factor = rng.uniform(0.95, 1.05)
    positions = np.arange(0, len(x) - 1, factor)
    return np.interp(positions, np.arange(len(x)), x).astype(np.float32)


def microphone(rng, x):
    if rng.random() < 0.7:
        x = sosfilt(butter(2, rng.uniform(40, 300), btype="high", fs=SAMPLE_RATE, output="sos"), x)
    if rng.random() < 0.5:
        x = sosfilt(butter(2, rng.uniform(3500, 7800), btype="low", fs=SAMPLE_RATE, output="sos"), x)
    # Resonances and dips of the capsule, the case and the instrument's own
    # body: the head must not learn one recording's spectral envelope.
    for _ in range(int(rng.integers(0, 4))):
        centre = rng.uniform(150, 6000)
        band = sosfilt(butter(1, [centre / 1.3, min(7900, centre * 1.3)], btype="band", fs=SAMPLE_RATE,
                              output="sos"), x)
        x = x + rng.uniform(-0.7, 2.0) * band
    return x


def room(rng, x, longest):
    """Convolution with a synthetic impulse response: direct sound plus an
    exponentially decaying diffuse tail."""
    rt60 = rng.uniform(0.1, longest)
    n = int(rt60 * SAMPLE_RATE)
    t = np.arange(n) / SAMPLE_RATE
    tail = rng.standard_normal(n) * np.exp(-6.9 * t / rt60)
    tail *= 10 ** (-rng.uniform(-3, 15) / 20) / (_rms(tail) * np.sqrt(n) + 1e-12)
    delay = int(rng.uniform(0.002, 0.02) * SAMPLE_RATE)
    response = np.zeros(n + delay)
    response[0] = 1.0
    response[delay:] += tail
    return fftconvolve(x, response)[: len(x)]


def at_level(x, dbfs):
    return x * (10 ** (dbfs / 20) / _rms(x))


def phone(rng, x):
    """A small loudspeaker or a phone's voice band on the way: a band of a few
    kilohertz with one strong resonance. Someone tunes to a recording played
    from a phone, or plays over a call."""
    low, high = rng.uniform(150, 600), rng.uniform(3000, 7000)
    x = sosfilt(butter(2, [low, high], btype="band", fs=SAMPLE_RATE, output="sos"), x)
    centre = rng.uniform(600, 3000)
    band = sosfilt(butter(1, [centre / 1.2, centre * 1.2], btype="band", fs=SAMPLE_RATE, output="sos"), x)
    return x + rng.uniform(0.5, 3.0) * band


def realistic(rng, x):
    """The chain for one clip; returns float32 audio of the same length: a
    few percent faster or slower now and then, a phone or small speaker in the
    path now and then, the microphone, a room up to 1.5 s, any level, noise,
    and now and then an overdriven input stage."""
    x = np.asarray(x, np.float64)
    if rng.random() < 0.5:
        x = np.resize(change_speed(rng, x), len(x))
    if rng.random() < 0.15:
        x = phone(rng, x)
    x = microphone(rng, x)
    if rng.random() < 0.7:
        x = room(rng, x, longest=1.5)
    x = at_level(x, rng.uniform(-50, -10))
    if rng.random() < 0.6:
        x = x + at_level(synth.noise(rng, len(x)), 20 * np.log10(_rms(x)) - rng.uniform(6, 40))
    if rng.random() < 0.05:
        drive = rng.uniform(2, 10)
        x = np.tanh(x * drive / (np.max(np.abs(x)) + 1e-9)) * np.max(np.abs(x))
    return x.astype(np.float32)


def band_limit(rng, x):
    """The steep low-pass of a lossy codec at a low bit rate."""
    return sosfilt(butter(8, rng.uniform(3500, 7500), btype="low", fs=SAMPLE_RATE, output="sos"), x)
