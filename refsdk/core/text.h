// SDK text records and vectors as the library fills them for its callers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tovi_sdk.h"

// The library's own definition of the opaque vector handle.
struct ToviVector {
    enum class Kind { Texts, Values } kind;
    std::vector<std::string> texts;
    std::vector<unsigned char> values;
    size_t valueSize = 0;
};

namespace tovi::ref {

// Fills a caller's record with a copy of `text` (releasing what it held). False when out of memory.
bool setText(ToviCharString* record, std::string_view text);
const char* textContent(const ToviCharString* record);
size_t textLength(const ToviCharString* record);
// Releasing a zeroed or already released record does nothing.
void releaseText(ToviCharString* record);

ToviVector* newTextVector(std::vector<std::string> texts);
template <typename T>
ToviVector* newValueVector(const std::vector<T>& values);
ToviVector* newValueVector(const void* values, size_t count, size_t valueSize);
int vectorSize(const ToviVector* vector);
const void* vectorElement(const ToviVector* vector, int index);
void releaseVector(ToviVector* vector);

template <typename T>
ToviVector* newValueVector(const std::vector<T>& values) {
    return newValueVector(values.data(), values.size(), sizeof(T));
}

// The text of every failing entry whose capability the reference SDK does not have yet.
extern const char unsupportedText[];
// Puts unsupportedText into an error record, when there is one.
void reportUnsupported(ToviCharString* errorText);

}  // namespace tovi::ref
