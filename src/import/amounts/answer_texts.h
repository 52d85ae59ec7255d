#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "import/amounts/transaction_line.h"
#include "krnqb/variant.h"

namespace krnqb {

/// Where a text is in `AnswerTexts`, or that it is missing. An answer has less than 2 GiB, and as many bytes
/// at most are decoded.
struct TextSpan {
  std::uint32_t place = 0;  // from 1; 0 if the text is missing
  std::uint32_t size = 0;

  explicit operator bool() const noexcept { return place != 0; }
};

/// An answer and the texts that it does not contain in one piece, such as those with character references.
class AnswerTexts {
 public:
  /// Takes the next answer. What was before is freed; the memory for decoded texts is used again.
  void Begin(Variant answer);

  /// Moves the answer's text out; empty if it is not a text.
  std::string TakeAnswer() noexcept;

  /// Returns the answer's text, or null if it is not a text.
  const std::string* Answer() const noexcept { return answer_ == nullptr ? nullptr : answer_->AsText(); }

  /// Returns the text of a span; valid until the next `Begin`.
  TransactionLine::Field At(TextSpan span) const noexcept;

  /// Has the memory of a span's text, which is read soon, loaded meanwhile.
  void FetchAhead(TextSpan span) const noexcept;

  /// Returns whether the text lies inside the answer.
  bool Contains(std::string_view text) const noexcept;
  /// Returns the span of a text inside the answer.
  TextSpan SpanOf(std::string_view text) const noexcept;
  /// Keeps a copy of a text and returns its span.
  TextSpan Keep(std::string_view text);

 private:
  std::unique_ptr<Variant> answer_;
  std::string_view text_;  // the answer's
  std::string decoded_;
};

}  // namespace krnqb
