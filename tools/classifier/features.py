"""Audio front end shared by the corpus, the backbone and the C++ reference files.

Everything here mirrors src/classify/LogMelFrontEnd and src/classify/Resampler
step for step, so that a head trained on these features sees the same
numbers at run time.
"""
import math

import numpy as np

SAMPLE_RATE = 16000
WINDOW_LENGTH = 400        # 25 ms analysis frame
HOP_LENGTH = 160           # 10 ms between frames
FFT_LENGTH = 512
MEL_BANDS = 64
MEL_MIN_HZ = 125.0
MEL_MAX_HZ = 7500.0
LOG_OFFSET = 0.001         # keeps log() finite on digital silence
PATCH_FRAMES = 96          # 0.975 s of audio per classified window
PATCH_HOP_FRAMES = 48      # windows overlap by half
PATCH_SAMPLES = (PATCH_FRAMES - 1) * HOP_LENGTH + WINDOW_LENGTH

RESAMPLER_ZERO_CROSSINGS = 16
RESAMPLER_PASSBAND = 0.9   # share of the output Nyquist band kept
RESAMPLER_KAISER_BETA = 8.6


def _hz_to_mel(hz):
    return 1127.0 * np.log1p(np.asarray(hz, dtype=np.float64) / 700.0)


def mel_matrix():
    """(FFT_LENGTH/2+1) x MEL_BANDS triangular filters on the HTK mel scale."""
    bins = FFT_LENGTH // 2 + 1
    bin_mel = _hz_to_mel(np.linspace(0.0, SAMPLE_RATE / 2.0, bins))
    edges = np.linspace(_hz_to_mel(MEL_MIN_HZ), _hz_to_mel(MEL_MAX_HZ), MEL_BANDS + 2)
    weights = np.zeros((bins, MEL_BANDS))
    for band in range(MEL_BANDS):
        lower, centre, upper = edges[band:band + 3]
        rising = (bin_mel - lower) / (centre - lower)
        falling = (upper - bin_mel) / (upper - centre)
        weights[:, band] = np.maximum(0.0, np.minimum(rising, falling))
    weights[0, :] = 0.0  # the DC bin carries no pitch information
    return weights


def dft_matrices():
    """Hann-windowed real DFT as two (WINDOW_LENGTH x bins) matrices."""
    n = np.arange(WINDOW_LENGTH)
    window = 0.5 - 0.5 * np.cos(2.0 * math.pi * n / WINDOW_LENGTH)
    k = np.arange(FFT_LENGTH // 2 + 1)
    angle = 2.0 * math.pi * np.outer(n, k) / FFT_LENGTH
    return window[:, None] * np.cos(angle), -window[:, None] * np.sin(angle)


_MEL = mel_matrix()
_COS, _SIN = dft_matrices()


def log_mel(samples):
    """Log-mel frames (frames x MEL_BANDS) of 16 kHz mono audio."""
    samples = np.asarray(samples, dtype=np.float64)
    count = 1 + (len(samples) - WINDOW_LENGTH) // HOP_LENGTH
    if count <= 0:
        return np.zeros((0, MEL_BANDS))
    index = np.arange(WINDOW_LENGTH)[None, :] + HOP_LENGTH * np.arange(count)[:, None]
    frames = samples[index]
    magnitude = np.hypot(frames @ _COS, frames @ _SIN)
    return np.log(magnitude @ _MEL + LOG_OFFSET)


def patches(frames):
    """Cuts frames into overlapping PATCH_FRAMES windows (n x 96 x 64)."""
    if len(frames) < PATCH_FRAMES:
        return np.zeros((0, PATCH_FRAMES, MEL_BANDS))
    starts = range(0, len(frames) - PATCH_FRAMES + 1, PATCH_HOP_FRAMES)
    return np.stack([frames[s:s + PATCH_FRAMES] for s in starts])


class ResamplerDesign:
    """Polyphase windowed-sinc design for in_rate -> SAMPLE_RATE."""

    def __init__(self, in_rate):
        in_rate = int(round(in_rate))
        g = math.gcd(in_rate, SAMPLE_RATE)
        self.up = SAMPLE_RATE // g
        self.down = in_rate // g
        cutoff = RESAMPLER_PASSBAND * min(1.0, self.up / self.down)
        self.half_width = int(math.ceil(RESAMPLER_ZERO_CROSSINGS / cutoff))
        taps = np.arange(-self.half_width + 1, self.half_width + 1)
        phase = np.arange(self.up)[:, None] / self.up
        u = phase - taps[None, :]
        window = np.i0(RESAMPLER_KAISER_BETA * np.sqrt(np.clip(1.0 - (u / self.half_width) ** 2, 0.0, None)))
        window /= np.i0(RESAMPLER_KAISER_BETA)
        # Row p holds the taps for input x[i + k], k = -half_width+1 .. half_width.
        self.table = (cutoff * np.sinc(cutoff * u) * window).astype(np.float32)


def resample(samples, in_rate):
    """Resamples to SAMPLE_RATE with the C++ resampler's filter and alignment."""
    samples = np.asarray(samples, dtype=np.float32)
    if int(round(in_rate)) == SAMPLE_RATE:
        return samples.copy()
    d = ResamplerDesign(in_rate)
    count = (len(samples) * d.up) // d.down
    n = np.arange(count)
    base = (n * d.down) // d.up
    phase = (n * d.down) % d.up
    padded = np.concatenate([np.zeros(d.half_width, np.float32), samples,
                             np.zeros(d.half_width + 1, np.float32)])
    if d.up == 1:
        # One phase only: a plain FIR followed by decimation.
        full = np.convolve(padded.astype(np.float64), d.table[0, ::-1].astype(np.float64), mode="valid")
        return full[base + 1][:count].astype(np.float32)
    out = np.empty(count, dtype=np.float32)
    for start in range(0, count, 8192):
        sl = slice(start, min(count, start + 8192))
        idx = base[sl, None] + np.arange(1, 2 * d.half_width + 1)[None, :]
        out[sl] = np.einsum("ij,ij->i", padded[idx].astype(np.float64), d.table[phase[sl]].astype(np.float64))
    return out
