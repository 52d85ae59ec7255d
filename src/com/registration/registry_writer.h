#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "krnqb/outside_world.h"

namespace krnqb::com {

/// A value of any type, as the registry stores it.
struct StoredValue {
  std::uint32_t type = 0;
  std::vector<std::byte> bytes;

  bool operator==(const StoredValue&) const = default;
};

/// Write access to Software\Classes of a hive, where classes are registered. A failure throws Error with the
/// system's error code as an HRESULT.
class RegistryWriter {
 public:
  virtual ~RegistryWriter() = default;

  /// Creates the key and its parents unless they exist.
  virtual void Create(RegistryHive hive, const std::wstring& key) = 0;
  /// Writes a text value of an existing key; an empty name is the unnamed value.
  virtual void Write(RegistryHive hive, const std::wstring& key, const std::wstring& name,
                     const std::wstring& value) = 0;
  /// Writes back a value that `Read` returned.
  virtual void Restore(RegistryHive hive, const std::wstring& key, const std::wstring& name,
                       const StoredValue& value) = 0;
  /// Returns a value; absent if the key or the value is missing.
  virtual std::optional<StoredValue> Read(RegistryHive hive, const std::wstring& key,
                                          const std::wstring& name) = 0;
  virtual bool Has(RegistryHive hive, const std::wstring& key) = 0;
  /// Removes a value if it exists.
  virtual void RemoveValue(RegistryHive hive, const std::wstring& key, const std::wstring& name) = 0;
  /// Removes a key that has neither subkeys nor values; leaves any other key.
  virtual void RemoveEmptyKey(RegistryHive hive, const std::wstring& key) = 0;
};

/// Returns write access to the system's registry.
std::unique_ptr<RegistryWriter> SystemRegistryWriter();

}  // namespace krnqb::com
