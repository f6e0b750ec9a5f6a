/* The ToviSDKLibrary ABI: every entry of the library, in its fixed resolution order, and every
 * record that crosses the boundary.
 *
 * The entries form one X-macro list, TOVI_SDK_ENTRIES(X), each as
 *     X(result type, exported name, (parameters), failure value)
 * The failure value is what the entry returns when it fails (empty for void entries). The module
 * expands the list into its table of typed function pointers and the parallel name table; the
 * reference SDK expands it into declarations and a table of its definitions' addresses.
 *
 * Conventions, unless an entry says otherwise:
 * - handles are pointers to opaque records; results are int, 0 on success, negative on failure;
 *   flags are int 0/1; plugin identifiers are ToviPluginID;
 * - texts are UTF-8 and zero-terminated; texts that the SDK hands out come in a caller-provided
 *   ToviCharString, released with releaseCharString, or in a block from the SDK allocator;
 * - arrays and records returned through an out-pointer are blocks from the SDK allocator that
 *   the caller frees with C_memory_free; memory the caller hands over for the SDK to keep comes
 *   from C_memory_alloc / C_memory_realloc;
 * - out-parameters come last, before the autoCommit flag, which is the last argument of every
 *   call that changes the scene.
 *
 * The file is C11 and C++17.
 */
#ifndef TOVI_SDK_H
#define TOVI_SDK_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define TOVI_STATIC_ASSERT(condition, message) static_assert(condition, message)
extern "C" {
#else
#define TOVI_STATIC_ASSERT(condition, message) _Static_assert(condition, message)
#endif

/* ---- base types ---- */

/* 0 and UINT64_MAX are never valid plugin identifiers; "no plugin" travels as UINT64_MAX. */
typedef uint64_t ToviPluginID;
#define TOVI_NO_PLUGIN UINT64_MAX

typedef struct ToviRenderer ToviRenderer;
typedef struct ToviServer ToviServer;
typedef struct ToviImage ToviImage;
typedef struct ToviVector ToviVector;

/* A text record that the caller provides (usually on its stack) and the SDK fills. Read it only
 * through getCharStringContent / getCharStringLength; hand it back with releaseCharString on
 * every path. Zero-initialise it before the call. */
typedef struct ToviCharString {
    char* data;
    size_t length;
    void* reserved;
} ToviCharString;
TOVI_STATIC_ASSERT(sizeof(ToviCharString) == 24, "ToviCharString layout");

/* Packed versions: major in bits 16-23, minor in bits 8-15, patch in bits 0-7. */
#define TOVI_VERSION_MAJOR(v) (((v) >> 16) & 0xFFu)
#define TOVI_VERSION_MINOR(v) (((v) >> 8) & 0xFFu)
#define TOVI_VERSION_PATCH(v) ((v)&0xFFu)

/* One compute device of a device list; the list is one block from the SDK allocator, records
 * first, then the devices' names, so one C_memory_free releases all. Callers pass
 * sizeof(ToviComputeDevice) as the record size, and the SDK refuses any other. */
typedef struct ToviComputeDevice {
    int32_t index;                /* position in its list */
    int32_t vendorID;
    uint64_t deviceID;
    const char* name;             /* UTF-8, inside the list's block */
    int32_t driverVersion;
    int32_t type;                 /* TOVI_DEVICE_TYPE_* */
    int32_t platformID;
    int32_t totalMemoryMB;
    int32_t busID;
    int32_t numConnectedDisplays;
    int32_t frequencyMHz;
    int32_t gigaFlops;
    int32_t ccMajor;              /* compute capability */
    int32_t ccMinor;
    int32_t rtCoreVersion;        /* 0: no ray-tracing cores */
    int32_t useForRendering;      /* flags 0/1 */
    int32_t useForDenoising;
    int32_t isSupported;
    uint8_t reserved[32];
} ToviComputeDevice;
#define TOVI_DEVICE_TYPE_CPU 2
#define TOVI_DEVICE_TYPE_GPU 4
#define TOVI_DEVICE_TYPE_ACCELERATOR 8
TOVI_STATIC_ASSERT(sizeof(ToviComputeDevice) == 112, "ToviComputeDevice size");
TOVI_STATIC_ASSERT(offsetof(ToviComputeDevice, name) == 16, "ToviComputeDevice.name");
TOVI_STATIC_ASSERT(offsetof(ToviComputeDevice, type) == 28, "ToviComputeDevice.type");
TOVI_STATIC_ASSERT(offsetof(ToviComputeDevice, totalMemoryMB) == 36, "ToviComputeDevice.totalMemoryMB");
TOVI_STATIC_ASSERT(offsetof(ToviComputeDevice, numConnectedDisplays) == 44, "ToviComputeDevice.numConnectedDisplays");
TOVI_STATIC_ASSERT(offsetof(ToviComputeDevice, frequencyMHz) == 48, "ToviComputeDevice.frequencyMHz");
TOVI_STATIC_ASSERT(offsetof(ToviComputeDevice, gigaFlops) == 52, "ToviComputeDevice.gigaFlops");
TOVI_STATIC_ASSERT(offsetof(ToviComputeDevice, ccMajor) == 56, "ToviComputeDevice.ccMajor");
TOVI_STATIC_ASSERT(offsetof(ToviComputeDevice, ccMinor) == 60, "ToviComputeDevice.ccMinor");
TOVI_STATIC_ASSERT(offsetof(ToviComputeDevice, rtCoreVersion) == 64, "ToviComputeDevice.rtCoreVersion");
TOVI_STATIC_ASSERT(offsetof(ToviComputeDevice, useForRendering) == 68, "ToviComputeDevice.useForRendering");
TOVI_STATIC_ASSERT(offsetof(ToviComputeDevice, useForDenoising) == 72, "ToviComputeDevice.useForDenoising");
TOVI_STATIC_ASSERT(offsetof(ToviComputeDevice, isSupported) == 76, "ToviComputeDevice.isSupported");

/* The answer of a render-server host check; one block from the SDK allocator with the texts
 * inside it. */
typedef struct ToviDRHostCheck {
    int32_t status;               /* TOVI_DR_HOST_* */
    int32_t cpuCount;
    uint32_t toviVersion;         /* packed version of the host's core */
    uint32_t reserved;
    const char* hostResolved;     /* each text may be NULL */
    const char* hostConnectedTo;
    const char* revisionTime;
} ToviDRHostCheck;
#define TOVI_DR_HOST_ERROR_RESOLVE (-3)
#define TOVI_DR_HOST_ERROR_CONNECT (-2)
#define TOVI_DR_HOST_ERROR_TIMEOUT (-1)
#define TOVI_DR_HOST_READY 0
#define TOVI_DR_HOST_UNKNOWN 1
#define TOVI_DR_HOST_ERROR 2
#define TOVI_DR_HOST_BUSY 3
TOVI_STATIC_ASSERT(sizeof(ToviDRHostCheck) == 40, "ToviDRHostCheck size");
TOVI_STATIC_ASSERT(offsetof(ToviDRHostCheck, cpuCount) == 4, "ToviDRHostCheck.cpuCount");
TOVI_STATIC_ASSERT(offsetof(ToviDRHostCheck, toviVersion) == 8, "ToviDRHostCheck.toviVersion");
TOVI_STATIC_ASSERT(offsetof(ToviDRHostCheck, hostResolved) == 16, "ToviDRHostCheck.hostResolved");
TOVI_STATIC_ASSERT(offsetof(ToviDRHostCheck, hostConnectedTo) == 24, "ToviDRHostCheck.hostConnectedTo");
TOVI_STATIC_ASSERT(offsetof(ToviDRHostCheck, revisionTime) == 32, "ToviDRHostCheck.revisionTime");

/* ---- opaque handles ---- */

/* Definition of one property of a plugin class. Owned by the SDK (it belongs to the class
   description, never released by the caller) and valid while the renderer it came from lives.
   Obtained from Tovi_ToviRenderer_getPropertyDefinitionFromClass / getPropertyDefinitionByID;
   read with the Tovi_PluginUtils_ and Tovi_UIGuides_ entries. */
typedef struct ToviPropertyDefinition ToviPropertyDefinition;

/* Information about one scanned-material file (Tovi_TVScanInfo_create / _delete). */
typedef struct ToviTVScanInfo ToviTVScanInfo;

/* One opened material-library file (TVMat_init / TVMat_unload). */
typedef struct ToviTVMat ToviTVMat;

/* ---- scanned-material parameters ---- */

/* Plain (projection) modes of a scanned material; the module maps its texts
   "PL_NONE", "PL_HMG", "PL_HMGSYM", "PL_TRIPLANAR" onto these codes. */
#define TOVI_SCANNED_PLAIN_NONE                  0
#define TOVI_SCANNED_PLAIN_HOMOGENOUS            1
#define TOVI_SCANNED_PLAIN_HOMOGENOUS_SYMMETRIC  2
#define TOVI_SCANNED_PLAIN_TRIPLANAR             3
/* Colour spaces of a scanned material; texts "CS_SRGB", "CS_ADOBE", "CS_PP". */
#define TOVI_SCANNED_COLOR_SPACE_SRGB            0
#define TOVI_SCANNED_COLOR_SPACE_ADOBE           1
#define TOVI_SCANNED_COLOR_SPACE_PRO_PHOTO       2
/* Bits of channelMask: which colour overrides are in use. */
#define TOVI_SCANNED_CHANNEL_PAINT               1
#define TOVI_SCANNED_CHANNEL_FILTER              2
#define TOVI_SCANNED_CHANNEL_CCMULT              4

/* Editable parameters of a scanned material. Filled with defaults by
   Tovi_BRDFScannedParams_initialize or with a file's preset by Tovi_TVScanInfo_getPreset,
   and turned into the material plugin's parameter block by Tovi_encodeBRDFScannedParams.
   All 32-bit fields, no padding. */
typedef struct ToviBRDFScannedParams {
    float   filterColor[3];   /* RGB filter, used when channelMask has TOVI_SCANNED_CHANNEL_FILTER */
    float   paintColor[3];    /* RGB paint, used when channelMask has TOVI_SCANNED_CHANNEL_PAINT */
    float   ccMultiplier[3];  /* RGB colour-correction multiplier, with TOVI_SCANNED_CHANNEL_CCMULT */
    float   uvScale[2];       /* texture-space scale u, v */
    float   uvRotation;       /* texture-space rotation, degrees */
    float   bumpMultiplier;
    float   saturation;
    int32_t channelMask;      /* TOVI_SCANNED_CHANNEL_* bits */
    int32_t plainMode;        /* TOVI_SCANNED_PLAIN_* */
    int32_t colorSpace;       /* TOVI_SCANNED_COLOR_SPACE_* */
    int32_t reserved[5];      /* zero; room for later parameters without a size change */
} ToviBRDFScannedParams;
TOVI_STATIC_ASSERT(sizeof(ToviBRDFScannedParams) == 88, "ToviBRDFScannedParams size");
TOVI_STATIC_ASSERT(offsetof(ToviBRDFScannedParams, paintColor) == 12, "ToviBRDFScannedParams.paintColor");
TOVI_STATIC_ASSERT(offsetof(ToviBRDFScannedParams, ccMultiplier) == 24, "ToviBRDFScannedParams.ccMultiplier");
TOVI_STATIC_ASSERT(offsetof(ToviBRDFScannedParams, uvScale) == 36, "ToviBRDFScannedParams.uvScale");
TOVI_STATIC_ASSERT(offsetof(ToviBRDFScannedParams, uvRotation) == 44, "ToviBRDFScannedParams.uvRotation");
TOVI_STATIC_ASSERT(offsetof(ToviBRDFScannedParams, bumpMultiplier) == 48, "ToviBRDFScannedParams.bumpMultiplier");
TOVI_STATIC_ASSERT(offsetof(ToviBRDFScannedParams, saturation) == 52, "ToviBRDFScannedParams.saturation");
TOVI_STATIC_ASSERT(offsetof(ToviBRDFScannedParams, channelMask) == 56, "ToviBRDFScannedParams.channelMask");
TOVI_STATIC_ASSERT(offsetof(ToviBRDFScannedParams, plainMode) == 60, "ToviBRDFScannedParams.plainMode");
TOVI_STATIC_ASSERT(offsetof(ToviBRDFScannedParams, colorSpace) == 64, "ToviBRDFScannedParams.colorSpace");
TOVI_STATIC_ASSERT(offsetof(ToviBRDFScannedParams, reserved) == 68, "ToviBRDFScannedParams.reserved");

/* ---- render elements ---- */

/* One render-element type the SDK offers (array from Tovi_getRenderElementDescs, one
   C_memory_alloc block; the texts are SDK-static and stay valid after the block is freed). */
typedef struct ToviRenderElementDesc {
    int32_t     type;          /* render-element type code */
    int32_t     binaryFormat;  /* 1 single_float ... 6 4_floats */
    const char* typeName;      /* type string, as Tovi_getRenderElementTypeStringFromType gives it */
    const char* displayName;   /* default display name of a new element of this type */
} ToviRenderElementDesc;
TOVI_STATIC_ASSERT(sizeof(ToviRenderElementDesc) == 24, "ToviRenderElementDesc size");
TOVI_STATIC_ASSERT(offsetof(ToviRenderElementDesc, binaryFormat) == 4, "ToviRenderElementDesc.binaryFormat");
TOVI_STATIC_ASSERT(offsetof(ToviRenderElementDesc, typeName) == 8, "ToviRenderElementDesc.typeName");
TOVI_STATIC_ASSERT(offsetof(ToviRenderElementDesc, displayName) == 16, "ToviRenderElementDesc.displayName");

/* Information about one render-element plugin, filled by Tovi_getRenderElementInfo into a
   caller-provided record. displayName is filled like any out ToviCharString: the caller hands
   &info.displayName back with releaseCharString after a successful call. */
typedef struct ToviRenderElementInfo {
    ToviCharString displayName;   /* display name of the element */
    int32_t        binaryFormat;  /* binary format code (1..6, others SDK-specific) */
    int32_t        type;          /* render-element type code */
} ToviRenderElementInfo;
TOVI_STATIC_ASSERT(sizeof(ToviRenderElementInfo) == 32, "ToviRenderElementInfo size");
TOVI_STATIC_ASSERT(offsetof(ToviRenderElementInfo, binaryFormat) == 24, "ToviRenderElementInfo.binaryFormat");
TOVI_STATIC_ASSERT(offsetof(ToviRenderElementInfo, type) == 28, "ToviRenderElementInfo.type");

/* ---- shader parameters ---- */

/* One parameter of a compiled shader (array from Tovi_getOSLParameters: one C_memory_alloc
   block holding the records followed by all their texts). The default is in the field that
   matches the type: defaultInt for int, defaultFloats for float (1), color/vector/point (3)
   and matrix (16, row by row), defaultString for string. */
typedef struct ToviOSLParameter {
    const char* name;              /* parameter name */
    int32_t     type;              /* value type code of the property value stream: 0 int, 1 float,
                                      4 vector, 5 color, 7 matrix, 9 string, 10 closure/plugin */
    int32_t     isOutput;          /* 1 for an output parameter */
    int32_t     arrayLength;       /* 0 for a scalar, else the declared array length */
    int32_t     defaultInt;
    float       defaultFloats[16];
    const char* defaultString;     /* NULL unless type is string */
} ToviOSLParameter;
TOVI_STATIC_ASSERT(sizeof(ToviOSLParameter) == 96, "ToviOSLParameter size");
TOVI_STATIC_ASSERT(offsetof(ToviOSLParameter, type) == 8, "ToviOSLParameter.type");
TOVI_STATIC_ASSERT(offsetof(ToviOSLParameter, isOutput) == 12, "ToviOSLParameter.isOutput");
TOVI_STATIC_ASSERT(offsetof(ToviOSLParameter, arrayLength) == 16, "ToviOSLParameter.arrayLength");
TOVI_STATIC_ASSERT(offsetof(ToviOSLParameter, defaultInt) == 20, "ToviOSLParameter.defaultInt");
TOVI_STATIC_ASSERT(offsetof(ToviOSLParameter, defaultFloats) == 24, "ToviOSLParameter.defaultFloats");
TOVI_STATIC_ASSERT(offsetof(ToviOSLParameter, defaultString) == 88, "ToviOSLParameter.defaultString");

/* ---- render server ---- */

/* Bits of ToviServerOptions.flagsA (bit 0 and bits 5..7 stay zero). */
#define TOVI_SERVER_CHANGE_CURRENT_DIRECTORY      (1u << 1)
#define TOVI_SERVER_KEEP_SCENE_IN_MEMORY          (1u << 2)
#define TOVI_SERVER_OVERWRITE_LOCAL_CACHE_SETTINGS (1u << 3)
#define TOVI_SERVER_RUN_AS_LIVE_LINK              (1u << 4)
/* Bits of ToviServerOptions.flagsB (second-generation distributed rendering). */
#define TOVI_SERVER_DR2_AS_DISPATCHER             (1u << 0)
#define TOVI_SERVER_DR2_RUN_LOCAL_RENDER_SERVER   (1u << 1)
#define TOVI_SERVER_DR2_SECURE_CONNECTION         (1u << 2)
#define TOVI_SERVER_DR2_DISABLE_UDP               (1u << 3)
#define TOVI_SERVER_DR2_LISTEN_ON_IPV4            (1u << 4)
#define TOVI_SERVER_DR2_LISTEN_ON_IPV6            (1u << 5)
#define TOVI_SERVER_DR2_PIPELINED_UPSTREAM        (1u << 6)
#define TOVI_SERVER_FLAGS_B_DEFAULT               0x70u

/* Render-server creation options (Tovi_ToviServer_create). Field order is fixed; natural
   alignment, padding spelled out and zero. The texts are borrowed for the call only: the SDK
   copies what it keeps. */
typedef struct ToviServerOptions {
    int32_t     portNumber;                 /* 0: the SDK's default port */
    int32_t     numThreads;                 /* 0: all cores */
    const char* remoteScenePath;            /* UTF-8 or NULL */
    const char* pluginLibraryPath;          /* UTF-8 or NULL */
    const char* includePaths;               /* UTF-8 or NULL */
    uint8_t     flagsA;                     /* TOVI_SERVER_CHANGE_CURRENT_DIRECTORY ... */
    uint8_t     reserved0[3];
    int32_t     cachedAssetsLimitType;
    float       cachedAssetsLimitValue;
    uint8_t     flagsB;                     /* TOVI_SERVER_DR2_* bits, default 0x70 */
    uint8_t     reserved1[3];
    const char* dr2HttpProxy;               /* UTF-8 or NULL */
    int32_t     dr2WorkerThreadsPerServer;  /* default 2 */
    int32_t     dr2ConnectTimeout;          /* default 10 */
    int32_t     dr2UpstreamChannels;        /* default 3 */
    int32_t     reserved2;
} ToviServerOptions;
TOVI_STATIC_ASSERT(sizeof(ToviServerOptions) == 72, "ToviServerOptions size");
TOVI_STATIC_ASSERT(offsetof(ToviServerOptions, numThreads) == 4, "ToviServerOptions.numThreads");
TOVI_STATIC_ASSERT(offsetof(ToviServerOptions, remoteScenePath) == 8, "ToviServerOptions.remoteScenePath");
TOVI_STATIC_ASSERT(offsetof(ToviServerOptions, pluginLibraryPath) == 16, "ToviServerOptions.pluginLibraryPath");
TOVI_STATIC_ASSERT(offsetof(ToviServerOptions, includePaths) == 24, "ToviServerOptions.includePaths");
TOVI_STATIC_ASSERT(offsetof(ToviServerOptions, flagsA) == 32, "ToviServerOptions.flagsA");
TOVI_STATIC_ASSERT(offsetof(ToviServerOptions, cachedAssetsLimitType) == 36, "ToviServerOptions.cachedAssetsLimitType");
TOVI_STATIC_ASSERT(offsetof(ToviServerOptions, cachedAssetsLimitValue) == 40, "ToviServerOptions.cachedAssetsLimitValue");
TOVI_STATIC_ASSERT(offsetof(ToviServerOptions, flagsB) == 44, "ToviServerOptions.flagsB");
TOVI_STATIC_ASSERT(offsetof(ToviServerOptions, dr2HttpProxy) == 48, "ToviServerOptions.dr2HttpProxy");
TOVI_STATIC_ASSERT(offsetof(ToviServerOptions, dr2WorkerThreadsPerServer) == 56, "ToviServerOptions.dr2WorkerThreadsPerServer");
TOVI_STATIC_ASSERT(offsetof(ToviServerOptions, dr2ConnectTimeout) == 60, "ToviServerOptions.dr2ConnectTimeout");
TOVI_STATIC_ASSERT(offsetof(ToviServerOptions, dr2UpstreamChannels) == 64, "ToviServerOptions.dr2UpstreamChannels");

/* Server event functions. The SDK calls them on its own event thread, one event at a time,
   with the userData of their registration record; texts are valid only during the call.
   instant: seconds since the SDK was initialised. */
typedef void (*ToviServerStartFn)(ToviServer* server, double instant, void* userData);
/* connect and disconnect: message names the client (host or address:port) */
typedef void (*ToviServerHostFn)(ToviServer* server, const char* message, double instant, void* userData);
typedef void (*ToviServerDumpMessageFn)(ToviServer* server, const char* message, int level, double instant, void* userData);
typedef void (*ToviServerProgressFn)(ToviServer* server, const char* message, int progress, int total, double instant, void* userData);
typedef void (*ToviServerCloseFn)(ToviServer* server, double instant, void* userData);

/* Server callback registration records, one per function type, all of the same 32-byte shape:
   function (NULL unregisters), user data handed back on every call, 16 reserved zero bytes. */
typedef struct ToviServerStartCallbackRecord {
    ToviServerStartFn fn;
    void*             userData;
    uint64_t          reserved[2];
} ToviServerStartCallbackRecord;
typedef struct ToviServerHostCallbackRecord {
    ToviServerHostFn fn;
    void*            userData;
    uint64_t         reserved[2];
} ToviServerHostCallbackRecord;
typedef struct ToviServerDumpMessageCallbackRecord {
    ToviServerDumpMessageFn fn;
    void*                   userData;
    uint64_t                reserved[2];
} ToviServerDumpMessageCallbackRecord;
typedef struct ToviServerProgressCallbackRecord {
    ToviServerProgressFn fn;
    void*                userData;
    uint64_t             reserved[2];
} ToviServerProgressCallbackRecord;
typedef struct ToviServerCloseCallbackRecord {
    ToviServerCloseFn fn;
    void*             userData;
    uint64_t          reserved[2];
} ToviServerCloseCallbackRecord;
TOVI_STATIC_ASSERT(sizeof(ToviServerStartCallbackRecord) == 32, "ToviServerStartCallbackRecord size");
TOVI_STATIC_ASSERT(offsetof(ToviServerStartCallbackRecord, userData) == 8, "ToviServerStartCallbackRecord.userData");
TOVI_STATIC_ASSERT(offsetof(ToviServerStartCallbackRecord, reserved) == 16, "ToviServerStartCallbackRecord.reserved");
TOVI_STATIC_ASSERT(sizeof(ToviServerHostCallbackRecord) == 32, "ToviServerHostCallbackRecord size");
TOVI_STATIC_ASSERT(offsetof(ToviServerHostCallbackRecord, userData) == 8, "ToviServerHostCallbackRecord.userData");
TOVI_STATIC_ASSERT(offsetof(ToviServerHostCallbackRecord, reserved) == 16, "ToviServerHostCallbackRecord.reserved");
TOVI_STATIC_ASSERT(sizeof(ToviServerDumpMessageCallbackRecord) == 32, "ToviServerDumpMessageCallbackRecord size");
TOVI_STATIC_ASSERT(offsetof(ToviServerDumpMessageCallbackRecord, userData) == 8, "ToviServerDumpMessageCallbackRecord.userData");
TOVI_STATIC_ASSERT(offsetof(ToviServerDumpMessageCallbackRecord, reserved) == 16, "ToviServerDumpMessageCallbackRecord.reserved");
TOVI_STATIC_ASSERT(sizeof(ToviServerProgressCallbackRecord) == 32, "ToviServerProgressCallbackRecord size");
TOVI_STATIC_ASSERT(offsetof(ToviServerProgressCallbackRecord, userData) == 8, "ToviServerProgressCallbackRecord.userData");
TOVI_STATIC_ASSERT(offsetof(ToviServerProgressCallbackRecord, reserved) == 16, "ToviServerProgressCallbackRecord.reserved");
TOVI_STATIC_ASSERT(sizeof(ToviServerCloseCallbackRecord) == 32, "ToviServerCloseCallbackRecord size");
TOVI_STATIC_ASSERT(offsetof(ToviServerCloseCallbackRecord, userData) == 8, "ToviServerCloseCallbackRecord.userData");
TOVI_STATIC_ASSERT(offsetof(ToviServerCloseCallbackRecord, reserved) == 16, "ToviServerCloseCallbackRecord.reserved");

/* ---- copying plugins between renderers ---- */

/* Filled by the SDK before each plugin copy and handed to the pre-create function, which may
   change the out fields. The SDK sets newName to NULL, renameMode to its default and skip to 0
   before the call. */
typedef struct ToviPluginCopyRequest {
    const char* srcName;     /* in: instance name of the source plugin */
    const char* pluginType;  /* in: class name of the source plugin */
    char*       newName;     /* out: instance name for the copy in a C_memory_alloc block that the
                                SDK frees, or NULL to keep srcName */
    int32_t     renameMode;  /* out: what to do when the name is taken (plugin-naming constants) */
    int32_t     skip;        /* out: 1 leaves this plugin out of the copy */
} ToviPluginCopyRequest;
TOVI_STATIC_ASSERT(sizeof(ToviPluginCopyRequest) == 32, "ToviPluginCopyRequest size");
TOVI_STATIC_ASSERT(offsetof(ToviPluginCopyRequest, pluginType) == 8, "ToviPluginCopyRequest.pluginType");
TOVI_STATIC_ASSERT(offsetof(ToviPluginCopyRequest, newName) == 16, "ToviPluginCopyRequest.newName");
TOVI_STATIC_ASSERT(offsetof(ToviPluginCopyRequest, renameMode) == 24, "ToviPluginCopyRequest.renameMode");
TOVI_STATIC_ASSERT(offsetof(ToviPluginCopyRequest, skip) == 28, "ToviPluginCopyRequest.skip");

/* Both copy functions are called on the thread that called the copy entry, before it returns.
   Pre-create: result 0 goes on, non-zero cancels the whole copy. */
typedef int  (*ToviPluginCopyPreCreateFn)(ToviRenderer* srcRenderer, ToviPluginID srcPluginID,
                                          ToviPluginCopyRequest* request, void* userData);
/* Post-create: the copy's id in dstRenderer, the source name, the naming outcome (plugin-naming
   constants) and the name the copy got. */
typedef void (*ToviPluginCopyPostCreateFn)(ToviRenderer* dstRenderer, ToviPluginID newPluginID,
                                           const char* srcName, int namingOutcome,
                                           const char* newName, void* userData);

/* ---- plugin links ---- */

/* One reference between two plugins (array from Util_getParentPlugins / Util_getChildPlugins,
   one C_memory_alloc block). */
typedef struct ToviPluginLink {
    ToviPluginID referencedID;    /* the plugin referred to */
    ToviPluginID referencingID;   /* the plugin whose property holds the reference */
    int32_t      outputIndex;     /* referenced output; 0 is the plugin itself */
    int32_t      propertyIndex;   /* property index within the referencing plugin */
} ToviPluginLink;
TOVI_STATIC_ASSERT(sizeof(ToviPluginLink) == 24, "ToviPluginLink size");
TOVI_STATIC_ASSERT(offsetof(ToviPluginLink, referencedID) == 0, "ToviPluginLink.referencedID");
TOVI_STATIC_ASSERT(offsetof(ToviPluginLink, referencingID) == 8, "ToviPluginLink.referencingID");
TOVI_STATIC_ASSERT(offsetof(ToviPluginLink, outputIndex) == 16, "ToviPluginLink.outputIndex");
TOVI_STATIC_ASSERT(offsetof(ToviPluginLink, propertyIndex) == 20, "ToviPluginLink.propertyIndex");

/* ---- colour-management configuration ---- */

/* Where a colour-management configuration comes from. */
#define TOVI_OCIO_SOURCE_AUTOMATIC    0   /* environment when set, else the internal one */
#define TOVI_OCIO_SOURCE_ENVIRONMENT  1
#define TOVI_OCIO_SOURCE_FILE         2
#define TOVI_OCIO_SOURCE_INTERNAL     3

/* Contents of one colour-management configuration, filled by Tovi_OCIO_initData into a
   caller-provided record and released only by Tovi_OCIO_freeData (never free its blocks one by
   one). Name lists are packed string lists (zero-terminated texts back to back) with the count
   beside them. */
typedef struct ToviOCIOData {
    int32_t     source;              /* the source actually used (never AUTOMATIC after success) */
    int32_t     colorSpaceCount;
    char*       colorSpaceNames;     /* colorSpaceCount texts */
    char*       colorSpaceFamilies;  /* colorSpaceCount texts, "" where a space has no family */
    int32_t     roleCount;
    int32_t     lookCount;
    char*       roleNames;           /* roleCount texts */
    char*       roleColorSpaces;     /* roleCount texts: the colour space of each role */
    char*       lookNames;           /* lookCount texts */
    int32_t     displayCount;
    int32_t     viewCount;
    char*       displayNames;        /* displayCount texts */
    char*       viewNames;           /* viewCount texts */
    int32_t*    viewDisplays;        /* viewCount entries: index of each view's display */
    char*       configFile;          /* path of the configuration file, NULL for the internal one */
    void*       reserved;            /* SDK-private */
} ToviOCIOData;
TOVI_STATIC_ASSERT(sizeof(ToviOCIOData) == 104, "ToviOCIOData size");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, colorSpaceCount) == 4, "ToviOCIOData.colorSpaceCount");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, colorSpaceNames) == 8, "ToviOCIOData.colorSpaceNames");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, colorSpaceFamilies) == 16, "ToviOCIOData.colorSpaceFamilies");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, roleCount) == 24, "ToviOCIOData.roleCount");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, lookCount) == 28, "ToviOCIOData.lookCount");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, roleNames) == 32, "ToviOCIOData.roleNames");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, roleColorSpaces) == 40, "ToviOCIOData.roleColorSpaces");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, lookNames) == 48, "ToviOCIOData.lookNames");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, displayCount) == 56, "ToviOCIOData.displayCount");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, viewCount) == 60, "ToviOCIOData.viewCount");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, displayNames) == 64, "ToviOCIOData.displayNames");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, viewNames) == 72, "ToviOCIOData.viewNames");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, viewDisplays) == 80, "ToviOCIOData.viewDisplays");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, configFile) == 88, "ToviOCIOData.configFile");
TOVI_STATIC_ASSERT(offsetof(ToviOCIOData, reserved) == 96, "ToviOCIOData.reserved");

/* Renderer creation options, handed by pointer to Tovi_ToviRenderer_create.
   32 bytes, laid out exactly as the SDK reads them; unused fields stay zero. */
typedef struct ToviRendererOptions {
    const char* pluginLibraryPath; /* UTF-8 folder of the plugin libraries, or NULL */
    int32_t     tfbDrawStyle;      /* TOVI_TFB_DRAW_STYLE_* */
    uint8_t     flags0;            /* TOVI_RENDERER_FLAGS0_* bits */
    uint8_t     flags1;            /* TOVI_RENDERER_FLAGS1_* bits */
    uint8_t     flags2;            /* TOVI_RENDERER_FLAGS2_* bits */
    uint8_t     reserved0;         /* always 0 */
    uint64_t    reserved1;         /* always 0 */
    const char* tfbLanguage;       /* UTF-8 language tag of the frame-buffer window ("en-US", ...), or NULL */
} ToviRendererOptions;
TOVI_STATIC_ASSERT(sizeof(void*) == 8, "the SDK ABI is 64-bit only");
TOVI_STATIC_ASSERT(sizeof(ToviRendererOptions) == 32, "ToviRendererOptions size");
TOVI_STATIC_ASSERT(offsetof(ToviRendererOptions, pluginLibraryPath) == 0, "ToviRendererOptions.pluginLibraryPath");
TOVI_STATIC_ASSERT(offsetof(ToviRendererOptions, tfbDrawStyle) == 8, "ToviRendererOptions.tfbDrawStyle");
TOVI_STATIC_ASSERT(offsetof(ToviRendererOptions, flags0) == 12, "ToviRendererOptions.flags0");
TOVI_STATIC_ASSERT(offsetof(ToviRendererOptions, flags1) == 13, "ToviRendererOptions.flags1");
TOVI_STATIC_ASSERT(offsetof(ToviRendererOptions, flags2) == 14, "ToviRendererOptions.flags2");
TOVI_STATIC_ASSERT(offsetof(ToviRendererOptions, reserved0) == 15, "ToviRendererOptions.reserved0");
TOVI_STATIC_ASSERT(offsetof(ToviRendererOptions, reserved1) == 16, "ToviRendererOptions.reserved1");
TOVI_STATIC_ASSERT(offsetof(ToviRendererOptions, tfbLanguage) == 24, "ToviRendererOptions.tfbLanguage");

/* tfbDrawStyle values */
#define TOVI_TFB_DRAW_STYLE_AUTO        0
#define TOVI_TFB_DRAW_STYLE_STANDALONE  1
#define TOVI_TFB_DRAW_STYLE_3DSMAX      2
#define TOVI_TFB_DRAW_STYLE_3DSMAXQT    3
#define TOVI_TFB_DRAW_STYLE_MAYA        4

/* flags0 */
#define TOVI_RENDERER_FLAGS0_ENABLE_FRAME_BUFFER            0x01u
#define TOVI_RENDERER_FLAGS0_SHOW_FRAME_BUFFER              0x02u
#define TOVI_RENDERER_FLAGS0_RESERVED                       0x04u /* always 0 */
#define TOVI_RENDERER_FLAGS0_USE_DEFAULT_TFB_THEME          0x08u
#define TOVI_RENDERER_FLAGS0_SHOW_TFB_INTERACTIVE_START     0x10u
#define TOVI_RENDERER_FLAGS0_PREVIEW_RENDERER               0x20u
#define TOVI_RENDERER_FLAGS0_ALLOW_INVALID_PLUGIN_NAMES     0x40u
/* flags1 */
#define TOVI_RENDERER_FLAGS1_HIDE_TO_SCENE_BUTTON           0x01u
#define TOVI_RENDERER_FLAGS1_USE_TFB_LOG                    0x02u
#define TOVI_RENDERER_FLAGS1_ENABLE_TFB_PLUGINS             0x04u
#define TOVI_RENDERER_FLAGS1_SHOW_TFB_DEBUG_SHADING         0x08u
#define TOVI_RENDERER_FLAGS1_SHOW_TFB_TEST_RESOLUTION       0x10u
#define TOVI_RENDERER_FLAGS1_SHOW_TFB_INTERACTIVE_PAUSE     0x20u
#define TOVI_RENDERER_FLAGS1_SHOW_TFB_INTERACTIVE_UPDATE    0x40u
#define TOVI_RENDERER_FLAGS1_SHOW_TFB_COPY_TO_HOST_FB       0x80u
/* flags2 */
#define TOVI_RENDERER_FLAGS2_SHOW_TFB_ADD_LIGHT_MIX_RE      0x01u
#define TOVI_RENDERER_FLAGS2_SHOW_TFB_ADD_DENOISER_RE       0x02u
#define TOVI_RENDERER_FLAGS2_FORWARD_PROGRESS_TO_TFB        0x04u
/* Defaults of a record that the caller fills (a NULL record lets the SDK choose its own). */
#define TOVI_RENDERER_FLAGS0_DEFAULT 0x0Bu /* enable + show frame buffer, default theme */
#define TOVI_RENDERER_FLAGS1_DEFAULT 0x02u /* use the TFB log */

/* Frame-buffer window position and size, in screen pixels. */
typedef struct ToviTfbPositionAndSize {
    int32_t x;
    int32_t y;
    int32_t width;
    int32_t height;
} ToviTfbPositionAndSize;
TOVI_STATIC_ASSERT(sizeof(ToviTfbPositionAndSize) == 16, "ToviTfbPositionAndSize size");
TOVI_STATIC_ASSERT(offsetof(ToviTfbPositionAndSize, x) == 0, "ToviTfbPositionAndSize.x");
TOVI_STATIC_ASSERT(offsetof(ToviTfbPositionAndSize, y) == 4, "ToviTfbPositionAndSize.y");
TOVI_STATIC_ASSERT(offsetof(ToviTfbPositionAndSize, width) == 8, "ToviTfbPositionAndSize.width");
TOVI_STATIC_ASSERT(offsetof(ToviTfbPositionAndSize, height) == 12, "ToviTfbPositionAndSize.height");

/* Window state blocks (getTfbState / getTfbPersistentState) are opaque bytes in one
   C_memory_alloc block. `parts` selects what a state call covers; -1 means every part. */
#define TOVI_TFB_STATE_ALL_PARTS (-1)

/* One item of the window's context menu (setTfbContextMenuItems). The SDK copies
   the items and their texts, so the caller's array may go away after the call. */
typedef struct ToviTfbContextMenuItem {
    int32_t     commandId; /* reported back as the command id of the selection event; >= 0 */
    int32_t     kind;      /* TOVI_TFB_MENU_ITEM_* */
    const char* text;      /* UTF-8 label; NULL for a separator */
    int32_t     value;     /* check box: 0/1; ignored for other kinds */
    int32_t     reserved;  /* 0 */
} ToviTfbContextMenuItem;
TOVI_STATIC_ASSERT(sizeof(ToviTfbContextMenuItem) == 24, "ToviTfbContextMenuItem size");
TOVI_STATIC_ASSERT(offsetof(ToviTfbContextMenuItem, commandId) == 0, "ToviTfbContextMenuItem.commandId");
TOVI_STATIC_ASSERT(offsetof(ToviTfbContextMenuItem, kind) == 4, "ToviTfbContextMenuItem.kind");
TOVI_STATIC_ASSERT(offsetof(ToviTfbContextMenuItem, text) == 8, "ToviTfbContextMenuItem.text");
TOVI_STATIC_ASSERT(offsetof(ToviTfbContextMenuItem, value) == 16, "ToviTfbContextMenuItem.value");
TOVI_STATIC_ASSERT(offsetof(ToviTfbContextMenuItem, reserved) == 20, "ToviTfbContextMenuItem.reserved");
#define TOVI_TFB_MENU_ITEM_COMMAND   0
#define TOVI_TFB_MENU_ITEM_CHECKBOX  1
#define TOVI_TFB_MENU_ITEM_SEPARATOR 2


/* Identifier of a layer of the frame-buffer window's layer tree. Valid identifiers are
   positive; 0 is never valid and is what a failed lookup answers. */
typedef int32_t ToviLayerID;

/* Layer property type codes (getLayerPropertyType, getLayerPropertiesOfType). */
#define TOVI_LAYER_PROPERTY_BOOL               0
#define TOVI_LAYER_PROPERTY_INT                1
#define TOVI_LAYER_PROPERTY_INT_ENUM           2
#define TOVI_LAYER_PROPERTY_FLOAT              3
#define TOVI_LAYER_PROPERTY_STRING             4
#define TOVI_LAYER_PROPERTY_COLOR              5
#define TOVI_LAYER_PROPERTY_STAMP_RAW_STRING   6
#define TOVI_LAYER_PROPERTY_STAMP_FONT_DESC    7
/* Layer property flag bits (getLayerPropertyFlags). */
#define TOVI_LAYER_PROPERTY_FLAG_READ_ONLY     0x01
#define TOVI_LAYER_PROPERTY_FLAG_HIDDEN        0x02
#define TOVI_LAYER_PROPERTY_FLAG_ANIMATABLE    0x04

/* Font of a stamp layer. The family name is inline, so the record is plain data that
   needs no release after a read. */
typedef struct ToviLayerStampFontDesc {
    char     typeface[64]; /* UTF-8 family name, zero-terminated; empty: the window's default font */
    int32_t  pixelSize;    /* font height in image pixels; 0: automatic (scaled with the image) */
    int32_t  weight;       /* 100..900, 400 normal, 700 bold */
    uint8_t  italic;       /* 0/1 */
    uint8_t  reserved[7];  /* 0; pads the record to a multiple of 8 */
} ToviLayerStampFontDesc;
TOVI_STATIC_ASSERT(sizeof(ToviLayerStampFontDesc) == 80, "ToviLayerStampFontDesc size");
TOVI_STATIC_ASSERT(offsetof(ToviLayerStampFontDesc, typeface) == 0, "ToviLayerStampFontDesc.typeface");
TOVI_STATIC_ASSERT(offsetof(ToviLayerStampFontDesc, pixelSize) == 64, "ToviLayerStampFontDesc.pixelSize");
TOVI_STATIC_ASSERT(offsetof(ToviLayerStampFontDesc, weight) == 68, "ToviLayerStampFontDesc.weight");
TOVI_STATIC_ASSERT(offsetof(ToviLayerStampFontDesc, italic) == 72, "ToviLayerStampFontDesc.italic");
TOVI_STATIC_ASSERT(offsetof(ToviLayerStampFontDesc, reserved) == 73, "ToviLayerStampFontDesc.reserved");

/* Property definition of one property of a plugin class: an opaque handle owned by the SDK.
   It is never released by the caller; it stays valid as long as the renderer that handed it out
   (class definitions do not change while the library is loaded). NULL means "no such property". */

/* Plugin filter of the filtered scene loaders. Called during the load call, once for every plugin
   that the load is about to create, with its class name and instance name; userData is the pointer
   given to the loader. Result:
     - instanceName itself: keep the plugin under its own name;
     - any other non-NULL pointer: keep it under that name; the text is a zero-terminated block from
       C_memory_alloc that the SDK takes over and frees with C_memory_free;
     - NULL: discard the plugin.
   The SDK tells the first two cases apart by comparing the pointer with instanceName. */
typedef const char* (*ToviPluginFilterFn)(ToviRenderer* renderer, const char* pluginType,
                                          const char* instanceName, void* userData);

/* One range of frames for renderSequence. step 0 means the single frame `start` (end is then
   ignored); otherwise the frames start, start+step, ... up to and including end. */
typedef struct ToviFrameRange {
    int32_t start;
    int32_t end;
    int32_t step;
} ToviFrameRange;
TOVI_STATIC_ASSERT(sizeof(ToviFrameRange) == 12, "ToviFrameRange must be 12 bytes");
TOVI_STATIC_ASSERT(offsetof(ToviFrameRange, start) == 0, "ToviFrameRange.start");
TOVI_STATIC_ASSERT(offsetof(ToviFrameRange, end) == 4, "ToviFrameRange.end");
TOVI_STATIC_ASSERT(offsetof(ToviFrameRange, step) == 8, "ToviFrameRange.step");

/* One file of a scene export split by plugin category. Both texts are read during the call only. */
typedef struct ToviExportSubFileInfo {
    const char* type;   /* "view", "lights", "geometry", "nodes", "materials", "textures", "bitmaps"
                           or "render_elements"; an unknown type makes the export fail */
    const char* suffix; /* added to the main file name before its extension */
} ToviExportSubFileInfo;
TOVI_STATIC_ASSERT(sizeof(ToviExportSubFileInfo) == 16, "ToviExportSubFileInfo must be 16 bytes");
TOVI_STATIC_ASSERT(offsetof(ToviExportSubFileInfo, type) == 0, "ToviExportSubFileInfo.type");
TOVI_STATIC_ASSERT(offsetof(ToviExportSubFileInfo, suffix) == 8, "ToviExportSubFileInfo.suffix");

/* Scene export options. The caller zero-fills the record and then sets compressed, hexArrays and
   printHeader to 1 (their defaults); every other zero field is the default. Flags are int 0/1.
   All pointers are owned by the caller and read during exportScene only. */
typedef struct ToviExportOptions {
    int32_t currentFrameOnly;              /* export only the current keyframe, not the timeline */
    int32_t appendFrameSuffix;             /* with currentFrameOnly: one file per frame */
    int32_t incremental;                   /* with currentFrameOnly, without appendFrameSuffix:
                                              append keyframe data to an earlier export */
    int32_t compressed;                    /* compress number lists written as hex (default 1) */
    int32_t hexArrays;                     /* number lists in hexadecimal form (default 1) */
    int32_t hexTransforms;                 /* transforms in hexadecimal form */
    int32_t renderElementsSeparateFolders; /* render elements to separate folders */
    int32_t printHeader;                   /* comment header with version and time (default 1) */
    int32_t stripPaths;                    /* keep only the file names of external file paths */
    int32_t tvdataExport;                  /* large data to side data files */
    int32_t tvfilesExport;                 /* referenced files exported beside the scene */
    int32_t tvfilesComputeHashes;          /* hashes of the exported files */
    double  leftInterval;                  /* with currentFrameOnly: closed left end of the time
                                              interval around the current time */
    double  rightInterval;                 /* open right end; equal ends mean one frame */
    int32_t tvdataSmallBufferSizeLimit;    /* bytes below which data stays inline; 0 or less: the
                                              SDK's own limit */
    int32_t tvdataFileSizeLimitMiB;        /* size limit of one side data file; 0 or less: the
                                              SDK's own limit */
    const char* hostAppString;             /* host application and version, or NULL */
    const char* sceneBasePath;             /* base path for exported paths, or NULL */
    const ToviExportSubFileInfo* subFileInfos; /* split into files by category, or NULL */
    int32_t subFileInfoCount;
    int32_t pluginExportCount;             /* 0 (list NULL): export every plugin */
    const ToviPluginID* pluginExportList;  /* export only these plugins */
    const char* const* additionalIncludeFiles; /* include directives written at the end of the
                                                  main file, or NULL */
    int32_t additionalIncludeFileCount;
    int32_t reserved;                      /* 0 */
} ToviExportOptions;
TOVI_STATIC_ASSERT(sizeof(ToviExportOptions) == 128, "ToviExportOptions must be 128 bytes");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, currentFrameOnly) == 0, "ToviExportOptions.currentFrameOnly");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, appendFrameSuffix) == 4, "ToviExportOptions.appendFrameSuffix");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, incremental) == 8, "ToviExportOptions.incremental");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, compressed) == 12, "ToviExportOptions.compressed");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, hexArrays) == 16, "ToviExportOptions.hexArrays");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, hexTransforms) == 20, "ToviExportOptions.hexTransforms");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, renderElementsSeparateFolders) == 24, "ToviExportOptions.renderElementsSeparateFolders");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, printHeader) == 28, "ToviExportOptions.printHeader");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, stripPaths) == 32, "ToviExportOptions.stripPaths");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, tvdataExport) == 36, "ToviExportOptions.tvdataExport");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, tvfilesExport) == 40, "ToviExportOptions.tvfilesExport");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, tvfilesComputeHashes) == 44, "ToviExportOptions.tvfilesComputeHashes");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, leftInterval) == 48, "ToviExportOptions.leftInterval");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, rightInterval) == 56, "ToviExportOptions.rightInterval");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, tvdataSmallBufferSizeLimit) == 64, "ToviExportOptions.tvdataSmallBufferSizeLimit");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, tvdataFileSizeLimitMiB) == 68, "ToviExportOptions.tvdataFileSizeLimitMiB");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, hostAppString) == 72, "ToviExportOptions.hostAppString");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, sceneBasePath) == 80, "ToviExportOptions.sceneBasePath");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, subFileInfos) == 88, "ToviExportOptions.subFileInfos");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, subFileInfoCount) == 96, "ToviExportOptions.subFileInfoCount");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, pluginExportCount) == 100, "ToviExportOptions.pluginExportCount");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, pluginExportList) == 104, "ToviExportOptions.pluginExportList");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, additionalIncludeFiles) == 112, "ToviExportOptions.additionalIncludeFiles");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, additionalIncludeFileCount) == 120, "ToviExportOptions.additionalIncludeFileCount");
TOVI_STATIC_ASSERT(offsetof(ToviExportOptions, reserved) == 124, "ToviExportOptions.reserved");

/* Statistics of one compute device taking part in interactive rendering. */
typedef struct ToviRTDeviceStatistics {
    const char* name;        /* device name; text inside the same statistics block */
    double   pathsPerSecond;
    uint64_t memoryUsed;     /* bytes */
    int32_t  deviceIndex;    /* index in the device list of the render mode's kind; -1 the CPU */
    int32_t  reserved;       /* 0 */
} ToviRTDeviceStatistics;
TOVI_STATIC_ASSERT(sizeof(ToviRTDeviceStatistics) == 32, "ToviRTDeviceStatistics must be 32 bytes");
TOVI_STATIC_ASSERT(offsetof(ToviRTDeviceStatistics, name) == 0, "ToviRTDeviceStatistics.name");
TOVI_STATIC_ASSERT(offsetof(ToviRTDeviceStatistics, pathsPerSecond) == 8, "ToviRTDeviceStatistics.pathsPerSecond");
TOVI_STATIC_ASSERT(offsetof(ToviRTDeviceStatistics, memoryUsed) == 16, "ToviRTDeviceStatistics.memoryUsed");
TOVI_STATIC_ASSERT(offsetof(ToviRTDeviceStatistics, deviceIndex) == 24, "ToviRTDeviceStatistics.deviceIndex");

/* Memory used by one category of data (geometry, textures, frame buffers, ...). */
typedef struct ToviRTMemoryUsage {
    const char* category;    /* category name; text inside the same statistics block */
    uint64_t bytes;
} ToviRTMemoryUsage;
TOVI_STATIC_ASSERT(sizeof(ToviRTMemoryUsage) == 16, "ToviRTMemoryUsage must be 16 bytes");
TOVI_STATIC_ASSERT(offsetof(ToviRTMemoryUsage, category) == 0, "ToviRTMemoryUsage.category");
TOVI_STATIC_ASSERT(offsetof(ToviRTMemoryUsage, bytes) == 8, "ToviRTMemoryUsage.bytes");

/* Interactive-rendering statistics. getRTStatistics returns ONE C_memory_alloc block holding this
   record, then the device and memory arrays and the texts they point to; the caller frees the
   block once with C_memory_free. */
typedef struct ToviRTStatistics {
    double  pathsPerSecond;              /* all devices together */
    int64_t elapsedTicks;                /* milliseconds since interactive rendering started */
    double  noiseThreshold;              /* current noise threshold reached */
    double  progress;                    /* current progress, 0 to 1 */
    int32_t sampleLevel;                 /* current paths per pixel */
    int32_t deviceCount;
    const ToviRTDeviceStatistics* devices;
    int32_t memoryCategoryCount;
    int32_t reserved;                    /* 0 */
    const ToviRTMemoryUsage* memory;
} ToviRTStatistics;
TOVI_STATIC_ASSERT(sizeof(ToviRTStatistics) == 64, "ToviRTStatistics must be 64 bytes");
TOVI_STATIC_ASSERT(offsetof(ToviRTStatistics, pathsPerSecond) == 0, "ToviRTStatistics.pathsPerSecond");
TOVI_STATIC_ASSERT(offsetof(ToviRTStatistics, elapsedTicks) == 8, "ToviRTStatistics.elapsedTicks");
TOVI_STATIC_ASSERT(offsetof(ToviRTStatistics, noiseThreshold) == 16, "ToviRTStatistics.noiseThreshold");
TOVI_STATIC_ASSERT(offsetof(ToviRTStatistics, progress) == 24, "ToviRTStatistics.progress");
TOVI_STATIC_ASSERT(offsetof(ToviRTStatistics, sampleLevel) == 32, "ToviRTStatistics.sampleLevel");
TOVI_STATIC_ASSERT(offsetof(ToviRTStatistics, deviceCount) == 36, "ToviRTStatistics.deviceCount");
TOVI_STATIC_ASSERT(offsetof(ToviRTStatistics, devices) == 40, "ToviRTStatistics.devices");
TOVI_STATIC_ASSERT(offsetof(ToviRTStatistics, memoryCategoryCount) == 48, "ToviRTStatistics.memoryCategoryCount");
TOVI_STATIC_ASSERT(offsetof(ToviRTStatistics, memory) == 56, "ToviRTStatistics.memory");

/* Scene bounds without infinite primitives, as packed floats (read as two 12-byte vectors). */
typedef struct ToviBoundingBox {
    float min[3];  /* x, y, z */
    float max[3];  /* x, y, z */
} ToviBoundingBox;
TOVI_STATIC_ASSERT(sizeof(ToviBoundingBox) == 24, "ToviBoundingBox must be 24 bytes");
TOVI_STATIC_ASSERT(offsetof(ToviBoundingBox, min) == 0, "ToviBoundingBox.min");
TOVI_STATIC_ASSERT(offsetof(ToviBoundingBox, max) == 12, "ToviBoundingBox.max");

/* ---- event records ----
 * Every renderer event reaches its native function as one pointer to an event record:
 * a 32-byte header, the event time at 32, and the event's own fields from 40 on.
 * Strings and arrays in an event are valid only for the duration of the call. */

/* Kind of an event record, stored in its header (one value per registration entry). */
typedef enum ToviEventType {
    TOVI_EVENT_BUCKET_INIT = 1,
    TOVI_EVENT_BUCKET_READY = 2,
    TOVI_EVENT_BUCKET_FAILED = 3,
    TOVI_EVENT_STATE_CHANGED = 4,
    TOVI_EVENT_IMAGE_UPDATED = 5,
    TOVI_EVENT_LOG_MESSAGE = 6,
    TOVI_EVENT_RENDERER_CLOSE = 7,
    TOVI_EVENT_PROGRESS = 8,
    TOVI_EVENT_RENDER_VIEW_CHANGED = 9,
    TOVI_EVENT_TFB_RENDER_LAST = 10,
    TOVI_EVENT_TFB_RENDER_INTERACTIVE_START = 11,
    TOVI_EVENT_TFB_CLOSED = 12,
    TOVI_EVENT_POST_EFFECTS_UPDATED = 13,
    TOVI_EVENT_TFB_SHOW_MESSAGES_WINDOW = 14,
    TOVI_EVENT_HOST_CONNECTED = 15,
    TOVI_EVENT_HOST_DISCONNECTED = 16,
    TOVI_EVENT_TFB_CONTEXT_MENU_SELECTED = 17,
    TOVI_EVENT_LIGHT_MIX_TRANSFER_TO_SCENE = 18,
    TOVI_EVENT_UPLOAD_TO_COLLABORATION = 19,
    TOVI_EVENT_ENHANCE_ON_COLLABORATION = 20,
    TOVI_EVENT_TFB_PAUSE_INTERACTIVE = 21,
    TOVI_EVENT_TFB_UPDATE_INTERACTIVE = 22,
    TOVI_EVENT_TFB_COPY_TO_HOST_FRAME_BUFFER = 23,
    TOVI_EVENT_TFB_ADD_RENDER_ELEMENT_TO_SCENE = 24,
    TOVI_EVENT_TFB_CLICK = 25
} ToviEventType;

/* Common header of every event record. Receivers rely only on userData. */
typedef struct ToviEventHeader {
    void*    source;      /* 0: SDK object that raised the event (renderer or server handle) */
    void*    userData;    /* 8: user data of the registration record */
    uint32_t eventType;   /* 16: ToviEventType */
    uint32_t recordSize;  /* 20: byte size of the whole event record */
    uint64_t reserved;    /* 24: zero */
} ToviEventHeader;
TOVI_STATIC_ASSERT(sizeof(ToviEventHeader) == 32, "ToviEventHeader size");
TOVI_STATIC_ASSERT(offsetof(ToviEventHeader, userData) == 8, "ToviEventHeader.userData");

/* Event without fields of its own: renderer close, TFB closed, post effects updated,
 * TFB show messages window, TFB copy to host frame buffer. */
typedef struct ToviPlainEvent {
    ToviEventHeader header;
    double          instant;   /* 32: seconds since the SDK was initialised */
} ToviPlainEvent;
TOVI_STATIC_ASSERT(sizeof(ToviPlainEvent) == 40, "ToviPlainEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviPlainEvent, instant) == 32, "ToviPlainEvent.instant");

/* Bucket init and bucket failed: the region only, no pixels. */
typedef struct ToviBucketEvent {
    ToviEventHeader header;
    double          instant;      /* 32 */
    int32_t         x;            /* 40 */
    int32_t         y;            /* 44 */
    int32_t         width;        /* 48 */
    int32_t         height;       /* 52 */
    const char*     host;         /* 56: UTF-8 name of the host that renders it, or NULL (local) */
    int32_t         renderPass;   /* 64: 0 final, 1 light cache, 2 irradiance map, ... */
    int32_t         reserved;     /* 68 */
} ToviBucketEvent;
TOVI_STATIC_ASSERT(sizeof(ToviBucketEvent) == 72, "ToviBucketEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviBucketEvent, instant) == 32, "ToviBucketEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviBucketEvent, x) == 40, "ToviBucketEvent.x");
TOVI_STATIC_ASSERT(offsetof(ToviBucketEvent, y) == 44, "ToviBucketEvent.y");
TOVI_STATIC_ASSERT(offsetof(ToviBucketEvent, width) == 48, "ToviBucketEvent.width");
TOVI_STATIC_ASSERT(offsetof(ToviBucketEvent, height) == 52, "ToviBucketEvent.height");
TOVI_STATIC_ASSERT(offsetof(ToviBucketEvent, host) == 56, "ToviBucketEvent.host");
TOVI_STATIC_ASSERT(offsetof(ToviBucketEvent, renderPass) == 64, "ToviBucketEvent.renderPass");

/* Bucket ready. The image handle (when not NULL) passes to the receiver while
 * keep-buckets-in-callback is on; the receiver frees it with C_memory_free. */
typedef struct ToviBucketReadyEvent {
    ToviEventHeader header;
    double          instant;      /* 32 */
    int32_t         x;            /* 40 */
    int32_t         y;            /* 44 */
    int32_t         width;        /* 48 */
    int32_t         height;       /* 52 */
    ToviImage*      image;        /* 56: bucket pixels, or NULL (no buffer requested) */
    const char*     host;         /* 64: UTF-8 host name, or NULL (local) */
    int32_t         renderPass;   /* 72 */
    int32_t         reserved;     /* 76 */
} ToviBucketReadyEvent;
TOVI_STATIC_ASSERT(sizeof(ToviBucketReadyEvent) == 80, "ToviBucketReadyEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviBucketReadyEvent, instant) == 32, "ToviBucketReadyEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviBucketReadyEvent, x) == 40, "ToviBucketReadyEvent.x");
TOVI_STATIC_ASSERT(offsetof(ToviBucketReadyEvent, y) == 44, "ToviBucketReadyEvent.y");
TOVI_STATIC_ASSERT(offsetof(ToviBucketReadyEvent, width) == 48, "ToviBucketReadyEvent.width");
TOVI_STATIC_ASSERT(offsetof(ToviBucketReadyEvent, height) == 52, "ToviBucketReadyEvent.height");
TOVI_STATIC_ASSERT(offsetof(ToviBucketReadyEvent, image) == 56, "ToviBucketReadyEvent.image");
TOVI_STATIC_ASSERT(offsetof(ToviBucketReadyEvent, host) == 64, "ToviBucketReadyEvent.host");
TOVI_STATIC_ASSERT(offsetof(ToviBucketReadyEvent, renderPass) == 72, "ToviBucketReadyEvent.renderPass");

typedef struct ToviStateChangedEvent {
    ToviEventHeader header;
    double          instant;    /* 32 */
    int32_t         oldState;   /* 40: renderer state, -1 .. 8 */
    int32_t         newState;   /* 44 */
} ToviStateChangedEvent;
TOVI_STATIC_ASSERT(sizeof(ToviStateChangedEvent) == 48, "ToviStateChangedEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviStateChangedEvent, instant) == 32, "ToviStateChangedEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviStateChangedEvent, oldState) == 40, "ToviStateChangedEvent.oldState");
TOVI_STATIC_ASSERT(offsetof(ToviStateChangedEvent, newState) == 44, "ToviStateChangedEvent.newState");

/* Progressive image updated. The image handle passes to the receiver while
 * keep-frames-in-callback is on; the receiver frees it with C_memory_free. */
typedef struct ToviImageUpdatedEvent {
    ToviEventHeader header;
    double          instant;       /* 32 */
    uint64_t        reserved0;     /* 40: zero */
    ToviImage*      image;         /* 48: the frame, or NULL (no buffer requested) */
    uint64_t        changeIndex;   /* 56: scene change index the frame was rendered from */
    int32_t         renderPass;    /* 64 */
    int32_t         reserved1;     /* 68 */
} ToviImageUpdatedEvent;
TOVI_STATIC_ASSERT(sizeof(ToviImageUpdatedEvent) == 72, "ToviImageUpdatedEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviImageUpdatedEvent, instant) == 32, "ToviImageUpdatedEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviImageUpdatedEvent, image) == 48, "ToviImageUpdatedEvent.image");
TOVI_STATIC_ASSERT(offsetof(ToviImageUpdatedEvent, changeIndex) == 56, "ToviImageUpdatedEvent.changeIndex");
TOVI_STATIC_ASSERT(offsetof(ToviImageUpdatedEvent, renderPass) == 64, "ToviImageUpdatedEvent.renderPass");

typedef struct ToviLogMessageEvent {
    ToviEventHeader header;
    double          instant;    /* 32 */
    const char*     message;    /* 40: UTF-8 */
    int32_t         level;      /* 48: 0 error, 1 warning, 2 info, 3 debug */
    int32_t         reserved;   /* 52 */
} ToviLogMessageEvent;
TOVI_STATIC_ASSERT(sizeof(ToviLogMessageEvent) == 56, "ToviLogMessageEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviLogMessageEvent, instant) == 32, "ToviLogMessageEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviLogMessageEvent, message) == 40, "ToviLogMessageEvent.message");
TOVI_STATIC_ASSERT(offsetof(ToviLogMessageEvent, level) == 48, "ToviLogMessageEvent.level");

typedef struct ToviProgressEvent {
    ToviEventHeader header;
    double          instant;     /* 32 */
    const char*     title;       /* 40: UTF-8 */
    int32_t         workDone;    /* 48 */
    int32_t         workTotal;   /* 52 */
} ToviProgressEvent;
TOVI_STATIC_ASSERT(sizeof(ToviProgressEvent) == 56, "ToviProgressEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviProgressEvent, instant) == 32, "ToviProgressEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviProgressEvent, title) == 40, "ToviProgressEvent.title");
TOVI_STATIC_ASSERT(offsetof(ToviProgressEvent, workDone) == 48, "ToviProgressEvent.workDone");
TOVI_STATIC_ASSERT(offsetof(ToviProgressEvent, workTotal) == 52, "ToviProgressEvent.workTotal");

typedef struct ToviRenderViewChangedEvent {
    ToviEventHeader header;
    double          instant;        /* 32 */
    const char*     propertyName;   /* 40: UTF-8 name of the render-view property that changed */
} ToviRenderViewChangedEvent;
TOVI_STATIC_ASSERT(sizeof(ToviRenderViewChangedEvent) == 48, "ToviRenderViewChangedEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviRenderViewChangedEvent, instant) == 32, "ToviRenderViewChangedEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviRenderViewChangedEvent, propertyName) == 40, "ToviRenderViewChangedEvent.propertyName");

/* Flag bits of ToviTFBRenderingEvent.flags. */
enum { TOVI_TFB_FLAG_RENDERING = 1u << 0 };   /* rendering was in progress when the button was pressed */

/* TFB render last, render interactive start, pause interactive, update interactive. */
typedef struct ToviTFBRenderingEvent {
    ToviEventHeader header;
    double          instant;    /* 32 */
    uint32_t        flags;      /* 40: TOVI_TFB_FLAG_* */
    uint32_t        reserved;   /* 44 */
} ToviTFBRenderingEvent;
TOVI_STATIC_ASSERT(sizeof(ToviTFBRenderingEvent) == 48, "ToviTFBRenderingEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviTFBRenderingEvent, instant) == 32, "ToviTFBRenderingEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviTFBRenderingEvent, flags) == 40, "ToviTFBRenderingEvent.flags");

/* Distributed-rendering host connected or disconnected. */
typedef struct ToviHostEvent {
    ToviEventHeader header;
    double          instant;   /* 32 */
    const char*     host;      /* 40: UTF-8 host name or "address:port" */
} ToviHostEvent;
TOVI_STATIC_ASSERT(sizeof(ToviHostEvent) == 48, "ToviHostEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviHostEvent, instant) == 32, "ToviHostEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviHostEvent, host) == 40, "ToviHostEvent.host");

/* TFB context menu item chosen (registered through setTfbContextMenuSelectedCallback). */
typedef struct ToviTFBContextMenuSelectedEvent {
    ToviEventHeader header;
    double          instant;     /* 32 */
    int32_t         commandId;   /* 40: id of the chosen menu item */
    int32_t         x;           /* 44: cursor position in image pixels */
    int32_t         y;           /* 48 */
    int32_t         reserved;    /* 52 */
} ToviTFBContextMenuSelectedEvent;
TOVI_STATIC_ASSERT(sizeof(ToviTFBContextMenuSelectedEvent) == 56, "ToviTFBContextMenuSelectedEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviTFBContextMenuSelectedEvent, instant) == 32, "ToviTFBContextMenuSelectedEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviTFBContextMenuSelectedEvent, commandId) == 40, "ToviTFBContextMenuSelectedEvent.commandId");
TOVI_STATIC_ASSERT(offsetof(ToviTFBContextMenuSelectedEvent, x) == 44, "ToviTFBContextMenuSelectedEvent.x");
TOVI_STATIC_ASSERT(offsetof(ToviTFBContextMenuSelectedEvent, y) == 48, "ToviTFBContextMenuSelectedEvent.y");

/* One light-mix change offered for transfer into the scene. */
typedef struct ToviLightMixItem {
    ToviPluginID plugin;              /* 0: light (or light group) plugin */
    float        colorMultiplier[3];  /* 8: red, green, blue */
    float        intensityMultiplier; /* 20 */
    int32_t      enabled;             /* 24: 0/1 */
    int32_t      applied;             /* 28: 0/1, written back by the receiver */
} ToviLightMixItem;
TOVI_STATIC_ASSERT(sizeof(ToviLightMixItem) == 32, "ToviLightMixItem size");
TOVI_STATIC_ASSERT(offsetof(ToviLightMixItem, plugin) == 0, "ToviLightMixItem.plugin");
TOVI_STATIC_ASSERT(offsetof(ToviLightMixItem, colorMultiplier) == 8, "ToviLightMixItem.colorMultiplier");
TOVI_STATIC_ASSERT(offsetof(ToviLightMixItem, intensityMultiplier) == 20, "ToviLightMixItem.intensityMultiplier");
TOVI_STATIC_ASSERT(offsetof(ToviLightMixItem, enabled) == 24, "ToviLightMixItem.enabled");
TOVI_STATIC_ASSERT(offsetof(ToviLightMixItem, applied) == 28, "ToviLightMixItem.applied");

/* Light mix transfer to scene; the items are writable (applied flags come back). */
typedef struct ToviLightMixTransferEvent {
    ToviEventHeader   header;
    double            instant;     /* 32 */
    ToviLightMixItem* items;       /* 40 */
    uint64_t          itemCount;   /* 48 */
} ToviLightMixTransferEvent;
TOVI_STATIC_ASSERT(sizeof(ToviLightMixTransferEvent) == 56, "ToviLightMixTransferEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviLightMixTransferEvent, instant) == 32, "ToviLightMixTransferEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviLightMixTransferEvent, items) == 40, "ToviLightMixTransferEvent.items");
TOVI_STATIC_ASSERT(offsetof(ToviLightMixTransferEvent, itemCount) == 48, "ToviLightMixTransferEvent.itemCount");

/* Upload to collaboration and enhance on collaboration. */
typedef struct ToviFileListEvent {
    ToviEventHeader header;
    double          instant;     /* 32 */
    const char*     paths;       /* 40: pathCount zero-terminated UTF-8 paths back to back */
    int32_t         pathCount;   /* 48 */
    int32_t         reserved;    /* 52 */
} ToviFileListEvent;
TOVI_STATIC_ASSERT(sizeof(ToviFileListEvent) == 56, "ToviFileListEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviFileListEvent, instant) == 32, "ToviFileListEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviFileListEvent, paths) == 40, "ToviFileListEvent.paths");
TOVI_STATIC_ASSERT(offsetof(ToviFileListEvent, pathCount) == 48, "ToviFileListEvent.pathCount");

/* Kinds of ToviAddRenderElementEvent.kind. */
enum { TOVI_ADD_RENDER_ELEMENT_LIGHT_MIX = 0, TOVI_ADD_RENDER_ELEMENT_DENOISER = 1 };

/* TFB asks to add a render element to the scene. */
typedef struct ToviAddRenderElementEvent {
    ToviEventHeader header;
    double          instant;    /* 32 */
    int32_t         kind;       /* 40: TOVI_ADD_RENDER_ELEMENT_* */
    int32_t         reserved;   /* 44 */
} ToviAddRenderElementEvent;
TOVI_STATIC_ASSERT(sizeof(ToviAddRenderElementEvent) == 48, "ToviAddRenderElementEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviAddRenderElementEvent, instant) == 32, "ToviAddRenderElementEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviAddRenderElementEvent, kind) == 40, "ToviAddRenderElementEvent.kind");

/* Modifier bits of ToviTFBClickEvent.modifiers. */
enum { TOVI_TFB_CLICK_CTRL = 1u << 0, TOVI_TFB_CLICK_SHIFT = 1u << 1 };

/* Mouse click in the TFB image. */
typedef struct ToviTFBClickEvent {
    ToviEventHeader header;
    double          instant;     /* 32 */
    uint16_t        button;      /* 40: mouse button */
    uint16_t        modifiers;   /* 42: TOVI_TFB_CLICK_* */
    int32_t         x;           /* 44: image pixel */
    int32_t         y;           /* 48 */
    int32_t         reserved;    /* 52 */
} ToviTFBClickEvent;
TOVI_STATIC_ASSERT(sizeof(ToviTFBClickEvent) == 56, "ToviTFBClickEvent size");
TOVI_STATIC_ASSERT(offsetof(ToviTFBClickEvent, instant) == 32, "ToviTFBClickEvent.instant");
TOVI_STATIC_ASSERT(offsetof(ToviTFBClickEvent, button) == 40, "ToviTFBClickEvent.button");
TOVI_STATIC_ASSERT(offsetof(ToviTFBClickEvent, modifiers) == 42, "ToviTFBClickEvent.modifiers");
TOVI_STATIC_ASSERT(offsetof(ToviTFBClickEvent, x) == 44, "ToviTFBClickEvent.x");
TOVI_STATIC_ASSERT(offsetof(ToviTFBClickEvent, y) == 48, "ToviTFBClickEvent.y");

/* ---- native event functions ----
 * Called on SDK threads with a pointer to the event record. Functions with an int
 * result answer the SDK: light mix 0 accept / 1 cancel / -1 no answer; collaboration
 * 1 yes / 0 no / -1 undecidable / -2 no answer (yes after upload: the SDK deletes the
 * uploaded files); add render element 0 done / -1 error / -2 no answer. */
typedef void (*ToviBucketInitFn)(const ToviBucketEvent* event);
typedef void (*ToviBucketReadyFn)(const ToviBucketReadyEvent* event);
typedef void (*ToviBucketFailedFn)(const ToviBucketEvent* event);
typedef void (*ToviImageUpdatedFn)(const ToviImageUpdatedEvent* event);
typedef void (*ToviStateChangedFn)(const ToviStateChangedEvent* event);
typedef void (*ToviLogMessageFn)(const ToviLogMessageEvent* event);
typedef void (*ToviRendererCloseFn)(const ToviPlainEvent* event);
typedef void (*ToviProgressFn)(const ToviProgressEvent* event);
typedef void (*ToviRenderViewChangedFn)(const ToviRenderViewChangedEvent* event);
typedef void (*ToviTFBRenderLastFn)(const ToviTFBRenderingEvent* event);
typedef void (*ToviTFBRenderInteractiveStartFn)(const ToviTFBRenderingEvent* event);
typedef void (*ToviTFBClosedFn)(const ToviPlainEvent* event);
typedef void (*ToviPostEffectsUpdatedFn)(const ToviPlainEvent* event);
typedef void (*ToviTFBShowMessagesWindowFn)(const ToviPlainEvent* event);
typedef void (*ToviHostConnectedFn)(const ToviHostEvent* event);
typedef void (*ToviHostDisconnectedFn)(const ToviHostEvent* event);
typedef void (*ToviTFBContextMenuSelectedFn)(const ToviTFBContextMenuSelectedEvent* event);
typedef int  (*ToviLightMixTransferToSceneFn)(ToviLightMixTransferEvent* event);
typedef int  (*ToviUploadToCollaborationFn)(const ToviFileListEvent* event);
typedef int  (*ToviEnhanceOnCollaborationFn)(const ToviFileListEvent* event);
typedef void (*ToviTFBPauseInteractiveFn)(const ToviTFBRenderingEvent* event);
typedef void (*ToviTFBUpdateInteractiveFn)(const ToviTFBRenderingEvent* event);
typedef void (*ToviTFBCopyToHostFrameBufferFn)(const ToviPlainEvent* event);
typedef int  (*ToviTFBAddRenderElementToSceneFn)(const ToviAddRenderElementEvent* event);
typedef void (*ToviTFBClickFn)(const ToviTFBClickEvent* event);
typedef void (*ToviCallbackFn)(void);   /* generic function pointer type of the record */

/* Callback registration record, handed by pointer to every set...Callback entry and
 * copied by the SDK during the call. Write the union member that belongs to the entry
 * (any other native function type goes through `any`); NULL unregisters. */
typedef struct ToviCallbackRecord {
    union {
        ToviCallbackFn                   any;
        ToviBucketInitFn                 bucketInit;
        ToviBucketReadyFn                bucketReady;
        ToviBucketFailedFn               bucketFailed;
        ToviImageUpdatedFn               imageUpdated;
        ToviStateChangedFn               stateChanged;
        ToviLogMessageFn                 logMessage;
        ToviRendererCloseFn              rendererClose;
        ToviProgressFn                   progress;
        ToviRenderViewChangedFn          renderViewChanged;
        ToviTFBRenderLastFn              tfbRenderLast;
        ToviTFBRenderInteractiveStartFn  tfbRenderInteractiveStart;
        ToviTFBClosedFn                  tfbClosed;
        ToviPostEffectsUpdatedFn         postEffectsUpdated;
        ToviTFBShowMessagesWindowFn      tfbShowMessagesWindow;
        ToviHostConnectedFn              hostConnected;
        ToviHostDisconnectedFn           hostDisconnected;
        ToviTFBContextMenuSelectedFn     tfbContextMenuSelected;
        ToviLightMixTransferToSceneFn    lightMixTransferToScene;
        ToviUploadToCollaborationFn      uploadToCollaboration;
        ToviEnhanceOnCollaborationFn     enhanceOnCollaboration;
        ToviTFBPauseInteractiveFn        tfbPauseInteractive;
        ToviTFBUpdateInteractiveFn       tfbUpdateInteractive;
        ToviTFBCopyToHostFrameBufferFn   tfbCopyToHostFrameBuffer;
        ToviTFBAddRenderElementToSceneFn tfbAddRenderElementToScene;
        ToviTFBClickFn                   tfbClick;
    } function;             /* 0: native function, NULL to unregister */
    void*    userData;      /* 8: handed back in every event header */
    uint64_t reserved[2];   /* 16: zero */
} ToviCallbackRecord;
TOVI_STATIC_ASSERT(sizeof(ToviCallbackRecord) == 32, "ToviCallbackRecord size");
TOVI_STATIC_ASSERT(offsetof(ToviCallbackRecord, function) == 0, "ToviCallbackRecord.function");
TOVI_STATIC_ASSERT(offsetof(ToviCallbackRecord, userData) == 8, "ToviCallbackRecord.userData");
TOVI_STATIC_ASSERT(offsetof(ToviCallbackRecord, reserved) == 16, "ToviCallbackRecord.reserved");

/* ---- one-shot denoise request ---- */
typedef struct ToviDenoiseRequest ToviDenoiseRequest;
/* Called once when denoising ends, with the SDK's copy of the request. image: the
 * denoised frame, owned by the receiver (C_memory_free), or NULL when there is none
 * or passImage is 0. */
typedef void (*ToviDenoiseDoneFn)(const ToviDenoiseRequest* request, ToviImage* image);
/* Copied by the SDK at the call; callable and userData are opaque to the SDK. */
struct ToviDenoiseRequest {
    ToviDenoiseDoneFn function;    /* 0: NULL: denoise without notification */
    ToviRenderer*     renderer;    /* 8: the renderer that denoises */
    void*             callable;    /* 16: receiver's callable (one-shot reference) */
    void*             userData;    /* 24: receiver's renderer object */
    int32_t           passImage;   /* 32: 0/1, hand the denoised image to the function */
    int32_t           reserved;    /* 36 */
};
TOVI_STATIC_ASSERT(sizeof(ToviDenoiseRequest) == 40, "ToviDenoiseRequest size");
TOVI_STATIC_ASSERT(offsetof(ToviDenoiseRequest, function) == 0, "ToviDenoiseRequest.function");
TOVI_STATIC_ASSERT(offsetof(ToviDenoiseRequest, renderer) == 8, "ToviDenoiseRequest.renderer");
TOVI_STATIC_ASSERT(offsetof(ToviDenoiseRequest, callable) == 16, "ToviDenoiseRequest.callable");
TOVI_STATIC_ASSERT(offsetof(ToviDenoiseRequest, userData) == 24, "ToviDenoiseRequest.userData");
TOVI_STATIC_ASSERT(offsetof(ToviDenoiseRequest, passImage) == 32, "ToviDenoiseRequest.passImage");

/* ---- render result and regions ---- */

/* Region and post-processing of a getImage copy. width/height 0: up to the image edge. */
typedef struct ToviImageRequest {
    int32_t left;             /* 0 */
    int32_t top;              /* 4 */
    int32_t width;            /* 8 */
    int32_t height;           /* 12 */
    uint8_t doColorCorrect;   /* 16: 0/1, apply the TFB colour corrections */
    uint8_t stripAlpha;       /* 17: 0/1, alpha set to 1 */
    uint8_t flipImage;        /* 18: 0/1, bottom row first */
    uint8_t reserved0;        /* 19 */
    int32_t reserved1;        /* 20 */
} ToviImageRequest;
TOVI_STATIC_ASSERT(sizeof(ToviImageRequest) == 24, "ToviImageRequest size");
TOVI_STATIC_ASSERT(offsetof(ToviImageRequest, left) == 0, "ToviImageRequest.left");
TOVI_STATIC_ASSERT(offsetof(ToviImageRequest, top) == 4, "ToviImageRequest.top");
TOVI_STATIC_ASSERT(offsetof(ToviImageRequest, width) == 8, "ToviImageRequest.width");
TOVI_STATIC_ASSERT(offsetof(ToviImageRequest, height) == 12, "ToviImageRequest.height");
TOVI_STATIC_ASSERT(offsetof(ToviImageRequest, doColorCorrect) == 16, "ToviImageRequest.doColorCorrect");
TOVI_STATIC_ASSERT(offsetof(ToviImageRequest, stripAlpha) == 17, "ToviImageRequest.stripAlpha");
TOVI_STATIC_ASSERT(offsetof(ToviImageRequest, flipImage) == 18, "ToviImageRequest.flipImage");

/* Render region in image pixels. */
typedef struct ToviRenderRegion {
    int32_t left;     /* 0 */
    int32_t top;      /* 4 */
    int32_t width;    /* 8 */
    int32_t height;   /* 12 */
} ToviRenderRegion;
TOVI_STATIC_ASSERT(sizeof(ToviRenderRegion) == 16, "ToviRenderRegion size");
TOVI_STATIC_ASSERT(offsetof(ToviRenderRegion, left) == 0, "ToviRenderRegion.left");
TOVI_STATIC_ASSERT(offsetof(ToviRenderRegion, top) == 4, "ToviRenderRegion.top");
TOVI_STATIC_ASSERT(offsetof(ToviRenderRegion, width) == 8, "ToviRenderRegion.width");
TOVI_STATIC_ASSERT(offsetof(ToviRenderRegion, height) == 12, "ToviRenderRegion.height");

/* Crop region: the output image is the region of a virtual srcWidth x srcHeight image;
 * region values are floats so that a crop can start between pixels. */
typedef struct ToviCropRegion {
    int32_t srcWidth;    /* 0 */
    int32_t srcHeight;   /* 4 */
    float   rgnLeft;     /* 8 */
    float   rgnTop;      /* 12 */
    float   rgnWidth;    /* 16 */
    float   rgnHeight;   /* 20 */
} ToviCropRegion;
TOVI_STATIC_ASSERT(sizeof(ToviCropRegion) == 24, "ToviCropRegion size");
TOVI_STATIC_ASSERT(offsetof(ToviCropRegion, srcWidth) == 0, "ToviCropRegion.srcWidth");
TOVI_STATIC_ASSERT(offsetof(ToviCropRegion, srcHeight) == 4, "ToviCropRegion.srcHeight");
TOVI_STATIC_ASSERT(offsetof(ToviCropRegion, rgnLeft) == 8, "ToviCropRegion.rgnLeft");
TOVI_STATIC_ASSERT(offsetof(ToviCropRegion, rgnTop) == 12, "ToviCropRegion.rgnTop");
TOVI_STATIC_ASSERT(offsetof(ToviCropRegion, rgnWidth) == 16, "ToviCropRegion.rgnWidth");
TOVI_STATIC_ASSERT(offsetof(ToviCropRegion, rgnHeight) == 20, "ToviCropRegion.rgnHeight");

/* One hit of pickPluginsByXY, nearest first. */
typedef struct ToviPickedPlugin {
    ToviPluginID plugin;     /* 0: node plugin hit */
    double       distance;   /* 8: distance from the camera, scene units */
    int32_t      mtlID;      /* 16: material id at the hit */
    int32_t      reserved;   /* 20 */
} ToviPickedPlugin;
TOVI_STATIC_ASSERT(sizeof(ToviPickedPlugin) == 24, "ToviPickedPlugin size");
TOVI_STATIC_ASSERT(offsetof(ToviPickedPlugin, plugin) == 0, "ToviPickedPlugin.plugin");
TOVI_STATIC_ASSERT(offsetof(ToviPickedPlugin, distance) == 8, "ToviPickedPlugin.distance");
TOVI_STATIC_ASSERT(offsetof(ToviPickedPlugin, mtlID) == 16, "ToviPickedPlugin.mtlID");

/* ---- TFB image writer flags ---- */

/* Bits of ToviImageWriterFlags.flags0. */
enum {
    TOVI_IMAGE_WRITER_MULTIPLE_FILES      = 1u << 0,
    TOVI_IMAGE_WRITER_SKIP_ALPHA          = 1u << 1,
    TOVI_IMAGE_WRITER_FRAME_NUMBER        = 1u << 2,
    TOVI_IMAGE_WRITER_NO_ALPHA            = 1u << 3,
    TOVI_IMAGE_WRITER_SINGLE_CHANNEL      = 1u << 4,
    TOVI_IMAGE_WRITER_SKIP_RGB            = 1u << 5,
    TOVI_IMAGE_WRITER_WRITE_INTEGER_IDS   = 1u << 6,
    TOVI_IMAGE_WRITER_VELOCITY_ZERO_BASED = 1u << 7
};
/* Bits of ToviImageWriterFlags.flags1. */
enum {
    TOVI_IMAGE_WRITER_MULTI_CHANNEL           = 1u << 0,
    TOVI_IMAGE_WRITER_APPLY_COLOR_CORRECTIONS = 1u << 1
};
/* Values of ToviImageWriterFlags.compressionType (multi-channel image files). */
typedef enum ToviImageCompression {
    TOVI_COMPRESSION_DEFAULT = 0,
    TOVI_COMPRESSION_NONE = 1,
    TOVI_COMPRESSION_RUN_LENGTH = 2,
    TOVI_COMPRESSION_ZIP_SCANLINE = 3,
    TOVI_COMPRESSION_ZIP_BLOCK = 4,
    TOVI_COMPRESSION_PIZ = 5,
    TOVI_COMPRESSION_PXR24 = 6,
    TOVI_COMPRESSION_B44 = 7,
    TOVI_COMPRESSION_B44A = 8,
    TOVI_COMPRESSION_DWAA = 9,
    TOVI_COMPRESSION_DWAB = 10
} ToviImageCompression;

typedef struct ToviImageWriterFlags {
    uint8_t flags0;            /* 0: TOVI_IMAGE_WRITER_MULTIPLE_FILES .. VELOCITY_ZERO_BASED */
    uint8_t flags1;            /* 1: TOVI_IMAGE_WRITER_MULTI_CHANNEL, APPLY_COLOR_CORRECTIONS */
    uint8_t reserved[2];       /* 2: zero */
    int32_t compressionType;   /* 4: ToviImageCompression, 0 = the writer's default */
    int32_t bitsPerChannel;    /* 8: 16 or 32 (float channels), default 32 */
} ToviImageWriterFlags;
TOVI_STATIC_ASSERT(sizeof(ToviImageWriterFlags) == 12, "ToviImageWriterFlags size");
TOVI_STATIC_ASSERT(offsetof(ToviImageWriterFlags, flags0) == 0, "ToviImageWriterFlags.flags0");
TOVI_STATIC_ASSERT(offsetof(ToviImageWriterFlags, flags1) == 1, "ToviImageWriterFlags.flags1");
TOVI_STATIC_ASSERT(offsetof(ToviImageWriterFlags, compressionType) == 4, "ToviImageWriterFlags.compressionType");
TOVI_STATIC_ASSERT(offsetof(ToviImageWriterFlags, bitsPerChannel) == 8, "ToviImageWriterFlags.bitsPerChannel");

/* ---- render settings services ---- */

/* Denoiser flags, one byte each: 0 off, 1 on, TOVI_DENOISER_KEEP leaves the current value. */
enum { TOVI_DENOISER_KEEP = 0xFF };
typedef struct ToviDenoiserOptions {
    uint8_t hideDestination;             /* 0: hide the destination channel */
    uint8_t panorama;                    /* 1 */
    uint8_t skipAlpha;                   /* 2 */
    uint8_t optixUpscale;                /* 3 */
    uint8_t allowInSingleChannelFiles;   /* 4 */
    uint8_t skipAuxElementsInFiles;      /* 5 */
} ToviDenoiserOptions;
TOVI_STATIC_ASSERT(sizeof(ToviDenoiserOptions) == 6, "ToviDenoiserOptions size");
TOVI_STATIC_ASSERT(offsetof(ToviDenoiserOptions, hideDestination) == 0, "ToviDenoiserOptions.hideDestination");
TOVI_STATIC_ASSERT(offsetof(ToviDenoiserOptions, panorama) == 1, "ToviDenoiserOptions.panorama");
TOVI_STATIC_ASSERT(offsetof(ToviDenoiserOptions, skipAlpha) == 2, "ToviDenoiserOptions.skipAlpha");
TOVI_STATIC_ASSERT(offsetof(ToviDenoiserOptions, optixUpscale) == 3, "ToviDenoiserOptions.optixUpscale");
TOVI_STATIC_ASSERT(offsetof(ToviDenoiserOptions, allowInSingleChannelFiles) == 4, "ToviDenoiserOptions.allowInSingleChannelFiles");
TOVI_STATIC_ASSERT(offsetof(ToviDenoiserOptions, skipAuxElementsInFiles) == 5, "ToviDenoiserOptions.skipAuxElementsInFiles");

/* Profiler set-up, shared by setToviProfiler and initAndStartToviProfiler.
 * Texts are UTF-8, NULL for the SDK's default; only valid during the call. */
typedef struct ToviProfilerOptions {
    int32_t     mode;               /* 0: 0 off, 1 simple (runs as full), 2 full, 3 process */
    int32_t     maxDepth;           /* 4: 1 .. 8, 0 = default */
    const char* outputDirectory;    /* 8: NULL = the temporary directory */
    const char* htmlTemplatePath;   /* 16 */
    const char* productName;        /* 24 */
    const char* productVersion;     /* 32 */
    const char* sceneName;          /* 40 */
} ToviProfilerOptions;
TOVI_STATIC_ASSERT(sizeof(ToviProfilerOptions) == 48, "ToviProfilerOptions size");
TOVI_STATIC_ASSERT(offsetof(ToviProfilerOptions, mode) == 0, "ToviProfilerOptions.mode");
TOVI_STATIC_ASSERT(offsetof(ToviProfilerOptions, maxDepth) == 4, "ToviProfilerOptions.maxDepth");
TOVI_STATIC_ASSERT(offsetof(ToviProfilerOptions, outputDirectory) == 8, "ToviProfilerOptions.outputDirectory");
TOVI_STATIC_ASSERT(offsetof(ToviProfilerOptions, htmlTemplatePath) == 16, "ToviProfilerOptions.htmlTemplatePath");
TOVI_STATIC_ASSERT(offsetof(ToviProfilerOptions, productName) == 24, "ToviProfilerOptions.productName");
TOVI_STATIC_ASSERT(offsetof(ToviProfilerOptions, productVersion) == 32, "ToviProfilerOptions.productVersion");
TOVI_STATIC_ASSERT(offsetof(ToviProfilerOptions, sceneName) == 40, "ToviProfilerOptions.sceneName");

/* ---- images ---- */

/* Images are ToviImage handles (base type). An image handle that an entry returns
   belongs to the caller and is freed with C_memory_free; encoded buffers and bitmap
   data returned by the image entries are C_memory_alloc blocks freed the same way. */

/* Raw pixel formats of ToviImage_createFromRawData and ToviImage_toIntList.
   Codes travel as plain int: a code outside this list reaches the SDK unchanged
   and is refused there (NULL / non-zero). */
enum ToviRawImageFormat {
    TOVI_RAW_FORMAT_BGRA_BYTE       = 0, /* 4 bytes per pixel, B G R A (default) */
    TOVI_RAW_FORMAT_RGBA_FLOAT      = 1, /* 16 bytes per pixel, 32-bit float R G B A */
    TOVI_RAW_FORMAT_RGBA_16BIT      = 3, /* 8 bytes per pixel, 16-bit unsigned R G B A */
    TOVI_RAW_FORMAT_BGR_BYTE        = 4, /* 3 bytes per pixel, B G R, rows not padded */
    TOVI_RAW_FORMAT_RGBA_HALF_FLOAT = 5  /* 8 bytes per pixel, 16-bit float R G B A */
};

/* Flags of ToviImage_toBitmapData. Without SWAP_CHANNELS the bytes are B G R (A);
   without REVERSE_Y the first row is the top row. */
enum ToviBitmapDataFlags {
    TOVI_BITMAP_SWAP_CHANNELS  = 1, /* R G B (A) byte order */
    TOVI_BITMAP_REVERSE_Y      = 2, /* bottom row first */
    TOVI_BITMAP_PRESERVE_ALPHA = 4  /* 4 bytes per pixel with alpha, else 3 */
};

/* Flags of ToviImage_compressToPng / ToviImage_compressToPngFile. */
enum ToviPngFlags {
    TOVI_PNG_PRESERVE_ALPHA = 1, /* RGBA, else RGB */
    TOVI_PNG_16BIT          = 2  /* 16 bits per channel, else 8 */
};

/* Modes of ToviImage_calculateWhiteBalanceMultiplier; any other code (0 included)
   yields the neutral multiplier (1, 1, 1, 1). */
enum ToviWhiteBalanceMode {
    TOVI_WHITE_BALANCE_NONE             = 0,
    TOVI_WHITE_BALANCE_AVERAGE          = 1,
    TOVI_WHITE_BALANCE_WEIGHTED_AVERAGE = 2,
    TOVI_WHITE_BALANCE_HIGHLIGHTS       = 3
};

/* ---- scatter presets ---- */

/* Parameters of a scatter preset import; byte layout fixed. */
typedef struct ToviScatterPresetParams {
    void*        reserved;      /* always NULL */
    const char*  fileName;      /* UTF-8 preset file name, zero-terminated */
    ToviPluginID scatterPlugin; /* target scatter plugin, UINT64_MAX when none */
    float        unitRescale;   /* scene unit rescale factor, default 1.0 */
    int32_t      isYAxisUp;     /* 1 when the preset's up axis is Y, default 0 */
} ToviScatterPresetParams;
TOVI_STATIC_ASSERT(sizeof(ToviScatterPresetParams) == 32, "ToviScatterPresetParams size");
TOVI_STATIC_ASSERT(offsetof(ToviScatterPresetParams, reserved) == 0, "ToviScatterPresetParams.reserved");
TOVI_STATIC_ASSERT(offsetof(ToviScatterPresetParams, fileName) == 8, "ToviScatterPresetParams.fileName");
TOVI_STATIC_ASSERT(offsetof(ToviScatterPresetParams, scatterPlugin) == 16, "ToviScatterPresetParams.scatterPlugin");
TOVI_STATIC_ASSERT(offsetof(ToviScatterPresetParams, unitRescale) == 24, "ToviScatterPresetParams.unitRescale");
TOVI_STATIC_ASSERT(offsetof(ToviScatterPresetParams, isYAxisUp) == 28, "ToviScatterPresetParams.isYAxisUp");

typedef struct ToviScatterPresetCallback ToviScatterPresetCallback;

/* Asks the caller for the plugin that stands for one asset of the preset.
   assetId: UTF-8 asset identifier; importPosition: 3 floats (x, y, z);
   record: the callback record given to readScatterPreset. Returns the pluginID
   of the plugin to use, UINT64_MAX for none. May be called on any SDK thread,
   during the readScatterPreset call only. */
typedef ToviPluginID (*ToviScatterPresetAssetFn)(const char* assetId, const float* importPosition,
                                                 const ToviScatterPresetCallback* record);

/* Callback record of a scatter preset import; byte layout fixed. */
struct ToviScatterPresetCallback {
    ToviScatterPresetAssetFn callback; /* NULL: no asset callback */
    void* context;                     /* caller's object (the renderer wrapper) */
    void* userData;                    /* caller's object (the callable) */
    void* reserved;                    /* always NULL */
};
TOVI_STATIC_ASSERT(sizeof(ToviScatterPresetCallback) == 32, "ToviScatterPresetCallback size");
TOVI_STATIC_ASSERT(offsetof(ToviScatterPresetCallback, callback) == 0, "ToviScatterPresetCallback.callback");
TOVI_STATIC_ASSERT(offsetof(ToviScatterPresetCallback, context) == 8, "ToviScatterPresetCallback.context");
TOVI_STATIC_ASSERT(offsetof(ToviScatterPresetCallback, userData) == 16, "ToviScatterPresetCallback.userData");
TOVI_STATIC_ASSERT(offsetof(ToviScatterPresetCallback, reserved) == 24, "ToviScatterPresetCallback.reserved");

/* ---- Gaussian splats, luminaire fields ---- */

typedef struct ToviGaussianData ToviGaussianData;       /* loaded splat set; free with Tovi_GeomUtilsCommon_freeGaussianData */
typedef struct ToviLuminaireField ToviLuminaireField;   /* loaded luminaire field; free with Tovi_LightUtilsCommon_freeLuminaireFieldHandle */

/* ---- mesh proxies ---- */

/* Channel selection of the proxy readers (same values as the module's
   READ_FLAGS_MESH_* constants). */
enum ToviProxyReadFlags {
    TOVI_PROXY_READ_VERTICES              = 16,     /* vertices and faces */
    TOVI_PROXY_READ_NORMALS               = 32,
    TOVI_PROXY_READ_MTLIDS                = 64,
    TOVI_PROXY_READ_VELOCITIES            = 128,
    TOVI_PROXY_READ_UVS                   = 256,
    TOVI_PROXY_READ_SHADERS               = 512,
    TOVI_PROXY_READ_OBJECTINFOS           = 1024,
    TOVI_PROXY_READ_HAIROBJECTINFOS       = 2048,
    TOVI_PROXY_READ_PARTICLEOBJECTINFOS   = 4096,
    TOVI_PROXY_READ_HAIRGEOMETRY          = 8192,
    TOVI_PROXY_READ_PARTICLESGEOMETRY     = 16384,
    TOVI_PROXY_READ_GEOMETRYMESHESBBOXES  = 32768,
    TOVI_PROXY_READ_HAIROBJECTBBOXES      = 65536,
    TOVI_PROXY_READ_PARTICLEOBJECTBBOXES  = 131072,
    TOVI_PROXY_READ_ALL                   = 0x3FFF0
};

/* Index of each channel in ToviProxyData.channels, with its element layout
   and the read flag that selects it. Names lists are packed zero-terminated
   UTF-8 strings back to back (element size 1, count in bytes); "ranges" are
   int32 pairs (first element, element count) into the matching geometry. */
enum ToviProxyChannelIndex {
    TOVI_PROXY_CH_VERTICES = 0,               /* float x3 per vertex            VERTICES */
    TOVI_PROXY_CH_FACES,                      /* int32 x3 per triangle          VERTICES */
    TOVI_PROXY_CH_NORMALS,                    /* float x3                       NORMALS */
    TOVI_PROXY_CH_FACE_NORMALS,               /* int32 x3 per triangle          NORMALS */
    TOVI_PROXY_CH_MATERIAL_IDS,               /* int32 per triangle             MTLIDS */
    TOVI_PROXY_CH_VELOCITIES,                 /* float x3 per vertex            VELOCITIES */
    TOVI_PROXY_CH_UVWS,                       /* float x3, all uv sets in turn  UVS */
    TOVI_PROXY_CH_FACE_UVWS,                  /* int32 x3 per triangle per set  UVS */
    TOVI_PROXY_CH_SHADER_NAMES,               /* packed names                   SHADERS */
    TOVI_PROXY_CH_SHADER_IDS,                 /* int32 per shader               SHADERS */
    TOVI_PROXY_CH_MESH_OBJECT_NAMES,          /* packed names                   OBJECTINFOS */
    TOVI_PROXY_CH_MESH_OBJECT_IDS,            /* int32 per object               OBJECTINFOS */
    TOVI_PROXY_CH_MESH_OBJECT_RANGES,         /* int32 x2 per object (faces)    OBJECTINFOS */
    TOVI_PROXY_CH_HAIR_OBJECT_NAMES,          /* packed names                   HAIROBJECTINFOS */
    TOVI_PROXY_CH_HAIR_OBJECT_IDS,            /* int32 per object               HAIROBJECTINFOS */
    TOVI_PROXY_CH_HAIR_OBJECT_RANGES,         /* int32 x2 per object (strands)  HAIROBJECTINFOS */
    TOVI_PROXY_CH_PARTICLE_OBJECT_NAMES,      /* packed names                   PARTICLEOBJECTINFOS */
    TOVI_PROXY_CH_PARTICLE_OBJECT_IDS,        /* int32 per object               PARTICLEOBJECTINFOS */
    TOVI_PROXY_CH_PARTICLE_OBJECT_RANGES,     /* int32 x2 per object (particles) PARTICLEOBJECTINFOS */
    TOVI_PROXY_CH_HAIR_VERTICES,              /* float x3                       HAIRGEOMETRY */
    TOVI_PROXY_CH_HAIR_STRAND_VERTEX_COUNTS,  /* int32 per strand               HAIRGEOMETRY */
    TOVI_PROXY_CH_HAIR_WIDTHS,                /* float per hair vertex          HAIRGEOMETRY */
    TOVI_PROXY_CH_PARTICLE_POSITIONS,         /* float x3                       PARTICLESGEOMETRY */
    TOVI_PROXY_CH_PARTICLE_WIDTHS,            /* float per particle             PARTICLESGEOMETRY */
    TOVI_PROXY_CH_MESH_OBJECT_BBOXES,         /* float x6 per object            GEOMETRYMESHESBBOXES */
    TOVI_PROXY_CH_HAIR_OBJECT_BBOXES,         /* float x6 per object            HAIROBJECTBBOXES */
    TOVI_PROXY_CH_PARTICLE_OBJECT_BBOXES,     /* float x6 per object            PARTICLEOBJECTBBOXES */
    TOVI_PROXY_CHANNEL_COUNT                  /* 27 */
};

/* One array of proxy data. Element layouts match the typed lists (float triples,
   int32), so a list can adopt a block without copying. */
typedef struct ToviProxyChannel {
    void*   data;        /* C_memory_alloc block of count * elementSize bytes, or NULL */
    int64_t count;       /* number of elements */
    int32_t elementSize; /* bytes per element (1 for packed names) */
    int32_t reserved;    /* 0 */
} ToviProxyChannel;
TOVI_STATIC_ASSERT(sizeof(ToviProxyChannel) == 24, "ToviProxyChannel size");
TOVI_STATIC_ASSERT(offsetof(ToviProxyChannel, data) == 0, "ToviProxyChannel.data");
TOVI_STATIC_ASSERT(offsetof(ToviProxyChannel, count) == 8, "ToviProxyChannel.count");
TOVI_STATIC_ASSERT(offsetof(ToviProxyChannel, elementSize) == 16, "ToviProxyChannel.elementSize");
TOVI_STATIC_ASSERT(offsetof(ToviProxyChannel, reserved) == 20, "ToviProxyChannel.reserved");

/* Proxy geometry as the readers report it and the writer takes it.
   One-shot preview read: the SDK allocates every present channel's block; the
   caller frees each non-NULL data with C_memory_free (or hands it to a list).
   Two-phase read: prepare sets presentFlags, uvSetCount, bbox and every channel's
   count and elementSize, with data NULL; the caller allocates the channels it
   wants (C_memory_alloc, count * elementSize bytes) and leaves the others NULL;
   finalize fills them. The blocks stay the caller's. */
typedef struct ToviProxyData {
    int32_t          presentFlags;  /* ToviProxyReadFlags of the channels that hold data */
    int32_t          uvSetCount;    /* uv sets in the UVWS / FACE_UVWS channels */
    float            bbox[6];       /* whole proxy: min x, y, z, max x, y, z */
    ToviProxyChannel channels[TOVI_PROXY_CHANNEL_COUNT]; /* by ToviProxyChannelIndex */
} ToviProxyData;
TOVI_STATIC_ASSERT(TOVI_PROXY_CHANNEL_COUNT == 27, "proxy channel count");
TOVI_STATIC_ASSERT(sizeof(ToviProxyData) == 680, "ToviProxyData size");
TOVI_STATIC_ASSERT(offsetof(ToviProxyData, presentFlags) == 0, "ToviProxyData.presentFlags");
TOVI_STATIC_ASSERT(offsetof(ToviProxyData, uvSetCount) == 4, "ToviProxyData.uvSetCount");
TOVI_STATIC_ASSERT(offsetof(ToviProxyData, bbox) == 8, "ToviProxyData.bbox");
TOVI_STATIC_ASSERT(offsetof(ToviProxyData, channels) == 32, "ToviProxyData.channels");

/* A proxy opened by a prepare step; the matching finalize always releases it. */
typedef struct ToviProxyReader ToviProxyReader;

/* Flags of ToviProxyCreateParams. */
enum ToviProxyCreateFlags {
    TOVI_PROXY_CREATE_OVERWRITE   = 1, /* replace an existing file, else fail */
    TOVI_PROXY_CREATE_WORLD_SPACE = 2  /* renderer form: bake each node's transform into the mesh */
};

/* Options of a proxy file write. */
typedef struct ToviProxyCreateParams {
    const char* fileName;     /* UTF-8 destination file */
    int32_t     facesInVoxel; /* faces per voxel, 0 for the SDK default */
    int32_t     previewFaces; /* faces of the stored preview, 0 for the SDK default */
    int32_t     flags;        /* ToviProxyCreateFlags */
    int32_t     reserved;     /* 0 */
    double      time;         /* renderer form: scene time at which the geometry is taken */
} ToviProxyCreateParams;
TOVI_STATIC_ASSERT(sizeof(ToviProxyCreateParams) == 32, "ToviProxyCreateParams size");
TOVI_STATIC_ASSERT(offsetof(ToviProxyCreateParams, fileName) == 0, "ToviProxyCreateParams.fileName");
TOVI_STATIC_ASSERT(offsetof(ToviProxyCreateParams, facesInVoxel) == 8, "ToviProxyCreateParams.facesInVoxel");
TOVI_STATIC_ASSERT(offsetof(ToviProxyCreateParams, previewFaces) == 12, "ToviProxyCreateParams.previewFaces");
TOVI_STATIC_ASSERT(offsetof(ToviProxyCreateParams, flags) == 16, "ToviProxyCreateParams.flags");
TOVI_STATIC_ASSERT(offsetof(ToviProxyCreateParams, reserved) == 20, "ToviProxyCreateParams.reserved");
TOVI_STATIC_ASSERT(offsetof(ToviProxyCreateParams, time) == 24, "ToviProxyCreateParams.time");

/* ---- the entries, in resolution order ---- */

#define TOVI_SDK_ENTRY_COUNT 542

#define TOVI_SDK_ENTRIES(X) \
    /* ---- core functions, prefix Tovi_ (44) ---- */ \
    /* returns the new count */ \
    X(int, Tovi_incrementModuleReferenceCounter, (void), 0) \
    /* packed major<<16|minor<<8|patch */ \
    X(uint32_t, Tovi_getSDKVersion, (void), 0) \
    X(uint32_t, Tovi_getToviVersion, (void), 0) \
    /* SDK-static text */ \
    X(const char*, Tovi_getToviVersionDetails, (void), NULL) \
    /* SDK-static text, NULL when not installed */ \
    X(const char*, Tovi_getMaterialLibraryPath, (void), NULL) \
    /* result: number of 32-bit words of the material's parameter block, in one C_memory_alloc \
    block at *words (adopted by an IntList) */ \
    X(int, Tovi_encodeBRDFScannedParams, (const ToviBRDFScannedParams* params, int32_t** words), -1) \
    /* result non-zero on success, 0 for an unknown colour space */ \
    X(int, Tovi_getBlackBodyColorRGB, (float* rgb, float temperature, int colorSpace), 0) \
    /* result: temperature in kelvin, negative on failure; closestRgb may be NULL */ \
    X(float, Tovi_getBlackBodyClosestTemperature, (const float* rgb, float* closestRgb, int colorSpace), -1.0f) \
    /* matrix: 9 floats, three columns of three */ \
    X(int, Tovi_getRGBtoRGBMatrix, (int srcColorSpace, int dstColorSpace, float* matrix), -1) \
    X(int, Tovi_isDR2, (void), 0) \
    X(int, Tovi_getErrorTextStringFromErrorCode, (int errorCode, ToviCharString* text), -1) \
    /* by plugin name; 0 when a value stream was returned (one C_memory_alloc block), negative when \
    the property is missing or has no value. time NaN: the current time */ \
    X(int, Tovi_getPropertyByteArray, (ToviRenderer* renderer, const char* pluginName, const char* propertyName, uint8_t** bytes, size_t* size, double time), -1) \
    X(int, Tovi_getPropertyByteArrayByID, (ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName, uint8_t** bytes, size_t* size, double time), -1) \
    X(void, Tovi_enableFrameBuffer, (int enable), ) \
    /* number of user-data slots that every server (and renderer) carries; setUserData/getUserData \
    take a slot index below it */ \
    X(int, Tovi_getUserDataCount, (void), 0) \
    /* count, array in C_memory_alloc block */ \
    X(int, Tovi_getDeviceListMetal, (ToviComputeDevice** devices, int recordSize), -1) \
    X(int, Tovi_getDeviceListMetalRT, (ToviComputeDevice** devices, int recordSize), -1) \
    X(int, Tovi_getDeviceListOptix, (ToviComputeDevice** devices, int recordSize), -1) \
    X(int, Tovi_getDeviceListCUDA, (ToviComputeDevice** devices, int recordSize), -1) \
    X(int, Tovi_getDeviceListDenoiser, (ToviComputeDevice** devices, int recordSize), -1) \
    X(int, Tovi_setDeviceListMetal, (const int32_t* indices, int count), -1) \
    X(int, Tovi_setDeviceListMetalRT, (const int32_t* indices, int count), -1) \
    X(int, Tovi_setDeviceListOptix, (const int32_t* indices, int count), -1) \
    X(int, Tovi_setDeviceListCUDA, (const int32_t* indices, int count), -1) \
    X(int, Tovi_setDeviceListDenoiser, (const int32_t* indices, int count), -1) \
    X(int, Tovi_setGPUDevicesEnvironmentVariable, (void), -1) \
    /* provider: name or library path of the scene-description provider to use; NULL restores the built-in one */ \
    X(int, Tovi_setUSDProvider, (const char* provider), -1) \
    /* count; records in one C_memory_alloc block, their texts SDK-static */ \
    X(int, Tovi_getRenderElementDescs, (ToviRenderElementDesc** descs), -1) \
    /* type code; 0 (no type) for an unknown text, so that it never matches the all-types code -1 */ \
    X(int, Tovi_getRenderElementTypeFromTypeString, (const char* typeString), 0) \
    /* SDK-static text, NULL for an unknown code */ \
    X(const char*, Tovi_getRenderElementTypeStringFromType, (int type), NULL) \
    /* creates the element's plugin; names may be NULL (SDK chooses) */ \
    X(int, Tovi_newRenderElementPlugin, (ToviRenderer* renderer, int type, const char* instanceName, const char* displayName, ToviPluginID* pluginID, int autoCommit), -1) \
    /* 0 and the plugin of that type, negative when the scene has none */ \
    X(int, Tovi_getRenderElementPlugin, (ToviRenderer* renderer, int type, ToviPluginID* pluginID), -1) \
    /* count; ids in one C_memory_alloc block; type -1: every type */ \
    X(int, Tovi_getRenderElementPluginsList, (ToviRenderer* renderer, int type, ToviPluginID** pluginIDs), -1) \
    X(int, Tovi_getRenderElementInfo, (ToviRenderer* renderer, ToviPluginID pluginID, int type, ToviRenderElementInfo* info), -1) \
    /* alphaPluginID UINT64_MAX: none; pixelFormat 0: the SDK's choice; rgbOrder 1 RGB, 0 BGR; \
    region right/bottom exclusive, all 0 for the whole image. The pixels come in one \
    C_memory_alloc block of *size bytes; on failure errorText holds the reason */ \
    X(int, Tovi_getRenderElementData, (ToviRenderer* renderer, ToviPluginID pluginID, ToviPluginID alphaPluginID, int type, int layerIndex, int pixelFormat, int rgbOrder, int left, int top, int right, int bottom, void** data, size_t* size, ToviCharString* errorText), -1) \
    /* right/bottom 0: full width/height */ \
    X(ToviImage*, Tovi_getRenderElementAsImage, (ToviRenderer* renderer, ToviPluginID pluginID, int type, int layerIndex, int left, int top, int right, int bottom, int doColorCorrect, int stripAlpha, int flipImage), NULL) \
    X(int, Tovi_getRenderElementMetadata, (ToviRenderer* renderer, ToviPluginID pluginID, int type, ToviCharString* metadata), -1) \
    /* 1 when the file can be found (the SDK's asset search included), else 0 */ \
    X(int, Tovi_isFileAvailable, (const char* fileName), 0) \
    /* shaderSource: the shader's source text. count; records and their texts in one \
    C_memory_alloc block; on failure errorText holds the compiler's message */ \
    X(int, Tovi_getOSLParameters, (const char* shaderSource, ToviOSLParameter** parameters, ToviCharString* errorText), -1) \
    /* value NULL unsets */ \
    X(int, Tovi_setEnvironmentVariable, (const char* name, const char* value), -1) \
    /* C_memory_alloc block, NULL when unset */ \
    X(char*, Tovi_getEnvironmentVariable, (const char* name), NULL) \
    /* SDK-static text, NULL for an index out of range */ \
    X(const char*, Tovi_getPluginCategoryNameFromEnum, (int index), NULL) \
    /* name NULL: the number of categories N; a known name: its index; an unknown name: N */ \
    X(int, Tovi_getPluginCategoryEnumFromName, (const char* name), 0) \
    /* one C_memory_alloc block, strings inside it */ \
    X(ToviDRHostCheck*, Tovi_checkDRHost, (const char* host), NULL) \
    /* ---- prefix Tovi_BRDFScannedParams_ (1) ---- */ \
    /* fills params with the defaults */ \
    X(int, Tovi_BRDFScannedParams_initialize, (ToviBRDFScannedParams* params), -1) \
    /* ---- prefix Tovi_TVScansPresets_ (1) ---- */ \
    /* forgets the cached scanned-material presets; the next getPreset reads them again */ \
    X(int, Tovi_TVScansPresets_reset, (void), -1) \
    /* ---- prefix Tovi_TVScanInfo_ (4) ---- */ \
    /* fileName: a scanned-material file; NULL when it cannot be read */ \
    X(ToviTVScanInfo*, Tovi_TVScanInfo_create, (const char* fileName), NULL) \
    X(void, Tovi_TVScanInfo_delete, (ToviTVScanInfo* info), ) \
    /* human-readable description of the scanned material */ \
    X(int, Tovi_TVScanInfo_getInfoString, (const ToviTVScanInfo* info, ToviCharString* text), -1) \
    /* fills params with the preset stored with the material */ \
    X(int, Tovi_TVScanInfo_getPreset, (const ToviTVScanInfo* info, ToviBRDFScannedParams* params), -1) \
    /* ---- prefix Tovi_ToviServer_ (19) ---- */ \
    /* errorText: on failure a C_memory_alloc text (or NULL) that the caller frees */ \
    X(ToviServer*, Tovi_ToviServer_create, (const ToviServerOptions* options, char** errorText), NULL) \
    /* starts serving on the SDK's own threads and returns */ \
    X(int, Tovi_ToviServer_start, (ToviServer* server), -1) \
    /* serves on the calling thread until stopped */ \
    X(int, Tovi_ToviServer_run, (ToviServer* server), -1) \
    X(int, Tovi_ToviServer_stop, (ToviServer* server), -1) \
    /* stops, joins the event thread (unless called from it) and frees; no event follows */ \
    X(void, Tovi_ToviServer_release, (ToviServer* server), ) \
    /* callback->fn NULL unregisters */ \
    X(int, Tovi_ToviServer_setServerStartCallback, (ToviServer* server, const ToviServerStartCallbackRecord* callback), -1) \
    X(int, Tovi_ToviServer_setConnectCallback, (ToviServer* server, const ToviServerHostCallbackRecord* callback), -1) \
    X(int, Tovi_ToviServer_setDisconnectCallback, (ToviServer* server, const ToviServerHostCallbackRecord* callback), -1) \
    /* minLevel: messages of this level and more important (0 errors ... 3 debug) reach the function */ \
    X(int, Tovi_ToviServer_setDumpMessageCallback, (ToviServer* server, const ToviServerDumpMessageCallbackRecord* callback, int minLevel), -1) \
    X(int, Tovi_ToviServer_setProgressCallback, (ToviServer* server, const ToviServerProgressCallbackRecord* callback), -1) \
    X(int, Tovi_ToviServer_setServerCloseCallback, (ToviServer* server, const ToviServerCloseCallbackRecord* callback), -1) \
    /* slot: 0 .. Tovi_getUserDataCount()-1; the SDK only stores the pointer */ \
    X(int, Tovi_ToviServer_setUserData, (ToviServer* server, int slot, void* userData), -1) \
    X(void*, Tovi_ToviServer_getUserData, (const ToviServer* server, int slot), NULL) \
    /* hosts: "host[:port]" texts joined with ';'. result: -2 cannot resolve, -1 failure, \
    0 added not connected, 1 added and connected, 2 added, not connected for lack of work */ \
    X(int, Tovi_ToviServer_addHosts, (ToviServer* server, const char* hosts), -1) \
    X(int, Tovi_ToviServer_removeHosts, (ToviServer* server, const char* hosts), -1) \
    /* replaces the whole host list; "" empties it */ \
    X(int, Tovi_ToviServer_resetHosts, (ToviServer* server, const char* hosts), -1) \
    /* hosts as one ';'-separated text */ \
    X(int, Tovi_ToviServer_getAllHosts, (ToviServer* server, ToviCharString* hosts), -1) \
    X(int, Tovi_ToviServer_getActiveHosts, (ToviServer* server, ToviCharString* hosts), -1) \
    X(int, Tovi_ToviServer_getInactiveHosts, (ToviServer* server, ToviCharString* hosts), -1) \
    /* ---- prefix Tovi_ToviRenderer_ (353) ---- */ \
    /* Results of this group: "int" is 0 on success and negative on failure unless its comment says otherwise. \
    Entries that answer a yes/no question, or whose outcome the script sees as a bool, \
    answer 1 (true, done) or 0 (false, not done, failure); a missing entry then reads as false. \
    Functions that change the scene take autoCommit last; window, layer and mode settings do not. */ \
    /* options NULL: the SDK's own defaults. error: optional text record, filled when creation fails; \
    the caller hands it back with releaseCharString in any case. */ \
    X(ToviRenderer*, Tovi_ToviRenderer_create, (const ToviRendererOptions* options, ToviCharString* error), NULL) \
    /* level: 0 draft, 1 low, 2 medium, 3 high, 4 veryHigh. Applied at once, like loading settings; 1 done, 0 failed. */ \
    X(int, Tovi_ToviRenderer_setImprovedDefaults, (ToviRenderer* renderer, int level), 0) \
    /* every plugin of the scene; 1 done, 0 failed */ \
    X(int, Tovi_ToviRenderer_setUpdatedDefaults, (ToviRenderer* renderer, int autoCommit), 0) \
    /* non-zero done, 0 failed */ \
    X(int, Tovi_ToviRenderer_setUpdatedDefaultsPluginID, (ToviRenderer* renderer, ToviPluginID pluginID, int autoCommit), 0) \
    /* seconds since the SDK was initialised, the clock of the event records' instant */ \
    X(double, Tovi_ToviRenderer_getCurrentEventTime, (ToviRenderer* renderer), 0.0) \
    /* stops rendering first if needed */ \
    X(int, Tovi_ToviRenderer_clearScene, (ToviRenderer* renderer, int autoCommit), -1) \
    /* drops one reference; the last one stops rendering, joins the event thread and frees the renderer. \
    Returns the references left (0: freed), -1 for a NULL handle. Blocks; never call it holding a lock the callbacks need. */ \
    X(int, Tovi_ToviRenderer_release, (ToviRenderer* renderer), -1) \
    /* takes one more reference on a renderer that someone else created; returns the new count */ \
    X(int, Tovi_ToviRenderer_incRef, (ToviRenderer* renderer), -1) \
    /* mode: -1 production, 0 interactive, 4/7/8/9 interactive CUDA/Optix/Metal/MetalRT, 104/107/108/109 production ones. \
    Non-zero on refusal, with the reason in getLastErrorCode. */ \
    X(int, Tovi_ToviRenderer_setRenderMode, (ToviRenderer* renderer, int mode), -1) \
    /* the current mode; -2 (no mode, reads as "unknown") on failure */ \
    X(int, Tovi_ToviRenderer_getRenderMode, (ToviRenderer* renderer), -2) \
    /* fills the record with the options the renderer was created with; its text pointers belong \
    to the renderer and stay valid until it is released */ \
    X(int, Tovi_ToviRenderer_getRenderOptions, (ToviRenderer* renderer, ToviRendererOptions* options), -1) \
    /* the three interactive settings create or change the interactive-engine settings plugin, so they \
    are scene changes; 1 done, 0 failed. sampleLevel: paths per pixel, 0 unlimited */ \
    X(int, Tovi_ToviRenderer_setInteractiveSampleLevel, (ToviRenderer* renderer, int sampleLevel, int autoCommit), 0) \
    /* threshold: 0 unlimited; float because the settings property is one */ \
    X(int, Tovi_ToviRenderer_setInteractiveNoiseThreshold, (ToviRenderer* renderer, float threshold, int autoCommit), 0) \
    /* timeout: milliseconds per frame, 0 unlimited */ \
    X(int, Tovi_ToviRenderer_setInteractiveTimeout, (ToviRenderer* renderer, int timeoutMs, int autoCommit), 0) \
    X(int, Tovi_ToviRenderer_setKeepInteractiveRunning, (ToviRenderer* renderer, int keepRunning), -1) \
    X(int, Tovi_ToviRenderer_getKeepInteractiveRunning, (ToviRenderer* renderer), 0) \
    /* first-generation distributed rendering. enableBroadcastListener: 1 on, 0 off, negative keeps \
    the current setting (the module passes -1 when the script gives none); 1 done, 0 failed */ \
    X(int, Tovi_ToviRenderer_setDREnabled, (ToviRenderer* renderer, int drEnabled, int enableBroadcastListener), 0) \
    X(int, Tovi_ToviRenderer_getDREnabled, (ToviRenderer* renderer), 0) \
    /* non-zero while rendering (refused) */ \
    X(int, Tovi_ToviRenderer_setInProcess, (ToviRenderer* renderer, int inProcess), -1) \
    X(int, Tovi_ToviRenderer_getInProcess, (ToviRenderer* renderer), 0) \
    /* second-generation client, flat in the order of the script's arguments. dispatcher ("host:port") \
    and httpProxy may be NULL; the seven flags 0/1; connectTimeout seconds, upstreamChannels, \
    verboseLevel, each negative for the SDK default. 1 enabled, 0 refused (rendering) or failed */ \
    X(int, Tovi_ToviRenderer_enableDRClient, (ToviRenderer* renderer, const char* dispatcher, const char* httpProxy, int localRendering, int withBroadcastListener, int pipelinedUpstream, int enableAssigningWUsAsBackups, int immediatelyForwardReadySplitBucketSubunits, int connectTimeout, int upstreamChannels, int verboseLevel), 0) \
    /* 1 disabled, 0 failed */ \
    X(int, Tovi_ToviRenderer_disableDRClient, (ToviRenderer* renderer), 0) \
    X(int, Tovi_ToviRenderer_isDRClientEnabled, (ToviRenderer* renderer), 0) \
    /* numThreads 0: every core. Non-zero while rendering (refused) */ \
    X(int, Tovi_ToviRenderer_setNumThreads, (ToviRenderer* renderer, int numThreads), -1) \
    X(int, Tovi_ToviRenderer_getNumThreads, (ToviRenderer* renderer), -1) \
    X(int, Tovi_ToviRenderer_setCurrentTime, (ToviRenderer* renderer, double time), -1) \
    X(double, Tovi_ToviRenderer_getCurrentTime, (ToviRenderer* renderer), 0.0) \
    X(int, Tovi_ToviRenderer_setCurrentFrame, (ToviRenderer* renderer, int frame), -1) \
    /* 0 also on failure (frames may be negative, so no value is free for it) */ \
    X(int, Tovi_ToviRenderer_getCurrentFrame, (ToviRenderer* renderer), 0) \
    /* animate: values set from now on are keyframes at the current time (1) or replace the value (0) */ \
    X(int, Tovi_ToviRenderer_setAnimateProperties, (ToviRenderer* renderer, int animate), -1) \
    X(int, Tovi_ToviRenderer_getAnimateProperties, (ToviRenderer* renderer), 0) \
    /* remove keyframes at or before time, keeping for each property the value in effect at time, \
    so the scene at time and later is unchanged and no autoCommit is taken. \
    All: every plugin; the other: only plugins whose properties were set through this interface */ \
    X(int, Tovi_ToviRenderer_clearAllFrameValuesUpToTime, (ToviRenderer* renderer, double time), -1) \
    X(int, Tovi_ToviRenderer_clearFrameValuesUpToTime, (ToviRenderer* renderer, double time), -1) \
    /* activate: non-zero also raises and focuses the window; the module passes 0 */ \
    X(int, Tovi_ToviRenderer_showFrameBuffer, (ToviRenderer* renderer, int show, int activate), -1) \
    X(int, Tovi_ToviRenderer_isFrameBufferShown, (ToviRenderer* renderer), 0) \
    X(int, Tovi_ToviRenderer_enableTFBInteractivity, (ToviRenderer* renderer, int enable), -1) \
    X(int, Tovi_ToviRenderer_isTFBInteractivityEnabled, (ToviRenderer* renderer), 0) \
    X(int, Tovi_ToviRenderer_enableVisualDebugger, (ToviRenderer* renderer, int enable), -1) \
    X(int, Tovi_ToviRenderer_isVisualDebuggerEnabled, (ToviRenderer* renderer), 0) \
    /* enable: ask before the window's image is cleared */ \
    X(int, Tovi_ToviRenderer_enableTFBConfirmation, (ToviRenderer* renderer, int enable), -1) \
    X(int, Tovi_ToviRenderer_isTFBConfirmationEnabled, (ToviRenderer* renderer), 0) \
    /* position and size: 1 done, 0 failed (the getter leaves the record as it was) */ \
    X(int, Tovi_ToviRenderer_setTfbPositionAndSize, (ToviRenderer* renderer, const ToviTfbPositionAndSize* rect), 0) \
    X(int, Tovi_ToviRenderer_getTfbPositionAndSize, (ToviRenderer* renderer, ToviTfbPositionAndSize* rect), 0) \
    X(int, Tovi_ToviRenderer_setTfbAlwaysOnTop, (ToviRenderer* renderer, int onTop), -1) \
    /* state block in one C_memory_alloc block that the caller frees; NULL (size 0) on failure */ \
    X(void*, Tovi_ToviRenderer_getTfbState, (ToviRenderer* renderer, size_t* size, int parts), NULL) \
    X(int, Tovi_ToviRenderer_setTfbState, (ToviRenderer* renderer, const void* state, size_t size, int parts), -1) \
    X(int, Tovi_ToviRenderer_resetTfbState, (ToviRenderer* renderer), -1) \
    /* as getTfbState, for the state kept between sessions; caller frees with C_memory_free */ \
    X(void*, Tovi_ToviRenderer_getTfbPersistentState, (ToviRenderer* renderer, size_t* size), NULL) \
    X(int, Tovi_ToviRenderer_setTfbPersistentState, (ToviRenderer* renderer, const void* state, size_t size), -1) \
    /* JSON texts, passed through unchanged */ \
    X(int, Tovi_ToviRenderer_getTfbSettings, (ToviRenderer* renderer, ToviCharString* settingsJson), -1) \
    X(int, Tovi_ToviRenderer_setTfbSettings, (ToviRenderer* renderer, const char* settingsJson), -1) \
    X(int, Tovi_ToviRenderer_getTfbLayers, (ToviRenderer* renderer, ToviCharString* layersJson), -1) \
    X(int, Tovi_ToviRenderer_setTfbLayers, (ToviRenderer* renderer, const char* layersJson), -1) \
    X(int, Tovi_ToviRenderer_resetToDefaultTfbLayers, (ToviRenderer* renderer), -1) \
    /* number of layers in the tree, root included */ \
    X(int, Tovi_ToviRenderer_getTfbLayersCount, (ToviRenderer* renderer), -1) \
    /* layer lists: count result, identifiers in one C_memory_alloc block (NULL when the count is 0) \
    that the caller frees; -1 on failure. Tree order, depth first from the root */ \
    X(int, Tovi_ToviRenderer_getAllLayersListIDs, (ToviRenderer* renderer, ToviLayerID** layerIDs), -1) \
    /* vector of class-name strings */ \
    X(ToviVector*, Tovi_ToviRenderer_getCreatableLayerClasses, (ToviRenderer* renderer), NULL) \
    /* layer tree files of the window's own format */ \
    X(int, Tovi_ToviRenderer_loadAllLayers, (ToviRenderer* renderer, const char* fileName), -1) \
    X(int, Tovi_ToviRenderer_saveAllLayers, (ToviRenderer* renderer, const char* fileName), -1) \
    /* writes the colour transform of the enabled layers as a 3D LUT file (.cube) */ \
    X(int, Tovi_ToviRenderer_bakeLayersToLUT, (ToviRenderer* renderer, const char* fileName), -1) \
    /* the whole layer tree with every property value, as JSON; setAllLayers replaces the tree */ \
    X(int, Tovi_ToviRenderer_getAllLayers, (ToviRenderer* renderer, ToviCharString* layersJson), -1) \
    X(int, Tovi_ToviRenderer_setAllLayers, (ToviRenderer* renderer, const char* layersJson), -1) \
    /* adds a layer of the class under the parent (0: the root); returns its identifier, 0 on failure */ \
    X(ToviLayerID, Tovi_ToviRenderer_createLayer, (ToviRenderer* renderer, const char* layerClass, ToviLayerID parentID), 0) \
    X(int, Tovi_ToviRenderer_deleteLayer, (ToviRenderer* renderer, ToviLayerID layerID), -1) \
    /* well-known layers: their identifier, 0 when the tree has none */ \
    X(ToviLayerID, Tovi_ToviRenderer_getRootLayerID, (ToviRenderer* renderer), 0) \
    X(ToviLayerID, Tovi_ToviRenderer_getDisplayCorrectionLayerID, (ToviRenderer* renderer), 0) \
    X(ToviLayerID, Tovi_ToviRenderer_getStampLayerID, (ToviRenderer* renderer), 0) \
    X(ToviLayerID, Tovi_ToviRenderer_getSourceLayerID, (ToviRenderer* renderer), 0) \
    X(ToviLayerID, Tovi_ToviRenderer_getDenoiserLayerID, (ToviRenderer* renderer), 0) \
    X(ToviLayerID, Tovi_ToviRenderer_getSharpenBlurLayerID, (ToviRenderer* renderer), 0) \
    X(ToviLayerID, Tovi_ToviRenderer_getLensEffectsLayerID, (ToviRenderer* renderer), 0) \
    X(ToviLayerID, Tovi_ToviRenderer_getLightMixLayerID, (ToviRenderer* renderer), 0) \
    /* layer lists as getAllLayersListIDs */ \
    X(int, Tovi_ToviRenderer_findAllLayerIDsWithLayerClass, (ToviRenderer* renderer, const char* layerClass, ToviLayerID** layerIDs), -1) \
    X(int, Tovi_ToviRenderer_findAllLayerIDsWithUserName, (ToviRenderer* renderer, const char* userName, ToviLayerID** layerIDs), -1) \
    X(int, Tovi_ToviRenderer_getAllEnabledLayerIDs, (ToviRenderer* renderer, ToviLayerID** layerIDs), -1) \
    X(int, Tovi_ToviRenderer_getAllBlendableLayerIDs, (ToviRenderer* renderer, ToviLayerID** layerIDs), -1) \
    /* the layer lock keeps the window's own threads off the tree while a caller walks or edits it; \
    lockLayers waits, tryLockLayers answers 1 when it got the lock and 0 when it is taken */ \
    X(int, Tovi_ToviRenderer_lockLayers, (ToviRenderer* renderer), -1) \
    X(int, Tovi_ToviRenderer_tryLockLayers, (ToviRenderer* renderer), 0) \
    X(int, Tovi_ToviRenderer_unlockLayers, (ToviRenderer* renderer), -1) \
    /* the layer's path of class names from the root, stable across sessions, e.g. "Root/Display Correction" */ \
    X(int, Tovi_ToviRenderer_getUniqueTreePathID, (ToviRenderer* renderer, ToviLayerID layerID, ToviCharString* treePath), -1) \
    X(int, Tovi_ToviRenderer_getLayerClass, (ToviRenderer* renderer, ToviLayerID layerID, ToviCharString* layerClass), -1) \
    /* per-layer yes/no queries: 1 yes, 0 no, -1 no such layer */ \
    X(int, Tovi_ToviRenderer_getLayerEnabled, (ToviRenderer* renderer, ToviLayerID layerID), -1) \
    X(int, Tovi_ToviRenderer_setLayerEnabled, (ToviRenderer* renderer, ToviLayerID layerID, int enabled), -1) \
    X(int, Tovi_ToviRenderer_canDeleteLayer, (ToviRenderer* renderer, ToviLayerID layerID), -1) \
    /* 0 for the root and on failure */ \
    X(ToviLayerID, Tovi_ToviRenderer_getLayerParentID, (ToviRenderer* renderer, ToviLayerID layerID), 0) \
    X(int, Tovi_ToviRenderer_getLayerUserName, (ToviRenderer* renderer, ToviLayerID layerID, ToviCharString* userName), -1) \
    X(int, Tovi_ToviRenderer_setLayerUserName, (ToviRenderer* renderer, ToviLayerID layerID, const char* userName), -1) \
    X(int, Tovi_ToviRenderer_getLayerChildrenCount, (ToviRenderer* renderer, ToviLayerID layerID), -1) \
    X(int, Tovi_ToviRenderer_getLayerChildren, (ToviRenderer* renderer, ToviLayerID layerID, ToviLayerID** childIDs), -1) \
    /* index 0 .. count-1; 0 when out of range */ \
    X(ToviLayerID, Tovi_ToviRenderer_getLayerChild, (ToviRenderer* renderer, ToviLayerID layerID, int index), 0) \
    /* opacity 0..1; layer values are 32-bit floats like the window's image */ \
    X(int, Tovi_ToviRenderer_getLayerOpacity, (ToviRenderer* renderer, ToviLayerID layerID, float* opacity), -1) \
    X(int, Tovi_ToviRenderer_setLayerOpacity, (ToviRenderer* renderer, ToviLayerID layerID, float opacity), -1) \
    X(int, Tovi_ToviRenderer_canLayerBlend, (ToviRenderer* renderer, ToviLayerID layerID), -1) \
    /* blend mode code of the window (0 normal); -1 on failure */ \
    X(int, Tovi_ToviRenderer_getLayerBlendMode, (ToviRenderer* renderer, ToviLayerID layerID), -1) \
    X(int, Tovi_ToviRenderer_setLayerBlendMode, (ToviRenderer* renderer, ToviLayerID layerID, int blendMode), -1) \
    /* layer properties are named by their UTF-8 names; name lists come as string vectors */ \
    X(int, Tovi_ToviRenderer_getLayerPropertiesCount, (ToviRenderer* renderer, ToviLayerID layerID), -1) \
    X(ToviVector*, Tovi_ToviRenderer_getLayerPropertyNames, (ToviRenderer* renderer, ToviLayerID layerID), NULL) \
    X(int, Tovi_ToviRenderer_getLayerPropertyDisplayName, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, ToviCharString* displayName), -1) \
    X(int, Tovi_ToviRenderer_resetLayerPropertyToDefault, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName), -1) \
    /* names of the read-only properties */ \
    X(ToviVector*, Tovi_ToviRenderer_getLayerPropertiesReadOnly, (ToviRenderer* renderer, ToviLayerID layerID), NULL) \
    /* 1 read-only, 0 writable, -1 no such property */ \
    X(int, Tovi_ToviRenderer_isLayerPropertyReadOnly, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName), -1) \
    /* names of the properties of one TOVI_LAYER_PROPERTY_* type */ \
    X(ToviVector*, Tovi_ToviRenderer_getLayerPropertiesOfType, (ToviRenderer* renderer, ToviLayerID layerID, int propertyType), NULL) \
    /* TOVI_LAYER_PROPERTY_* code, -1 on failure */ \
    X(int, Tovi_ToviRenderer_getLayerPropertyType, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName), -1) \
    /* TOVI_LAYER_PROPERTY_FLAG_* bits, -1 on failure */ \
    X(int, Tovi_ToviRenderer_getLayerPropertyFlags, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName), -1) \
    /* typed values: getters fill the out-parameter and answer 0, or -1 (wrong type, no such property) */ \
    X(int, Tovi_ToviRenderer_getLayerPropertyBoolValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, int* value), -1) \
    X(int, Tovi_ToviRenderer_setLayerPropertyBoolValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, int value), -1) \
    X(int, Tovi_ToviRenderer_getLayerPropertyIntValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, int* value), -1) \
    X(int, Tovi_ToviRenderer_setLayerPropertyIntValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, int value), -1) \
    /* names of the integer-enum properties */ \
    X(ToviVector*, Tovi_ToviRenderer_getLayerEnumProperties, (ToviRenderer* renderer, ToviLayerID layerID), NULL) \
    /* count result; labels as a packed string list and the 32-bit values, both in index order and \
    both C_memory_alloc blocks that the caller frees; -1 on failure */ \
    X(int, Tovi_ToviRenderer_getLayerPropertyIntEnumValues, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, char** labels, int32_t** values), -1) \
    /* label of the current value */ \
    X(int, Tovi_ToviRenderer_getLayerPropertyIntEnumLabel, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, ToviCharString* label), -1) \
    X(int, Tovi_ToviRenderer_setLayerPropertyIntByEnumLabel, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, const char* label), -1) \
    /* index of the current value in the enum list, -1 on failure */ \
    X(int, Tovi_ToviRenderer_getLayerPropertyIntEnumIndex, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName), -1) \
    X(int, Tovi_ToviRenderer_setLayerPropertyIntByEnumIndex, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, int index), -1) \
    X(int, Tovi_ToviRenderer_getLayerPropertyFloatValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, float* value), -1) \
    X(int, Tovi_ToviRenderer_setLayerPropertyFloatValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, float value), -1) \
    X(int, Tovi_ToviRenderer_getLayerPropertyStringValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, ToviCharString* value), -1) \
    X(int, Tovi_ToviRenderer_setLayerPropertyStringValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, const char* value), -1) \
    /* colour as three floats: red, green, blue */ \
    X(int, Tovi_ToviRenderer_getLayerPropertyColorValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, float rgb[3]), -1) \
    X(int, Tovi_ToviRenderer_setLayerPropertyColorValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, const float rgb[3]), -1) \
    /* the stamp text with its unexpanded variables */ \
    X(int, Tovi_ToviRenderer_getLayerPropertyStampRawStringValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, ToviCharString* value), -1) \
    X(int, Tovi_ToviRenderer_setLayerPropertyStampRawStringValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, const char* value), -1) \
    X(int, Tovi_ToviRenderer_getLayerPropertyStampFontDescValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, ToviLayerStampFontDesc* value), -1) \
    X(int, Tovi_ToviRenderer_setLayerPropertyStampFontDescValue, (ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, const ToviLayerStampFontDesc* value), -1) \
    /* history: window and panel shown 1 / hidden 0 (-1 on failure) */ \
    X(int, Tovi_ToviRenderer_TFBHistory_getHistoryWindowStatus, (ToviRenderer* renderer), -1) \
    X(int, Tovi_ToviRenderer_TFBHistory_setHistoryWindowStatus, (ToviRenderer* renderer, int shown), -1) \
    X(int, Tovi_ToviRenderer_TFBHistory_getHistoryPanelStatus, (ToviRenderer* renderer), -1) \
    X(int, Tovi_ToviRenderer_TFBHistory_setHistoryPanelStatus, (ToviRenderer* renderer, int shown), -1) \
    /* disk space for kept images, in megabytes; -1 on failure */ \
    X(int, Tovi_ToviRenderer_TFBHistory_getHistoryMaximumSize, (ToviRenderer* renderer), -1) \
    X(int, Tovi_ToviRenderer_TFBHistory_setHistoryMaximumSize, (ToviRenderer* renderer, int maximumSizeMB), -1) \
    /* folder of the kept images */ \
    X(int, Tovi_ToviRenderer_TFBHistory_getHistoryTemporaryPath, (ToviRenderer* renderer, ToviCharString* path), -1) \
    X(int, Tovi_ToviRenderer_TFBHistory_setHistoryTemporaryPath, (ToviRenderer* renderer, const char* path), -1) \
    /* toolbar: button is the index of a main-toolbar button; status 1 on (pressed) / 0 off, -1 on failure */ \
    X(int, Tovi_ToviRenderer_TFBToolbar_getMainToolbarButtonStatus, (ToviRenderer* renderer, int button), -1) \
    X(int, Tovi_ToviRenderer_TFBToolbar_setMainToolbarButtonStatus, (ToviRenderer* renderer, int button, int status), -1) \
    /* image pixel that bucket rendering starts from while the bucket lock is on */ \
    X(int, Tovi_ToviRenderer_TFBToolbar_getBucketLockPoint, (ToviRenderer* renderer, int* x, int* y), -1) \
    X(int, Tovi_ToviRenderer_TFBToolbar_setBucketLockPoint, (ToviRenderer* renderer, int x, int y), -1) \
    X(int, Tovi_ToviRenderer_TFBToolbar_getBucketLockedStatus, (ToviRenderer* renderer), -1) \
    X(int, Tovi_ToviRenderer_TFBToolbar_setBucketLockedStatus, (ToviRenderer* renderer, int locked), -1) \
    /* test resolution: 0 off, n > 0 renders at 1/2^n of the size; -1 on failure */ \
    X(int, Tovi_ToviRenderer_TFBToolbar_getTestResolution, (ToviRenderer* renderer), -1) \
    X(int, Tovi_ToviRenderer_TFBToolbar_setTestResolution, (ToviRenderer* renderer, int testResolution), -1) \
    /* vector of the channel names shown in the toolbar's channel list */ \
    X(ToviVector*, Tovi_ToviRenderer_TFBToolbar_getChannelNames, (ToviRenderer* renderer), NULL) \
    /* index into that list, -1 on failure */ \
    X(int, Tovi_ToviRenderer_TFBToolbar_getCurrentChannel, (ToviRenderer* renderer), -1) \
    X(int, Tovi_ToviRenderer_TFBToolbar_setCurrentChannel, (ToviRenderer* renderer, int channelIndex), -1) \
    X(int, Tovi_ToviRenderer_TFBToolbar_getRenderRegionButtonStatus, (ToviRenderer* renderer), -1) \
    X(int, Tovi_ToviRenderer_TFBToolbar_setRenderRegionButtonStatus, (ToviRenderer* renderer, int status), -1) \
    /* the preset and title/project calls answer 1 done, 0 failed; saving appends the preset extension */ \
    X(int, Tovi_ToviRenderer_loadTfbColorCorrectionsPreset, (ToviRenderer* renderer, const char* fileName), 0) \
    X(int, Tovi_ToviRenderer_saveTfbColorCorrectionsPreset, (ToviRenderer* renderer, const char* fileName), 0) \
    X(int, Tovi_ToviRenderer_setTfbTitlePrefix, (ToviRenderer* renderer, const char* prefix), 0) \
    X(int, Tovi_ToviRenderer_setTfbProjectPath, (ToviRenderer* renderer, const char* path), 0) \
    X(int, Tovi_ToviRenderer_enableTfbProgressBar, (ToviRenderer* renderer, int enable), -1) \
    X(int, Tovi_ToviRenderer_setTfbProgressText, (ToviRenderer* renderer, const char* text), -1) \
    /* value 0..1; negative: indeterminate */ \
    X(int, Tovi_ToviRenderer_setTfbProgressValue, (ToviRenderer* renderer, float value), -1) \
    X(int, Tovi_ToviRenderer_setTfbProgressTextAndValue, (ToviRenderer* renderer, const char* text, float value), -1) \
    /* replaces the whole menu (count 0 removes it); the SDK copies the items */ \
    X(int, Tovi_ToviRenderer_setTfbContextMenuItems, (ToviRenderer* renderer, const ToviTfbContextMenuItem* items, int count), -1) \
    /* registration record: ToviTfbContextMenuSelectedFn (NULL unregisters) and user data */ \
    X(int, Tovi_ToviRenderer_setTfbContextMenuSelectedCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    /* check-box state of the item with that command id */ \
    X(int, Tovi_ToviRenderer_setTfbContextMenuItemValue, (ToviRenderer* renderer, int commandId, int value), -1) \
    X(int, Tovi_ToviRenderer_getTfbContextMenuItemValue, (ToviRenderer* renderer, int commandId, int* value), -1) \
    /* instanceName NULL: the scene's frame-buffer settings plugin, created if needed; filled from the window. \
    1 done, 0 failed (also applySettingsTFB, which applies that plugin to the window) */ \
    X(int, Tovi_ToviRenderer_fillSettingsTFB, (ToviRenderer* renderer, const char* instanceName, int autoCommit), 0) \
    X(int, Tovi_ToviRenderer_applySettingsTFB, (ToviRenderer* renderer), 0) \
    /* 1 loaded, 0 failed */ \
    X(int, Tovi_ToviRenderer_loadTfbImage, (ToviRenderer* renderer, const char* fileName), 0) \
    X(int, Tovi_ToviRenderer_clearTfbImage, (ToviRenderer* renderer), -1) \
    /* level 0 error, 1 warning, 2 information, 3 debug */ \
    X(int, Tovi_ToviRenderer_logTfbMessage, (ToviRenderer* renderer, int level, const char* text), -1) \
    /* -- scene loading: 0 success; on failure negative, and getLastErrorCode and the parser-error -- */ \
    /* -- entries tell why. Filtered forms call filter(renderer, type, name, filterData) per plugin -- */ \
    X(int, Tovi_ToviRenderer_load, (ToviRenderer* renderer, const char* fileName, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_loadFiltered, (ToviRenderer* renderer, const char* fileName, ToviPluginFilterFn filter, void* filterData, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_loadAsText, (ToviRenderer* renderer, const char* sceneText, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_loadAsTextFiltered, (ToviRenderer* renderer, const char* sceneText, ToviPluginFilterFn filter, void* filterData, int autoCommit), -1) \
    /* scene text in a buffer of size bytes, no terminating zero needed */ \
    X(int, Tovi_ToviRenderer_loadAsBuffer, (ToviRenderer* renderer, const char* data, size_t size, int autoCommit), -1) \
    /* single-file append: appendMulti with one name */ \
    X(int, Tovi_ToviRenderer_append, (ToviRenderer* renderer, const char* fileName, int sendNameOnly, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_appendFiltered, (ToviRenderer* renderer, const char* fileName, ToviPluginFilterFn filter, void* filterData, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_appendAsText, (ToviRenderer* renderer, const char* sceneText, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_appendAsTextFiltered, (ToviRenderer* renderer, const char* sceneText, ToviPluginFilterFn filter, void* filterData, int autoCommit), -1) \
    /* the count names or texts form one scene: if one fails, all fail; sendNameOnly 1 sends only the */ \
    /* file names, not the contents, to distributed-rendering hosts */ \
    X(int, Tovi_ToviRenderer_appendMulti, (ToviRenderer* renderer, const char* const* fileNames, int count, int sendNameOnly, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_appendMultiAsText, (ToviRenderer* renderer, const char* const* sceneTexts, int count, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_appendMultiFiltered, (ToviRenderer* renderer, const char* const* fileNames, int count, ToviPluginFilterFn filter, void* filterData, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_appendMultiAsTextFiltered, (ToviRenderer* renderer, const char* const* sceneTexts, int count, ToviPluginFilterFn filter, void* filterData, int autoCommit), -1) \
    /* buffers[i] holds sizes[i] bytes of scene text, no terminating zero needed */ \
    X(int, Tovi_ToviRenderer_appendMultiAsBuffer, (ToviRenderer* renderer, const char* const* buffers, const size_t* sizes, int count, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_appendMultiAsBufferFiltered, (ToviRenderer* renderer, const char* const* buffers, const size_t* sizes, int count, ToviPluginFilterFn filter, void* filterData, int autoCommit), -1) \
    /* keeps the whole scene as one memory stream inside the SDK for distributed-rendering hosts */ \
    X(int, Tovi_ToviRenderer_serializeScene, (ToviRenderer* renderer), -1) \
    /* -- render control -- */ \
    /* starts rendering on the SDK's own thread (stopping a running render first); returns at once */ \
    X(int, Tovi_ToviRenderer_render, (ToviRenderer* renderer), -1) \
    /* blocks until rendering has started; non-zero when preparing failed */ \
    X(int, Tovi_ToviRenderer_startSync, (ToviRenderer* renderer), -1) \
    /* non-blocking; count 0 renders the animation range of the scene's settings */ \
    X(int, Tovi_ToviRenderer_renderSequence, (ToviRenderer* renderer, const ToviFrameRange* ranges, int count), -1) \
    X(int, Tovi_ToviRenderer_continueSequence, (ToviRenderer* renderer), -1) \
    /* options NULL: the defaults of a zero-filled record with compressed, hexArrays, printHeader 1 */ \
    X(int, Tovi_ToviRenderer_exportScene, (ToviRenderer* renderer, const char* fileName, const ToviExportOptions* options), -1) \
    /* the renderer state, -1 to 8; -1 (fatal error) also for an unusable renderer */ \
    X(int, Tovi_ToviRenderer_getState, (ToviRenderer* renderer), -1) \
    /* pause 1 pauses, 0 resumes interactive rendering */ \
    X(int, Tovi_ToviRenderer_pauseRT, (ToviRenderer* renderer, int pause), -1) \
    /* 1 while interactive rendering is paused, else 0 */ \
    X(int, Tovi_ToviRenderer_getPauseRTStatus, (ToviRenderer* renderer), 0) \
    /* *stats: one C_memory_alloc block (see ToviRTStatistics); negative when no interactive render */ \
    X(int, Tovi_ToviRenderer_getRTStatistics, (ToviRenderer* renderer, ToviRTStatistics** stats), -1) \
    X(int, Tovi_ToviRenderer_getBoundingBox, (ToviRenderer* renderer, ToviBoundingBox* box), -1) \
    /* -- camera for distributed rendering: a NULL name or the id UINT64_MAX removes the camera -- */ \
    X(int, Tovi_ToviRenderer_setCurrentCamera, (ToviRenderer* renderer, const char* pluginName), -1) \
    X(int, Tovi_ToviRenderer_setCurrentCameraByID, (ToviRenderer* renderer, ToviPluginID pluginID), -1) \
    /* 0 success with *pluginID UINT64_MAX when no camera is set; negative on failure */ \
    X(int, Tovi_ToviRenderer_getCurrentCamera, (ToviRenderer* renderer, ToviPluginID* pluginID), -1) \
    /* NULL clears the camera name */ \
    X(int, Tovi_ToviRenderer_setCameraName, (ToviRenderer* renderer, const char* name), -1) \
    /* 1 when a name is set (filled into name), 0 when none is set, negative on failure */ \
    X(int, Tovi_ToviRenderer_getCameraName, (ToviRenderer* renderer, ToviCharString* name), -1) \
    /* -- last error -- */ \
    /* last error code, 0 none (10: scene parse error); -1 for an unusable renderer */ \
    X(int, Tovi_ToviRenderer_getLastErrorCode, (ToviRenderer* renderer), -1) \
    X(void, Tovi_ToviRenderer_clearLastErrorCode, (ToviRenderer* renderer), ) \
    /* negative when there is no parse error */ \
    X(int, Tovi_ToviRenderer_getLastParserErrorFileName, (ToviRenderer* renderer, ToviCharString* fileName), -1) \
    /* line of the last parse error, 0 when there is none */ \
    X(int, Tovi_ToviRenderer_getLastParserErrorFileLine, (ToviRenderer* renderer), 0) \
    X(int, Tovi_ToviRenderer_getLastParserErrorText, (ToviRenderer* renderer, ToviCharString* text), -1) \
    /* -- property values as text; time: seconds, or one of the two NaN default-time patterns -- */ \
    /* 0 success, -22 no such property, other negative: value rejected */ \
    X(int, Tovi_ToviRenderer_setPropertyValueAtTime, (ToviRenderer* renderer, const char* pluginName, const char* propertyName, const char* value, double time, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_setPropertyValueAtTimeByID, (ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName, const char* value, double time, int autoCommit), -1) \
    /* the value as text in a C_memory_alloc block (caller frees), NULL when no such property */ \
    X(char*, Tovi_ToviRenderer_getPropertyValue, (ToviRenderer* renderer, const char* pluginName, const char* propertyName, double time), NULL) \
    X(char*, Tovi_ToviRenderer_getPropertyValueByID, (ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName, double time), NULL) \
    /* property type code of the value held (runtime type), -1 when no such property */ \
    X(int, Tovi_ToviRenderer_getPropertyType, (ToviRenderer* renderer, const char* pluginName, const char* propertyName), -1) \
    X(int, Tovi_ToviRenderer_getPropertyTypeByID, (ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName), -1) \
    /* element count of the value held, negative when not a list or no such property */ \
    X(int, Tovi_ToviRenderer_getPropertyElementsCount, (ToviRenderer* renderer, const char* pluginName, const char* propertyName), -1) \
    X(int, Tovi_ToviRenderer_getPropertyElementsCountByID, (ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName), -1) \
    /* -- plugins -- */ \
    /* class name: SDK-owned text valid while the library is loaded, NULL when no such plugin */ \
    X(const char*, Tovi_ToviRenderer_getPluginType, (ToviRenderer* renderer, const char* pluginName), NULL) \
    X(const char*, Tovi_ToviRenderer_getPluginTypeByID, (ToviRenderer* renderer, ToviPluginID pluginID), NULL) \
    /* number of instances of the class, className NULL: of all classes; 0 on failure */ \
    X(int, Tovi_ToviRenderer_getPluginsCountOfType, (ToviRenderer* renderer, const char* className), 0) \
    /* C_memory_alloc array of *count ids (caller frees; NULL when none), className NULL: all plugins */ \
    X(ToviPluginID*, Tovi_ToviRenderer_getPluginIDsOfType, (ToviRenderer* renderer, const char* className, int* count), NULL) \
    /* plugins whose class is in all categories of at least one of the maskCount masks; */ \
    /* C_memory_alloc array of *count ids (caller frees; NULL when none) */ \
    X(ToviPluginID*, Tovi_ToviRenderer_getPluginsOfCategories, (ToviRenderer* renderer, const uint64_t* categoryMasks, int maskCount, int* count), NULL) \
    /* 1 when the plugin's class is in every category of the mask, else 0 */ \
    X(int, Tovi_ToviRenderer_isPluginOfCategories, (ToviRenderer* renderer, ToviPluginID pluginID, uint64_t categoryMask), 0) \
    /* number of plugin classes, 0 on failure */ \
    X(int, Tovi_ToviRenderer_getPluginClassNamesCount, (ToviRenderer* renderer), 0) \
    /* string vectors of the property names (caller releases with releaseVector) */ \
    X(ToviVector*, Tovi_ToviRenderer_getPropertyNames, (ToviRenderer* renderer, const char* pluginName), NULL) \
    X(ToviVector*, Tovi_ToviRenderer_getPropertyNamesByID, (ToviRenderer* renderer, ToviPluginID pluginID), NULL) \
    /* name NULL: the SDK chooses a unique name. 0 success with *newID; -2 name taken; -3 invalid */ \
    /* name characters; other negative: creation error. autoCommit stands before the out-parameter */ \
    /* here, as the module passes it */ \
    X(int, Tovi_ToviRenderer_newPlugin, (ToviRenderer* renderer, const char* name, const char* className, int autoCommit, ToviPluginID* newID), -1) \
    X(int, Tovi_ToviRenderer_deletePlugin, (ToviRenderer* renderer, const char* name, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_deletePluginByID, (ToviRenderer* renderer, ToviPluginID pluginID, int autoCommit), -1) \
    /* deletes every listed plugin, going on after a failure; 0 when all were deleted */ \
    X(int, Tovi_ToviRenderer_deletePluginsByID, (ToviRenderer* renderer, const ToviPluginID* pluginIDs, int count, int autoCommit), -1) \
    /* redirects every reference to pluginID to replacementID (UINT64_MAX: to none) */ \
    X(int, Tovi_ToviRenderer_replacePluginByID, (ToviRenderer* renderer, ToviPluginID pluginID, ToviPluginID replacementID, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_renamePlugin, (ToviRenderer* renderer, const char* oldName, const char* newName, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_renamePluginByID, (ToviRenderer* renderer, ToviPluginID pluginID, const char* newName, int autoCommit), -1) \
    /* SDK-owned definition handle, never released; NULL when no such property */ \
    X(const ToviPropertyDefinition*, Tovi_ToviRenderer_getPropertyDefinitionByID, (ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName), NULL) \
    X(const ToviPropertyDefinition*, Tovi_ToviRenderer_getPropertyDefinitionFromClass, (ToviRenderer* renderer, const char* className, const char* propertyName), NULL) \
    /* index of the property in the plugin's property list, negative when no such property */ \
    X(int, Tovi_ToviRenderer_getPropertyIndexFromNameByID, (ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName), -1) \
    /* SDK-owned property name (lives with the class), NULL when the index names no property */ \
    X(const char*, Tovi_ToviRenderer_getPropertyNameFromIndexByID, (ToviRenderer* renderer, ToviPluginID pluginID, int index), NULL) \
    /* string vectors (caller releases with releaseVector) */ \
    X(ToviVector*, Tovi_ToviRenderer_getPluginNames, (ToviRenderer* renderer), NULL) \
    X(ToviVector*, Tovi_ToviRenderer_getPluginClassNames, (ToviRenderer* renderer), NULL) \
    /* classes in all categories of at least one of the maskCount masks */ \
    X(ToviVector*, Tovi_ToviRenderer_getPluginClassNamesOfCategories, (ToviRenderer* renderer, const uint64_t* categoryMasks, int maskCount), NULL) \
    X(ToviVector*, Tovi_ToviRenderer_getClassPropertyNames, (ToviRenderer* renderer, const char* className), NULL) \
    /* 0 full, 1 partial, 2 bake, 3 none; -1 unknown class */ \
    X(int, Tovi_ToviRenderer_getPluginGpuSupport, (ToviRenderer* renderer, const char* className), -1) \
    /* 1 when the plugin exists, else 0 */ \
    X(int, Tovi_ToviRenderer_pluginExistsByID, (ToviRenderer* renderer, ToviPluginID pluginID), 0) \
    /* UINT64_MAX (or 0) when there is no plugin of that name */ \
    X(ToviPluginID, Tovi_ToviRenderer_getPluginID, (ToviRenderer* renderer, const char* name), UINT64_MAX) \
    /* SDK-owned instance name, valid until the plugin is renamed or deleted (read it at once); */ \
    /* NULL when no such plugin */ \
    X(const char*, Tovi_ToviRenderer_getPluginName, (ToviRenderer* renderer, ToviPluginID pluginID), NULL) \
    /* 1 when the class exists, else 0 */ \
    X(int, Tovi_ToviRenderer_pluginClassExists, (ToviRenderer* renderer, const char* className), 0) \
    /* 1 when the class is in the category of that index, else 0 */ \
    X(int, Tovi_ToviRenderer_isPluginClassOfCategory, (ToviRenderer* renderer, const char* className, uint32_t categoryIndex), 0) \
    /* category masks: bit i set for category index i; 0 when none or unknown */ \
    X(uint64_t, Tovi_ToviRenderer_getPluginClassCategories, (ToviRenderer* renderer, const char* className), 0) \
    X(uint64_t, Tovi_ToviRenderer_getPluginCategories, (ToviRenderer* renderer, ToviPluginID pluginID), 0) \
    /* C_memory_alloc text (caller frees), NULL when none */ \
    X(char*, Tovi_ToviRenderer_getPluginDescription, (ToviRenderer* renderer, const char* className), NULL) \
    /* SDK-owned text (the SDK keeps it), NULL when the class is not deprecated */ \
    X(const char*, Tovi_ToviRenderer_getPluginDeprecation, (ToviRenderer* renderer, const char* className), NULL) \
    /* 1 when the plugin has the property, else 0 */ \
    X(int, Tovi_ToviRenderer_propertyExistsByID, (ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName), 0) \
    /* 0 invalid, 1 default, 2 not animated, 3 animated */ \
    X(int, Tovi_ToviRenderer_getPropertyStateByID, (ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName), 0) \
    /* keyframe count, negative when no such property; *times: C_memory_alloc array of count doubles */ \
    /* (caller frees; NULL when count is 0) */ \
    X(int, Tovi_ToviRenderer_getPropertyKeyframeTimesByID, (ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName, double** times), -1) \
    X(int, Tovi_ToviRenderer_stop, (ToviRenderer* renderer), -1) \
    /* copy of the current image; a new image the caller frees with C_memory_free, \
    NULL when there is none. request NULL: whole image, no post-processing */ \
    X(ToviImage*, Tovi_ToviRenderer_getImage, (ToviRenderer* renderer, const ToviImageRequest* request), NULL) \
    X(int, Tovi_ToviRenderer_isRenderEnded, (ToviRenderer* renderer), 0) \
    X(int, Tovi_ToviRenderer_isSequenceEnded, (ToviRenderer* renderer), 0) \
    X(int, Tovi_ToviRenderer_isFrameSkipped, (ToviRenderer* renderer), 0) \
    /* timeoutMs: -1 until idle (or awaiting changes when interactive rendering is kept \
    running), -2 until idle only, > 0 at most that long. 1 ended, 0 timed out or failed */ \
    X(int, Tovi_ToviRenderer_waitRenderEnd, (ToviRenderer* renderer, int timeoutMs), 0) \
    X(int, Tovi_ToviRenderer_waitSequenceEnd, (ToviRenderer* renderer, int timeoutMs), 0) \
    /* 1 when the TFB was closed or hidden, 0 timed out or failed */ \
    X(int, Tovi_ToviRenderer_waitTFBClosed, (ToviRenderer* renderer, int timeoutMs), 0) \
    /* the new change index (same counter as in image-updated events), 0 when nothing was committed */ \
    X(uint64_t, Tovi_ToviRenderer_commit, (ToviRenderer* renderer, int force), 0) \
    X(uint64_t, Tovi_ToviRenderer_getChangeIndex, (ToviRenderer* renderer), 0) \
    /* node plugin hit at the image pixel, 0 when nothing was hit or on failure */ \
    X(ToviPluginID, Tovi_ToviRenderer_pickPluginByXY, (ToviRenderer* renderer, int x, int y, int timeoutMs), 0) \
    /* count of hits (<= maxCount); array in one C_memory_alloc block, nearest first */ \
    X(int, Tovi_ToviRenderer_pickPluginsByXY, (ToviRenderer* renderer, int x, int y, int maxCount, int timeoutMs, ToviPickedPlugin** picks), -1) \
    X(int, Tovi_ToviRenderer_bucketRenderNearest, (ToviRenderer* renderer, int x, int y), -1) \
    /* opaque host pointer the renderer attaches to the images it allocates \
    (read back per image with ToviImage_getAllocatorData) */ \
    X(int, Tovi_ToviRenderer_setAllocatorData, (ToviRenderer* renderer, void* data), -1) \
    X(void*, Tovi_ToviRenderer_getAllocatorData, (ToviRenderer* renderer), NULL) \
    /* registration: the record is copied; its function NULL unregisters */ \
    X(int, Tovi_ToviRenderer_setBucketInitCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setBucketReadyCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setBucketFailedCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setImageUpdatedCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setStateChangedCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    /* minLogLevel: messages up to this level are delivered (0 error .. 3 debug) */ \
    X(int, Tovi_ToviRenderer_setDumpMessageCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback, int minLogLevel), -1) \
    X(int, Tovi_ToviRenderer_setRendererCloseCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setProgressCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setRenderViewChangedCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setRenderLastCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setRenderInteractiveStartCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setTFBClosedCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setPostEffectsUpdatedCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setShowMessagesWindowCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setDRHostConnectedCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setDRHostDisconnectedCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setLightMixTransferToSceneCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setUploadToCollaborationCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setEnhanceOnCollaborationCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setTFBPauseIPRNotifyCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setTFBUpdateIPRNotifyCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setTFBCopyToHostFrameBufferNotifyCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setTFBAddRenderElementToSceneCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    X(int, Tovi_ToviRenderer_setTFBClickCallback, (ToviRenderer* renderer, const ToviCallbackRecord* callback), -1) \
    /* minimum change between progressive frames that raises an image-updated event \
    (default 2.0); returns the value now in effect (the SDK may clamp), negative on failure */ \
    X(double, Tovi_ToviRenderer_setRTImageUpdateDifference, (ToviRenderer* renderer, double difference), -1.0) \
    /* milliseconds between image-updated events, 0 disabled; returns the value now in effect */ \
    X(int, Tovi_ToviRenderer_setRTImageUpdateTimeout, (ToviRenderer* renderer, int timeoutMs), -1) \
    /* keep 1: the images of the events pass to the receiver instead of being recycled */ \
    X(int, Tovi_ToviRenderer_setKeepRTframesInCallback, (ToviRenderer* renderer, int keep), -1) \
    X(int, Tovi_ToviRenderer_setKeepBucketsInCallback, (ToviRenderer* renderer, int keep), -1) \
    X(int, Tovi_ToviRenderer_setImageUpdatedHasBuffer, (ToviRenderer* renderer, int hasBuffer), -1) \
    X(int, Tovi_ToviRenderer_getImageUpdatedHasBuffer, (ToviRenderer* renderer), 0) \
    X(int, Tovi_ToviRenderer_setBucketReadyHasBuffer, (ToviRenderer* renderer, int hasBuffer), -1) \
    X(int, Tovi_ToviRenderer_getBucketReadyHasBuffer, (ToviRenderer* renderer), 0) \
    /* stream: one tagged property value (self-delimiting); time NaN: no explicit time. \
    0 success, -22 no such property, other non-zero: value rejected */ \
    X(int, Tovi_ToviRenderer_setPropertyBytesValueAtTime, (ToviRenderer* renderer, const char* pluginName, const char* propertyName, const uint8_t* stream, double time, int autoCommit), -1) \
    X(int, Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID, (ToviRenderer* renderer, ToviPluginID plugin, const char* propertyName, const uint8_t* stream, double time, int autoCommit), -1) \
    /* host pointer slots of the renderer, index 0 .. Tovi_getUserDataCount()-1 */ \
    X(int, Tovi_ToviRenderer_setUserData, (ToviRenderer* renderer, int index, void* data), -1) \
    X(void*, Tovi_ToviRenderer_getUserData, (ToviRenderer* renderer, int index), NULL) \
    /* hosts: ";"-separated host names or "address:port". -2 cannot resolve, -1 invalid \
    renderer or preparing (internal error), 0 added not connected, 1 added and \
    connected, 2 added, not connected for lack of work */ \
    X(int, Tovi_ToviRenderer_clientAddHosts, (ToviRenderer* renderer, const char* hosts), -1) \
    X(int, Tovi_ToviRenderer_clientRemoveHosts, (ToviRenderer* renderer, const char* hosts), -1) \
    X(int, Tovi_ToviRenderer_clientResetHosts, (ToviRenderer* renderer, const char* hosts), -1) \
    /* host list as one ";"-separated text */ \
    X(int, Tovi_ToviRenderer_clientGetAllHosts, (ToviRenderer* renderer, ToviCharString* hosts), -1) \
    X(int, Tovi_ToviRenderer_clientGetActiveHosts, (ToviRenderer* renderer, ToviCharString* hosts), -1) \
    X(int, Tovi_ToviRenderer_clientGetInactiveHosts, (ToviRenderer* renderer, ToviCharString* hosts), -1) \
    X(int, Tovi_ToviRenderer_getImageSize, (ToviRenderer* renderer, int* width, int* height), -1) \
    /* output size lives in the output settings, hence autoCommit; refused while a \
    production render runs */ \
    X(int, Tovi_ToviRenderer_setImageSize, (ToviRenderer* renderer, int width, int height, int autoCommit), -1) \
    /* as setImageSize (which resets both regions), choosing whether the render and crop \
    regions are reset (1) or kept (0) */ \
    X(int, Tovi_ToviRenderer_setImageSizeEx, (ToviRenderer* renderer, int width, int height, int resetRenderRegion, int resetCropRegion, int autoCommit), -1) \
    /* 1 region set and filled, 0 no region set, negative failure */ \
    X(int, Tovi_ToviRenderer_getRenderRegion, (ToviRenderer* renderer, ToviRenderRegion* region), -1) \
    /* region NULL: render the whole image */ \
    X(int, Tovi_ToviRenderer_setRenderRegion, (ToviRenderer* renderer, const ToviRenderRegion* region, int autoCommit), -1) \
    /* 1 region set and filled, 0 no region set, negative failure */ \
    X(int, Tovi_ToviRenderer_getCropRegion, (ToviRenderer* renderer, ToviCropRegion* region), -1) \
    /* region NULL: no crop */ \
    X(int, Tovi_ToviRenderer_setCropRegion, (ToviRenderer* renderer, const ToviCropRegion* region, int autoCommit), -1) \
    /* flags NULL: the writer's defaults */ \
    X(int, Tovi_ToviRenderer_saveTfbToFile, (ToviRenderer* renderer, const char* fileName, const ToviImageWriterFlags* flags), -1) \
    X(int, Tovi_ToviRenderer_getDeviceListMetal, (ToviRenderer* renderer, ToviComputeDevice** devices, int recordSize), -1) \
    X(int, Tovi_ToviRenderer_getDeviceListMetalRT, (ToviRenderer* renderer, ToviComputeDevice** devices, int recordSize), -1) \
    X(int, Tovi_ToviRenderer_getDeviceListOptix, (ToviRenderer* renderer, ToviComputeDevice** devices, int recordSize), -1) \
    X(int, Tovi_ToviRenderer_getDeviceListCUDA, (ToviRenderer* renderer, ToviComputeDevice** devices, int recordSize), -1) \
    X(int, Tovi_ToviRenderer_getDeviceListDenoiser, (ToviRenderer* renderer, ToviComputeDevice** devices, int recordSize), -1) \
    X(int, Tovi_ToviRenderer_setDeviceListMetal, (ToviRenderer* renderer, const int32_t* indices, int count), -1) \
    X(int, Tovi_ToviRenderer_setDeviceListMetalRT, (ToviRenderer* renderer, const int32_t* indices, int count), -1) \
    X(int, Tovi_ToviRenderer_setDeviceListOptix, (ToviRenderer* renderer, const int32_t* indices, int count), -1) \
    X(int, Tovi_ToviRenderer_setDeviceListCUDA, (ToviRenderer* renderer, const int32_t* indices, int count), -1) \
    X(int, Tovi_ToviRenderer_setDeviceListDenoiser, (ToviRenderer* renderer, const int32_t* indices, int count), -1) \
    X(int, Tovi_ToviRenderer_setGPUDevicesEnvironmentVariable, (ToviRenderer* renderer), -1) \
    /* negative when there is nothing to save or writing failed */ \
    X(int, Tovi_ToviRenderer_saveIrradianceMapFile, (ToviRenderer* renderer, const char* fileName), -1) \
    X(int, Tovi_ToviRenderer_saveLightCacheFile, (ToviRenderer* renderer, const char* fileName), -1) \
    X(int, Tovi_ToviRenderer_savePhotonMapFile, (ToviRenderer* renderer, const char* fileName), -1) \
    X(int, Tovi_ToviRenderer_saveCausticsFile, (ToviRenderer* renderer, const char* fileName), -1) \
    /* outputFile NULL: from the output settings; the two flags -1 and \
    progressiveAutoSaveSeconds < 0 keep the SDK's defaults */ \
    X(int, Tovi_ToviRenderer_setResumableRendering, (ToviRenderer* renderer, int enable, const char* outputFile, int compressProgressiveFiles, int deleteResumableFileOnSuccess, int progressiveAutoSaveSeconds), -1) \
    X(int, Tovi_ToviRenderer_setDenoiserOptions, (ToviRenderer* renderer, const ToviDenoiserOptions* options), -1) \
    X(int, Tovi_ToviRenderer_setBitmapCache, (ToviRenderer* renderer, int enable), -1) \
    /* 0 when denoising started (request->function is called once at its end), \
    negative when it did not start (the function is then never called) */ \
    X(int, Tovi_ToviRenderer_denoiseNow, (ToviRenderer* renderer, const ToviDenoiseRequest* request), -1) \
    /* 0 when the update started; a post-effects-updated event follows at its end */ \
    X(int, Tovi_ToviRenderer_updateLightingAnalysis, (ToviRenderer* renderer), -1) \
    /* includePaths ";"-separated; overwrite 0 appends to the current paths */ \
    X(int, Tovi_ToviRenderer_setIncludePaths, (ToviRenderer* renderer, const char* includePaths, int overwrite), -1) \
    /* each value 0 when not computed */ \
    X(int, Tovi_ToviRenderer_getAutoExposureResult, (ToviRenderer* renderer, double* autoExposure, double* autoWhiteBalance), -1) \
    X(int, Tovi_ToviRenderer_setToviProfiler, (ToviRenderer* renderer, const ToviProfilerOptions* options), -1) \
    X(int, Tovi_ToviRenderer_addToviProfilerMetadata, (ToviRenderer* renderer, const char* category, const char* key, const char* value), -1) \
    X(int, Tovi_ToviRenderer_initAndStartToviProfiler, (ToviRenderer* renderer, const ToviProfilerOptions* options), -1) \
    X(int, Tovi_ToviRenderer_hasToviProfilerStartedManually, (ToviRenderer* renderer), 0) \
    X(int, Tovi_ToviRenderer_startDurationEvent, (ToviRenderer* renderer, const char* eventName, int threadIndex), -1) \
    X(int, Tovi_ToviRenderer_endDurationEvent, (ToviRenderer* renderer, const char* eventName, int threadIndex), -1) \
    X(int, Tovi_ToviRenderer_writeAndFreeToviProfiler, (ToviRenderer* renderer), -1) \
    /* name NULL clears it */ \
    X(int, Tovi_ToviRenderer_setUserSceneName, (ToviRenderer* renderer, const char* name), -1) \
    /* 1 a name is set and filled in, 0 none set, negative failure */ \
    X(int, Tovi_ToviRenderer_getUserSceneName, (ToviRenderer* renderer, ToviCharString* name), -1) \
    /* plugins to shade for debugging; count 0 clears the selection */ \
    X(int, Tovi_ToviRenderer_setDebugShadingSelection, (ToviRenderer* renderer, const ToviPluginID* plugins, int count), -1) \
    X(int, Tovi_ToviRenderer_halfResolutionMode, (ToviRenderer* renderer), 0) \
    /* Proxy entries: 0 success, negative failure. pluginID names a plugin that references a proxy file. */ \
    /* One-shot read of the stored preview; readFlags selects channels; on success data's blocks are the caller's (C_memory_free each). */ \
    X(int, Tovi_ToviRenderer_readProxyPreview, (ToviRenderer* renderer, ToviPluginID pluginID, int readFlags, ToviProxyData* data), -1) \
    /* Two-phase read of the preview: fills counts, opens *reader for readProxyFinalize. */ \
    X(int, Tovi_ToviRenderer_readProxyPrepare, (ToviRenderer* renderer, ToviPluginID pluginID, int readFlags, ToviProxyData* data, ToviProxyReader** reader), -1) \
    /* Fills the channels the caller allocated (NULL data skips); always releases reader, data NULL only releases. */ \
    X(int, Tovi_ToviRenderer_readProxyFinalize, (ToviRenderer* renderer, ToviProxyReader* reader, ToviProxyData* data), -1) \
    /* Two-phase read of the full-resolution geometry, same protocol as the preview pair. */ \
    X(int, Tovi_ToviRenderer_readProxyFullPrepare, (ToviRenderer* renderer, ToviPluginID pluginID, int readFlags, ToviProxyData* data, ToviProxyReader** reader), -1) \
    X(int, Tovi_ToviRenderer_readProxyFullFinalize, (ToviRenderer* renderer, ToviProxyReader* reader, ToviProxyData* data), -1) \
    /* Writes the geometry of count scene plugins (meshes or nodes) into one proxy file; scene unchanged; errorText may be NULL. */ \
    X(int, Tovi_ToviRenderer_createProxyFile, (ToviRenderer* renderer, const ToviPluginID* pluginIDs, int count, const ToviProxyCreateParams* params, ToviCharString* errorText), -1) \
    /* Readers below return 1 on success, 0 on failure; arrays come back as C_memory_alloc blocks (NULL on failure) for the caller. */ \
    /* transforms: 12 floats each (columns 0-2, offset); ints: per-instance integers. */ \
    X(int, Tovi_ToviRenderer_readScatterData, (ToviRenderer* renderer, ToviPluginID pluginID, float** transforms, int32_t** ints, int* transformCount, int* intCount), 0) \
    /* *data freed with Tovi_GeomUtilsCommon_freeGaussianData; bbox: caller's 6 floats (min x, y, z, max x, y, z). */ \
    X(int, Tovi_ToviRenderer_readGaussianData, (ToviRenderer* renderer, ToviPluginID pluginID, ToviGaussianData** data, float* bbox), 0) \
    /* Records are read only (const); may call callback->callback on SDK threads before it returns. */ \
    X(int, Tovi_ToviRenderer_readScatterPreset, (ToviRenderer* renderer, const ToviScatterPresetParams* params, const ToviScatterPresetCallback* callback), 0) \
    /* pluginID: a node whose geometry is hair; vertices: 3 floats each; ints: vertices per strand; */ \
    /* countHint: approximate number of strands wanted (a preview subset), 0 for all. */ \
    X(int, Tovi_ToviRenderer_readGeomHairData, (ToviRenderer* renderer, ToviPluginID pluginID, float** vertices, int32_t** ints, int* vertexCount, int* intCount, int countHint), 0) \
    /* *field freed with Tovi_LightUtilsCommon_freeLuminaireFieldHandle. */ \
    X(int, Tovi_ToviRenderer_getLuminaireFieldHandle, (ToviRenderer* renderer, ToviPluginID pluginID, ToviLuminaireField** field), 0) \
    /* vertices: 3 floats each; indices: 3 per triangle (triangleCount * 3 int32). */ \
    X(int, Tovi_ToviRenderer_getIESPreviewData, (ToviRenderer* renderer, ToviPluginID pluginID, float** vertices, int32_t** indices, int* vertexCount, int* triangleCount), 0) \
    /* ---- prefix Tovi_ToviRendererUtils_ (2) ---- */ \
    /* copies plugins of src into dst; includeIDs NULL/0: every plugin; the functions may be NULL \
    and are called on this thread. result: number of plugins copied */ \
    X(int, Tovi_ToviRendererUtils_copyPlugins, (ToviRenderer* srcRenderer, ToviRenderer* dstRenderer, const ToviPluginID* includeIDs, int includeCount, const ToviPluginID* excludeIDs, int excludeCount, ToviPluginCopyPreCreateFn preCreate, ToviPluginCopyPostCreateFn postCreate, void* userData, int autoCommit), -1) \
    /* as copyPlugins, for every plugin of one class */ \
    X(int, Tovi_ToviRendererUtils_copyPluginsOfType, (ToviRenderer* srcRenderer, ToviRenderer* dstRenderer, const char* pluginType, ToviPluginCopyPreCreateFn preCreate, ToviPluginCopyPostCreateFn postCreate, void* userData, int autoCommit), -1) \
    /* ---- prefix Tovi_PluginUtils_ (9) ---- */ \
    /* 0 and a value stream in one C_memory_alloc block; negative when there is no default */ \
    X(int, Tovi_PluginUtils_getPropertyDefaultValue, (const ToviPropertyDefinition* definition, uint8_t** stream, size_t* size), -1) \
    /* the texts below belong to the definition and live as long as it; NULL when absent */ \
    X(const char*, Tovi_PluginUtils_getPropertyDescription, (const ToviPropertyDefinition* definition), NULL) \
    X(const char*, Tovi_PluginUtils_getPropertyUIGuides, (const ToviPropertyDefinition* definition), NULL) \
    X(const char*, Tovi_PluginUtils_getPropertyName, (const ToviPropertyDefinition* definition), NULL) \
    /* aliases joined with ',' */ \
    X(const char*, Tovi_PluginUtils_getPropertyAliases, (const ToviPropertyDefinition* definition), NULL) \
    X(const char*, Tovi_PluginUtils_getPropertyDeprecation, (const ToviPropertyDefinition* definition), NULL) \
    /* property type code */ \
    X(int, Tovi_PluginUtils_getPropertyType, (const ToviPropertyDefinition* definition), -1) \
    /* element count of a list property, negative when not a list */ \
    X(int, Tovi_PluginUtils_getPropertyElementsCount, (const ToviPropertyDefinition* definition), -1) \
    /* 0 full, 1 partial, 2 none */ \
    X(int, Tovi_PluginUtils_getPropertyGpuSupport, (ToviRenderer* renderer, const char* className, const ToviPropertyDefinition* definition), -1) \
    /* ---- prefix Tovi_UIGuides_ (29) ---- */ \
    X(int, Tovi_UIGuides_isEnum, (const ToviPropertyDefinition* definition), 0) \
    /* guideType 0..22; *flag 1 when the guide is present */ \
    X(int, Tovi_UIGuides_hasType, (const ToviPropertyDefinition* definition, int guideType, int* flag), -1) \
    X(int, Tovi_UIGuides_getFloat, (const ToviPropertyDefinition* definition, int guideType, float* value), -1) \
    /* result: number of floats the guide holds; at most capacity are written to values */ \
    X(int, Tovi_UIGuides_getFloats, (const ToviPropertyDefinition* definition, int guideType, float* values, int capacity), -1) \
    X(int, Tovi_UIGuides_getDisplayName, (const ToviPropertyDefinition* definition, ToviCharString* text), -1) \
    /* count; labels as a packed string list and values as count int32, two C_memory_alloc blocks */ \
    X(int, Tovi_UIGuides_getEnumStrings, (const ToviPropertyDefinition* definition, char** labels, int32_t** values), -1) \
    /* 0 unknown, 1 distance, 2 angle, 3 local subdivs */ \
    X(int, Tovi_UIGuides_getQuantityType, (const ToviPropertyDefinition* definition), -1) \
    /* 0 default, 1 radians, 2 degrees, 3 millimeters, 4 centimeters, 5 meters */ \
    X(int, Tovi_UIGuides_getUnits, (const ToviPropertyDefinition* definition), -1) \
    /* packed string lists: count result, one C_memory_alloc block */ \
    X(int, Tovi_UIGuides_getFileAssetExts, (const ToviPropertyDefinition* definition, char** list), -1) \
    X(int, Tovi_UIGuides_getFileAssetNames, (const ToviPropertyDefinition* definition, char** list), -1) \
    /* 0 load, 1 save, 2 load and save */ \
    X(int, Tovi_UIGuides_getFileAssetOp, (const ToviPropertyDefinition* definition), -1) \
    /* attribute: one bit (1, 2, 4 ... 64); *flag 1 when set */ \
    X(int, Tovi_UIGuides_hasAttribute, (const ToviPropertyDefinition* definition, int attribute, int* flag), -1) \
    X(int, Tovi_UIGuides_getStringEnumStrings, (const ToviPropertyDefinition* definition, char** list), -1) \
    X(int, Tovi_UIGuides_isStringEnum, (const ToviPropertyDefinition* definition), 0) \
    X(int, Tovi_UIGuides_getRolloutName, (const ToviPropertyDefinition* definition, ToviCharString* text), -1) \
    X(int, Tovi_UIGuides_getTabName, (const ToviPropertyDefinition* definition, ToviCharString* text), -1) \
    X(int, Tovi_UIGuides_hasOverriddenBy, (const ToviPropertyDefinition* definition), 0) \
    X(int, Tovi_UIGuides_getValueOfOverriddenBy, (const ToviPropertyDefinition* definition, ToviCharString* text), -1) \
    /* 0 basic, 1 default, 2 advanced */ \
    X(int, Tovi_UIGuides_getTier, (const ToviPropertyDefinition* definition), -1) \
    X(int, Tovi_UIGuides_hasOverride, (const ToviPropertyDefinition* definition), 0) \
    X(int, Tovi_UIGuides_getCountOfOverrides, (const ToviPropertyDefinition* definition), -1) \
    X(int, Tovi_UIGuides_getValueOfOverride, (const ToviPropertyDefinition* definition, int index, ToviCharString* text), -1) \
    X(int, Tovi_UIGuides_hasEnabledCondition, (const ToviPropertyDefinition* definition), 0) \
    X(int, Tovi_UIGuides_getEnableDepends, (const ToviPropertyDefinition* definition, char** list), -1) \
    /* 0 full, 1 partial, 2 none */ \
    X(int, Tovi_UIGuides_getGPUSupportStatus, (const ToviPropertyDefinition* definition), -1) \
    X(int, Tovi_UIGuides_hasHiddenCondition, (const ToviPropertyDefinition* definition), 0) \
    X(int, Tovi_UIGuides_getHideDepends, (const ToviPropertyDefinition* definition, char** list), -1) \
    /* evaluate the condition against the plugin's current values; *flag 1 when enabled/hidden */ \
    X(int, Tovi_UIGuides_isEnabled, (const ToviPropertyDefinition* definition, ToviRenderer* renderer, ToviPluginID pluginID, int* flag), -1) \
    X(int, Tovi_UIGuides_isHidden, (const ToviPropertyDefinition* definition, ToviRenderer* renderer, ToviPluginID pluginID, int* flag), -1) \
    /* ---- SDK-owned string and vector access, no prefix (6) ---- */ \
    /* String vectors: the element is the zero-terminated text itself; value vectors: the address of the element. NULL when out of range. */ \
    X(const void*, getVectorElement, (const ToviVector* vector, int index), NULL) \
    X(int, getVectorSize, (const ToviVector* vector), 0) \
    X(void, releaseVector, (ToviVector* vector), ) \
    X(const char*, getCharStringContent, (const ToviCharString* text), NULL) \
    X(size_t, getCharStringLength, (const ToviCharString* text), 0) \
    X(void, releaseCharString, (ToviCharString* text), ) \
    /* ---- prefix ToviImage_ (40) ---- */ \
    /* In this family int results are 1 success, 0 failure, except toIntList; ToviImage* and block results are NULL on failure. */ \
    /* renderer may be NULL; when given, its colour management applies to the 8/16-bit conversion. */ \
    /* quality 1..100, 0 for the SDK default, anything else fails; *size: bytes of the returned C_memory_alloc block. */ \
    X(void*, ToviImage_compressToJpeg, (const ToviImage* image, int quality, size_t* size, ToviRenderer* renderer), NULL) \
    /* flags: ToviPngFlags. */ \
    X(void*, ToviImage_compressToPng, (const ToviImage* image, int flags, size_t* size, ToviRenderer* renderer), NULL) \
    /* Whole BMP file in memory; swapChannels stores R G B order. */ \
    X(void*, ToviImage_convertToBmp, (const ToviImage* image, int preserveAlpha, size_t* size, ToviRenderer* renderer, int swapChannels), NULL) \
    /* 8-bit rows; flags: ToviBitmapDataFlags; stride: bytes per row, 0 for unpadded rows; */ \
    /* alphaValue: -1 keeps the image's alpha, 0..255 writes that constant alpha. */ \
    X(void*, ToviImage_toBitmapData, (const ToviImage* image, size_t* size, int flags, int stride, int alphaValue), NULL) \
    /* Writes the pixels in raw format (ToviRawImageFormat) into the caller's buffer of byteSize bytes; */ \
    /* 0 success, non-zero failure (unknown format, buffer too small). */ \
    X(int, ToviImage_toIntList, (const ToviImage* image, void* data, size_t byteSize, int format), -1) \
    X(int, ToviImage_compressToJpegFile, (const ToviImage* image, int quality, const char* fileName, ToviRenderer* renderer), 0) \
    X(int, ToviImage_compressToPngFile, (const ToviImage* image, int flags, const char* fileName, ToviRenderer* renderer), 0) \
    X(int, ToviImage_SaveToBmpFile, (const ToviImage* image, int preserveAlpha, const char* fileName, ToviRenderer* renderer, int swapChannels), 0) \
    /* bitsPerChannel 8, 16 or 32 (float), 0 for the SDK default. */ \
    X(int, ToviImage_SaveToTiffFile, (const ToviImage* image, const char* fileName, ToviRenderer* renderer, int bitsPerChannel), 0) \
    /* RGBA half channels. */ \
    X(int, ToviImage_SaveToExrFile, (const ToviImage* image, const char* fileName, ToviRenderer* renderer), 0) \
    /* Decoders: renderer may be NULL (colour management as for encoding); flags reserved, pass 0. */ \
    X(ToviImage*, ToviImage_createFromBmp, (const void* data, size_t size, ToviRenderer* renderer, int flags), NULL) \
    X(ToviImage*, ToviImage_createFromJpeg, (const void* data, size_t size, ToviRenderer* renderer, int flags), NULL) \
    X(ToviImage*, ToviImage_createFromPng, (const void* data, size_t size, ToviRenderer* renderer, int flags), NULL) \
    /* format: ToviRawImageFormat code; stride: bytes per row, 0 for unpadded rows. */ \
    X(ToviImage*, ToviImage_createFromRawData, (const void* data, size_t size, int format, int width, int height, int stride), NULL) \
    /* A negative width or height mirrors the region along that axis. */ \
    X(ToviImage*, ToviImage_crop, (const ToviImage* image, int x, int y, int width, int height), NULL) \
    X(ToviImage*, ToviImage_resize, (const ToviImage* image, int width, int height), NULL) \
    X(ToviImage*, ToviImage_crop_resize, (const ToviImage* image, int x, int y, int cropWidth, int cropHeight, int width, int height), NULL) \
    /* Aspect kept. fitIn: largest scale that fits inside width x height (result not larger); */ \
    /* fitOut: smallest scale that covers it (result not smaller); cutIn: covers it, then centre-cropped to exactly width x height. */ \
    X(ToviImage*, ToviImage_fitIn, (const ToviImage* image, int width, int height), NULL) \
    X(ToviImage*, ToviImage_fitOut, (const ToviImage* image, int width, int height), NULL) \
    X(ToviImage*, ToviImage_cutIn, (const ToviImage* image, int width, int height), NULL) \
    X(ToviImage*, ToviImage_clone, (const ToviImage* image), NULL) \
    /* Transparent black pixels. */ \
    X(ToviImage*, ToviImage_create, (int width, int height), NULL) \
    X(int, ToviImage_getSize, (const ToviImage* image, int* width, int* height), 0) \
    /* The allocator data of the renderer that produced the image (see setAllocatorData), NULL if none. */ \
    X(void*, ToviImage_getAllocatorData, (const ToviImage* image), NULL) \
    /* Bytes held by the image (pixels included), 0 on failure. */ \
    X(size_t, ToviImage_getMemorySize, (const ToviImage* image), 0) \
    /* Pixels in place, 4 floats (R G B A) each, rows top first; pixelCount is 64-bit since width * height can pass 2^31. */ \
    X(float*, ToviImage_getPixelDataPointerAndPixelCount, (ToviImage* image, size_t* pixelCount), NULL) \
    /* blend: 0 copies the pixels, 1 lays them over dest by the source's (straight) alpha; the part outside dest is clipped. */ \
    X(int, ToviImage_drawImage, (ToviImage* dest, const ToviImage* src, int x, int y, int blend), 0) \
    /* color: 4 floats R G B A (a 3-component colour is passed with alpha 0 for add, 1 for mul). */ \
    X(int, ToviImage_addColor, (ToviImage* image, const float* color), 0) \
    X(int, ToviImage_mulColor, (ToviImage* image, const float* color), 0) \
    /* exposure: stops (multiply by 2^value). */ \
    X(int, ToviImage_changeExposure, (ToviImage* image, float value), 0) \
    X(int, ToviImage_changeGamma, (ToviImage* image, float value), 0) \
    /* inverse 0: linear to sRGB curve; non-zero: sRGB to linear. */ \
    X(int, ToviImage_changeSRGB, (ToviImage* image, int inverse), 0) \
    X(int, ToviImage_changeContrast, (ToviImage* image, float value), 0) \
    X(int, ToviImage_makeNegative, (ToviImage* image), 0) \
    /* Output gamma of 8-bit file encodings (colour channels only; not raw or bitmap data); */ \
    /* 0 (refused) for a gamma that is not finite and positive. */ \
    X(int, ToviImage_setGamma, (ToviImage* image, float gamma), 0) \
    X(float, ToviImage_getGamma, (const ToviImage* image), 0.0f) \
    X(ToviImage*, ToviImage_load, (const char* fileName), NULL) \
    /* Reads only the header. Both recognise the format by the file's first bytes. */ \
    X(int, ToviImage_loadSize, (const char* fileName, int* width, int* height), 0) \
    /* mode: ToviWhiteBalanceMode; multiplier: caller's 4 floats (R G B A); 0 (and the neutral */ \
    /* multiplier) when the image's reference colour has a channel that is not positive. */ \
    X(int, ToviImage_calculateWhiteBalanceMultiplier, (const ToviImage* image, int mode, float* multiplier), 0) \
    /* Mean absolute per-channel difference; -1 when the sizes differ or an image is missing. */ \
    X(float, ToviImage_calculateDifference, (const ToviImage* image, const ToviImage* other), -1.0f) \
    /* ---- prefix Tovi_GeomUtilsCommon_ (5) ---- */ \
    /* Path form of Tovi_ToviRenderer_readGaussianData: 1 success, 0 failure. */ \
    X(int, Tovi_GeomUtilsCommon_readGaussianData, (const char* path, ToviGaussianData** data, float* bbox), 0) \
    X(void, Tovi_GeomUtilsCommon_freeGaussianData, (ToviGaussianData* data), ) \
    /* dest: caller's 3 floats; 0 success, -1 index out of range. */ \
    X(int, Tovi_GeomUtilsCommon_getGaussianPosition, (int index, const ToviGaussianData* data, float* dest), -1) \
    /* dest: caller's 3 floats (R G B), the splat's view-independent colour. */ \
    X(int, Tovi_GeomUtilsCommon_getGaussianAverageColor, (int index, const ToviGaussianData* data, float* dest), -1) \
    X(int, Tovi_GeomUtilsCommon_getGaussianPrimitivesCount, (const ToviGaussianData* data), -1) \
    /* ---- prefix Tovi_LightUtilsCommon_ (10) ---- */ \
    /* Path form of Tovi_ToviRenderer_getLuminaireFieldHandle: 1 success, 0 failure. */ \
    X(int, Tovi_LightUtilsCommon_getLuminaireFieldHandle, (const char* path, ToviLuminaireField** field), 0) \
    X(void, Tovi_LightUtilsCommon_freeLuminaireFieldHandle, (ToviLuminaireField* field), ) \
    /* 1 the field uses a convex hull, 0 not, negative failure. */ \
    X(int, Tovi_LightUtilsCommon_useConvexHull, (const ToviLuminaireField* field), -1) \
    /* bbox: caller's 6 floats (min x, y, z, max x, y, z). */ \
    X(int, Tovi_LightUtilsCommon_getLuminaireFieldBoundingBox, (const ToviLuminaireField* field, float* bbox), -1) \
    X(float, Tovi_LightUtilsCommon_getLuminaireFieldScale, (const ToviLuminaireField* field), 0.0f) \
    /* Number of hull vertices (3 floats each), negative failure. */ \
    X(int, Tovi_LightUtilsCommon_getLuminaireFieldConvexHullVerticesLength, (const ToviLuminaireField* field), -1) \
    /* Fills at most count vertices (3 floats each) into the caller's array. */ \
    X(int, Tovi_LightUtilsCommon_getLuminaireFieldConvexHullVertices, (const ToviLuminaireField* field, float* vertices, int count), -1) \
    /* Number of hull triangle indices (3 per triangle), negative failure. */ \
    X(int, Tovi_LightUtilsCommon_getLuminaireFieldConvexHullTrianglesLength, (const ToviLuminaireField* field), -1) \
    /* Fills at most count indices into the caller's array. */ \
    X(int, Tovi_LightUtilsCommon_getLuminaireFieldConvexHullTriangles, (const ToviLuminaireField* field, int32_t* indices, int count), -1) \
    /* Path form of Tovi_ToviRenderer_getIESPreviewData: 1 success, 0 failure. */ \
    X(int, Tovi_LightUtilsCommon_getIESPreviewData, (const char* path, float** vertices, int32_t** indices, int* vertexCount, int* triangleCount), 0) \
    /* ---- prefix Tovi_ProxyCommon_ (6) ---- */ \
    /* Path forms of the renderer's proxy entries: 0 success, negative failure. */ \
    X(int, Tovi_ProxyCommon_readProxyPreview, (const char* fileName, int readFlags, ToviProxyData* data), -1) \
    X(int, Tovi_ProxyCommon_readProxyPrepare, (const char* fileName, int readFlags, ToviProxyData* data, ToviProxyReader** reader), -1) \
    X(int, Tovi_ProxyCommon_readProxyFinalize, (ToviProxyReader* reader, ToviProxyData* data), -1) \
    X(int, Tovi_ProxyCommon_readProxyFullPrepare, (const char* fileName, int readFlags, ToviProxyData* data, ToviProxyReader** reader), -1) \
    X(int, Tovi_ProxyCommon_readProxyFullFinalize, (ToviProxyReader* reader, ToviProxyData* data), -1) \
    /* Writes the channels of data that hold blocks (presentFlags) into a proxy file; errorText may be NULL. */ \
    X(int, Tovi_ProxyCommon_createProxyFile, (const ToviProxyData* data, const ToviProxyCreateParams* params, ToviCharString* errorText), -1) \
    /* ---- prefix TVMat_ (5) ---- */ \
    /* opens a material-library file; NULL when it cannot be read */ \
    X(ToviTVMat*, TVMat_init, (const char* fileName), NULL) \
    X(void, TVMat_unload, (ToviTVMat* library), ) \
    /* count; material names as a packed string list in one C_memory_alloc block */ \
    X(int, TVMat_getMaterialList, (ToviTVMat* library, char** names), -1) \
    /* 0 and the thumbnail's encoded image file bytes in one C_memory_alloc block */ \
    X(int, TVMat_getEncodedThumbnail, (ToviTVMat* library, const char* materialName, uint8_t** data, size_t* size), -1) \
    /* the thumbnail as an image the caller releases */ \
    X(ToviImage*, TVMat_getDecodedThumbnail, (ToviTVMat* library, const char* materialName), NULL) \
    /* ---- prefix Util_ (3) ---- */ \
    /* count; links in one C_memory_alloc block */ \
    X(int, Util_getParentPlugins, (ToviRenderer* renderer, ToviPluginID pluginID, int recursive, ToviPluginLink** links), -1) \
    X(int, Util_getChildPlugins, (ToviRenderer* renderer, ToviPluginID pluginID, int recursive, ToviPluginLink** links), -1) \
    /* candela; negative when the file cannot be read */ \
    X(float, Util_getIESPrescribedIntensity, (const char* iesFile), -1.0f) \
    /* ---- SDK memory allocator, no prefix (3) ---- */ \
    X(void, C_memory_free, (void* block), ) \
    /* size 0 gives a valid, empty block; NULL when out of memory */ \
    X(void*, C_memory_alloc, (size_t size), NULL) \
    /* newSize in bytes, a multiple of elementSize; block NULL allocates; newSize 0 frees and gives NULL; on failure NULL and the old block stays valid */ \
    X(void*, C_memory_realloc, (void* block, size_t newSize, size_t elementSize), NULL) \
    /* ---- prefix Tovi_OCIO_ (2) ---- */ \
    /* source: TOVI_OCIO_SOURCE_*; fileName used with FILE only. Fills *data (release it with \
    Tovi_OCIO_freeData, also after a failure); errorText holds the reason on failure */ \
    X(int, Tovi_OCIO_initData, (int source, const char* fileName, ToviOCIOData* data, ToviCharString* errorText), -1) \
    X(void, Tovi_OCIO_freeData, (ToviOCIOData* data), ) \
    /* end of the entries */

#ifdef __cplusplus
}
#endif

#endif /* TOVI_SDK_H */
