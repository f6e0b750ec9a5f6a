// The SDK's error codes and their texts.
#pragma once

namespace tovi::ref {

enum ErrorCode {
    errorNone = 0,
    errorInvalidRenderer = 1,
    errorInvalidArgument = 2,
    errorOutOfMemory = 3,
    errorPluginNotFound = 4,
    errorPropertyNotFound = 5,
    errorClassNotFound = 6,
    errorInvalidPluginName = 7,
    errorInvalidPropertyValue = 8,
    errorFileNotFound = 9,
    errorSceneParse = 10,
    errorFileWrite = 11,
    errorInvalidRenderMode = 12,
    errorRendererBusy = 13,
    errorUnsupported = 14,
    errorFailed = 15,
};

// Null for a code the SDK does not know.
const char* errorText(int code);

}  // namespace tovi::ref
