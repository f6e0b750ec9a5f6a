"""Export and load of a scene holding a 1,000,000-triangle mesh, in the plain, hex and compressed
forms: throughput of the file in MB/s, and the module's share of the time.

Run: python bench/bench_scene_files.py

The anchor is the same SDK entry called through ctypes on the same library in the same process,
so the difference is what the module adds around the call (argument handling, releasing and
taking back the interpreter lock); the work itself is the SDK's.
"""

import ctypes
import os
import tempfile
import time

import numpy as np
import tovi

GRID = 709  # (GRID - 1)^2 quads, two triangles each: 1,002,528 triangles


class ExportOptions(ctypes.Structure):
    _fields_ = [(name, ctypes.c_int32) for name in (
        "currentFrameOnly", "appendFrameSuffix", "incremental", "compressed", "hexArrays", "hexTransforms",
        "renderElementsSeparateFolders", "printHeader", "stripPaths", "tvdataExport", "tvfilesExport",
        "tvfilesComputeHashes")] + [
        ("leftInterval", ctypes.c_double), ("rightInterval", ctypes.c_double),
        ("tvdataSmallBufferSizeLimit", ctypes.c_int32), ("tvdataFileSizeLimitMiB", ctypes.c_int32),
        ("hostAppString", ctypes.c_char_p), ("sceneBasePath", ctypes.c_char_p), ("subFileInfos", ctypes.c_void_p),
        ("subFileInfoCount", ctypes.c_int32), ("pluginExportCount", ctypes.c_int32),
        ("pluginExportList", ctypes.c_void_p), ("additionalIncludeFiles", ctypes.c_void_p),
        ("additionalIncludeFileCount", ctypes.c_int32), ("reserved", ctypes.c_int32)]


assert ctypes.sizeof(ExportOptions) == 128


def build_mesh(renderer):
    side = np.arange(GRID, dtype=np.float32)
    x, y = np.meshgrid(side, side)
    vertices = tovi.VectorList(count=GRID * GRID)
    np.frombuffer(vertices, dtype=np.float32).reshape(-1, 3)[:] = np.stack(
        [x.ravel(), y.ravel(), np.sin(x.ravel() * 0.1) * np.cos(y.ravel() * 0.1)], axis=1)
    corner = (np.arange(GRID - 1)[None, :] + GRID * np.arange(GRID - 1)[:, None]).ravel()
    quads = np.stack([corner, corner + 1, corner + GRID, corner + 1, corner + GRID + 1, corner + GRID], axis=1)
    faces = tovi.IntList(count=quads.size)
    np.frombuffer(faces, dtype=np.int32)[:] = quads.ravel()
    mesh = renderer.classes.GeomStaticMesh("mesh")
    mesh.vertices = vertices
    mesh.faces = faces
    renderer.classes.Node("node").geometry = mesh
    return quads.size // 3


def best_of_alternating(module_call, native_call, repeat=10):
    """The best time of each, run in turns and in both orders: whichever runs first after the
    other's file is written pays more, so neither may always go first."""
    times = {module_call: [], native_call: []}
    for round_ in range(repeat):
        for call in (module_call, native_call) if round_ % 2 else (native_call, module_call):
            start = time.perf_counter()
            call()
            times[call].append(time.perf_counter() - start)
    return min(times[module_call]), min(times[native_call])


def main():
    report = tovi.getSDKLibraryErrorString() if tovi.getAPIVersion() else ""
    library = ctypes.CDLL(report[report.rindex("(") + 1:-1])
    library.Tovi_ToviRenderer_exportScene.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.POINTER(ExportOptions)]
    library.Tovi_ToviRenderer_load.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
    library.Tovi_ToviRenderer_loadAsText.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
    forms = {"plain": (False, False), "hex": (True, False), "hex+zlib": (True, True)}
    with tovi.Renderer() as source, tovi.Renderer() as target, tempfile.TemporaryDirectory() as folder:
        triangles = build_mesh(source)
        print(f"mesh: {triangles:,} triangles, {GRID * GRID:,} vertices")
        print("module share: the best time through the module less the best time of the bare SDK call, over the former")
        print(f"{'form':10} {'file MB':>8} {'export MB/s':>12} {'module share':>13} {'load MB/s':>10} {'module share':>13}")
        for form, (hex_arrays, compressed) in forms.items():
            path = os.path.join(folder, f"{form.replace('+', '_')}.tvscene")
            options = {"hexArrays": hex_arrays, "compressed": compressed, "printHeader": False}
            record = ExportOptions(hexArrays=hex_arrays, compressed=compressed)
            source_handle, target_handle = source.getInstanceHandle(), target.getInstanceHandle()
            export_module, export_native = best_of_alternating(
                lambda: source.export(path, options),
                lambda: library.Tovi_ToviRenderer_exportScene(source_handle, path.encode(), ctypes.byref(record)))
            load_module, load_native = best_of_alternating(
                lambda: target.load(path), lambda: library.Tovi_ToviRenderer_load(target_handle, path.encode(), 1))
            assert len(target.plugins.mesh.faces) == triangles * 3
            megabytes = os.path.getsize(path) / 1e6
            share = lambda module, native: f"{(module - native) / module:+12.1%}"
            print(f"{form:10} {megabytes:8.1f} {megabytes / export_module:12.1f} {share(export_module, export_native)} "
                  f"{megabytes / load_module:10.1f} {share(load_module, load_native)}")
        # The module's own cost per call, measured where the SDK's work is nearly nothing: the
        # shares above are this over the time of the call, far below their run-to-run noise.
        with tovi.Renderer() as empty:
            handle, calls = empty.getInstanceHandle(), 2000
            per_call = lambda call: min(timeit_loop(call, calls) for _ in range(5)) / calls
            module = per_call(lambda: empty.loadAsText(""))
            native = per_call(lambda: library.Tovi_ToviRenderer_loadAsText(handle, b"", 1))
            print(f"per call on an empty scene: loadAsText through the module {module * 1e6:.2f} us, "
                  f"through ctypes {native * 1e6:.2f} us")


def timeit_loop(call, count):
    start = time.perf_counter()
    for _ in range(count):
        call()
    return time.perf_counter() - start


if __name__ == "__main__":
    main()
