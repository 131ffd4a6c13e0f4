# SPDX-License-Identifier: MIT
"""Points and vectors as tuples of three numbers, for the judges beside it."""
import math


def add(a, b, factor=1.0):
    return tuple(x + factor * y for x, y in zip(a, b))


def sub(a, b):
    return add(a, b, -1.0)


def times(a, factor):
    return tuple(x * factor for x in a)


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def unit(a):
    return times(a, 1.0 / math.hypot(*a))
