#include "core/repr_strings.h"

namespace tovi {

namespace {

constexpr const char* reprStringTexts[] = {"(", "([", ")", "])", ", ", "'", "': {", "': ", "}}", "': [", "]}"};
static_assert(sizeof(reprStringTexts) / sizeof(reprStringTexts[0]) == static_cast<size_t>(ReprString::Count));

PyObject* reprStrings[static_cast<size_t>(ReprString::Count)];

}  // namespace

PyObject* reprString(ReprString which) {
    PyObject*& slot = reprStrings[static_cast<size_t>(which)];
    if (!slot) slot = PyUnicode_FromString(reprStringTexts[static_cast<size_t>(which)]);
    return slot;
}

int createReprStrings() {
    for (size_t index = 0; index < static_cast<size_t>(ReprString::Count); ++index) {
        if (!reprString(static_cast<ReprString>(index))) return -1;
    }
    return 0;
}

void releaseReprStrings() {
    for (PyObject*& slot : reprStrings) Py_CLEAR(slot);
}

}  // namespace tovi
