#!/usr/bin/python3
"""Writes the engine's phoneme-labelled training and validation speech.

usage: make_corpus.py [--slice] OUT_FOLDER

OUT_FOLDER/train/*.wav with *.labels beside them (one "start end class" line per
phone, seconds, classes as in voices.CLASSES), listed in OUT_FOLDER/train.txt, and
OUT_FOLDER/validation/FAMILY/CONDITION/*.wav likewise in validation.txt. Voices kept
for validation never appear in training, nor do their sentences. The same seed
always writes the same corpus. --slice writes only a small part of the validation
speech, one take per voice family, for the engine's regression test.
"""
import os
import sys

import numpy as np
from scipy.io import wavfile

import augment
import sentences
import voices

SEED = 20261123
TRAIN_SENTENCES, VALIDATION_SENTENCES = 340, 60
ESPEAK_TRAIN = ['en-us', 'en', 'en-us+m1', 'en+m3', 'en-us+m4', 'en+m5', 'en-us+m6', 'en+m7', 'en-us+f1', 'en+f2',
                'en-us+f3', 'en-us+klatt', 'en+klatt2', 'en-us+klatt3', 'en+klatt5', 'en-us+klatt6',
                'en+Andy', 'en-us+annie', 'en+steph', 'en-us+edward', 'en+whisperf']
ESPEAK_VALIDATION = ['en+f4', 'en-us+m2', 'en+klatt4', 'en-us+f5', 'en-us+m8']
FLITE_TRAIN, FLITE_VALIDATION = ['awb'], ['rms']
FESTIVAL_TRAIN = ['ked_diphone']
SENTENCES_PER_TAKE = 4
CONDITIONS = ['clean', 'noise20', 'reverb', 'quiet', 'telephone', 'stereo44k']


def join_take(rng, pieces, rate):
    """Sentences one after another with silent gaps of exact zeros, labelled."""
    audio, labels, cursor = [], [], 0.0
    for piece_audio, piece_rate, piece_labels in pieces:
        gap = rng.uniform(0.25, 0.8)
        audio.append(np.zeros(int(gap * rate)))
        labels.append((cursor, cursor + gap, voices.SILENCE))
        cursor += len(audio[-1]) / rate
        piece = augment.to_rate(piece_audio, piece_rate, rate)
        audio.append(piece)
        labels += [(cursor + s * len(piece) / rate / (len(piece_audio) / piece_rate), cursor + e * len(piece) / rate
                    / (len(piece_audio) / piece_rate), c) for s, e, c in piece_labels]
        cursor += len(piece) / rate
    audio.append(np.zeros(int(0.4 * rate)))
    labels.append((cursor, cursor + 0.4, voices.SILENCE))
    return np.concatenate(audio), merge_silences(labels)


def merge_silences(labels):
    """A synthesiser's pause beside a gap between sentences is one silence."""
    merged = []
    for start, end, label in labels:
        if merged and label == voices.SILENCE and merged[-1][2] == voices.SILENCE:
            merged[-1] = (merged[-1][0], end, label)
        else:
            merged.append((start, end, label))
    return merged


def write_take(path, audio, rate, labels, channels=1):
    audio = np.clip(audio, -1, 1).astype(np.float32)
    if channels == 2:
        audio = np.stack([audio, audio], 1)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    wavfile.write(path + '.wav', int(rate), audio)
    with open(path + '.labels', 'w') as file:
        file.writelines(f'{s:.5f} {e:.5f} {c}\n' for s, e, c in labels)


def augmented(rng, audio, rate, labels, others):
    """One random recording of a take: the frequency axis warped by playing it at
    0.84-1.2 times its rate, then a room, noise, band, level and rate."""
    target = int(rng.choice([8000, 16000, 22050, 44100, 48000], p=[0.15, 0.35, 0.15, 0.2, 0.15]))
    audio = augment.to_rate(audio, rate, 16000 if target == 8000 else target)
    rate = 16000 if target == 8000 else target
    if rng.random() < 0.3:
        audio = augment.reverberate(rng, audio, rate)
    if target == 8000:
        audio, rate = augment.telephone(audio, rate)
    elif rng.random() < 0.2:
        audio = augment.band_limit(rng, audio, rate)
    kind = rng.choice(['none', 'pink', 'brown', 'babble', 'white'], p=[0.35, 0.25, 0.15, 0.15, 0.1])
    if kind != 'none':
        noise = (augment.babble(rng, others, len(audio)) if kind == 'babble' else
                 augment.coloured_noise(rng, len(audio), {'pink': 1, 'brown': 2, 'white': 0}[kind]))
        audio = augment.add_noise(rng, audio, noise, rng.uniform(10, 30))
    audio = augment.level(rng, audio)
    warp = rng.uniform(0.84, 1.2)
    return audio, round(rate * warp), [(s / warp, e / warp, c) for s, e, c in labels]


def condition(rng, name, audio, rate):
    """The fixed recording conditions that validation reports on."""
    audio = augment.to_rate(audio, rate, 16000)
    if name == 'noise20':
        return augment.add_noise(rng, audio, augment.coloured_noise(rng, len(audio), 1), 20), 16000
    if name == 'reverb':
        return augment.reverberate(rng, audio, 16000), 16000
    if name == 'quiet':
        return audio * 10 ** (-24 / 20), 16000
    if name == 'telephone':
        return augment.telephone(audio, 16000)
    if name == 'stereo44k':
        return augment.to_rate(audio, 16000, 44100), 44100
    return audio, 16000


def speakers(espeak_voices, flite_voices, festival_voices, texts, rng):
    """(family, voice, [(audio, rate, labels) per sentence])."""
    espeak = voices.Espeak()
    for voice in espeak_voices:
        picked = rng.choice(len(texts), min(len(texts), 60), replace=False)
        yield 'espeak', voice, [espeak.speak(voice, int(rng.integers(135, 215)), int(rng.integers(25, 80)),
                                             texts[i]) for i in picked]
    for voice in flite_voices:
        yield 'flite', voice, [voices.flite(voice, text) for text in texts]
    for voice in festival_voices:
        yield 'festival', voice, voices.festival(voice, texts)


def takes(rng, spoken, rate):
    for start in range(0, len(spoken), SENTENCES_PER_TAKE):
        yield join_take(rng, spoken[start:start + SENTENCES_PER_TAKE], rate)


def make_training(out, texts, rng):
    listed = []
    others = []
    for family, voice, spoken in speakers(ESPEAK_TRAIN, FLITE_TRAIN, FESTIVAL_TRAIN, texts, rng):
        copies = 1 if family == 'espeak' else 2
        for copy in range(copies):
            for index, (audio, labels) in enumerate(takes(rng, spoken, 16000)):
                others.append(audio[:16000 * 3])
                audio, rate, labels = augmented(rng, audio, 16000, labels, others[-40:])
                path = os.path.join(out, 'train', f'{family}-{voice}-{copy}-{index:03d}')
                write_take(path, audio, rate, labels)
                listed.append(path)
        print(f'training: {family} {voice}', flush=True)
    with open(os.path.join(out, 'train.txt'), 'w') as file:
        file.writelines(path + '\n' for path in listed)


def make_validation(out, texts, rng, espeak_voices, flite_voices, sentences_per_voice):
    listed = []
    for family, voice, spoken in speakers(espeak_voices, flite_voices, [], texts, rng):
        for index, (audio, labels) in enumerate(takes(rng, spoken[:sentences_per_voice], 16000)):
            for name in CONDITIONS:
                changed, rate = condition(rng, name, audio, 16000)
                path = os.path.join(out, 'validation', family, name, f'{voice}-{index:03d}')
                write_take(path, changed, rate, labels, 2 if name == 'stereo44k' else 1)
                listed.append(path)
        print(f'validation: {family} {voice}', flush=True)
    with open(os.path.join(out, 'validation.txt'), 'w') as file:
        file.writelines(path + '\n' for path in listed)


def main():
    arguments = sys.argv[1:]
    if len(arguments) not in (1, 2) or (len(arguments) == 2 and arguments[0] != '--slice'):
        sys.exit(__doc__)
    out = arguments[-1]
    rng = np.random.default_rng(SEED)
    texts = sentences.own_sentences(TRAIN_SENTENCES + VALIDATION_SENTENCES, SEED)
    order = rng.permutation(len(texts))
    held = [texts[i] for i in order[TRAIN_SENTENCES:]]
    if len(arguments) == 2:
        make_validation(out, held, np.random.default_rng(SEED + 1), ESPEAK_VALIDATION[:2], FLITE_VALIDATION,
                        SENTENCES_PER_TAKE)
        return
    make_validation(out, held, np.random.default_rng(SEED + 1), ESPEAK_VALIDATION, FLITE_VALIDATION, 20)
    make_training(out, [texts[i] for i in order[:TRAIN_SENTENCES]], np.random.default_rng(SEED + 2))


if __name__ == '__main__':
    main()
