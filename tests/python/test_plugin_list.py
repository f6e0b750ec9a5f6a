"""PluginList: identifiers bound to one renderer."""

import numpy
import pytest
import tovi
from tovi import PluginList

from test_typed_lists import raises

OTHER_RENDERER = "Only plugins belonging to the same renderer are accepted"


def test_binding_to_one_renderer(renderer):
    with tovi.Renderer() as other:
        mine, theirs = renderer.classes.Node("mine"), other.classes.Node("theirs")
        plugins = PluginList(mine, None)
        assert list(plugins) == [mine, None] and plugins[0] is mine
        raises(ValueError, OTHER_RENDERER, lambda: plugins.append(theirs))
        raises(ValueError, OTHER_RENDERER, lambda: plugins.__setitem__(1, theirs))
        raises(ValueError, OTHER_RENDERER, lambda: plugins.extend([theirs]))
        raises(ValueError, OTHER_RENDERER, lambda: plugins + PluginList(theirs))
        raises(ValueError, OTHER_RENDERER, lambda: plugins.extend(PluginList(theirs)))
        assert list(plugins) == [mine, None]
        del plugins[0]
        del plugins[0]
        plugins.append(theirs)  # emptied, it takes any renderer again
        assert plugins[0] is theirs
        doubled = plugins * 2
        assert list(doubled) == [theirs, theirs] and list(doubled[::2]) == [theirs]
        assert list(doubled + PluginList(None)) == [theirs, theirs, None]
        raises(ValueError, OTHER_RENDERER, lambda: doubled + PluginList(mine))


def test_conversions_membership_and_text(renderer):
    first, second = renderer.classes.Node("first"), renderer.classes.Node("second")
    plugins = PluginList(first, None, second)
    raises(TypeError, "Unsupported type", lambda: plugins.append(1))
    raises(TypeError, "Only Plugin can be set", lambda: plugins.__setitem__(0, "first"))
    raises(TypeError, "Source must contain only plugins", lambda: plugins.extend([first, 3]))
    raises(TypeError, "Source must be iterable", lambda: PluginList(source=5))
    assert first in plugins and None in plugins and "first" not in plugins
    assert None in PluginList(None) and None not in PluginList(first)
    assert repr(plugins) == "PluginList(first, None, second)"
    assert str(PluginList(source=[first] * 20)).endswith("first, ... 8 more items)")
    ids = numpy.frombuffer(plugins, dtype=numpy.uint64)
    assert ids.tolist() == [first.getIntegerID(), 2**64 - 1, second.getIntegerID()]
    assert first.deleteThis() and repr(plugins) == "PluginList(None, None, second)" and plugins[0] is None
    assert PluginList(second) == PluginList(second) and PluginList(second) < PluginList(second, None)
    with tovi.Renderer() as other:
        other_node = other.classes.Node("x")
        assert other_node not in plugins
