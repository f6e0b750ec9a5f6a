// Mesh proxy files. Not built yet: every entry answers its failure value (and the error text where it has an error record).
#include "api/entries.h"
#include "core/text.h"

using tovi::ref::reportUnsupported;

TOVI_API int Tovi_ProxyCommon_readProxyPreview(const char* fileName, int readFlags, ToviProxyData* data) {
    return -1;
}
TOVI_API int Tovi_ProxyCommon_readProxyPrepare(const char* fileName, int readFlags, ToviProxyData* data, ToviProxyReader** reader) {
    return -1;
}
TOVI_API int Tovi_ProxyCommon_readProxyFinalize(ToviProxyReader* reader, ToviProxyData* data) { return -1; }
TOVI_API int Tovi_ProxyCommon_readProxyFullPrepare(const char* fileName, int readFlags, ToviProxyData* data, ToviProxyReader** reader) {
    return -1;
}
TOVI_API int Tovi_ProxyCommon_readProxyFullFinalize(ToviProxyReader* reader, ToviProxyData* data) { return -1; }
TOVI_API int Tovi_ProxyCommon_createProxyFile(const ToviProxyData* data, const ToviProxyCreateParams* params, ToviCharString* errorText) {
    reportUnsupported(errorText);
    return -1;
}
