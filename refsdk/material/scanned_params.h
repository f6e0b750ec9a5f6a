// Parameters of scanned materials and the block a scanned-material plugin reads them from.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "tovi_sdk.h"

namespace tovi::ref {

// The block starts with this tag and version, then the record's 22 words as they are.
constexpr uint32_t scannedParamsTag = 0x43535654;  // "TVSC"
constexpr uint32_t scannedParamsVersion = 1;

ToviBRDFScannedParams defaultScannedParams();

// Nothing when a field is out of its range (unknown plain mode or colour space, unknown channel
// bits, non-finite numbers).
std::optional<std::vector<int32_t>> encodeScannedParams(const ToviBRDFScannedParams& params);

}  // namespace tovi::ref
