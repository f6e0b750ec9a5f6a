// The element list kinds.
#pragma once

#include "lists/typed_list.h"

namespace tovi {

extern TypedListType IntListType;
extern TypedListType FloatListType;

}  // namespace tovi
