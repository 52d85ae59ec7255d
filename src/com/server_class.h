#pragma once

#include "com/registration/component_classes.h"
#include "com/values/com_pointer.h"

namespace krnqb::com {

/// A class that hosts can create, with what creates it.
struct ServerClass : ComponentClass {
  ComPointer<IUnknown> (*create)();
};

}  // namespace krnqb::com
