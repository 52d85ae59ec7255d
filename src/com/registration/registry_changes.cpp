#include "com/registration/registry_changes.h"

#include "krnqb/error.h"

namespace krnqb::com {

RegistryChanges::~RegistryChanges() {
  for (; !changes_.empty(); changes_.pop_back()) {
    try {
      Undo(changes_.back());
    } catch (...) {
      // The failure that made the changes be undone is the one to report.
    }
  }
}

void RegistryChanges::Create(const std::wstring& key) {
  if (registry_.Has(hive_, key)) return;
  RecordCreation(key);
  registry_.Create(hive_, key);
}

// Records outer keys first, so that they are removed last.
void RegistryChanges::RecordCreation(const std::wstring& key) {
  const std::size_t end = key.find_last_of(L'\\');
  if (end != std::wstring::npos && !registry_.Has(hive_, key.substr(0, end)))
    RecordCreation(key.substr(0, end));
  changes_.push_back({key, std::nullopt, std::nullopt});
}

void RegistryChanges::Write(const std::wstring& key, const std::wstring& name, const std::wstring& value) {
  changes_.push_back({key, name, registry_.Read(hive_, key, name)});
  registry_.Write(hive_, key, name, value);
}

void RegistryChanges::Undo(const Change& change) {
  if (!change.name) {
    registry_.RemoveEmptyKey(hive_, change.key);
  } else if (change.before) {
    registry_.Restore(hive_, change.key, *change.name, *change.before);
  } else {
    registry_.RemoveValue(hive_, change.key, *change.name);
  }
}

}  // namespace krnqb::com
