#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/com_values.h"
#include "host/late_bound.h"
#include "host/plan.h"
#include "krn6_qb2002.h"

namespace krnqb::testing {

using Exchange = Held<_QBDataExchange>;

/// Creates a component through COM; fails the test if that fails.
Exchange NewExchange();
/// The same for late-bound calls.
LateBound NewLateBoundExchange();

/// Returns the HRESULT of a run-time error.
constexpr HRESULT RunTimeError(int number) {
  return static_cast<HRESULT>(0x800A0000U + static_cast<unsigned>(number));
}

/// Sets an environment variable of the process for the test processor; restores it when destroyed.
class Variable {
 public:
  Variable(const wchar_t* name, std::wstring_view value);
  ~Variable();
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  std::wstring name_;
  std::wstring before_;
  bool wasThere_;
};

/// Points the test processor at the recording with this name in the recordings folder.
class Replaying : public Variable {
 public:
  explicit Replaying(std::wstring_view recording)
      : Variable(L"KRNQB_RECORDING", L"recordings\\" + std::wstring(recording) + L".jsonl") {}
};

/// Supplies the test processor with the test's own responses by request number; the company is
/// "C:\Books\test.qbw".
class Answering {
 public:
  Answering(int major, std::vector<std::pair<int, std::string>> answers);

 private:
  Variable variable_;
};

/// Returns a response of QuickBooks to a request for accounts: `records` of name and Sublevel.
std::string AccountsAnswer(int request, const std::vector<std::string>& records);
/// Returns responses to requests 100 and 101 of a company that can be imported.
std::vector<std::pair<int, std::string>> UsualAnswers();

/// One of the imports recorded with the command line.
struct RecordedImport {
  std::string version;
  std::string product;
  std::string balances;

  std::string Name() const { return version + '-' + product + '-' + balances; }
  /// Returns the cells of the plan after the import by the command line.
  std::string Cells() const;
  /// Returns the events raised during the import.
  std::vector<std::string> Events() const;
};
std::vector<RecordedImport> RecordedImports();

/// Sets the options of such an import. The caller keeps the plan.
void Configure(const Exchange& exchange, const RecordedImport& import, IDispatch* plan);
void Configure(const LateBound& exchange, const RecordedImport& import, IDispatch* plan);

/// Splits a text into lines.
std::vector<std::string> LinesOf(const std::string& text);

/// Returns the content of a file; empty if it is missing.
std::string FileText(const std::string& path);

}  // namespace krnqb::testing
