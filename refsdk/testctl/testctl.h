/* The reference SDK's test-control interface. Not part of the SDK ABI: the module never calls
 * it; tests reach it through ctypes on the library the module loaded. Documented in
 * docs/reference-sdk.md. */
#ifndef TOVI_REF_TESTCTL_H
#define TOVI_REF_TESTCTL_H

#ifdef __cplusplus
extern "C" {
#endif

/* The recorder is off by default; while on, entries keep the arguments of their last call. */
void ToviRef_setRecorder(int on);
/* {"entry": name, "args": {...}} of the entry's last recorded call, or NULL. The text stays
 * valid until the calling thread's next ToviRef_lastCall. */
const char* ToviRef_lastCall(const char* entry);
void ToviRef_clearCalls(void);
/* The next call of the entry answers the given JSON result. 0, or -1 for malformed JSON. */
int ToviRef_injectResult(const char* entry, const char* json);
/* Distributed-rendering generation 1 or 2 (the default). */
void ToviRef_setDRGeneration(int generation);
/* Replaces a device list ("Metal", "MetalRT", "Optix", "CUDA", "Denoiser") with a JSON array of
 * device objects; NULL restores the detected list. 0, or -1 for an unknown kind or bad JSON. */
int ToviRef_setDeviceList(const char* kind, const char* json);
/* Live SDK objects of a kind: "blocks" (allocator), "texts" (filled text records), "vectors".
 * -1 for an unknown kind. */
long long ToviRef_liveCount(const char* kind);
/* How often Tovi_incrementModuleReferenceCounter has been called. */
int ToviRef_moduleReferenceCount(void);
/* Everything back to its initial state. */
void ToviRef_reset(void);

#ifdef __cplusplus
}
#endif

#endif
