// Scanned-material parameters and presets. The preset files are not built yet: those entries answer
// their failure values.
#include "api/entries.h"
#include "material/scanned_params.h"

TOVI_API int Tovi_BRDFScannedParams_initialize(ToviBRDFScannedParams* params) {
    if (!params) return -1;
    *params = tovi::ref::defaultScannedParams();
    return 0;
}

TOVI_API int Tovi_TVScansPresets_reset(void) { return -1; }
TOVI_API ToviTVScanInfo* Tovi_TVScanInfo_create(const char* fileName) { return NULL; }
TOVI_API void Tovi_TVScanInfo_delete(ToviTVScanInfo* info) {}
TOVI_API int Tovi_TVScanInfo_getInfoString(const ToviTVScanInfo* info, ToviCharString* text) { return -1; }
TOVI_API int Tovi_TVScanInfo_getPreset(const ToviTVScanInfo* info, ToviBRDFScannedParams* params) { return -1; }
