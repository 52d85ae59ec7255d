#pragma once

#include <ole2.h>

#include "krnqb/variant.h"

namespace krnqb::com {

// Values on their way in, by what they are for.

/// An object for one of the component's slots: Nothing, or the host's object. Error 13 for any other value.
Variant HostObjectOf(const VARIANT& value);
Variant HostObjectOf(IUnknown* object);

/// A request's text: a text, a number or truth value to be read as text, or an object's default value.
/// Nothing stays Nothing, and an object without a default value stays an object: neither has a text. Error 13
/// for a value that is no text either, such as an array or Null.
Variant RequestOf(const VARIANT& value);

/// An answer's text or its XML element. An object that is neither an element nor has a default value, and
/// what has no text, is the empty text.
Variant AnswerOf(const VARIANT& value);

/// A selection: an XML element or Nothing. Error 13 for any other object.
Variant SelectionOf(IDispatch* object);

}  // namespace krnqb::com
