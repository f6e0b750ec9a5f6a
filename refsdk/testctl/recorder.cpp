#include "testctl/recorder.h"

#include <atomic>
#include <map>
#include <mutex>

namespace tovi::ref {

namespace {

std::atomic<bool> recording{false};
std::atomic<int> generation{2};
std::mutex stateMutex;
std::map<std::string, nlohmann::json> calls;
std::map<std::string, nlohmann::json> injected;

}  // namespace

bool recorderEnabled() { return recording.load(std::memory_order_relaxed); }
void setRecorderEnabled(bool enabled) { recording.store(enabled); }

void recordCall(const char* entry, nlohmann::json arguments) {
    std::lock_guard<std::mutex> lock(stateMutex);
    calls[entry] = nlohmann::json{{"entry", entry}, {"args", std::move(arguments)}};
}

std::optional<std::string> lastCall(const char* entry) {
    std::lock_guard<std::mutex> lock(stateMutex);
    auto found = calls.find(entry);
    if (found == calls.end()) return std::nullopt;
    return found->second.dump();
}

void clearCalls() {
    std::lock_guard<std::mutex> lock(stateMutex);
    calls.clear();
}

void injectResult(const char* entry, nlohmann::json result) {
    std::lock_guard<std::mutex> lock(stateMutex);
    injected[entry] = std::move(result);
}

std::optional<nlohmann::json> takeInjectedResult(const char* entry) {
    std::lock_guard<std::mutex> lock(stateMutex);
    auto found = injected.find(entry);
    if (found == injected.end()) return std::nullopt;
    nlohmann::json result = std::move(found->second);
    injected.erase(found);
    return result;
}

int drGeneration() { return generation.load(); }
void setDRGeneration(int value) { generation.store(value); }

void resetTestControl() {
    setRecorderEnabled(false);
    setDRGeneration(2);
    std::lock_guard<std::mutex> lock(stateMutex);
    calls.clear();
    injected.clear();
}

}  // namespace tovi::ref
