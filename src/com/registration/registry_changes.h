#pragma once

#include <optional>
#include <string>
#include <vector>

#include "com/registration/registry_writer.h"

namespace krnqb::com {

/// Writes to Software\Classes of one hive. Unless `Keep` is called, the destructor undoes every change, the
/// last one first: it removes the keys that were created, unless somebody else uses them by then, and
/// restores the values that were overwritten. What cannot be undone is left.
class RegistryChanges {
 public:
  /// `registry` must outlive this object.
  RegistryChanges(RegistryWriter& registry, RegistryHive hive) noexcept : registry_(registry), hive_(hive) {}
  RegistryChanges(const RegistryChanges&) = delete;
  RegistryChanges& operator=(const RegistryChanges&) = delete;
  ~RegistryChanges();

  /// Creates the key and its parents unless they exist.
  void Create(const std::wstring& key);
  /// Writes a text value of an existing key; an empty name is the unnamed value.
  void Write(const std::wstring& key, const std::wstring& name, const std::wstring& value);
  /// Makes the changes permanent.
  void Keep() noexcept { changes_.clear(); }

 private:
  struct Change {
    std::wstring key;
    std::optional<std::wstring> name;   // the value that was written; absent: the key was created
    std::optional<StoredValue> before;  // what the value was; absent: it was missing
  };

  void RecordCreation(const std::wstring& key);
  void Undo(const Change& change);

  RegistryWriter& registry_;
  RegistryHive hive_;
  std::vector<Change> changes_;
};

}  // namespace krnqb::com
