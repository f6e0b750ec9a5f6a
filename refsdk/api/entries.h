// Declarations of every exported entry, from the ABI's list: a definition whose signature
// differs from its declaration does not compile.
#pragma once

#include "tovi_sdk.h"

#define TOVI_API extern "C" __attribute__((visibility("default")))

#define TOVI_REF_DECLARE(result, name, params, failure) TOVI_API result name params;
TOVI_SDK_ENTRIES(TOVI_REF_DECLARE)
#undef TOVI_REF_DECLARE
