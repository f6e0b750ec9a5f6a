// Gaussian-splat data. Not built yet: every entry answers its failure value.
#include "api/entries.h"

TOVI_API int Tovi_GeomUtilsCommon_readGaussianData(const char* path, ToviGaussianData** data, float* bbox) {
    return 0;
}
TOVI_API void Tovi_GeomUtilsCommon_freeGaussianData(ToviGaussianData* data) {}
TOVI_API int Tovi_GeomUtilsCommon_getGaussianPosition(int index, const ToviGaussianData* data, float* dest) {
    return -1;
}
TOVI_API int Tovi_GeomUtilsCommon_getGaussianAverageColor(int index, const ToviGaussianData* data, float* dest) {
    return -1;
}
TOVI_API int Tovi_GeomUtilsCommon_getGaussianPrimitivesCount(const ToviGaussianData* data) { return -1; }
