"""Plugin classes: one object per name, instance creation and queries, the class collection."""

import gc
import sys

import pytest
import tovi

from test_typed_lists import raises

CLASS_METHODS = ["getName", "getRenderer", "getInstances", "getInstance", "getInstanceOrCreate", "getMeta",
                 "getUIGuides", "getDescription", "getDeprecation", "getGPUSupport", "getCategories", "__dir__"]


def test_one_class_object_per_name(renderer):
    classes = renderer.classes
    node = classes.Node
    assert classes.Node is node and classes["Node"] is node and classes[node] is node
    assert str(node) == node.getName() == "Node" and node.getRenderer() is renderer
    assert repr(node) == "{'Node': [" + ", ".join(f"'{name}'" for name in node) + "]}"
    assert node.__dir__() == list(node) + CLASS_METHODS
    references = sys.getrefcount(renderer)
    del node
    gc.collect()
    assert sys.getrefcount(renderer) == references - 1  # the class object is gone with its cache entry
    assert classes.Node.getName() == "Node"


def test_creating_instances(sdk, renderer):
    lights = renderer.classes.LightOmni
    first = lights("a")
    assert type(first) is tovi.Plugin and first.getType() == "LightOmni"
    assert sdk.last_call("Tovi_ToviRenderer_newPlugin") == {"name": "a", "className": "LightOmni", "autoCommit": 1}
    raises(RuntimeError, "Plugin with the same name already exists.", lambda: lights("a"))
    raises(RuntimeError, "Invalid plugin name. Allowed characters are A-Z a-z 0-9 @ | _", lambda: lights("a b"))
    raises(TypeError, "Plugin name, if provided, must be a text string.", lambda: lights(3))
    unnamed = lights(ignored_keyword=1)
    assert str(unnamed) not in ("", "a") and sdk.last_call("Tovi_ToviRenderer_newPlugin")["name"] is None
    with tovi.Renderer(allowInvalidCharactersInPluginNames=True) as lenient:
        assert str(lenient.classes.Node("a b")) == "a b"


def test_finding_instances(renderer):
    spheres = renderer.classes.GeomSphere
    assert spheres.getInstance() is None and len(spheres.getInstances()) == 0
    created = spheres.getInstanceOrCreate("b")
    assert str(created) == "b"
    assert spheres.getInstanceOrCreate("c") is created and "c" not in renderer.plugins
    second, third = spheres("x"), spheres("y")
    instances = spheres.getInstances()
    assert type(instances) is tovi.PluginList and list(instances) == [created, second, third]
    assert spheres.getInstance() is third  # the last of the SDK's list
    assert spheres.getInstanceOrCreate() is third
    with pytest.raises(TypeError):
        spheres.getInstanceOrCreate(5)


def test_class_queries(renderer):
    node = renderer.classes.Node
    assert node.getDescription().startswith("An object of the scene")
    assert node.getDeprecation() is None and node.getGPUSupport() == "Full"
    raises(AttributeError, "Error accessing property 'nope' or wrong property name", lambda: node.nope)
    raises(KeyError, "'nope'", lambda: node["nope"])
    raises(TypeError, "You must provide a property name as a text string.", lambda: node[1])
    assert node.transform["type"] == "Transform"


def test_class_collection(renderer):
    classes = renderer.classes
    names = classes.__dir__()[:-2]
    assert len(classes) == len(names) and "Node" in names and classes.__dir__()[-2:] == ["getRenderer", "__dir__"]
    assert [cls.getName() for cls in classes] == names and all(cls is classes[cls.getName()] for cls in classes)
    assert repr(classes) == str(names) and classes.getRenderer() is renderer
    assert "Node" in classes and classes.Node in classes and "NoSuchClass" not in classes and 3 not in classes
    raises(AttributeError, "No class with the given name", lambda: classes.NoSuchClass)
    raises(KeyError, "'NoSuchClass'", lambda: classes["NoSuchClass"])
    raises(TypeError, "Class name string is expected", lambda: classes[3])
    with tovi.Renderer() as other:
        with pytest.raises(KeyError) as error:
            classes[other.classes.Node]
        assert error.value.args == () and other.classes.Node not in classes
    assert type(classes).__doc__ == "Tovi Plugin classes dictionary"
    assert type(iter(classes)).__doc__ == "Tovi Plugin Classes iterator"
