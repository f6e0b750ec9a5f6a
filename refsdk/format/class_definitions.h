// The text in which plugin classes are declared (the reference catalogue is written in it):
//
//   # a comment, to the end of the line
//   class LightSphere gpu=full categories=lights,areaLights
//   "A spherical area light."
//     radius (size) : float = 1 "Radius of the sphere, in scene units." {min=0; softMax=100}
//     samples : List<float>[4] = ListFloat(0, 0, 1, 1) gpu=partial "..."
//
// A class line: its name, an optional gpu=full|partial|bake|none, optional categories (names of
// scene/categories.h, separated by commas) and its description in quotes.
// A property line: its name, optional aliases in parentheses, ':', the type's name (as property
// types are named) with an optional fixed element count in brackets, an optional '=' and default
// value in the value syntax, an optional gpu=full|partial|none, its description in quotes, and
// optionally its editor guides in braces (format/ui_guides.h), which may run over several lines.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "scene/plugin_class.h"

namespace tovi::ref::format {

// Adds the classes of the text to the registry. False, with a message naming the line, on the
// first error.
bool readClassDefinitions(std::string_view text, scene::ClassRegistry& registry, std::string* error);

}  // namespace tovi::ref::format
