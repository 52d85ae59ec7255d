#pragma once

#include <memory>
#include <string>
#include <utility>

#include "fakes/journal.h"
#include "krnqb/variant.h"

namespace krnqb::fakes {

/// A host's object that records a line when it is released.
class ReleasableObject : public Object {
 public:
  ReleasableObject(std::shared_ptr<Journal> journal, std::string lineAtRelease)
      : journal_(std::move(journal)), line_(std::move(lineAtRelease)) {}
  ~ReleasableObject() override { journal_->Note(line_); }
  ReleasableObject(const ReleasableObject&) = delete;
  ReleasableObject& operator=(const ReleasableObject&) = delete;

 private:
  std::shared_ptr<Journal> journal_;
  std::string line_;
};

}  // namespace krnqb::fakes
