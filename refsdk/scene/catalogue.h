// The plugin classes of the reference renderer: settings, cameras, geometry, materials,
// textures, lights and render channels. docs/catalogue.md describes every class.
#pragma once

#include <string_view>
#include <vector>

#include "scene/plugin_class.h"

namespace tovi::ref::scene {

// Built on first use and never changed afterwards; shared by every renderer.
const ClassRegistry& catalogue();

// The declarations the catalogue is read from, in the class definition text.
const std::vector<std::string_view>& catalogueSources();

}  // namespace tovi::ref::scene
