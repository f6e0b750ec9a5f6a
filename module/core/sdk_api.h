// The table of SDK entry points and the names it is resolved by.
#pragma once

#include "tovi_sdk.h"

namespace tovi {

struct SdkApiTable {
#define TOVI_SDK_SLOT(result, name, params, failure) result(*name) params;
    TOVI_SDK_ENTRIES(TOVI_SDK_SLOT)
#undef TOVI_SDK_SLOT
};

// Every slot holds the library's function or the missing-entry stub of its signature, never
// null: before the first load and after an unload all slots hold stubs.
extern SdkApiTable SdkApi;

constexpr int sdkEntryCount = TOVI_SDK_ENTRY_COUNT;
extern const char* const sdkEntryNames[sdkEntryCount];

// Points every slot at its stub.
void resetSdkApiToStubs();

// Fills every slot from `resolve(name)`; a slot whose name does not resolve gets its stub and
// `missing(name)` is called. Returns the number of missing entries.
int resolveSdkApi(void* (*resolve)(void* context, const char* name),
                  void (*missing)(void* context, const char* name), void* context);

}  // namespace tovi
