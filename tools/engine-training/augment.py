"""The ways recordings differ from a synthesiser's output: noise, rooms, level,
clipping, offset, band limits and sample rates. Every function takes the numpy
random generator it draws from, so a seed reproduces the corpus."""
import numpy as np
from scipy import signal


def coloured_noise(rng, count, exponent):
    """Noise whose power falls as 1/f**exponent: 1 pink, 2 brown."""
    spectrum = np.fft.rfft(rng.standard_normal(count + 1))
    frequencies = np.arange(len(spectrum), dtype=np.float64)
    frequencies[0] = 1.0
    noise = np.fft.irfft(spectrum / frequencies ** (exponent / 2), count + 1)[:count]
    return noise / (np.std(noise) + 1e-12)


def add_noise(rng, audio, noise, snr_db):
    speech = np.mean(audio[np.abs(audio) > 1e-4] ** 2) if np.any(np.abs(audio) > 1e-4) else 1e-6
    scale = np.sqrt(speech / (np.mean(noise ** 2) + 1e-12) / 10 ** (snr_db / 10))
    return audio + scale * noise[:len(audio)]


def babble(rng, others, count):
    """Three to five other utterances on top of each other."""
    mix = np.zeros(count)
    for _ in range(rng.integers(3, 6)):
        other = others[rng.integers(len(others))]
        start = rng.integers(0, max(1, count))
        tiled = np.resize(other, count + start)[start:start + count]
        mix += tiled / (np.std(other) + 1e-9)
    return mix


def reverberate(rng, audio, rate):
    """A synthetic room: a direct path, then exponentially decaying noise."""
    rt60 = rng.uniform(0.25, 0.9)
    length = int(rt60 * rate)
    t = np.arange(length) / rate
    response = rng.standard_normal(length) * np.exp(-6.9 * t / rt60)
    response[:int(0.002 * rate)] = 0.0
    response[0] = rng.uniform(1.0, 4.0) * np.sqrt(np.sum(response ** 2))
    wet = signal.fftconvolve(audio, response)[:len(audio) + length // 2]
    return wet * np.max(np.abs(audio)) / (np.max(np.abs(wet)) + 1e-12)


def telephone(audio, rate):
    """300-3400 Hz at 8 kHz."""
    narrow = signal.resample_poly(audio, 8000, rate)
    sos = signal.butter(4, [300, 3400], 'bandpass', fs=8000, output='sos')
    return signal.sosfilt(sos, narrow), 8000


def band_limit(rng, audio, rate):
    cutoff = rng.uniform(3500, 0.45 * rate)
    sos = signal.butter(6, cutoff, 'lowpass', fs=rate, output='sos')
    return signal.sosfilt(sos, audio)


def to_rate(audio, rate, target):
    if rate == target:
        return audio
    divisor = np.gcd(int(rate), int(target))
    return signal.resample_poly(audio, int(target) // divisor, int(rate) // divisor)


def level(rng, audio):
    """Gain of -30 to 0 dB from a normalised take, sometimes driven into clipping,
    sometimes with a DC offset."""
    audio = audio / (np.max(np.abs(audio)) + 1e-12) * 10 ** (rng.uniform(-30, 0) / 20)
    if rng.random() < 0.1:
        audio = np.clip(audio * 10 ** (rng.uniform(3, 12) / 20), -1, 1)
    if rng.random() < 0.15:
        audio = audio + rng.uniform(-0.05, 0.05)
    return np.clip(audio, -1, 1)
