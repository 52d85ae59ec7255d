#pragma once

#include <ole2.h>

#include <string>

#include "com/values/com_pointer.h"

namespace krnqb::com {

/// Returns the full path of this DLL.
std::wstring OwnPath();

/// Returns the type library embedded in this DLL.
ComPointer<ITypeLib> OwnTypeLibrary();

/// Returns the type information of one of its classes or interfaces (for a dual interface, its dispatch
/// view).
ComPointer<ITypeInfo> TypeInformationOf(REFGUID identifier);

}  // namespace krnqb::com
