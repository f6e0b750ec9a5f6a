"""Typed lists against array.array, as ratios measured in the same run.

Run: python bench/bench_lists.py   (with tovi installed). A ratio of 1.0 means as fast as
array.array; above 1.0 is slower.
"""

import array
import timeit

import tovi


def best_pair(first, second, number, repeat):
    """Best times of two (statement, setup) pairs, measured alternately so that both see the
    same allocator state (glibc adapts its mmap threshold to recent frees)."""
    times = [[], []]
    for _ in range(repeat):
        for slot, (statement, setup) in enumerate((first, second)):
            times[slot].append(timeit.timeit(statement, setup=setup, number=number, globals=globals()) / number)
    return min(times[0]), min(times[1])


FLOATS = [float(index) * 0.5 for index in range(1_000_000)]
SMALL = list(range(100_000))

CASES = [
    ("FloatList(source=list of 1e6 floats)", "tovi.FloatList(source=FLOATS)", "array.array('f', FLOATS)", "", 5),
    ("IntList.extend(IntList) 1e5", "a.extend(b)", "a.extend(b)", "a = {kind}(source=SMALL); b = {kind}(source=SMALL)",
     1),
    ("slice [::2] of 1e6", "a[::2]", "a[::2]", "a = {kind}(source=FLOATS)", 20),
    ("slice [:] of 1e6", "a[:]", "a[:]", "a = {kind}(source=FLOATS)", 50),
    ("repr of 1e5", "repr(a)", "repr(a)", "a = {kind}(source=SMALL)", 5),
    ("l * 10 of 1e5", "a * 10", "a * 10", "a = {kind}(source=SMALL)", 50),
]


def kind_text(label, is_tovi):
    if "IntList" in label or "repr" in label or "* 10" in label:
        return "tovi.IntList" if is_tovi else "(lambda source: array.array('i', source))"
    return "tovi.FloatList" if is_tovi else "(lambda source: array.array('f', source))"


def main():
    tovi.getAPIVersion()
    print(f"{'case':40} {'tovi':>10} {'array':>10} {'ratio':>6}")
    for label, tovi_statement, array_statement, setup, number in CASES:
        # A statement run once per repetition gets a fresh setup each time, and more repetitions.
        repeat = 7 if number > 1 else 200
        tovi_time, array_time = best_pair((tovi_statement, setup.format(kind=kind_text(label, True))),
                                          (array_statement, setup.format(kind=kind_text(label, False))), number, repeat)
        print(f"{label:40} {tovi_time * 1e3:8.3f}ms {array_time * 1e3:8.3f}ms {tovi_time / array_time:6.2f}")


if __name__ == "__main__":
    main()
