// Scanned-material parameters and presets. Not built yet: every entry answers its failure value.
#include "api/entries.h"

TOVI_API int Tovi_BRDFScannedParams_initialize(ToviBRDFScannedParams* params) { return -1; }
TOVI_API int Tovi_TVScansPresets_reset(void) { return -1; }
TOVI_API ToviTVScanInfo* Tovi_TVScanInfo_create(const char* fileName) { return NULL; }
TOVI_API void Tovi_TVScanInfo_delete(ToviTVScanInfo* info) {}
TOVI_API int Tovi_TVScanInfo_getInfoString(const ToviTVScanInfo* info, ToviCharString* text) { return -1; }
TOVI_API int Tovi_TVScanInfo_getPreset(const ToviTVScanInfo* info, ToviBRDFScannedParams* params) { return -1; }
