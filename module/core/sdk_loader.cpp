// The SDK library loader. The algorithm is shared; the few platform primitives (open, resolve,
// close, the system's last error text, the loaded file's path, the environment) differ.
#include "core/sdk_loader.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "core/sdk_api.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#include <link.h>
#include <unistd.h>
#endif

namespace tovi {

namespace {

#ifdef _WIN32
constexpr char folderSeparator[] = "\\";
#else
constexpr char folderSeparator[] = "/";
#endif
constexpr char binFolder[] = "bin";

SdkLoadState loadState = SdkLoadState::SearchDefault;
char* libraryPath = nullptr;
uint32_t directoryLength = 0;
void* libraryHandle = nullptr;
char* loadReport = nullptr;
char* missingNames = nullptr;
size_t missingNamesLength = 0;
uint32_t missingCount = 0;

char* duplicateText(const std::string& text) {
    char* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (copy) std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

void freeLibraryPath() {
    std::free(libraryPath);
    libraryPath = nullptr;
    directoryLength = 0;
}

#ifdef _WIN32

// Windows: the folder reaches the loader through the DLL directory, so that the library's own
// companion libraries in that folder are found too; the library is always loaded by bare name.

wchar_t* utf8ToWide(const char* text, int length) {
    int wideLength = MultiByteToWideChar(65001, 0, text, length, nullptr, 0);
    if (wideLength <= 0) return nullptr;
    auto* wide = static_cast<wchar_t*>(std::malloc((wideLength + 1) * sizeof(wchar_t)));
    if (!wide) return nullptr;
    if (MultiByteToWideChar(65001, 0, text, length, wide, wideLength) != wideLength) {
        std::free(wide);
        return nullptr;
    }
    wide[wideLength] = L'\0';
    return wide;
}

bool wideToUtf8(const wchar_t* wide, int length, std::string& out) {
    int size = WideCharToMultiByte(65001, 0, wide, length, nullptr, 0, nullptr, nullptr);
    if (size <= 0) return false;
    out.resize(size);
    if (WideCharToMultiByte(65001, 0, wide, length, &out[0], size, nullptr, nullptr) != size) return false;
    if (length < 0 && !out.empty() && out.back() == '\0') out.pop_back();
    return true;
}

void* openLibrary() {
    wchar_t* previousDirectory = nullptr;
    bool directoryChanged = false;
    if (directoryLength != 0) {
        DWORD size = GetDllDirectoryW(0, nullptr);
        if (size > 1) {
            previousDirectory = static_cast<wchar_t*>(std::malloc(size * sizeof(wchar_t)));
            if (previousDirectory && GetDllDirectoryW(size, previousDirectory) == 0) {
                std::free(previousDirectory);
                previousDirectory = nullptr;
            }
        }
        if (wchar_t* folder = utf8ToWide(libraryPath, static_cast<int>(directoryLength))) {
            directoryChanged = SetDllDirectoryW(folder) != 0;
            std::free(folder);
        }
    }
    HMODULE handle = LoadLibraryA(TOVI_SDK_LIBRARY_FILE);
    if (directoryChanged) SetDllDirectoryW(previousDirectory);  // null restores the default
    std::free(previousDirectory);
    return handle;
}

void* resolveSymbol(void* handle, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle), name));
}

void closeLibrary(void* handle) { FreeLibrary(static_cast<HMODULE>(handle)); }

void clearSystemError() {}
void noteSystemError() {}

// "[message (code)] ", or nothing when the system has no message for the last error.
std::string systemErrorText() {
    DWORD code = GetLastError();
    wchar_t* message = nullptr;
    DWORD length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_FROM_SYSTEM, nullptr, code,
        MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), reinterpret_cast<LPWSTR>(&message), 0, nullptr);
    std::string text;
    bool converted = length > 0 && message && wideToUtf8(message, static_cast<int>(length), text);
    if (message) LocalFree(message);
    while (!text.empty() && (text.back() == '\r' || text.back() == '\n')) text.pop_back();
    if (!converted || text.empty()) return std::string();
    return "[" + text + " (" + std::to_string(static_cast<long>(code)) + ")] ";
}

bool loadedFilePath(void* handle, std::string& path) {
    wchar_t buffer[4100];
    DWORD length = GetModuleFileNameW(static_cast<HMODULE>(handle), buffer, 4100);
    return length >= 1 && length <= 4099 && wideToUtf8(buffer, static_cast<int>(length), path);
}

bool readEnvironment(const char* variable, std::string& value) {
    wchar_t* wideName = utf8ToWide(variable, -1);
    if (!wideName) return false;
    bool found = false;
    DWORD size = GetEnvironmentVariableW(wideName, nullptr, 0);
    if (size > 0) {
        auto* buffer = static_cast<wchar_t*>(std::malloc(size * sizeof(wchar_t)));
        if (buffer) {
            DWORD length = GetEnvironmentVariableW(wideName, buffer, size);
            if (length == 0) {
                value.clear();
                found = true;
            } else {
                found = length < size && wideToUtf8(buffer, static_cast<int>(length), value);
            }
            std::free(buffer);
        }
    }
    std::free(wideName);
    return found;
}

#else

// POSIX: a known folder is opened by full path; otherwise the bare file name goes through the
// dynamic loader's search (LD_LIBRARY_PATH, this module's RUNPATH, the system folders).

std::string lastLoaderError;

void clearSystemError() {
    lastLoaderError.clear();
    dlerror();
}

void noteSystemError() {
    if (const char* error = dlerror()) lastLoaderError = error;
}

void* openLibrary() {
    void* handle = dlopen(directoryLength != 0 ? libraryPath : TOVI_SDK_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL);
    if (!handle) noteSystemError();
    return handle;
}

void* resolveSymbol(void* handle, const char* name) {
    void* address = dlsym(handle, name);
    if (!address) noteSystemError();
    return address;
}

void closeLibrary(void* handle) { dlclose(handle); }

std::string systemErrorText() {
    if (lastLoaderError.empty()) return std::string();
    return "[" + lastLoaderError + "] ";
}

bool loadedFilePath(void* handle, std::string& path) {
    struct link_map* map = nullptr;
    if (dlinfo(handle, RTLD_DI_LINKMAP, &map) != 0 || !map || !map->l_name || !*map->l_name) return false;
    path = map->l_name;
    if (path[0] != '/') {
        char folder[4096];
        if (!getcwd(folder, sizeof folder)) return false;
        path = std::string(folder) + "/" + path;
    }
    return true;
}

bool readEnvironment(const char* variable, std::string& value) {
    const char* text = std::getenv(variable);
    if (!text) return false;
    value = text;
    return true;
}

#endif

void recordMissingEntry(void*, const char* name) {
    size_t length = std::strlen(name) + 1;
    char* grown = static_cast<char*>(std::realloc(missingNames, missingNamesLength + length));
    if (!grown) return;  // the name goes unrecorded; the attempt goes on
    std::memcpy(grown + missingNamesLength, name, length);
    missingNames = grown;
    missingNamesLength += length;
    ++missingCount;
}

void* resolveEntry(void* handle, const char* name) { return resolveSymbol(handle, name); }

void buildLoadReport(const char* text, int outcome) {
    try {
        std::string report = text;
        report += ' ';
        if (outcome > 0) report += std::to_string(outcome) + ". ";
        if (outcome != 0) report += systemErrorText();
        std::string path;
        if (!(libraryHandle && loadedFilePath(libraryHandle, path))) {
            path = libraryPath ? libraryPath : TOVI_SDK_LIBRARY_FILE;
        }
        report += "(" + path + ")";
        loadReport = duplicateText(report);
    } catch (const std::bad_alloc&) {
        loadReport = nullptr;
    }
}

}  // namespace

int loadSdkLibrary() {
    unloadSdkLibrary(false);
    clearSystemError();
    libraryHandle = openLibrary();
    if (!libraryHandle) {
        buildLoadReport("Error loading SDK Library.", -1);
        return -1;
    }
    int outcome = resolveSdkApi(&resolveEntry, &recordMissingEntry, libraryHandle);
    SdkApi.Tovi_incrementModuleReferenceCounter();
    const char* text;
    if (outcome == 0) {
        loadState = SdkLoadState::Loaded;
        text = "SDK library loaded correctly";
    } else {
        text = "Incorrect SDK library loaded! Number of missing functions:";
    }
    buildLoadReport(text, outcome);
    return outcome;
}

void unloadSdkLibrary(bool forgetPath) {
    std::free(loadReport);
    loadReport = nullptr;
    if (libraryHandle) {
        // No slot may point into an unloaded library.
        resetSdkApiToStubs();
        closeLibrary(libraryHandle);
        libraryHandle = nullptr;
    }
    std::free(missingNames);
    missingNames = nullptr;
    missingNamesLength = 0;
    missingCount = 0;
    loadState = SdkLoadState::Configured;
    if (forgetPath) freeLibraryPath();
}

void setSdkLibraryLocation(const char* folder, bool isSdkRoot) {
    freeLibraryPath();
    if (!folder) return;
    size_t length = std::strlen(folder);
    while (length > 0 && (folder[length - 1] == '/' || folder[length - 1] == '\\')) --length;
    if (length == 0) return;
    try {
        std::string path(folder, length);
        if (isSdkRoot) path += std::string(folderSeparator) + binFolder;
        size_t folderLength = path.size();
        path += std::string(folderSeparator) + TOVI_SDK_LIBRARY_FILE;
        libraryPath = duplicateText(path);
        if (libraryPath) directoryLength = static_cast<uint32_t>(folderLength);
    } catch (const std::bad_alloc&) {
    }
}

bool readSdkLocationFromEnvironment(const char* variable, bool isSdkRoot) {
    std::string value;
    try {
        if (!readEnvironment(variable, value)) return false;
    } catch (const std::bad_alloc&) {
        return false;
    }
    setSdkLibraryLocation(value.c_str(), isSdkRoot);
    return true;
}

int ensureSdkLoaded() {
    switch (loadState) {
        case SdkLoadState::Loaded:
        case SdkLoadState::Accepted:
            return 0;
        case SdkLoadState::Configured:
            return loadSdkLibrary();
        case SdkLoadState::SearchDefault:
            break;
    }
    // An incomplete library counts as a failure here, and the search goes on.
    if (readSdkLocationFromEnvironment("TOVI_APPSDK_BIN", false) && loadSdkLibrary() == 0) return 0;
    if (readSdkLocationFromEnvironment("TOVI_SDK", true) && loadSdkLibrary() == 0) return 0;
    freeLibraryPath();
    return loadSdkLibrary();
}

SdkLoadState sdkLoadState() { return loadState; }
void setSdkLoadState(SdkLoadState state) { loadState = state; }
const char* sdkLoadReport() { return loadReport; }
uint32_t missingEntryCount() { return missingCount; }
const char* missingEntryNames() { return missingNames; }
size_t missingEntryNamesLength() { return missingNamesLength; }
bool sdkLibraryLoaded() { return libraryHandle != nullptr; }
const char* sdkLibraryPath() { return libraryPath; }
uint32_t sdkDirectoryLength() { return directoryLength; }

}  // namespace tovi
