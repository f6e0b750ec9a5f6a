// Colour-management configuration data. Not built yet: every entry answers its failure value (and the error text where it has an error record).
#include "api/entries.h"
#include "core/text.h"

using tovi::ref::reportUnsupported;

TOVI_API int Tovi_OCIO_initData(int source, const char* fileName, ToviOCIOData* data, ToviCharString* errorText) {
    reportUnsupported(errorText);
    return -1;
}
TOVI_API void Tovi_OCIO_freeData(ToviOCIOData* data) {}
