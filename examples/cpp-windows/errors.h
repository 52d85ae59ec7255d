#pragma once

#include <comdef.h>

#include <string>

/// Throws a _com_error with the object's own description if a call to it failed.
void Check(HRESULT result, IUnknown* object = nullptr);

/// Returns the error as a user reads it: "the description (800A005B)".
std::string MessageOf(const _com_error& error);

/// Returns a text in UTF-8.
std::string Utf8(const _bstr_t& text);
