// The guide text of a property: editor guides as `key=value` items separated by ';'.
//
//   displayName="Image width"; min=1; softMax=8192; step=1; tier=basic; rollout="Image"
//
// Keys and values:
//   displayName, rollout, tab, overriddenBy   a text in quotes
//   min, max, step, softMin, softMax          a number
//   units        default | radians | degrees | millimeters | centimeters | meters
//   quantity     unknown | distance | angle | localSubdivs
//   fileAssetOp  load | save | loadAndSave
//   tier         basic | default | advanced
//   gpu          full | partial | none
//   enum         (0:"Box", 1:"Triangle")       labelled integer values
//   stringEnum, fileAsset, fileAssetNames, overrides    ("a", "b")   texts in quotes
//   attributes   (objectSet, textureSlot, lightSet, tripleComponent, bitSet, boolean, none)
//   default      (1) or (0.5, 0.5, 1)          the editor's defaults
//   enable, hide a condition over the plugin's own properties, to the next ';':
//                names, numbers, texts in quotes, true, false, == != < <= > >=, !, &&, ||, ( )
// Each key may appear once.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scene/ui_guides.h"

namespace tovi::ref::format {

// The guides of the text; nothing, with a message naming the offset, on the first error.
std::optional<scene::UIGuides> parseUIGuides(std::string_view text, std::string* error);

}  // namespace tovi::ref::format
