// The test-control state: the recorder of each entry's last call, results injected for the next
// call of an entry, and switches for states that are hard to reach for real.
#pragma once

#include <optional>
#include <string>

#include <nlohmann/json.hpp>

namespace tovi::ref {

bool recorderEnabled();
void setRecorderEnabled(bool enabled);
// Keeps `arguments` as the last call of `entry`.
void recordCall(const char* entry, nlohmann::json arguments);
// {"entry": name, "args": {...}} of the last recorded call, or nothing.
std::optional<std::string> lastCall(const char* entry);
void clearCalls();

// The next call of `entry` answers `result` instead of doing its work (entries that support it
// say so).
void injectResult(const char* entry, nlohmann::json result);
std::optional<nlohmann::json> takeInjectedResult(const char* entry);

int drGeneration();
void setDRGeneration(int generation);

void resetTestControl();

}  // namespace tovi::ref

// Records a call when the recorder is on; the arguments are built only then, and a failure to
// record never reaches the caller.
#define TOVI_RECORD(entry, ...)                                                   \
    do {                                                                          \
        if (::tovi::ref::recorderEnabled()) {                                     \
            try {                                                                 \
                ::tovi::ref::recordCall(entry, nlohmann::json(__VA_ARGS__));      \
            } catch (...) {                                                       \
            }                                                                     \
        }                                                                         \
    } while (0)
