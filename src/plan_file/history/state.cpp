#include "plan_file/history/state.h"

#include <fmt/format.h>

#include "krnqb/error.h"
#include "plan_file/history/digest.h"
#include "support/path_text.h"

namespace krnqb::plan_file {
namespace {

std::optional<HistoryEntry> Described(const HistoryFolder& folder, std::int32_t number) {
  try {
    return folder.Describe(number);
  } catch (const Error&) {
    return std::nullopt;
  }
}

bool IsKeptAs(const HistoryFolder& folder, std::int32_t number, std::string_view digest) {
  try {
    return DigestOf(folder.Version(number)) == digest;
  } catch (const Error&) {
    return false;
  }
}

// Whether the last entry keeps the plan that is still there.
bool DidNotHappen(const HistoryFolder& folder, std::int32_t number, const std::optional<HistoryEntry>& last,
                  std::string_view planDigest) {
  if (!last) return IsKeptAs(folder, number, planDigest);
  return last->kept.digest == planDigest && last->written.digest != planDigest;
}

}  // namespace

HistoryState StateOf(const HistoryFolder& folder, std::string_view planDigest) {
  HistoryState state;
  state.plan.digest = planDigest;
  state.asWritten = true;
  state.numbers = folder.Numbers();
  if (state.numbers.empty()) return state;

  std::optional<HistoryEntry> last = Described(folder, state.numbers.back());
  std::optional<PlanVersion> keptLast;
  if (DidNotHappen(folder, state.numbers.back(), last, planDigest)) {
    state.next = state.numbers.back();
    state.numbers.pop_back();
    if (state.numbers.empty()) return state;
    if (last) keptLast = last->kept;
    last = Described(folder, state.numbers.back());
  } else {
    state.next = state.numbers.back() + 1;
  }
  if (!last) {
    state.asWritten = false;
    state.fault =
        fmt::format("{} is missing or damaged", TextOfPath(folder.DescriptionFile(state.numbers.back())));
    state.plan.import = std::nullopt;
    return state;
  }
  const PlanVersion& written = last->written;
  state.asWritten = written.digest == planDigest;
  if (state.asWritten) {
    state.plan = written;
  } else if (keptLast) {
    state.plan = *keptLast;
  } else {
    state.plan.import = written.import;
    state.plan.edited = true;
  }
  return state;
}

}  // namespace krnqb::plan_file
