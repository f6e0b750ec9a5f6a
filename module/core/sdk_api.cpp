#include "core/sdk_api.h"

#include <type_traits>

namespace tovi {

namespace {

// An entry the library does not export answers through the stub of its own signature: it
// ignores its arguments and returns zero, false or null (a zeroed value for any result type).
template <typename Function>
struct MissingEntryStub;

template <typename Result, typename... Args>
struct MissingEntryStub<Result(Args...)> {
    static Result call(Args...) {
        if constexpr (std::is_void_v<Result>) {
            return;
        } else {
            return Result{};
        }
    }
};

}  // namespace

SdkApiTable SdkApi = {
#define TOVI_SDK_STUB(result, name, params, failure) &MissingEntryStub<result params>::call,
    TOVI_SDK_ENTRIES(TOVI_SDK_STUB)
#undef TOVI_SDK_STUB
};

const char* const sdkEntryNames[sdkEntryCount] = {
#define TOVI_SDK_NAME(result, name, params, failure) #name,
    TOVI_SDK_ENTRIES(TOVI_SDK_NAME)
#undef TOVI_SDK_NAME
};

static_assert(sizeof(sdkEntryNames) / sizeof(sdkEntryNames[0]) == 542, "the SDK has 542 entries");

void resetSdkApiToStubs() {
#define TOVI_SDK_RESET(result, name, params, failure) SdkApi.name = &MissingEntryStub<result params>::call;
    TOVI_SDK_ENTRIES(TOVI_SDK_RESET)
#undef TOVI_SDK_RESET
}

int resolveSdkApi(void* (*resolve)(void* context, const char* name),
                  void (*missing)(void* context, const char* name), void* context) {
    int missingCount = 0;
#define TOVI_SDK_RESOLVE(result, name, params, failure)                   \
    if (void* address = resolve(context, #name)) {                        \
        SdkApi.name = reinterpret_cast<result(*) params>(address);        \
    } else {                                                              \
        SdkApi.name = &MissingEntryStub<result params>::call;             \
        ++missingCount;                                                   \
        missing(context, #name);                                          \
    }
    TOVI_SDK_ENTRIES(TOVI_SDK_RESOLVE)
#undef TOVI_SDK_RESOLVE
    return missingCount;
}

}  // namespace tovi
