#include "core/language.h"

namespace tovi {

PyTypeObject LanguageType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.Language",                                 // tp_name
    sizeof(PyObject),                                // tp_basicsize
};

namespace {

struct LanguageCode {
    const char* name;
    const char* value;
};

constexpr LanguageCode languageCodes[] = {
    {"EN_US", "en-US"},
    {"ZH_CN", "zh-CN"},
};

}  // namespace

void setUpLanguageType() {
    LanguageType.tp_doc = "Static utility class with language constants";
    LanguageType.tp_flags = Py_TPFLAGS_DEFAULT;
}

int fillLanguageConstants() {
    PyObject* dictionary = LanguageType.tp_dict;
    for (const LanguageCode& code : languageCodes) {
        PyObject* value = PyUnicode_FromString(code.value);
        if (!value) return -1;
        int failed = PyDict_SetItemString(dictionary, code.name, value);
        Py_DECREF(value);
        if (failed) return -1;
    }
    PyType_Modified(&LanguageType);
    return 0;
}

}  // namespace tovi
