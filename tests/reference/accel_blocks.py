"""Made-up accelerometer blocks, and the conversion of their volts.

Used by recompute_accel_drop.py and recompute_trigger_search.py. made_accel_block.h makes the same single-precision volts
to the last bit, with the same sums, products and generator of whole numbers.
"""

import math
import struct
from collections import namedtuple

# Pulses are (start, width, microns), in samples. The ringing begins with a kick, g, and goes on by y = c1 y' - c2 y''.
# The plateau is (start, length, g).
Block = namedtuple("Block", "samples seed noise drift pulses ringing plateau level")

GRAVITY_PER_SAMPLE = 15000.0 * 15000.0 / 9806650.0  # microns per sample² as g
COUNT = 20.0 / 65536

OFFSET, SLOPE = 0.0003, 1.0007
B, A1, A2, A3 = -6.0559, 2.3742, 0.0012, -0.0005
REST_VOLTS, VOLTS_PER_G = 2.9707, 0.4213


def single(value):
    return struct.unpack("f", struct.pack("f", value))[0]


def ringing(c1, c2, kick, count):
    values, last, before = [], 0.0, 0.0
    for i in range(count):
        value = kick if i == 0 else c1 * last - c2 * before
        values.append(value)
        last, before = value, last
    return values


def acceleration_of_pulse(start, width, microns, i):
    """Acceleration of the deflection microns x (4 x (1 - x))³, x from 0 to 1 over the width."""
    x = (i - start) / width
    if not 0 < x < 1:
        return 0.0
    s = 4 * x * (1 - x)
    slope = 4 - 8 * x
    return microns * (24 * s * s - 6 * s * slope * slope) / (width * width) * GRAVITY_PER_SAMPLE


def volts_of(block):
    ring_start, c1, c2, kick = block.ringing
    ring = ringing(c1, c2, kick, block.samples - ring_start) if kick else []
    plateau_start, plateau_length, plateau_g = block.plateau
    seed, volts = block.seed, []
    for i in range(block.samples):
        seed = (seed * 1103515245 + 12345) % 2**31
        g = block.noise * ((seed // 65536) / 32768 - 0.5) + block.drift * i / 15000
        for start, width, microns in block.pulses:
            g += acceleration_of_pulse(start, width, microns, i)
        if kick and i >= ring_start:
            g += ring[i - ring_start]
        if plateau_start <= i < plateau_start + plateau_length:
            g += plateau_g
        counts = round((REST_VOLTS + VOLTS_PER_G * g) / COUNT)
        volts.append(single(max(-32768, min(32767, counts)) * COUNT))
    return volts


def acceleration(v):
    w = (v + OFFSET) * SLOPE
    return w * w * A2 + w * w * w * A3 + A1 * w + B


def damped(hertz, seconds):
    """c1 and c2 of a ringing, rounded to few digits."""
    r = math.exp(-1 / (seconds * 15000))
    return round(2 * r * math.cos(2 * math.pi * hertz / 15000), 7), round(r * r, 7)
