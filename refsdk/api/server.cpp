// The render server. Not built yet: every entry answers its failure value.
#include "api/entries.h"

TOVI_API ToviServer* Tovi_ToviServer_create(const ToviServerOptions* options, char** errorText) { return NULL; }
TOVI_API int Tovi_ToviServer_start(ToviServer* server) { return -1; }
TOVI_API int Tovi_ToviServer_run(ToviServer* server) { return -1; }
TOVI_API int Tovi_ToviServer_stop(ToviServer* server) { return -1; }
TOVI_API void Tovi_ToviServer_release(ToviServer* server) {}
TOVI_API int Tovi_ToviServer_setServerStartCallback(ToviServer* server, const ToviServerStartCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviServer_setConnectCallback(ToviServer* server, const ToviServerHostCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviServer_setDisconnectCallback(ToviServer* server, const ToviServerHostCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviServer_setDumpMessageCallback(ToviServer* server, const ToviServerDumpMessageCallbackRecord* callback, int minLevel) {
    return -1;
}
TOVI_API int Tovi_ToviServer_setProgressCallback(ToviServer* server, const ToviServerProgressCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviServer_setServerCloseCallback(ToviServer* server, const ToviServerCloseCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviServer_setUserData(ToviServer* server, int slot, void* userData) { return -1; }
TOVI_API void* Tovi_ToviServer_getUserData(const ToviServer* server, int slot) { return NULL; }
TOVI_API int Tovi_ToviServer_addHosts(ToviServer* server, const char* hosts) { return -1; }
TOVI_API int Tovi_ToviServer_removeHosts(ToviServer* server, const char* hosts) { return -1; }
TOVI_API int Tovi_ToviServer_resetHosts(ToviServer* server, const char* hosts) { return -1; }
TOVI_API int Tovi_ToviServer_getAllHosts(ToviServer* server, ToviCharString* hosts) { return -1; }
TOVI_API int Tovi_ToviServer_getActiveHosts(ToviServer* server, ToviCharString* hosts) { return -1; }
TOVI_API int Tovi_ToviServer_getInactiveHosts(ToviServer* server, ToviCharString* hosts) { return -1; }
