// The module's internal services, tested inside an embedded interpreter: the parts that no
// Python-visible call reaches yet. The module's types are readied by its own entry point and
// the SDK is the reference library of this build.
#include <gtest/gtest.h>

#include "core/sdk_loader.h"
#include "testing.h"

namespace tovi {
PyObject* initModule();
}

namespace tovi::testing {

PyObject* module = nullptr;

}  // namespace tovi::testing

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    PyConfig config;
    PyConfig_InitIsolatedConfig(&config);
    PyStatus status = PyConfig_SetBytesString(&config, &config.home, TOVI_TEST_PYTHON_HOME);
    if (!PyStatus_Exception(status)) status = Py_InitializeFromConfig(&config);
    PyConfig_Clear(&config);
    if (PyStatus_Exception(status)) Py_ExitStatusException(status);

    tovi::testing::module = tovi::initModule();
    if (!tovi::testing::module) {
        PyErr_Print();
        return 2;
    }
    tovi::setSdkLoadState(tovi::SdkLoadState::Configured);
    tovi::setSdkLibraryLocation(TOVI_TEST_SDK_FOLDER, false);
    if (tovi::ensureSdkLoaded() != 0) {
        std::fprintf(stderr, "%s\n", tovi::sdkLoadReport());
        return 2;
    }
    int result = RUN_ALL_TESTS();
    Py_CLEAR(tovi::testing::module);
    Py_FinalizeEx();
    return result;
}
