#pragma once

#include <ole2.h>

#include "krnqb/variant.h"

namespace krnqb::com {

// Conversions of incoming values, by purpose.

/// Converts a value for one of the component's object slots: the host's object, or Nothing for Nothing, Empty
/// and Null. Throws Error 13 for any other value.
Variant HostObjectOf(const VARIANT& value);
Variant HostObjectOf(IUnknown* object);

/// Converts a request: a text, a number or Boolean converted to text, or an object's default value. Nothing
/// stays Nothing, and an object without a default value stays an object; neither has a text. Throws Error 13
/// for any other value without a text, such as an array or Null.
Variant RequestOf(const VARIANT& value);

/// Converts a response to its text or its XML element. A value without a text, and an object that is neither
/// an element nor has a default value, become the empty text.
Variant AnswerOf(const VARIANT& value);

/// Converts a selection: an XML element or Nothing. Throws Error 13 for any other object.
Variant SelectionOf(IDispatch* object);

}  // namespace krnqb::com
