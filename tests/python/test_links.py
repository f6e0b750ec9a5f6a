"""Plugin links: the references of a scene through plain properties, lists and outputs, as tuples
of the very wrapper objects the script holds."""

import pytest
import tovi


@pytest.fixture
def scene(renderer):
    classes = renderer.classes
    s = {name: getattr(classes, cls)(name) for name, cls in [
        ("node", "Node"), ("sphere", "GeomSphere"), ("material", "MtlSingleBRDF"), ("brdf", "BRDFDiffuse"),
        ("checker", "TexChecker"), ("multi", "MtlMulti"), ("lonely", "LightOmni")]}
    s["out_color"] = s["checker"].getReference("out_color")
    s["out_alpha"] = s["checker"].getReference("out_alpha")
    s["node"].geometry = s["sphere"]
    s["node"].material = s["material"]
    s["material"].brdf = s["brdf"]
    s["brdf"].color = s["out_color"]
    s["brdf"].roughness = s["out_alpha"]
    s["multi"].mtls_list = [s["material"], s["material"]]
    return s


def identical(links, expected):
    return len(links) == len(expected) and all(
        type(link) is tuple and link[0] is e[0] and link[1] == e[1] and link[2] is e[2] for link, e in zip(links, expected))


def test_children(sdk, scene):
    s = scene
    direct = [(s["node"], "geometry", s["sphere"]), (s["node"], "material", s["material"])]
    assert identical(tovi.Util.getChildPlugins(s["node"]), direct)
    assert sdk.last_call("Util_getChildPlugins")["recursive"] == 0
    assert identical(tovi.Util.getChildPlugins(s["node"], 1), direct + [
        (s["material"], "brdf", s["brdf"]), (s["brdf"], "color", s["out_color"]), (s["brdf"], "roughness", s["out_alpha"])])
    assert sdk.last_call("Util_getChildPlugins") == {"pluginID": s["node"].getIntegerID(), "recursive": 1}
    assert identical(tovi.Util.getChildPlugins(s["multi"]), [(s["multi"], "mtls_list", s["material"])] * 2)
    assert isinstance(tovi.Util.getChildPlugins(s["brdf"])[0][2], tovi.PluginRef)
    assert tovi.Util.getChildPlugins(s["lonely"]) == [] and tovi.Util.getChildPlugins(s["checker"], 1) == []


def test_parents(scene):
    s = scene
    material_parents = [(s["node"], "material", s["material"]), (s["multi"], "mtls_list", s["material"]),
                        (s["multi"], "mtls_list", s["material"])]
    assert identical(tovi.Util.getParentPlugins(s["material"]), material_parents)
    # A reference through an output is a parent of the plugin, named by that output.
    assert identical(tovi.Util.getParentPlugins(s["checker"]),
                     [(s["brdf"], "color", s["out_color"]), (s["brdf"], "roughness", s["out_alpha"])])
    assert identical(tovi.Util.getParentPlugins(s["checker"], True),
                     [(s["brdf"], "color", s["out_color"]), (s["brdf"], "roughness", s["out_alpha"]),
                      (s["material"], "brdf", s["brdf"])] + material_parents)
    assert tovi.Util.getParentPlugins(s["node"], 1) == []
    # References follow the scene as it changes.
    s["node"].material = None
    s["multi"].mtls_list = [s["material"]]
    assert identical(tovi.Util.getParentPlugins(s["material"]), [(s["multi"], "mtls_list", s["material"])])


def test_wrappers_are_made_when_the_script_holds_none(renderer):
    node = renderer.classes.Node("n")
    node.geometry = renderer.classes.GeomSphere("g")
    (first,) = tovi.Util.getChildPlugins(node)
    assert first[2].getName() == "g" and first[2] is renderer.plugins["g"]
    (again,) = tovi.Util.getChildPlugins(node)
    assert again[2] is first[2]


def test_arguments(sdk, scene):
    blocks = sdk.live("blocks")
    with pytest.raises(TypeError, match="You must specify a Plugin as first parameter."):
        tovi.Util.getChildPlugins("node")
    with pytest.raises(TypeError, match=r"You must specify a plugin and whether the search is recursive\."):
        tovi.Util.getParentPlugins()
    with pytest.raises(TypeError, match=r"You must specify a plugin and whether the search is recursive\."):
        tovi.Util.getChildPlugins(scene["node"], "yes")
    for _ in range(3):
        tovi.Util.getChildPlugins(scene["node"], 1)
        tovi.Util.getParentPlugins(scene["material"], 1)
    assert sdk.live("blocks") == blocks
    scene["lonely"].deleteThis()
    assert tovi.Util.getChildPlugins(scene["lonely"]) == []


def test_ies_intensity_is_not_read_yet(tmp_path):
    assert tovi.Util.getIESPrescribedIntensity(str(tmp_path / "lamp.ies")) == -1.0
    with pytest.raises(TypeError):
        tovi.Util.getIESPrescribedIntensity()
    with pytest.raises(TypeError):
        tovi.Util()
