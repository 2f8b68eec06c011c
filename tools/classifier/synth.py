"""Sounds made here rather than recorded: speech from espeak-ng, noise,
near silence, and simple whistling and humming models. All at 16 kHz."""
import os
import subprocess
import tempfile

import numpy as np
from scipy.io import wavfile
from scipy.signal import resample_poly, butter, sosfilt

from features import SAMPLE_RATE

WORDS = """the a of to and in is it you that he was for on are with as his they be at one have
this from or had by hot word but what some we can out other were all there when up use your how
said an each she which do their time if will way about many then them write would like so these
her long make thing see him two has look more day could go come did number sound no most people
my over know water than call first who may down side been now find any new work part take get
place made live where after back little only round man year came show every good me give our under
name very through just form sentence great think say help low line differ turn cause much mean
before move right boy old too same tell does set three want air well also play small end put home
read hand port large spell add even land here must big high such follow act why ask men change went
light kind off need house picture try us again animal point mother world near build self earth
father head stand own page should country found answer school grow study still learn plant cover
food sun four between state keep eye never last let thought city tree cross farm hard start might
story saw far sea draw left late run while press close night real life few north open seem together
next white children begin got walk example ease paper group always music those both mark often
letter until mile river car feet care second book carry took science eat room friend began idea fish
mountain stop once base hear horse cut sure watch colour face wood main enough plain girl usual young
ready above ever red list though feel talk bird soon body dog family direct pose leave song measure
door product black short numeral class wind question happen complete ship area half rock order fire
south problem piece told knew pass since top whole king space heard best hour better true during
hundred five remember step early hold west ground interest reach fast verb sing listen six table
travel less morning ten simple several vowel toward war lay against pattern slow centre love person
money serve appear road map rain rule govern pull cold notice voice unit power town fine certain fly
fall lead cry dark machine note wait plan figure star box noun field rest correct able pound done
beauty drive stood contain front teach week final gave green oh quick develop ocean warm free minute
strong special mind behind clear tail produce fact street inch multiply nothing course stay wheel
full force blue object decide surface deep moon island foot system busy test record boat common gold
possible plane stead dry wonder laugh thousand ago ran check game shape equate miss brought heat snow
tire bring yes distant fill east paint language among""".split()

# (languages, variants): every utterance picks one of each.
VOICES = (["en", "en-us", "en-gb-scotland", "de", "fr", "es", "it", "pt", "nl", "pl", "sv", "ru"],
          ["m1", "m2", "m3", "m4", "m5", "m6", "f1", "f2", "f4", "klatt", "klatt3", "croak",
           "Andy", "Denis", "Mr serious", "adam", "anika", "grandma", "john", "linda", "max", "paul"])

def speech(rng, voices, seconds=8.0):
    """One espeak-ng utterance of about `seconds`, at 16 kHz."""
    languages, variants = voices
    voice = f"{rng.choice(languages)}+{rng.choice(variants)}"
    speed = int(rng.integers(120, 230))
    text = " ".join(rng.choice(WORDS, size=int(seconds * speed / 60 * 1.1)))
    with tempfile.TemporaryDirectory() as tmp:
        path = os.path.join(tmp, "speech.wav")
        subprocess.run(["espeak-ng", "-v", voice, "-s", str(speed), "-p", str(int(rng.integers(15, 85))),
                        "-g", str(int(rng.integers(0, 8))), "-w", path, text],
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        rate, data = wavfile.read(path)
    audio = data.astype(np.float32) / 32768.0
    return resample_poly(audio, SAMPLE_RATE, rate).astype(np.float32)


def _coloured(rng, n, slope):
    spectrum = np.fft.rfft(rng.standard_normal(n))
    f = np.maximum(np.arange(len(spectrum)), 1.0)
    out = np.fft.irfft(spectrum / f ** (slope / 2.0), n)
    return out / (np.std(out) + 1e-12)


def _bandpass(x, low, high, order=2):
    return sosfilt(butter(order, [low, high], btype="band", fs=SAMPLE_RATE, output="sos"), x)


def noise(rng, n):
    """Broadband, hum, band-limited or impulsive noise, unit RMS."""
    kind = rng.integers(0, 5)
    if kind == 0:
        x = _coloured(rng, n, rng.uniform(0.0, 2.0))
    elif kind == 1:  # mains hum with its harmonics over a noise floor
        t, f0 = np.arange(n) / SAMPLE_RATE, rng.choice([50.0, 60.0])
        x = sum(rng.uniform(0, 1) / k * np.sin(2 * np.pi * f0 * k * t + rng.uniform(0, 6.3)) for k in range(1, 8))
        x = x / (np.std(x) + 1e-12) + rng.uniform(0.1, 1.0) * _coloured(rng, n, 1.0)
    elif kind == 2:
        low = rng.uniform(50, 3000)
        x = _bandpass(rng.standard_normal(n), low, min(7900, low * rng.uniform(1.5, 8)))
    elif kind == 3:  # clicks, knocks, rain: sparse filtered impulses
        x = np.zeros(n)
        hits = rng.integers(0, n, size=int(rng.integers(3, 400)))
        x[hits] = rng.standard_normal(len(hits))
        low = rng.uniform(80, 2000)
        x = _bandpass(x, low, min(7900, low * rng.uniform(2, 10))) + 0.05 * rng.standard_normal(n)
    else:  # fan or air conditioning: brown noise with a blade tone
        t = np.arange(n) / SAMPLE_RATE
        x = _coloured(rng, n, 2.0) + rng.uniform(0, 0.3) * np.sin(2 * np.pi * rng.uniform(60, 400) * t)
    return (x / (np.std(x) + 1e-12)).astype(np.float32)


def silence(rng, n):
    if rng.random() < 0.1:
        return np.zeros(n, np.float32)
    return (_coloured(rng, n, rng.uniform(0, 2)) * 10 ** (rng.uniform(-100, -70) / 20)).astype(np.float32)


def _tone(rng, n, f0_track, harmonics):
    phase = 2 * np.pi * np.cumsum(f0_track) / SAMPLE_RATE
    return sum(a * np.sin(k * phase) for k, a in harmonics)


def _melody_f0(rng, n, low, high):
    f0, notes = np.empty(n), rng.integers(1, 6)
    bounds = np.sort(rng.integers(0, n, size=notes - 1))
    for start, end in zip(np.r_[0, bounds], np.r_[bounds, n]):
        f0[start:end] = rng.uniform(low, high)
    smooth = int(SAMPLE_RATE * rng.uniform(0.01, 0.06))
    f0 = np.convolve(np.pad(f0, smooth, mode="edge"), np.ones(smooth) / smooth, mode="same")[smooth:-smooth]
    t = np.arange(n) / SAMPLE_RATE
    return f0 * (1 + rng.uniform(0, 0.015) * np.sin(2 * np.pi * rng.uniform(4, 7) * t))


def _envelope(rng, n):
    env = np.ones(n)
    attack, release = int(rng.uniform(0.02, 0.12) * SAMPLE_RATE), int(rng.uniform(0.05, 0.3) * SAMPLE_RATE)
    env[:attack] = np.linspace(0, 1, attack)
    env[n - release:] = np.linspace(1, 0, release)
    return env


def whistle(rng, n):
    """A whistled melody: nearly sinusoidal, with breath noise around the tone."""
    f0 = _melody_f0(rng, n, 600, 2600)
    x = _tone(rng, n, f0, [(1, 1.0), (2, rng.uniform(0, 0.05))])
    breath = _bandpass(rng.standard_normal(n), 500, 7000) * rng.uniform(0.01, 0.08)
    return ((x + breath) * _envelope(rng, n)).astype(np.float32)


def hum(rng, n):
    """A hummed melody: a voiced source heard through closed lips (low formant)."""
    f0 = _melody_f0(rng, n, 90, 330)
    x = _tone(rng, n, f0, [(k, k ** -1.5 * rng.uniform(0.5, 1)) for k in range(1, 25)])
    cutoff = rng.uniform(350, 900)
    x = sosfilt(butter(2, cutoff, btype="low", fs=SAMPLE_RATE, output="sos"), x)
    return (x * _envelope(rng, n)).astype(np.float32)


WAVEFORMS = ["sine", "square", "sawtooth", "triangle"]


def periodic(rng, n, wave, f0):
    """A pure periodic tone at f0, as a tone generator makes it (band-limited
    by its sum of harmonics below 8 kHz): steady over the whole window,
    beeping on and off, or starting within the window."""
    t = np.arange(n) / SAMPLE_RATE
    phase = 2 * np.pi * f0 * t + rng.uniform(0, 2 * np.pi)
    top = max(1, int(7900 // f0))
    if wave == "sine":
        x = np.sin(phase)
    elif wave == "square":
        x = sum(np.sin(k * phase) / k for k in range(1, top + 1, 2))
    elif wave == "sawtooth":
        x = sum(np.sin(k * phase) / k for k in range(1, top + 1))
    else:
        x = sum((-1) ** (k // 2) * np.sin(k * phase) / k ** 2 for k in range(1, top + 1, 2))
    gate = np.ones(n)
    shape = rng.random()
    if shape < 0.3:  # beeps
        period = rng.uniform(0.15, 0.8) * SAMPLE_RATE
        gate = ((np.arange(n) % period) < period * rng.uniform(0.3, 0.8)).astype(float)
    elif shape < 0.5:  # a tone that starts within the window
        gate[:int(rng.uniform(0.1, 0.8) * n)] = 0.0
    ramp = int(0.005 * SAMPLE_RATE)
    gate = np.convolve(gate, np.ones(ramp) / ramp, mode="same")
    return (x * gate / (np.max(np.abs(x)) + 1e-12)).astype(np.float32)
