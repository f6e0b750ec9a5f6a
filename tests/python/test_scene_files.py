"""Scene files through the renderer: argument forms and messages, load errors, includes,
filters, export options, and a round trip of every property type with animation."""

import itertools
import threading

import pytest
import tovi

from test_catalogue_values import declared_type, value_for
from test_typed_lists import raises

SCENE = "Node box { geometry = mesh; object_id = 3; }\nGeomStaticMesh mesh { faces = ListInt(0, 1, 2); }\n"
NO_FILE = "Cannot load file or file not found."


def names(renderer):
    return sorted(plugin.getName() for plugin in renderer.plugins)


def test_argument_forms_and_messages(renderer):
    file_name, text, both = ("You must specify a file name.", "You must provide a text string.",
                             "You must specify a file name and a callback function.")
    text_and_callback = "You must specify a text string and a callback function."
    for call, message in [
        (lambda: renderer.load(), file_name), (lambda: renderer.load(1), file_name),
        (lambda: renderer.loadAsText(b"x"), text), (lambda: renderer.loadFiltered("x"), both),
        (lambda: renderer.loadAsTextFiltered(1, print), text_and_callback),
        (lambda: renderer.append(), file_name), (lambda: renderer.append([]), file_name),
        (lambda: renderer.append(["a", 1]), file_name), (lambda: renderer.append(1, "a"), file_name),
        (lambda: renderer.appendAsText(), file_name), (lambda: renderer.appendAsText([]), file_name),
        (lambda: renderer.appendFiltered("a", "b"), both), (lambda: renderer.appendFiltered([], print), both),
        (lambda: renderer.appendAsTextFiltered(["a"]), text_and_callback),
        (lambda: renderer.export(), "You must specify a file name and optionally export settings."),
        (lambda: renderer.export("out.tvscene", 5),
         "Export settings argument should be a dictionary or at least support the mapping protocol."),
        (lambda: renderer.deletePlugins(5), "You must specify plugins to delete as a list of Plugins or strings (names)."),
        (lambda: renderer.deletePlugins("box"), "You must specify plugins to delete as a list of Plugins or strings (names)."),
    ]:
        raises(TypeError, message, call)
    box = renderer.classes.Node("box")
    raises(TypeError, "Expected plugin name or instance at position 2 (starting from 0)",
           lambda: renderer.deletePlugins(("box", box, 2.5)))
    assert names(renderer) == ["box"]


def test_names_and_texts_of_the_multi_forms(sdk, renderer, tmp_path):
    first, second = tmp_path / "a.tvscene", tmp_path / "b.tvscene"
    first.write_text("Node a { }")
    second.write_text("Node b { geometry = plane; }\nGeomPlane plane { }")
    # The leading strs are the names; the exact bool after them sends names only.
    assert renderer.append(str(first), str(second), True) is None
    assert sdk.last_call("Tovi_ToviRenderer_appendMulti") == {
        "fileNames": [str(first), str(second)], "count": 2, "filter": False, "sendNameOnly": 1, "autoCommit": 1}
    renderer.clearScene()
    renderer.autoCommit = False
    for flag in (1, "yes", False):
        renderer.append([str(first)], flag)
        assert sdk.last_call("Tovi_ToviRenderer_appendMulti")["sendNameOnly"] == 0
        assert sdk.last_call("Tovi_ToviRenderer_appendMulti")["autoCommit"] == 0
        renderer.clearScene()
    renderer.appendAsText("Node t1 { }", "Node t2 { }", 7, "Node ignored { }")
    assert names(renderer) == ["t1", "t2"]
    assert sdk.last_call("Tovi_ToviRenderer_appendMultiAsText")["texts"] == ["Node t1 { }", "Node t2 { }"]
    # A missing file fails all of one call: nothing of the other files is added.
    raises(RuntimeError, NO_FILE, lambda: renderer.append(str(first), str(tmp_path / "missing.tvscene")))
    assert names(renderer) == ["t1", "t2"]
    # load replaces the scene; loadAsText too.
    renderer.load(str(second))
    assert names(renderer) == ["b", "plane"]
    renderer.loadAsText(SCENE)
    assert names(renderer) == ["box", "mesh"] and renderer.plugins["box"].geometry is renderer.plugins["mesh"]


def test_load_errors_name_the_file_and_line(renderer, tmp_path):
    broken = tmp_path / "x.tvscene"
    broken.write_text("// line 1\n" + "Node n%d { }\n" * 10 % tuple(range(10)) + "Node n { object_id = 1.5; }\n")
    raises(RuntimeError, f'Scene file parse error. File "{broken}" at line 12: the value does not fit a int property.',
           lambda: renderer.load(str(broken)))
    raises(RuntimeError, NO_FILE, lambda: renderer.load(str(tmp_path / "none.tvscene")))
    raises(RuntimeError, 'Scene file parse error. File "<text 2>" at line 1: no plugin named \'nowhere\'.',
           lambda: renderer.appendAsText(["Node a { }", "Node b { geometry = nowhere; }"]))
    # An include that fails fails the whole append, with the including file's place.
    good = tmp_path / "good.tvscene"
    good.write_text("Node good { }")
    main = tmp_path / "main.tvscene"
    main.write_text("Node first { }\n\n#include \"lib.tvscene\"\n")
    raises(RuntimeError, f'Scene file parse error. File "{main}" at line 3: cannot find the included file \'lib.tvscene\'.',
           lambda: renderer.append([str(good), str(main)]))
    assert names(renderer) == []
    # Include paths, relative to the first file's folder, find it.
    (tmp_path / "assets").mkdir()
    (tmp_path / "assets" / "lib.tvscene").write_text("GeomPlane from_lib { }")
    assert renderer.setIncludePaths("nowhere") is True
    assert renderer.setIncludePaths(includePaths="assets", overwrite=False) is True
    renderer.append(str(good), str(main))
    assert names(renderer) == ["first", "from_lib", "good"]
    renderer.setIncludePaths("")
    raises(RuntimeError, f'Scene file parse error. File "{main}" at line 3: cannot find the included file \'lib.tvscene\'.',
           lambda: renderer.load(str(main)))
    assert names(renderer) == ["first", "from_lib", "good"]


def test_the_filter_decides_through_the_renderers_thread_state(sdk, renderer, capsys):
    blocks = sdk.live("blocks")
    calls = []
    loader = threading.get_ident()

    def decide(*args):
        calls.append(args)
        assert threading.get_ident() == loader  # the same thread, with the lock taken back
        renderer_, kind, name = args
        answers = {"renamed": "new_name", "dropped": None, "zero": 0, "kept": name, "one": 1}
        if name == "broken":
            raise ValueError("filter failed")
        return answers[name]

    scene = "".join(f"GeomPlane {name} {{ }}\n" for name in ["renamed", "dropped", "zero", "kept", "one", "broken"])
    scene += "Node user { geometry = dropped; material = renamed; }\n"
    renderer.loadAsTextFiltered(scene + "", lambda *args: "user" if args[2] == "user" else decide(*args))
    assert [(args[0], args[1], args[2]) for args in calls] == [
        (renderer, "GeomPlane", name) for name in ["renamed", "dropped", "zero", "kept", "one", "broken"]]
    assert names(renderer) == ["kept", "new_name", "one", "user"]
    assert renderer.plugins.user.geometry is None and renderer.plugins.user.material is renderer.plugins.new_name
    error = capsys.readouterr().err
    assert error.startswith("Unhandled exception in callback <function test_the_filter_decides") and \
        error.rstrip().endswith("ValueError: filter failed")
    # A filter that keeps nothing leaves the scene as it was; the filtered append forms too.
    before = names(renderer)
    renderer.appendAsTextFiltered("Node extra { }", "Node more { }", lambda *args: None)
    assert names(renderer) == before
    renderer.appendAsTextFiltered(["Node extra { }"], lambda r, kind, name: name + "_2")
    assert "extra_2" in names(renderer)
    # The SDK freed every new name the filter handed it.
    assert sdk.live("blocks") == blocks


PROPERTIES = None


def every_property(sdk, renderer):
    """One plugin of every class, every property set; every other one keyed at 1.0 and 2.0."""
    for class_name in sorted(renderer.classes.__dir__()[:-2]):
        plugin = getattr(renderer.classes, class_name)(f"the_{class_name}")
        for index, name in enumerate(plugin):
            code = declared_type(sdk, renderer, class_name, name)
            default = plugin.getValue(name)
            first, later = value_for(code, default, renderer, 0), value_for(code, default, renderer, 1)
            if first is None:
                continue
            if index % 2:
                assert plugin.setValue(name, first, 1.0) and plugin.setValue(name, later, 2.0), name
            else:
                assert plugin.setValue(name, first), name


def exact(a, b):
    """Equal to the last bit; plugins of two renderers by name and output."""
    if isinstance(a, tovi.Plugin):
        return isinstance(b, tovi.Plugin) and (a.getName(), a.getOutputName()) == (b.getName(), b.getOutputName())
    if isinstance(a, (list, tuple, tovi.PluginList)):
        return len(a) == len(b) and all(exact(x, y) for x, y in zip(a, b))
    return type(a) is type(b) and a == b


@pytest.mark.parametrize("hex_arrays,compressed,hex_transforms", list(itertools.product([False, True], repeat=3)))
def test_every_property_type_round_trips_with_animation(sdk, renderer, tmp_path, hex_arrays, compressed,
                                                        hex_transforms):
    every_property(sdk, renderer)
    path = tmp_path / "every.tvscene"
    options = {"hexArrays": hex_arrays, "compressed": compressed, "hexTransforms": hex_transforms}
    assert renderer.export(str(path), options) is True
    assert ("Zip(" in path.read_text()) == (hex_arrays and compressed)
    with tovi.Renderer() as second:
        second.load(str(path))
        assert names(second) == names(renderer)
        compared = 0
        for plugin in renderer.plugins:
            other = second.plugins[plugin.getName()]
            for name in plugin:
                assert plugin.getPropertyState(name) == other.getPropertyState(name), name
                times = plugin.getKeyframeTimes(name)
                assert other.getKeyframeTimes(name) == times
                for time in times or (None,):
                    mine = plugin.getValue(name) if time is None else plugin.getValue(name, time)
                    theirs = other.getValue(name) if time is None else other.getValue(name, time)
                    assert exact(mine, theirs), (plugin.getName(), name, time, mine, theirs)
                    compared += 1
        assert compared > 400


def test_export_options_reach_the_sdk(sdk, renderer, tmp_path):
    box = renderer.classes.Node("box")
    light = renderer.classes.LightOmni("light")
    path = str(tmp_path / "out.tvscene")
    assert renderer.export(path) is True
    defaults = sdk.last_call("Tovi_ToviRenderer_exportScene")
    assert defaults["fileName"] == path
    assert {key for key, value in defaults["options"].items() if value not in (0, None)} == {
        "compressed", "hexArrays", "printHeader"}

    class Settings:  # any mapping will do
        values = {"currentFrameOnly": 1, "appendFrameSuffix": [], "incremental": "yes", "leftInterval": 1,
                  "rightInterval": 2.5, "compressed": 0, "hexArrays": None, "hexTransforms": True,
                  "renderElementsSeparateFolders": True, "printHeader": False, "stripPaths": True,
                  "hostAppString": "Host 2.0", "tvdataExport": True, "tvdataSmallBufferSizeLimit": 100,
                  "tvdataFileSizeLimitMiB": 2, "tvfilesExport": True, "tvfilesComputeHashes": True,
                  "sceneBasePath": str(tmp_path),
                  "subFileInfos": ({"type": "lights", "suffix": "_l"}, {"type": "nodes", "suffix": "_n"}),
                  "pluginExportList": [box, light], "additionalIncludeFiles": ["a.tvscene"]}

        def __getitem__(self, key):
            return self.values[key]

        def keys(self):
            return self.values.keys()

    assert renderer.export(str(tmp_path / "split.tvscene"), Settings()) is True
    options = sdk.last_call("Tovi_ToviRenderer_exportScene")["options"]
    assert options == {
        "currentFrameOnly": 1, "appendFrameSuffix": 0, "incremental": 1, "leftInterval": 1.0, "rightInterval": 2.5,
        "compressed": 0, "hexArrays": 0, "hexTransforms": 1, "renderElementsSeparateFolders": 1, "printHeader": 0,
        "stripPaths": 1, "hostAppString": "Host 2.0", "tvdataExport": 1, "tvdataSmallBufferSizeLimit": 100,
        "tvdataFileSizeLimitMiB": 2, "tvfilesExport": 1, "tvfilesComputeHashes": 1, "sceneBasePath": str(tmp_path),
        "subFileInfos": [{"type": "lights", "suffix": "_l"}, {"type": "nodes", "suffix": "_n"}],
        "subFileInfoCount": 2, "pluginExportList": [box.getIntegerID(), light.getIntegerID()],
        "pluginExportCount": 2, "additionalIncludeFiles": ["a.tvscene"], "additionalIncludeFileCount": 1,
        "reserved": 0}
    assert (tmp_path / "split_l.tvscene").read_text() == "LightOmni light {\n}\n\n"
    # Wrong kinds inside the mapping raise; an export the SDK refuses answers False.
    raises(TypeError, "The export setting 'leftInterval' must be a number.",
           lambda: renderer.export(path, {"leftInterval": "1"}))
    assert renderer.export(path, {"subFileInfos": [{"type": "cameras", "suffix": "_c"}]}) is False
    assert renderer.export(str(tmp_path / "no" / "such" / "folder.tvscene")) is False


def test_deleting_clearing_serializing_and_saving(sdk, renderer):
    renderer.loadAsText("".join(f"Node n{index} {{ }}\n" for index in range(6)))
    plugins = renderer.plugins
    assert renderer.deletePlugins(tovi.PluginList(plugins.n0, plugins.n1)) is True
    assert renderer.deletePlugins({"n2", plugins.n3}) is True
    # A name of no plugin fails, and the others still go.
    assert renderer.deletePlugins(["nobody", "n4"]) is False
    assert names(renderer) == ["n5"]
    assert renderer.serializeScene() is True
    assert renderer.clearScene() is True and names(renderer) == []
    for save in (renderer.saveIrradianceMapFile, renderer.saveLightCacheFile, renderer.savePhotonMapFile,
                 renderer.saveCausticsFile):
        assert save("nothing.bin") is False
