#include "material/scanned_params.h"

#include <cmath>
#include <cstring>

namespace tovi::ref {

ToviBRDFScannedParams defaultScannedParams() {
    ToviBRDFScannedParams params{};
    for (int channel = 0; channel < 3; ++channel) {
        params.filterColor[channel] = 1.0f;
        params.paintColor[channel] = 1.0f;
        params.ccMultiplier[channel] = 1.0f;
    }
    params.uvScale[0] = params.uvScale[1] = 1.0f;
    params.bumpMultiplier = 1.0f;
    params.saturation = 1.0f;
    params.plainMode = TOVI_SCANNED_PLAIN_NONE;
    params.colorSpace = TOVI_SCANNED_COLOR_SPACE_SRGB;
    return params;
}

std::optional<std::vector<int32_t>> encodeScannedParams(const ToviBRDFScannedParams& params) {
    constexpr int32_t channelBits = TOVI_SCANNED_CHANNEL_PAINT | TOVI_SCANNED_CHANNEL_FILTER | TOVI_SCANNED_CHANNEL_CCMULT;
    if (params.plainMode < TOVI_SCANNED_PLAIN_NONE || params.plainMode > TOVI_SCANNED_PLAIN_TRIPLANAR) return std::nullopt;
    if (params.colorSpace < TOVI_SCANNED_COLOR_SPACE_SRGB || params.colorSpace > TOVI_SCANNED_COLOR_SPACE_PRO_PHOTO) {
        return std::nullopt;
    }
    if (params.channelMask & ~channelBits) return std::nullopt;
    const float* floats = params.filterColor;
    for (size_t index = 0; index < offsetof(ToviBRDFScannedParams, channelMask) / sizeof(float); ++index) {
        if (!std::isfinite(floats[index])) return std::nullopt;
    }
    std::vector<int32_t> words(2 + sizeof params / sizeof(int32_t));
    words[0] = static_cast<int32_t>(scannedParamsTag);
    words[1] = static_cast<int32_t>(scannedParamsVersion);
    std::memcpy(words.data() + 2, &params, sizeof params);
    return words;
}

}  // namespace tovi::ref
