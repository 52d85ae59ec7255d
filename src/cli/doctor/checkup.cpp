#include "cli/doctor/checkup.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "cli/console/failure.h"
#include "support/error_handling.h"

namespace krnqb::cli {
namespace {

std::string WithoutFullStop(std::string text) {
  if (text.ends_with('.') && !text.ends_with("..")) text.pop_back();
  return text;
}

// Parts a description that ends with what to do.
void Part(std::string& description, std::string& whatToDo) {
  constexpr std::string_view semicolon = "; ";
  const std::size_t position = description.rfind(semicolon);
  if (position == std::string::npos) return;
  whatToDo = description.substr(position + semicolon.size());
  description.resize(position);
}

}  // namespace

std::string_view VerdictWord(Verdict verdict) noexcept {
  switch (verdict) {
    case Verdict::Ok:
      return "ok";
    case Verdict::Warn:
      return "warn";
    case Verdict::Fail:
      break;
  }
  return "fail";
}

void Checkup::Ok(std::string_view check, std::string found) {
  lines_.push_back({std::string(check), Verdict::Ok, std::move(found), {}});
}

void Checkup::Warn(std::string_view check, std::string found, std::string whatToDo) {
  lines_.push_back({std::string(check), Verdict::Warn, std::move(found), std::move(whatToDo)});
}

void Checkup::Fail(std::string_view check, std::string found, std::string whatToDo) {
  lines_.push_back({std::string(check), Verdict::Fail, std::move(found), std::move(whatToDo)});
}

void Checkup::FailCaught(std::string_view check, std::string_view whatToDo) {
  std::string found;
  std::string advice(whatToDo);
  try {
    throw;
  } catch (const Failure& failure) {
    found = failure.Description();
    if (!failure.Remedy().empty()) advice = failure.Remedy();
    if (const std::string end = "; " + advice; found.ends_with(end)) found.resize(found.size() - end.size());
  } catch (...) {
    const Error error = CaughtError();
    found = error.Description();
    if (error.Kind() == ErrorKind::Unspecified) Part(found, advice);
  }
  Fail(check, WithoutFullStop(std::move(found)), std::move(advice));
}

void Checkup::Omit(std::initializer_list<std::string_view> checks, std::string_view reason) {
  for (const std::string_view check : checks) omitted_.push_back({std::string(check), std::string(reason)});
}

Verdict Checkup::Worst() const noexcept {
  Verdict worst = Verdict::Ok;
  for (const CheckLine& line : lines_) worst = std::max(worst, line.verdict);
  return worst;
}

std::size_t Checkup::Count(Verdict verdict) const noexcept {
  return static_cast<std::size_t>(std::ranges::count(lines_, verdict, &CheckLine::verdict));
}

std::string FirstOf(const std::vector<std::string>& texts) {
  constexpr std::size_t most = 3;
  const std::size_t shown = std::min(texts.size(), most);
  const auto end = texts.begin() + static_cast<std::ptrdiff_t>(shown);
  std::string text = fmt::format("{}", fmt::join(texts.begin(), end, "; "));
  if (texts.size() > shown) text += fmt::format(" and {} more", texts.size() - shown);
  return text;
}

}  // namespace krnqb::cli
