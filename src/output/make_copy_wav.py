#!/usr/bin/env python3
"""Writes copy.wav, the click of the copy action: 40 ms of decaying noise over a short
2 kHz tone, 16-bit PCM, mono, 44.1 kHz. Deterministic; run it to remake the file."""
import math
import struct
import wave

RATE = 44100
LENGTH = int(RATE * 0.040)
state = 12345


def noise():
    # A small linear congruential generator, so the file is the same on every machine.
    global state
    state = (1103515245 * state + 12345) % 2 ** 31
    return state / 2 ** 30 - 1.0


frames = bytearray()
for i in range(LENGTH):
    t = i / RATE
    v = 0.55 * noise() * math.exp(-t / 0.004) + 0.30 * math.sin(2 * math.pi * 2000 * t) * math.exp(-t / 0.008)
    if i < 44:  # one millisecond of attack, so the click does not pop
        v *= i / 44
    frames += struct.pack('<h', int(round(max(-1.0, min(1.0, v)) * 32767)))

with wave.open(__file__.rsplit('/', 1)[0] + '/copy.wav' if '/' in __file__ else 'copy.wav', 'wb') as w:
    w.setnchannels(1)
    w.setsampwidth(2)
    w.setframerate(RATE)
    w.writeframes(bytes(frames))
