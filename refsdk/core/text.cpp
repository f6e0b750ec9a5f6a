#include "core/text.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "core/memory.h"

namespace tovi::ref {

const char unsupportedText[] = "Not supported by the reference SDK yet.";

bool setText(ToviCharString* record, std::string_view text) {
    if (!record) return false;
    releaseText(record);
    char* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (!copy) return false;
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    record->data = copy;
    record->length = text.size();
    countTextCreated();
    return true;
}

const char* textContent(const ToviCharString* record) { return record && record->data ? record->data : nullptr; }

size_t textLength(const ToviCharString* record) { return record && record->data ? record->length : 0; }

void releaseText(ToviCharString* record) {
    if (!record || !record->data) return;
    std::free(record->data);
    record->data = nullptr;
    record->length = 0;
    countTextReleased();
}

ToviVector* newTextVector(std::vector<std::string> texts) {
    auto* vector = new (std::nothrow) ToviVector{ToviVector::Kind::Texts, std::move(texts), {}, 0};
    if (vector) countVectorCreated();
    return vector;
}

ToviVector* newValueVector(const void* values, size_t count, size_t valueSize) {
    try {
        auto* vector = new ToviVector{ToviVector::Kind::Values, {}, {}, valueSize};
        auto* bytes = static_cast<const unsigned char*>(values);
        vector->values.assign(bytes, bytes + count * valueSize);
        countVectorCreated();
        return vector;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

int vectorSize(const ToviVector* vector) {
    if (!vector) return 0;
    size_t size = vector->kind == ToviVector::Kind::Texts ? vector->texts.size() : vector->values.size() / vector->valueSize;
    return static_cast<int>(size);
}

const void* vectorElement(const ToviVector* vector, int index) {
    if (!vector || index < 0 || index >= vectorSize(vector)) return nullptr;
    if (vector->kind == ToviVector::Kind::Texts) return vector->texts[index].c_str();
    return vector->values.data() + static_cast<size_t>(index) * vector->valueSize;
}

void releaseVector(ToviVector* vector) {
    if (!vector) return;
    delete vector;
    countVectorReleased();
}

void reportUnsupported(ToviCharString* errorText) {
    if (errorText) setText(errorText, unsupportedText);
}

}  // namespace tovi::ref
