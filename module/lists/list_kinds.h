// The element list kinds.
#pragma once

#include "lists/typed_list.h"

namespace tovi {

extern TypedListType IntListType;
extern TypedListType FloatListType;
extern TypedListType VectorListType;
extern TypedListType ColorListType;
extern TypedListType TransformListType;

}  // namespace tovi
