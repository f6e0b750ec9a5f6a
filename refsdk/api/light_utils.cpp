// Luminaire fields and IES data. Not built yet: every entry answers its failure value.
#include "api/entries.h"

TOVI_API int Tovi_LightUtilsCommon_getLuminaireFieldHandle(const char* path, ToviLuminaireField** field) {
    return 0;
}
TOVI_API void Tovi_LightUtilsCommon_freeLuminaireFieldHandle(ToviLuminaireField* field) {}
TOVI_API int Tovi_LightUtilsCommon_useConvexHull(const ToviLuminaireField* field) { return -1; }
TOVI_API int Tovi_LightUtilsCommon_getLuminaireFieldBoundingBox(const ToviLuminaireField* field, float* bbox) {
    return -1;
}
TOVI_API float Tovi_LightUtilsCommon_getLuminaireFieldScale(const ToviLuminaireField* field) { return 0.0f; }
TOVI_API int Tovi_LightUtilsCommon_getLuminaireFieldConvexHullVerticesLength(const ToviLuminaireField* field) {
    return -1;
}
TOVI_API int Tovi_LightUtilsCommon_getLuminaireFieldConvexHullVertices(const ToviLuminaireField* field, float* vertices, int count) {
    return -1;
}
TOVI_API int Tovi_LightUtilsCommon_getLuminaireFieldConvexHullTrianglesLength(const ToviLuminaireField* field) {
    return -1;
}
TOVI_API int Tovi_LightUtilsCommon_getLuminaireFieldConvexHullTriangles(const ToviLuminaireField* field, int32_t* indices, int count) {
    return -1;
}
TOVI_API int Tovi_LightUtilsCommon_getIESPreviewData(const char* path, float** vertices, int32_t** indices, int* vertexCount, int* triangleCount) {
    return 0;
}
