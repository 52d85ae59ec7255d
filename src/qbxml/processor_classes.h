#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "krnqb/request_processor.h"

namespace krnqb {

/// A class of QuickBooks' request processor, and how to create one of it on this machine.
struct ProcessorClass {
  std::string name;  ///< as messages show it
  /// Returns a new processor, never null. Throws Error with the HRESULT as its number and the system's text.
  std::function<std::unique_ptr<RequestProcessor>()> create;
  /// Returns whether the class is registered only for programs of the other width (32 or 64 bits).
  std::function<bool()> onlyForOtherWidth;
};

/// Returns a processor of the first class that can be created. Throws Error 429 if none can: the
/// description lists every class with its reason and result, "A: Class not registered (80040154), B: ...".
std::unique_ptr<RequestProcessor> CreateFirstProcessor(const std::vector<ProcessorClass>& classes);

/// Returns the names of the classes that only programs of the other width can create.
std::vector<std::string> ClassesForOtherWidth(const std::vector<ProcessorClass>& classes);

}  // namespace krnqb
