#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

namespace tovi {

// tovi.Language: a static class of language-code constants, never instantiated.
extern PyTypeObject LanguageType;

// Name, docstring and flags, before the type is readied.
void setUpLanguageType();
// Fills the class dictionary after the type is ready.
int fillLanguageConstants();

}  // namespace tovi
