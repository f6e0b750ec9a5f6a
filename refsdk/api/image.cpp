// The image library. Not built yet: every entry answers its failure value.
#include "api/entries.h"

TOVI_API void* ToviImage_compressToJpeg(const ToviImage* image, int quality, size_t* size, ToviRenderer* renderer) {
    return NULL;
}
TOVI_API void* ToviImage_compressToPng(const ToviImage* image, int flags, size_t* size, ToviRenderer* renderer) {
    return NULL;
}
TOVI_API void* ToviImage_convertToBmp(const ToviImage* image, int preserveAlpha, size_t* size, ToviRenderer* renderer, int swapChannels) {
    return NULL;
}
TOVI_API void* ToviImage_toBitmapData(const ToviImage* image, size_t* size, int flags, int stride, int alphaValue) {
    return NULL;
}
TOVI_API int ToviImage_toIntList(const ToviImage* image, void* data, size_t byteSize, int format) { return -1; }
TOVI_API int ToviImage_compressToJpegFile(const ToviImage* image, int quality, const char* fileName, ToviRenderer* renderer) {
    return 0;
}
TOVI_API int ToviImage_compressToPngFile(const ToviImage* image, int flags, const char* fileName, ToviRenderer* renderer) {
    return 0;
}
TOVI_API int ToviImage_SaveToBmpFile(const ToviImage* image, int preserveAlpha, const char* fileName, ToviRenderer* renderer, int swapChannels) {
    return 0;
}
TOVI_API int ToviImage_SaveToTiffFile(const ToviImage* image, const char* fileName, ToviRenderer* renderer, int bitsPerChannel) {
    return 0;
}
TOVI_API int ToviImage_SaveToExrFile(const ToviImage* image, const char* fileName, ToviRenderer* renderer) {
    return 0;
}
TOVI_API ToviImage* ToviImage_createFromBmp(const void* data, size_t size, ToviRenderer* renderer, int flags) {
    return NULL;
}
TOVI_API ToviImage* ToviImage_createFromJpeg(const void* data, size_t size, ToviRenderer* renderer, int flags) {
    return NULL;
}
TOVI_API ToviImage* ToviImage_createFromPng(const void* data, size_t size, ToviRenderer* renderer, int flags) {
    return NULL;
}
TOVI_API ToviImage* ToviImage_createFromRawData(const void* data, size_t size, int format, int width, int height, int stride) {
    return NULL;
}
TOVI_API ToviImage* ToviImage_crop(const ToviImage* image, int x, int y, int width, int height) { return NULL; }
TOVI_API ToviImage* ToviImage_resize(const ToviImage* image, int width, int height) { return NULL; }
TOVI_API ToviImage* ToviImage_crop_resize(const ToviImage* image, int x, int y, int cropWidth, int cropHeight, int width, int height) {
    return NULL;
}
TOVI_API ToviImage* ToviImage_fitIn(const ToviImage* image, int width, int height) { return NULL; }
TOVI_API ToviImage* ToviImage_fitOut(const ToviImage* image, int width, int height) { return NULL; }
TOVI_API ToviImage* ToviImage_cutIn(const ToviImage* image, int width, int height) { return NULL; }
TOVI_API ToviImage* ToviImage_clone(const ToviImage* image) { return NULL; }
TOVI_API ToviImage* ToviImage_create(int width, int height) { return NULL; }
TOVI_API int ToviImage_getSize(const ToviImage* image, int* width, int* height) { return 0; }
TOVI_API void* ToviImage_getAllocatorData(const ToviImage* image) { return NULL; }
TOVI_API size_t ToviImage_getMemorySize(const ToviImage* image) { return 0; }
TOVI_API float* ToviImage_getPixelDataPointerAndPixelCount(ToviImage* image, size_t* pixelCount) { return NULL; }
TOVI_API int ToviImage_drawImage(ToviImage* dest, const ToviImage* src, int x, int y, int blend) { return 0; }
TOVI_API int ToviImage_addColor(ToviImage* image, const float* color) { return 0; }
TOVI_API int ToviImage_mulColor(ToviImage* image, const float* color) { return 0; }
TOVI_API int ToviImage_changeExposure(ToviImage* image, float value) { return 0; }
TOVI_API int ToviImage_changeGamma(ToviImage* image, float value) { return 0; }
TOVI_API int ToviImage_changeSRGB(ToviImage* image, int inverse) { return 0; }
TOVI_API int ToviImage_changeContrast(ToviImage* image, float value) { return 0; }
TOVI_API int ToviImage_makeNegative(ToviImage* image) { return 0; }
TOVI_API int ToviImage_setGamma(ToviImage* image, float gamma) { return 0; }
TOVI_API float ToviImage_getGamma(const ToviImage* image) { return 0.0f; }
TOVI_API ToviImage* ToviImage_load(const char* fileName) { return NULL; }
TOVI_API int ToviImage_loadSize(const char* fileName, int* width, int* height) { return 0; }
TOVI_API int ToviImage_calculateWhiteBalanceMultiplier(const ToviImage* image, int mode, float* multiplier) {
    return 0;
}
TOVI_API float ToviImage_calculateDifference(const ToviImage* image, const ToviImage* other) { return -1.0f; }
