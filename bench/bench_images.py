"""Encoding and saving a 1920x1080 image from Python against the same SDK calls from C++
(bench/image_calls.cpp).

Run: python bench/bench_images.py <test build folder>   (the folder that holds image_calls_bench).
Throughput is in megabytes of float pixels per second; the module's share is the part of the
Python time that the C++ calls do not spend (argument handling, the result object). It is a few
microseconds against tens of milliseconds, so what the table shows is noise of either sign: the
two processes' allocators are in different states, and the machine is shared.
"""

import json
import os
import subprocess
import sys
import tempfile
import timeit

import numpy
import tovi

WIDTH, HEIGHT = 1920, 1080
PIXEL_BYTES = WIDTH * HEIGHT * 16


def test_image():
    """The pattern image_calls.cpp fills, computed in single precision as it is there."""
    image = tovi.ToviImage(WIDTH, HEIGHT)
    pixels = numpy.asarray(memoryview(image)).reshape(HEIGHT, WIDTH, 4)
    x = numpy.arange(WIDTH, dtype=numpy.int64)[None, :]
    y = numpy.arange(HEIGHT, dtype=numpy.int64)[:, None]
    pixels[..., 0] = x.astype(numpy.float32) / numpy.float32(WIDTH)
    pixels[..., 1] = y.astype(numpy.float32) / numpy.float32(HEIGHT)
    pixels[..., 2] = ((x * 7 + y * 13) % 256).astype(numpy.float32) / numpy.float32(255.0)
    pixels[..., 3] = 1.0
    return image


def python_times(folder):
    image = test_image()
    names = {"image": image, "png": os.path.join(folder, "python.png"), "jpeg": os.path.join(folder, "python.jpg"),
             "exr": os.path.join(folder, "python.exr")}
    statements = {
        "CompressPng": "image.compress(type='png')",
        "CompressJpeg": "image.compress(90, type='jpeg')",
        "SavePng": "image.save(png)",
        "SaveJpeg": "image.save(jpeg, 90)",
        "SaveExr": "image.save(exr)",
    }
    return {name: min(timeit.repeat(statement, number=3, repeat=5, globals=names)) / 3
            for name, statement in statements.items()}


def native_times(build):
    # The best of five repetitions, as the Python side takes the best of its repeats.
    result = subprocess.run([os.path.join(build, "image_calls_bench"), "--benchmark_format=json",
                             "--benchmark_repetitions=5"], capture_output=True, text=True, check=True)
    scale = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
    times = {}
    for entry in json.loads(result.stdout)["benchmarks"]:
        if entry.get("run_type") == "iteration":
            seconds = entry["real_time"] * scale[entry["time_unit"]]
            times[entry["run_name"]] = min(seconds, times.get(entry["run_name"], seconds))
    return times


def main():
    build = sys.argv[1] if len(sys.argv) > 1 else os.environ.get("TOVI_TEST_BUILD", "build/tests")
    native = native_times(build)
    with tempfile.TemporaryDirectory() as folder:
        python = python_times(folder)
    print(f"{'operation':14} {'python':>10} {'C++ SDK':>10} {'python MB/s':>12} {'C++ MB/s':>10} {'module share':>13}")
    for name, seconds in python.items():
        share = (seconds - native[name]) / seconds
        print(f"{name:14} {seconds * 1e3:8.1f}ms {native[name] * 1e3:8.1f}ms {PIXEL_BYTES / seconds / 1e6:12.0f} "
              f"{PIXEL_BYTES / native[name] / 1e6:10.0f} {share:12.1%}")


if __name__ == "__main__":
    main()
