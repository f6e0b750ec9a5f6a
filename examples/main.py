"""The main job: what the bundled SDK offers on this machine.

Once rendering lands, this script renders the example scene and writes its image; until then it
shows the SDK's versions, how the library was loaded, and the compute devices it can use.
"""

import tovi


def show_devices(kind, devices):
    print(f"{kind} devices: {len(devices)}")
    for index, device in enumerate(devices):
        use = [use for use, flag in (("rendering", device["useForRendering"]),
                                     ("denoising", device["useForDenoising"])) if flag]
        print(f"  [{index}] {device['type']} {device['name']!r}: {device['totalMemoryMB']} MB, "
              f"{device['frequencyMHz']} MHz, ~{device['gigaFlops']} GFLOPS; used for {', '.join(use) or 'nothing'}")


def main():
    print("SDK API version:", ".".join(map(str, tovi.getAPIVersion())))
    print("Core version:", ".".join(map(str, tovi.getToviVersion())), "-", tovi.getToviVersionDetails())
    print("Load report:", tovi.getSDKLibraryErrorString())
    missing = tovi.getSDKLibraryMissingFunctions()
    if missing:
        print("Missing entries:", ", ".join(missing))
    print("Distributed rendering generation:", 2 if tovi.isDR2() else 1)
    print("Material library:", tovi.getMaterialLibraryPath() or "not installed")
    for kind, listing in (("CUDA", tovi.getComputeDevicesCUDA), ("Optix", tovi.getComputeDevicesOptix),
                          ("Metal", tovi.getComputeDevicesMetal), ("MetalRT", tovi.getComputeDevicesMetalRT),
                          ("Denoiser", tovi.getComputeDevicesDenoiser)):
        show_devices(kind, listing())


if __name__ == "__main__":
    main()
