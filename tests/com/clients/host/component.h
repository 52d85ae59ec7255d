#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/com_values.h"
#include "host/host_plan.h"
#include "host/late_bound.h"
#include "krn6_qb2002.h"

namespace krnqb::testing {

using Exchange = Held<_QBDataExchange>;

/// A new component, as COM makes it; the test fails when it does not.
Exchange NewExchange();
/// The same, to be called by names.
LateBound NewLateBoundExchange();

/// The HRESULT of a run-time error.
constexpr HRESULT RunTimeError(int number) {
  return static_cast<HRESULT>(0x800A0000U + static_cast<unsigned>(number));
}

/// Sets a variable of the process, for the test processor; gives it back as it was when it ends.
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

/// Sets the test processor to a recording of this name in the folder of recordings.
class Replaying : public Variable {
 public:
  explicit Replaying(std::wstring_view recording)
      : Variable(L"KRNQB_RECORDING", L"recordings\\" + std::wstring(recording) + L".jsonl") {}
};

/// Sets the test processor to answers of the test's own, by request number; company "C:\Books\test.qbw".
class Answering {
 public:
  Answering(int major, std::vector<std::pair<int, std::string>> answers);

 private:
  Variable variable_;
};

/// An answer of QuickBooks to a request for accounts: records of name and Sublevel.
std::string AccountsAnswer(int request, const std::vector<std::string>& records);
/// Answers to requests 100 and 101 as a company has them that can be imported from.
std::vector<std::pair<int, std::string>> UsualAnswers();

/// One of the imports that were made by the command line.
struct RecordedImport {
  std::string version;
  std::string product;
  std::string balances;

  std::string Name() const { return version + '-' + product + '-' + balances; }
  /// The cells of the plan after the import by the command line.
  std::string Cells() const;
  /// The events that were raised meanwhile.
  std::vector<std::string> Events() const;
};
std::vector<RecordedImport> RecordedImports();

/// Sets the options of such an import. The plan stays the caller's.
void Configure(const Exchange& exchange, const RecordedImport& import, IDispatch* plan);
void Configure(const LateBound& exchange, const RecordedImport& import, IDispatch* plan);

/// The lines of a text.
std::vector<std::string> LinesOf(const std::string& text);

/// The text of a file; empty when there is none.
std::string FileText(const std::string& path);

}  // namespace krnqb::testing
