#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::cli {

/// What a check says about an import.
enum class Verdict : std::uint8_t {
  Ok,    ///< nothing is in its way
  Warn,  ///< it runs, but something has to be looked at
  Fail   ///< it would write nothing
};

/// Returns "ok", "warn" or "fail".
std::string_view VerdictWord(Verdict verdict) noexcept;

/// One check that was made.
struct CheckLine {
  std::string check;  ///< its name, such as "fiscal-month"
  Verdict verdict = Verdict::Ok;
  std::string found;     ///< what was found, without a full stop
  std::string whatToDo;  ///< empty if the verdict is ok
};

/// A check that was not made.
struct OmittedCheck {
  std::string check;
  std::string reason;  ///< such as "the plan cannot be opened"
};

/// Collects the checks of a company and a plan. Each check is made once, or left out with a reason.
class Checkup {
 public:
  void Ok(std::string_view check, std::string found);
  void Warn(std::string_view check, std::string found, std::string whatToDo);
  void Fail(std::string_view check, std::string found, std::string whatToDo);
  /// Adds a failed check from the exception being handled. What to do is that of a `Failure` or the end of a
  /// description that says it (kind `Unspecified`), else `whatToDo`.
  void FailCaught(std::string_view check, std::string_view whatToDo);
  void Omit(std::initializer_list<std::string_view> checks, std::string_view reason);

  /// Returns the checks that were made, in order.
  const std::vector<CheckLine>& Lines() const noexcept { return lines_; }
  const std::vector<OmittedCheck>& Omitted() const noexcept { return omitted_; }
  /// Returns the worst verdict of all lines.
  Verdict Worst() const noexcept;
  /// Returns how many lines have a verdict.
  std::size_t Count(Verdict verdict) const noexcept;

 private:
  std::vector<CheckLine> lines_;
  std::vector<OmittedCheck> omitted_;
};

/// Returns the first three texts, joined by "; ", and how many more there are.
std::string FirstOf(const std::vector<std::string>& texts);

}  // namespace krnqb::cli
