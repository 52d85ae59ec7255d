#pragma once

#include <ole2.h>

#include <string>

#include "com/values/com_pointer.h"

namespace krnqb::com {

/// The full path of this library's file.
std::wstring OwnPath();

/// The type library that this library carries.
ComPointer<ITypeLib> OwnTypeLibrary();

/// What the type library says of one of its classes or interfaces (of a dual interface, its dispatch side).
ComPointer<ITypeInfo> TypeInformationOf(REFGUID identifier);

}  // namespace krnqb::com
