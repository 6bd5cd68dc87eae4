"""Phoneme-labelled speech from the allowed synthesisers: espeak-ng (through its
library, for its phoneme events), flite with -psdur, and Festival's ked_diphone.

Each speaker returns (samples as float32 in [-1, 1], sample rate, labels), labels
being (start seconds, end seconds, class) with the classes of CLASSES."""
import ctypes
import os
import subprocess
import tempfile

import numpy as np
from scipy.io import wavfile

CLASSES = ['bilabial', 'open', 'rounded', 'spread', 'silence', 'other']
BILABIAL, OPEN, ROUNDED, SPREAD, SILENCE, OTHER = range(6)

# espeak-ng's English mnemonics; diphthongs that move between classes and the
# schwa-like vowels count as other sounds.
ESPEAK_CLASSES = {'p': BILABIAL, 'b': BILABIAL, 'm': BILABIAL, 'a': OPEN, 'aa': OPEN, 'A:': OPEN, 'A@': OPEN,
                  '0': OPEN, 'V': OPEN, 'u:': ROUNDED, 'oU': ROUNDED, 'w': ROUNDED, 'i:': SPREAD, 'eI': SPREAD}
ESPEAK_PAUSES = {'_', '_:', '_!'}
# espeak-ng also marks the short break before a stop or between words as a pause;
# only a longer one is a silence the mouth rests in.
ESPEAK_REST_SECONDS = 0.15
# The CMU phone set that flite and Festival label their segments with.
ARPABET_CLASSES = {'p': BILABIAL, 'b': BILABIAL, 'm': BILABIAL, 'aa': OPEN, 'ae': OPEN, 'ah': OPEN,
                   'uw': ROUNDED, 'ow': ROUNDED, 'w': ROUNDED, 'iy': SPREAD, 'ey': SPREAD, 'pau': SILENCE,
                   'h#': SILENCE}


class EspeakEvent(ctypes.Structure):
    _fields_ = [('type', ctypes.c_int), ('unique_identifier', ctypes.c_uint), ('text_position', ctypes.c_int),
                ('length', ctypes.c_int), ('audio_position', ctypes.c_int), ('sample', ctypes.c_int),
                ('user_data', ctypes.c_void_p), ('id', ctypes.c_char * 8)]


class Espeak:
    """espeak-ng in synchronous mode with phoneme events; one per process."""
    PHONEME_EVENT = 7

    def __init__(self):
        self.lib = ctypes.CDLL('libespeak-ng.so.1')
        self.rate = self.lib.espeak_Initialize(2, 0, None, 1)
        callback_type = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.POINTER(ctypes.c_short), ctypes.c_int,
                                         ctypes.POINTER(EspeakEvent))
        self.callback = callback_type(self._on_synth)
        self.lib.espeak_SetSynthCallback(self.callback)
        self.audio, self.events = [], []

    def _on_synth(self, wave, count, events):
        if wave and count > 0:
            self.audio.append(np.ctypeslib.as_array(wave, (count,)).copy())
        index = 0
        while events[index].type != 0:
            if events[index].type == self.PHONEME_EVENT:
                self.events.append((events[index].id.decode('utf-8', 'replace'), events[index].sample))
            index += 1
        return 0

    def speak(self, voice, words_per_minute, pitch, sentence):
        if self.lib.espeak_SetVoiceByName(voice.encode()) != 0:
            raise RuntimeError(f'espeak-ng has no voice {voice}')
        self.lib.espeak_SetParameter(1, words_per_minute, 0)
        self.lib.espeak_SetParameter(3, pitch, 0)
        self.audio, self.events = [], []
        text = sentence.encode() + b'\0'
        self.lib.espeak_Synth(text, len(text), 0, 0, 0, 1, None, None)
        self.lib.espeak_Synchronize()
        audio = np.concatenate(self.audio).astype(np.float32) / 32768 if self.audio else np.zeros(0, np.float32)
        labels = []
        for index, (name, sample) in enumerate(self.events):
            end = self.events[index + 1][1] if index + 1 < len(self.events) else len(audio)
            if end > sample:
                rest = name in ESPEAK_PAUSES and (end - sample) / self.rate >= ESPEAK_REST_SECONDS
                labels.append((sample / self.rate, end / self.rate, SILENCE if rest else ESPEAK_CLASSES.get(name, OTHER)))
        return audio, self.rate, labels


def _arpabet_labels(pairs):
    labels, start = [], 0.0
    for name, end in pairs:
        if end > start:
            labels.append((start, end, ARPABET_CLASSES.get(name, OTHER)))
        start = max(start, end)
    return labels


def _read_wav(path):
    rate, data = wavfile.read(path)
    return data.astype(np.float32) / 32768, rate


def flite(voice, sentence):
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, 'speech.wav')
        out = subprocess.run(['flite', '-voice', voice, '-psdur', '-t', sentence, '-o', path], check=True,
                             capture_output=True, text=True).stdout
        audio, rate = _read_wav(path)
    pairs = [(item.rsplit(':', 1)[0], float(item.rsplit(':', 1)[1])) for item in out.split()]
    return audio, rate, _arpabet_labels(pairs)


def festival(voice, sentences):
    """Speaks all sentences in one Festival run, labelled by its Segment relation."""
    with tempfile.TemporaryDirectory() as folder:
        script = [f'(voice_{voice})']
        for index, sentence in enumerate(sentences):
            text = sentence.replace('\\', ' ').replace('"', ' ')
            script.append(f'(set! utt (utt.synth (Utterance Text "{text}")))')
            script.append(f'(utt.save.wave utt "{folder}/{index}.wav" \'riff)')
            script.append(f'(format t "@{index} ")')
            script.append('(mapcar (lambda (s) (format t "%s:%f " (item.name s) (item.feat s "end"))) '
                          '(utt.relation.items utt \'Segment))')
            script.append('(format t "\\n")')
        path = os.path.join(folder, 'speak.scm')
        with open(path, 'w') as file:
            file.write('\n'.join(script) + '\n')
        out = subprocess.run(['festival', '-b', path], check=True, capture_output=True, text=True).stdout
        result = []
        for line in out.splitlines():
            if not line.startswith('@'):
                continue
            head, *items = line.split()
            audio, rate = _read_wav(f'{folder}/{head[1:]}.wav')
            pairs = [(item.rsplit(':', 1)[0], float(item.rsplit(':', 1)[1])) for item in items]
            result.append((audio, rate, _arpabet_labels(pairs)))
    return result
