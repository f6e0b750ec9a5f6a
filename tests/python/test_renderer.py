"""The renderer object: creation options, host handles, closing, attributes."""

import ctypes
import gc
import sys

import pytest
import tovi

from test_typed_lists import raises

DEFAULT_FLAGS = (0x0B, 0x02, 0x00)

BOOLEAN_OPTIONS = [
    ("enableFrameBuffer", 0, 0x01), ("showFrameBuffer", 0, 0x02), ("useDefaultTfbTheme", 0, 0x08),
    ("showTfbButtonInteractiveStart", 0, 0x10), ("previewRenderer", 0, 0x20),
    ("allowInvalidCharactersInPluginNames", 0, 0x40), ("hideToSceneButton", 1, 0x01), ("useTfbLog", 1, 0x02),
    ("enableTfbPlugins", 1, 0x04), ("showTfbButtonDebugShading", 1, 0x08), ("showTfbButtonTestResolution", 1, 0x10),
    ("showTfbButtonIPRPause", 1, 0x20), ("showTfbButtonIPRUpdate", 1, 0x40),
    ("showTfbButtonCopyToHostFrameBuffer", 1, 0x80), ("showTfbAddLightMixREToSceneButton", 2, 0x01),
    ("showTfbAddDenoiserREToSceneButton", 2, 0x02), ("forwardProgressToTfbProgressBar", 2, 0x04),
]


def created_options(sdk, **options):
    with tovi.Renderer(**options):
        return sdk.last_call("Tovi_ToviRenderer_create")["options"]


def flags(record):
    return (record["flags0"], record["flags1"], record["flags2"])


class BrokenTruth:
    def __bool__(self):
        raise ValueError("no truth")


def test_no_arguments_pass_no_record(sdk):
    assert created_options(sdk) is None


@pytest.mark.parametrize("name, byte, bit", BOOLEAN_OPTIONS)
def test_boolean_options_set_their_bits(sdk, name, byte, bit):
    on = list(DEFAULT_FLAGS)
    on[byte] |= bit
    off = list(DEFAULT_FLAGS)
    off[byte] &= ~bit
    assert flags(created_options(sdk, **{name: 1})) == tuple(on)
    assert flags(created_options(sdk, **{name: []})) == tuple(off)
    # A failing truth test sets bit 0 of a byte and clears the others.
    assert flags(created_options(sdk, **{name: BrokenTruth()})) == tuple(on if bit == 0x01 else off)


def test_record_defaults_and_text_options(sdk):
    record = created_options(sdk, previewRenderer=False, pluginLibraryPath="/plugins", tfbLanguage="zh-CN")
    assert record == {"pluginLibraryPath": "/plugins", "tfbDrawStyle": 0, "flags0": 0x0B, "flags1": 0x02,
                      "flags2": 0, "reserved0": 0, "reserved1": 0, "tfbLanguage": "zh-CN"}
    for text, style in [("MAYA", 4), ("", 0), ("auto", 0), ("Standalone", 1), ("3dsMax", 2), ("3DSMAXQT", 3)]:
        assert created_options(sdk, tfbDrawStyle=text)["tfbDrawStyle"] == style
    raises(TypeError, "Unknown draw style passed.", lambda: tovi.Renderer(tfbDrawStyle="blender"))
    with pytest.raises(TypeError):
        tovi.Renderer(pluginLibraryPath=3)
    with pytest.raises(TypeError):
        tovi.Renderer(noSuchOption=True)


def test_context_manager_and_closing():
    with pytest.raises(KeyError):
        with tovi.Renderer() as renderer:
            assert renderer.closed is False and renderer.getInstanceHandle() != 0
            raise KeyError("propagates")
    assert renderer.closed is True and renderer.getInstanceHandle() == 0
    assert renderer.close() is None and renderer.close() is None
    assert tovi.Renderer is tovi.ToviRenderer
    assert tovi.ToviRenderer.closed.__doc__ == "Renderer already closed and unusable if true."
    assert tovi.ToviRenderer.__enter__.__doc__ == "__enter__(self) -> Renderer\nTovi Renderer context guard."
    assert tovi.ToviRenderer.__exit__.__doc__ == "__exit__(self) -> None\nTovi Renderer finalizer."


def test_reinitialisation_replaces_the_renderer(renderer):
    renderer.classes.Node("first")
    renderer.__init__()
    assert renderer.getInstanceHandle() != 0 and len(renderer.plugins) == 0


def test_auto_commit_attribute(renderer):
    assert renderer.autoCommit is True
    renderer.autoCommit = 0
    assert renderer.autoCommit is False
    raises(TypeError, "autoCommit can only be set to a boolean value.", lambda: setattr(renderer, "autoCommit",
                                                                                       BrokenTruth()))
    raises(TypeError, "Cannot delete the 'autoCommit' attribute.", lambda: delattr(renderer, "autoCommit"))


def test_host_handle_keeps_the_hosts_reference(renderer):
    renderer.classes.Node("shared")
    handle = renderer.getInstanceHandle()
    guest = tovi.Renderer(instanceHandle=handle)
    assert guest.getInstanceHandle() == handle and "shared" in guest.plugins
    guest.close()
    assert "shared" in renderer.plugins  # the host's reference is still good
    raises(RuntimeError, "Instantiation error.", lambda: tovi.Renderer(instanceHandle=0))
    with pytest.raises(TypeError):
        tovi.Renderer(instanceHandle=handle, enableFrameBuffer=True)

    exported = ctypes.PyDLL(tovi.__file__).PyToviRenderer_createFromHandle
    exported.restype, exported.argtypes = ctypes.py_object, [ctypes.c_void_p]
    hosted = exported(handle)
    assert type(hosted) is tovi.ToviRenderer and hosted.autoCommit is True
    assert hosted.plugins["shared"].getName() == "shared"
    hosted.close()
    assert "shared" in renderer.plugins


def test_closed_renderer_fails_cleanly():
    renderer = tovi.Renderer()
    node = renderer.classes.Node("n")
    node_class = renderer.classes.Node
    plugins = renderer.plugins
    renderer.close()
    raises(AttributeError, "Error accessing property 'transform' or wrong property name", lambda: node.transform)
    assert node.isValid() is False and not node and str(node) == ""
    assert len(plugins) == 0 and "n" not in plugins and list(plugins) == []
    raises(RuntimeError, "Plugin creation error", lambda: node_class("again"))
    assert node_class.getInstances() == tovi.PluginList() and node_class.getInstance() is None
    assert node.setName("x") is False and node.deleteThis() is False


def test_no_objects_leak(sdk):
    gc.collect()
    blocks = sdk.live("blocks")
    for _ in range(20):
        with tovi.Renderer() as renderer:
            node = renderer.classes.Node()
            mesh = renderer.classes.GeomStaticMesh("mesh")
            node.geometry = mesh
            list(renderer.plugins)
            list(renderer.classes)
            assert node.getReference("transform") is node
            references = sys.getrefcount(renderer)
        del node, mesh
        gc.collect()
        assert sys.getrefcount(renderer) == 2  # the name and the call's argument
    gc.collect()
    assert sdk.live("blocks") == blocks
    assert references > 2
