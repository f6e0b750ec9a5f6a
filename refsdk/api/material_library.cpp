// The material library. Not built yet: every entry answers its failure value.
#include "api/entries.h"

TOVI_API ToviTVMat* TVMat_init(const char* fileName) { return NULL; }
TOVI_API void TVMat_unload(ToviTVMat* library) {}
TOVI_API int TVMat_getMaterialList(ToviTVMat* library, char** names) { return -1; }
TOVI_API int TVMat_getEncodedThumbnail(ToviTVMat* library, const char* materialName, uint8_t** data, size_t* size) {
    return -1;
}
TOVI_API ToviImage* TVMat_getDecodedThumbnail(ToviTVMat* library, const char* materialName) { return NULL; }
