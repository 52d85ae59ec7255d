#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "krnqb/error.h"

namespace krnqb::fakes {

/// Records the calls of all fakes in order, one line each. A test can plan an action for a line, such as an
/// error or a host's handler.
class Journal {
 public:
  using Action = std::function<void()>;

  /// Records a line, then runs the actions planned for it, which may throw.
  void Record(const std::string& line) {
    lines_.push_back(line);
    std::vector<Action> due;
    for (Plan& plan : plans_) {
      if (plan.line != line) continue;
      ++plan.seen;
      if (plan.occurrence == everyTime || plan.occurrence == plan.seen) due.push_back(plan.action);
    }
    for (const Action& action : due) action();
  }

  /// Records a line without running actions, for destructors.
  void Note(const std::string& line) { lines_.push_back(line); }

  /// Plans an action for every future record of a line.
  void On(const std::string& line, Action action) {
    plans_.push_back({line, everyTime, 0, std::move(action)});
  }
  /// Plans an action for one future record of a line; `occurrence` 1 is the next one.
  void OnOccurrence(const std::string& line, int occurrence, Action action) {
    plans_.push_back({line, occurrence, 0, std::move(action)});
  }
  void Fail(const std::string& line, const Error& error) {
    On(line, [error] { throw error; });
  }
  void FailOccurrence(const std::string& line, int occurrence, const Error& error) {
    OnOccurrence(line, occurrence, [error] { throw error; });
  }

  /// Removes all planned actions.
  void Heal() { plans_.clear(); }
  /// Removes all recorded lines.
  void Clear() { lines_.clear(); }

  /// Returns the recorded lines, each with a line feed at its end.
  std::string Text() const {
    std::string text;
    for (const std::string& line : lines_) text += line + "\n";
    return text;
  }

  int Count(const std::string& line) const {
    int count = 0;
    for (const std::string& recorded : lines_) {
      if (recorded == line) ++count;
    }
    return count;
  }

 private:
  static constexpr int everyTime = 0;
  struct Plan {
    std::string line;
    int occurrence;
    int seen;
    Action action;
  };
  std::vector<std::string> lines_;
  std::vector<Plan> plans_;
};

}  // namespace krnqb::fakes
