// Finding, loading and unloading the SDK library. Process-wide state without a lock: it is
// touched only with the interpreter lock held, and by the exit hook.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tovi {

enum class SdkLoadState : uint32_t {
    Loaded = 0,         // the last attempt resolved every entry
    Configured = 1,     // an attempt is pending or the last one was incomplete: load again
    SearchDefault = 2,  // search the environment, then the plain file name
    Accepted = 3,       // an incomplete load the script accepted: never retried on its own
};

#if defined(_WIN32)
#define TOVI_SDK_LIBRARY_FILE "ToviSDKLibrary.dll"
#elif defined(__APPLE__)
#define TOVI_SDK_LIBRARY_FILE "libToviSDKLibrary.dylib"
#else
#define TOVI_SDK_LIBRARY_FILE "libToviSDKLibrary.so"
#endif

// 0 when the SDK may be called; otherwise the outcome of the attempt made now (the number of
// missing entries, or -1 when the library did not load).
int ensureSdkLoaded();
// One full attempt at the configured location.
int loadSdkLibrary();
void unloadSdkLibrary(bool forgetPath);
// A null or empty folder clears the location (load by plain file name).
void setSdkLibraryLocation(const char* folder, bool isSdkRoot);
bool readSdkLocationFromEnvironment(const char* variable, bool isSdkRoot);

SdkLoadState sdkLoadState();
void setSdkLoadState(SdkLoadState state);

const char* sdkLoadReport();          // null before the first attempt and after an unload
uint32_t missingEntryCount();
const char* missingEntryNames();      // each name followed by a zero byte, in table order
size_t missingEntryNamesLength();
bool sdkLibraryLoaded();

// For tests of the location rules: the path and folder length the next attempt will use.
const char* sdkLibraryPath();
uint32_t sdkDirectoryLength();

}  // namespace tovi
