"""Plugin wrappers: identity, naming, references, deletion, the plugin collection."""

import gc
import sys

import pytest
import tovi

from test_typed_lists import raises

PLUGIN_METHODS = [
    "getValueAsString", "setValueAsString", "getValue", "setValue", "getIntegerID", "getName", "setName", "getType",
    "getClass", "getCategories", "getRenderer", "getMeta", "getUIGuides", "isPropertyAnimated", "getPropertyState",
    "getPropertyStateAsString", "getKeyframeTimes", "replaceWith", "getOutputName", "getReference", "getPlugin",
    "deleteThis", "isValid", "setUpdatedDefaultProperties", "__dir__",
]


def test_one_wrapper_per_plugin(renderer):
    mesh = renderer.classes.GeomStaticMesh("mesh")
    node = renderer.classes.Node("node")
    node.geometry = mesh
    assert renderer.plugins.mesh is mesh and renderer.plugins["mesh"] is mesh and node.geometry is mesh
    assert [plugin for plugin in renderer.plugins if plugin is mesh] == [mesh]
    assert mesh.getPlugin() is mesh and mesh.getReference("vertices") is mesh  # index 0: the plain plugin
    # A wrapper lives as long as Python holds it; then the next lookup makes a new one.
    references = sys.getrefcount(renderer)
    del mesh
    gc.collect()
    assert sys.getrefcount(renderer) == references - 1
    again = renderer.plugins.mesh
    assert sys.getrefcount(renderer) == references and again is node.geometry


def test_references_to_outputs(renderer):
    texture = renderer.classes.TexBitmap("tex")
    alpha = texture.getReference("out_alpha")
    assert type(alpha) is tovi.PluginRef and isinstance(alpha, tovi.Plugin)
    assert alpha is texture.getReference("out_alpha") and alpha is not texture
    assert str(alpha) == repr(alpha) == "tex::out_alpha" and alpha.getOutputName() == "out_alpha"
    assert alpha.getPlugin() is texture and texture.getOutputName() is None
    assert texture.getReference("no_such") is None
    assert alpha.getIntegerID() == texture.getIntegerID() and alpha.getType() == "TexBitmap"
    raises(TypeError, "A single string argument - a property name is expected.", lambda: texture.getReference())
    raises(TypeError, "A single string argument - a property name is expected.", lambda: texture.getReference("a", "b"))
    raises(TypeError, "You must provide a property name.", lambda: texture.getReference(1))


def test_repr_prints_nested_plugins_by_name(renderer):
    plane = renderer.classes.GeomPlane("ground")
    node = renderer.classes.Node("object")
    node.geometry = plane
    assert repr(plane) == "{'name': 'ground', 'type': 'GeomPlane', 'value': {}}"
    text = repr(node)
    assert text.startswith("{'name': 'object', 'type': 'Node', 'value': {'transform': Transform(")
    assert "'geometry': 'ground', 'material': None, 'visible': True" in text and text.endswith("}}")
    texture = renderer.classes.TexBitmap("tex")
    assert "'out_alpha': None" in repr(texture)


def test_names_types_and_dir(renderer):
    node = renderer.classes.Node("first")
    assert str(node) == node.getName() == "first" and node.getType() == "Node"
    assert node.getClass() is renderer.classes.Node and node.getRenderer() is renderer
    assert node.setName("second") is True and str(node) == "second" and "first" not in renderer.plugins
    renderer.classes.Node("third")
    assert node.setName("third") is False and node.setName("bad name") is False
    raises(TypeError, "You must provide a new name for the Plugin.", lambda: node.setName(3))
    raises(TypeError, "You must provide a new name for the Plugin.", lambda: node.setName())
    names = node.__dir__()
    assert names[:3] == ["transform", "geometry", "material"] and names[-25:] == PLUGIN_METHODS
    assert names == list(node) + PLUGIN_METHODS
    assert tovi.Plugin.PROPERTY_STATE_INVALID == 0 and tovi.Plugin.PROPERTY_STATE_ANIMATED == 3
    assert tovi.Plugin.PROPERTY_STATE_DEFAULT == 1 and tovi.Plugin.PROPERTY_STATE_NOT_ANIMATED == 2
    with pytest.raises(TypeError):
        class Derived(tovi.Plugin):
            pass


def test_delete_and_replace(renderer):
    first = renderer.classes.GeomSphere("first")
    second = renderer.classes.GeomSphere("second")
    node = renderer.classes.Node("node")
    node.geometry = first
    assert node.geometry.replaceWith(second) is True and node.geometry is second
    assert first.replaceWith("second") is True and first.replaceWith(None) is True
    raises(TypeError, "No plugin with the given name in the scene.", lambda: first.replaceWith("missing"))
    message = "This method has one argument, plugin instance, plugin name or None."
    raises(TypeError, message, lambda: first.replaceWith())
    raises(TypeError, message, lambda: first.replaceWith(3))
    assert second.deleteThis() is True and not second and second.isValid() is False
    assert second.deleteThis() is False and node.geometry is None
    raises(AttributeError, "Error accessing property 'radius' or wrong property name", lambda: second.radius)
    assert first and bool(first) is True


def test_plugin_collection(renderer):
    other = tovi.Renderer()
    foreign = other.classes.Node("node")
    node = renderer.classes.Node("node")
    light = renderer.classes.LightOmni()
    plugins = renderer.plugins
    assert plugins is renderer.plugins and plugins.getRenderer() is renderer
    assert len(plugins) == 2 and sorted(map(str, plugins)) == sorted(["node", str(light)])
    assert repr(plugins) == str([str(plugin) for plugin in plugins])
    assert plugins[node] is node and node in plugins and "node" in plugins and 3 not in plugins
    with pytest.raises(KeyError) as error:
        plugins[foreign]
    assert error.value.args == ()
    assert foreign not in plugins
    raises(KeyError, "'missing'", lambda: plugins["missing"])
    raises(TypeError, "Plugin name string is expected", lambda: plugins[3])
    raises(AttributeError, "No plugin with the given name", lambda: plugins.missing)
    raises(RuntimeError, "You cannot assign values to plugins", lambda: setattr(plugins, "x", 1))
    raises(RuntimeError, "You cannot assign values to plugins", lambda: plugins.__setitem__("x", 1))
    raises(AttributeError, "No plugin with the given name", lambda: delattr(plugins, "missing"))
    raises(KeyError, "'missing'", lambda: plugins.__delitem__("missing"))
    raises(TypeError, "Expected plugin name or instance", lambda: plugins.__delitem__(3))
    assert plugins.__dir__()[-2:] == ["getRenderer", "__dir__"]
    iterator = iter(plugins)
    del plugins[light]
    assert sorted([str(plugin) for plugin in iterator if plugin]) == ["node"] and len(plugins) == 1
    del plugins.node
    assert len(plugins) == 0 and not node
    other.close()


def test_item_and_attribute_errors(renderer):
    node = renderer.classes.Node("n")
    raises(TypeError, "Property name string is expected, not int", lambda: node[3])
    raises(KeyError, "'nope'", lambda: node["nope"])
    raises(AttributeError, "Error accessing property 'nope' or wrong property name", lambda: node.nope)
    raises(NotImplementedError, "Plugin properties cannot be deleted.", lambda: delattr(node, "visible"))
    raises(NotImplementedError, "Plugin properties cannot be deleted.", lambda: node.__delitem__("visible"))
    assert list(iter(node))[:2] == ["transform", "geometry"]
    assert node.setUpdatedDefaultProperties() is False  # the reference SDK has no updated defaults yet
