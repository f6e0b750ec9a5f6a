// The addresses of all entries in resolution order. Referencing every one makes an entry the
// library forgets to define a link error (the library links with -z defs).
#include "api/entries.h"

namespace {

[[maybe_unused]] const void* const entryTable[] = {
#define TOVI_REF_ADDRESS(result, name, params, failure) reinterpret_cast<const void*>(&name),
    TOVI_SDK_ENTRIES(TOVI_REF_ADDRESS)
#undef TOVI_REF_ADDRESS
};
static_assert(sizeof(entryTable) / sizeof(entryTable[0]) == TOVI_SDK_ENTRY_COUNT, "every entry is in the table");

}  // namespace

// Keeps the table in the library, so that its references are resolved at link time.
TOVI_API const void* const* ToviRef_entryTable(void) { return entryTable; }
