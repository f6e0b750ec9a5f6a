// Small strings shared by the repr functions of the module's types, created once and released
// by tovi.close().
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

namespace tovi {

enum class ReprString {
    OpenParen,          // "("
    OpenParenBracket,   // "(["
    CloseParen,         // ")"
    CloseBracketParen,  // "])"
    CommaSpace,         // ", "
    Quote,              // "'"
    QuoteColonBrace,    // "': {"
    QuoteColonSpace,    // "': "
    DoubleCloseBrace,   // "}}"
    QuoteColonBracket,  // "': ["
    CloseBracketBrace,  // "]}"
    Count
};

int createReprStrings();
void releaseReprStrings();
// Borrowed; created again if tovi.close() released it. Null with the Python error set on failure.
PyObject* reprString(ReprString which);

}  // namespace tovi
