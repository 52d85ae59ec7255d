#pragma once

#include <ole2.h>

#include <memory>

#include "com/values/com_pointer.h"
#include "krnqb/request_processor.h"

namespace krnqb::com {

/// Returns a request processor that calls an object by the names of its members. Its destructor ends the
/// session and closes the connection.
std::unique_ptr<RequestProcessor> NamedProcessor(ComPointer<IDispatch> object);

}  // namespace krnqb::com
