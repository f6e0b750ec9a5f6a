// Library-wide state.
#pragma once

namespace tovi::ref {

// Each load of the library by a module adds one reference.
int addModuleReference();
int moduleReferenceCount();
void resetModuleReferences();

// Host pointer slots that every renderer and server carries.
constexpr int userDataSlotCount = 8;

}  // namespace tovi::ref
