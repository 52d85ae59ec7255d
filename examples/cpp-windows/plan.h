#pragma once

#include "named_object.h"

/// A plan file as an XML document.
class Plan {
 public:
  Plan();

  /// Returns the object through which the component reads and changes the plan. The plan must outlive it.
  IDispatchPtr Object();

  /// Writes the plan back to the file from which the component opened it.
  void Save() const;

 private:
  _variant_t Open(const _variant_t& file);
  IDispatchPtr Tables();
  IDispatchPtr Table(const _variant_t& id);
  void Take(const _variant_t& changedTables);
  NamedObject Find(const _variant_t& id) const;

  NamedObject document_;
  _variant_t file_;
};
