#pragma once

#include <string>
#include <string_view>

#include "cli/workplace.h"

namespace krnqb::cli::tests {

/// A company with transactions in every month of 2002 and a plan from January 2003, with nothing in the way
/// of an import, in a folder of their own. The destructor removes it.
class HealthyPair {
 public:
  HealthyPair();

  std::string File(std::string_view name) const { return (folder_ / name).string(); }
  std::string Company() const { return File("garden.qbw"); }
  std::string Plan() const { return File("garden.kpf"); }

  /// Replaces the first occurrence of a part of the plan's text. Fails the test if the plan does not have it.
  void ChangePlan(std::string_view part, std::string_view replacement) const;
  /// Loads records into the company, such as "<AccountRet>...</AccountRet>".
  void Load(std::string_view response, std::string_view records) const;
  /// Imports accounts and amounts, with more options.
  ProgramRun Import(const Words& more = {}) const;
  /// Runs `krnqb doctor` on the pair, with more options.
  ProgramRun Doctor(const Words& more = {}) const;

 private:
  krnqb::tests::TemporaryFolder folder_;
};

}  // namespace krnqb::cli::tests
