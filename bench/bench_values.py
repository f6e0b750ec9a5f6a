"""Arithmetic on the value types, each timed against `complex + complex` in the same run.

    python bench/bench_values.py [--number N] [--repeat R]

Prints the best time per operation and its ratio to the anchor; the goal for Vector + Vector is
a ratio within 1.3.
"""
import argparse
import timeit

import tovi

ANCHOR = ("complex + complex", "c + d")
CASES = [
    ("Vector + Vector", "v + w"),
    ("Vector * float", "v * k"),
    ("Vector ^ Vector", "v ^ w"),
    ("Matrix * Vector", "m * v"),
    ("Transform * Vector", "t * v"),
    ("Transform * Transform", "t * u"),
]


def namespace():
    m = tovi.Matrix.makeRotationMatrixZ(0.3) * 2.0
    return {
        "c": complex(1.0, 2.0), "d": complex(3.0, -4.0),
        "v": tovi.Vector(1.0, 2.0, 3.0), "w": tovi.Vector(-0.5, 4.0, 0.25), "k": 1.5,
        "m": m, "t": tovi.Transform(m, tovi.Vector(1.0, 2.0, 3.0)),
        "u": tovi.Transform(m.transpose(), tovi.Vector(-3.0, 0.5, 2.0)),
    }


def best_seconds(statement, names, number, repeat):
    return min(timeit.Timer(statement, globals=names).repeat(repeat=repeat, number=number)) / number


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--number", type=int, default=1_000_000, help="operations per timing")
    parser.add_argument("--repeat", type=int, default=7, help="timings per case; the best counts")
    args = parser.parse_args()
    names = namespace()
    anchor = best_seconds(ANCHOR[1], names, args.number, args.repeat)
    print(f"{ANCHOR[0]:<24}{anchor * 1e9:8.1f} ns   1.00x")
    for label, statement in CASES:
        seconds = best_seconds(statement, names, args.number, args.repeat)
        print(f"{label:<24}{seconds * 1e9:8.1f} ns  {seconds / anchor:5.2f}x")


if __name__ == "__main__":
    main()
