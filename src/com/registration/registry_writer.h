#pragma once

#include <memory>
#include <string>

#include "krnqb/outside_world.h"

namespace krnqb::com {

/// Write access to the part of the registry in which classes are registered, Software\Classes of a hive.
/// Every failure is thrown as Error with the system's number as an HRESULT.
class RegistryWriter {
 public:
  virtual ~RegistryWriter() = default;

  /// Makes the key, with its parents, when it is not there.
  virtual void Create(RegistryHive hive, const std::wstring& key) = 0;
  /// Writes a text; an empty name is the unnamed value. The key is there.
  virtual void Write(RegistryHive hive, const std::wstring& key, const std::wstring& name,
                     const std::wstring& value) = 0;
  virtual bool Has(RegistryHive hive, const std::wstring& key) = 0;
  /// Removes a value; one that is not there is no failure.
  virtual void RemoveValue(RegistryHive hive, const std::wstring& key, const std::wstring& name) = 0;
  /// Removes a key that has neither keys nor values in it; leaves any other, and one that is not there.
  virtual void RemoveEmptyKey(RegistryHive hive, const std::wstring& key) = 0;
};

/// The system's registry.
std::unique_ptr<RegistryWriter> SystemRegistryWriter();

}  // namespace krnqb::com
