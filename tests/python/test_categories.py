"""Categories: the collection, one object per category and renderer, categories as collections
of classes, membership, and AND-within / OR-between selections checked against a computation
over every plugin and class."""

import itertools
import random

import pytest
import tovi


@pytest.fixture
def scene(renderer):
    """Two instances of every class."""
    for cls in renderer.classes:
        cls()
        cls()
    return renderer


def test_collection(renderer):
    categories = renderer.categories
    assert categories is renderer.categories
    names = eval(repr(categories))
    assert len(categories) == len(names) and {"lights", "materials", "brdfs", "textures", "geometry",
                                               "geometricObjects", "cameras", "settings", "renderChannels"} <= set(names)
    listed = list(categories)
    assert [str(c) for c in listed] == names == [c.getName() for c in listed]
    assert all(c is categories[str(c)] is getattr(categories, str(c)) for c in listed)
    assert repr(categories.lights) == "Category lights"
    assert categories.__dir__() == names + ["getInstances", "getClasses", "getRenderer", "__dir__"]
    assert categories.getRenderer() is renderer and categories.lights.getRenderer() is renderer
    assert "lights" in categories and categories.lights in categories and "NoSuch" not in categories and 3 not in categories
    with pytest.raises(KeyError) as error:
        categories["NoSuch"]
    assert error.value.args == ("NoSuch",)
    with pytest.raises(AttributeError, match="Unrecognized category name"):
        categories.NoSuch
    with pytest.raises(TypeError, match="Category name string is expected"):
        categories[0]
    with tovi.Renderer() as other:
        assert renderer.categories.lights not in other.categories
        assert other.categories.lights is not renderer.categories.lights


def test_category_as_a_collection_of_classes(renderer):
    lights = renderer.categories.lights
    names = [str(cls) for cls in lights]
    assert "LightSphere" in names and "Node" not in names and len(lights) == len(names)
    assert lights[0] is renderer.classes[names[0]] and lights[-1] is renderer.classes[names[-1]]
    assert lights["LightSphere"] is lights.LightSphere is renderer.classes.LightSphere
    assert lights.__dir__() == names + ["belongs", "getInstances", "getName", "getRenderer", "__dir__"]
    with pytest.raises(IndexError, match="Index out of range"):
        lights[len(names)]
    with pytest.raises(TypeError, match="Indices must be integers"):
        lights[1.5]
    with pytest.raises(TypeError, match="Class name or index is expected"):
        lights[None]
    with pytest.raises(KeyError) as error:
        lights["Node"]
    assert error.value.args == ("Node",)
    with pytest.raises(AttributeError, match="No class with the given name in this category"):
        lights.Node


def test_membership(renderer):
    lights, areas = renderer.categories.lights, renderer.categories.areaLights
    sphere, omni, node = renderer.classes.LightSphere("s"), renderer.classes.LightOmni("o"), renderer.classes.Node("n")
    assert sphere in lights and sphere in areas and omni in lights and omni not in areas and node not in lights
    assert renderer.classes.LightSphere in areas and "LightSphere" in areas and "LightOmni" not in areas and 5 not in lights
    assert lights.belongs(sphere) and lights.belongs(renderer.classes.LightOmni) and not areas.belongs(omni)
    for wrong in ("LightSphere", 5):
        with pytest.raises(TypeError, match="This function expects a plugin or a class instance"):
            lights.belongs(wrong)
    with tovi.Renderer() as other:
        foreign = other.classes.LightSphere("s")
        assert foreign not in lights and not lights.belongs(foreign)
    assert sphere.getCategories() == {lights, areas} == renderer.classes.LightSphere.getCategories()
    assert all(c is renderer.categories[str(c)] for c in sphere.getCategories())
    assert node.getCategories() == {renderer.categories.geometricObjects}
    assert list(lights.getInstances()) == [sphere, omni]


def test_selections_agree_with_a_computation(sdk, scene):
    categories = list(scene.categories)
    class_categories = {str(cls): cls.getCategories() for cls in scene.classes}
    plugins = list(scene.plugins)
    plugin_categories = {plugin.getName(): plugin.getCategories() for plugin in plugins}
    assert all(plugin_categories[p.getName()] == class_categories[p.getType()] for p in plugins)

    def expected(members, selection):
        return {name for name, owned in members.items() if any(set(group) <= owned for group in selection)}

    chooser = random.Random(5)
    selections = [[[c] for c in categories], [categories], [[]], [], [[categories[0], categories[-1]]]]
    for _ in range(60):
        selections.append([chooser.sample(categories, chooser.randint(1, 3)) for _ in range(chooser.randint(1, 3))])
    selections += [[list(pair)] for pair in itertools.combinations(categories, 2)]
    matched = 0
    for selection in selections:
        as_tuples = [tuple(group) for group in selection]
        instances = scene.categories.getInstances(*as_tuples)
        assert isinstance(instances, tovi.PluginList)
        assert {p.getName() for p in instances} == expected(plugin_categories, selection), selection
        classes = scene.categories.getClasses(*(set(group) for group in selection))
        assert {str(cls) for cls in classes} == expected(class_categories, selection), selection
        assert all(cls is scene.classes[str(cls)] for cls in classes)
        matched += bool(classes)
    assert matched >= 20  # the combinations reach real overlaps, not just empty answers
    lights, areas, cameras = scene.categories.lights, scene.categories.areaLights, scene.categories.cameras
    scene.categories.getInstances([lights, areas], iter([cameras]))
    index = {str(c): i for i, c in enumerate(categories)}
    assert sdk.last_call("Tovi_ToviRenderer_getPluginsOfCategories")["masks"] == [
        (1 << index["lights"]) | (1 << index["areaLights"]), 1 << index["cameras"]]


def test_selection_arguments_must_be_sequences_of_categories(renderer):
    lights = renderer.categories.lights
    message = "This function expects a sequence of category objects or sequences of category objects"
    for arguments in ((lights,), ([lights, "cameras"],), ([lights], 5), ([renderer.classes.Node],)):
        for call in (renderer.categories.getInstances, renderer.categories.getClasses):
            with pytest.raises(TypeError, match=message):
                call(*arguments)

    def failing():
        yield lights
        raise ValueError("broken")

    with pytest.raises(TypeError, match=message):
        renderer.categories.getClasses(failing())
