// Library-wide state.
#pragma once

namespace tovi::ref {

// Each load of the library by a module adds one reference.
int addModuleReference();
int moduleReferenceCount();
void resetModuleReferences();

}  // namespace tovi::ref
