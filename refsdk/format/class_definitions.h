// The text in which plugin classes are declared (the reference catalogue is written in it):
//
//   # a comment, to the end of the line
//   class LightSphere gpu=full
//   "A spherical area light."
//     radius (size) : float = 1 "Radius of the sphere, in scene units."
//     samples : List<float>[4] = ListFloat(0, 0, 1, 1) gpu=partial "..."
//
// A property line: its name, optional aliases in parentheses, ':', the type's name (as property
// types are named) with an optional fixed element count in brackets, an optional '=' and default
// value in the value syntax, an optional gpu=full|partial|none, and its description in quotes.
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
