#pragma once

#include <unknwn.h>

#include "com/values/com_pointer.h"

namespace krnqb::com {

/// A class that hosts can create.
struct ServerClass {
  const CLSID& classId;
  const wchar_t* programName;  ///< without a version
  const wchar_t* description;
  ComPointer<IUnknown> (*create)();
};

}  // namespace krnqb::com
