#include "core/library.h"

#include <atomic>

namespace tovi::ref {

namespace {
std::atomic<int> moduleReferences{0};
}

int addModuleReference() { return ++moduleReferences; }
int moduleReferenceCount() { return moduleReferences.load(); }
void resetModuleReferences() { moduleReferences.store(0); }

}  // namespace tovi::ref
