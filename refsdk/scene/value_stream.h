// The property value stream: one tagged, little-endian item per value, as values travel between
// the SDK and its callers.
//
// Callers send plain values (codes 0 1 3 4 5 6 7 9 10 12 28 210), packed plugin lists inline
// (110) and packed typed lists by the address of their elements (2000 2001 2004 2005 2008), which
// are copied during the call. The SDK answers with the same plain codes plus doubles (2), packed
// lists inline (100 101 104 105 109 110 128), transforms whose offset is single precision (8) and
// texts that stay where they are (200, the address of a zero-terminated text that lives as long
// as the library).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "scene/value.h"

namespace tovi::ref::scene {

enum StreamCode : uint32_t {
    streamInt = 0,
    streamFloat = 1,
    streamDouble = 2,
    streamBool = 3,
    streamVector = 4,
    streamColor = 5,
    streamAColor = 6,
    streamMatrix = 7,
    streamTransformFloat = 8,
    streamString = 9,
    streamPlugin = 10,
    streamList = 12,
    streamTransform = 28,
    streamIntList = 100,
    streamFloatList = 101,
    streamVectorList = 104,
    streamColorList = 105,
    streamStringList = 109,
    streamPluginList = 110,
    streamTransformList = 128,
    streamTextAddress = 200,
    streamPluginOutput = 210,
    streamIntListAddress = 2000,
    streamFloatListAddress = 2001,
    streamVectorListAddress = 2004,
    streamColorListAddress = 2005,
    streamTransformListAddress = 2008,
};

// Reads one item at cursor and advances past it. Nothing for an unknown code or lists nested too
// deep; the stream itself is trusted to be as long as its items say.
std::optional<Value> decodeStreamItem(const uint8_t*& cursor);

struct EncodeOptions {
    // Transforms as code 8 (single-precision offset) instead of 28.
    bool singlePrecisionTransforms = false;
    // When set, a string value is sent as code 200 with this address instead of inline.
    const char* lastingText = nullptr;
};

// Appends one item for the value.
void encodeStreamItem(const Value& value, std::vector<uint8_t>& out, const EncodeOptions& options = {});

}  // namespace tovi::ref::scene
