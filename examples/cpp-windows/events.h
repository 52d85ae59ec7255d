#pragma once

#include "pointers.h"

/// Prints the component's progress while it exists.
class ProgressPrinting {
 public:
  /// Connects to a component's events; `eventsId` is its events interface.
  ProgressPrinting(IUnknown* component, const IID& eventsId);
  ~ProgressPrinting();
  ProgressPrinting(const ProgressPrinting&) = delete;
  ProgressPrinting& operator=(const ProgressPrinting&) = delete;

 private:
  IConnectionPointPtr point_;
  DWORD cookie_ = 0;
};
