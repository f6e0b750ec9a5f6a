"""Scene operations from Python against the same SDK calls from C++ (bench/scene_calls.cpp).

Run: python bench/bench_scene.py <test build folder>   (the folder that holds scene_calls_bench).
The difference per operation is the module's own share: argument handling, the value stream,
the wrapper and the result objects.
"""

import json
import os
import subprocess
import sys
import timeit

import tovi


def python_times():
    with tovi.Renderer() as renderer:
        light = renderer.classes.LightSphere("light")
        mesh = renderer.classes.GeomStaticMesh("mesh")
        vertices = tovi.VectorList(count=1_000_000)
        numbers = {"light": light, "mesh": mesh, "vertices": vertices}
        best = lambda statement, number: min(timeit.repeat(statement, number=number, repeat=7, globals=numbers)) / number
        times = {
            "SetFloatProperty": best("light.intensity = 1.0", 200_000),
            "GetFloatProperty": best("light.intensity", 200_000),
            "SetMillionVectors": best("mesh.setValue('vertices', vertices)", 5),
        }
    def create():
        with tovi.Renderer() as renderer:
            node = renderer.classes.Node
            for _ in range(100_000):
                node()
    times["CreateHundredThousandPlugins"] = min(timeit.repeat(create, number=1, repeat=3))
    return times


def native_times(build):
    result = subprocess.run([os.path.join(build, "scene_calls_bench"), "--benchmark_format=json"],
                            capture_output=True, text=True, check=True)
    scale = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
    return {entry["name"]: entry["real_time"] * scale[entry["time_unit"]]
            for entry in json.loads(result.stdout)["benchmarks"]}


def main():
    build = sys.argv[1] if len(sys.argv) > 1 else os.environ.get("TOVI_TEST_BUILD", "build/tests")
    native = native_times(build)
    python = python_times()
    print(f"{'operation':32} {'python':>12} {'C++ SDK':>12} {'module adds':>12}")
    for name, seconds in python.items():
        added = seconds - native[name]
        unit, factor = ("ns", 1e9) if seconds < 1e-3 else ("ms", 1e3)
        print(f"{name:32} {seconds * factor:10.1f}{unit} {native[name] * factor:10.1f}{unit} "
              f"{added * factor:10.1f}{unit}")


if __name__ == "__main__":
    main()
