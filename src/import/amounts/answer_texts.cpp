#include "import/amounts/answer_texts.h"

#include <functional>
#include <utility>

namespace krnqb {

void AnswerTexts::Begin(Variant answer) {
  text_ = {};
  decoded_.clear();
  answer_ = std::make_unique<Variant>(std::move(answer));
  if (const std::string* const text = answer_->AsText()) text_ = *text;
}

std::string AnswerTexts::TakeAnswer() noexcept {
  text_ = {};
  return answer_ == nullptr ? std::string() : answer_->TakeText();
}

// Decoded texts are numbered on from the answer's end.
TransactionLine::Field AnswerTexts::At(TextSpan span) const noexcept {
  if (!span) return {};
  const std::size_t begin = span.place - 1;
  const bool inAnswer = begin < text_.size();
  return std::string_view(inAnswer ? text_.data() + begin : decoded_.data() + (begin - text_.size()),
                          span.size);
}

void AnswerTexts::FetchAhead(TextSpan span) const noexcept {
  if (span && span.place <= text_.size()) __builtin_prefetch(text_.data() + (span.place - 1));
}

bool AnswerTexts::Contains(std::string_view text) const noexcept {
  const std::less_equal<> before;
  return before(text_.data(), text.data()) && before(text.data() + text.size(), text_.data() + text_.size());
}

TextSpan AnswerTexts::SpanOf(std::string_view text) const noexcept {
  return {.place = static_cast<std::uint32_t>(text.data() - text_.data() + 1),
          .size = static_cast<std::uint32_t>(text.size())};
}

TextSpan AnswerTexts::Keep(std::string_view text) {
  const TextSpan span{.place = static_cast<std::uint32_t>(text_.size() + decoded_.size() + 1),
                      .size = static_cast<std::uint32_t>(text.size())};
  decoded_ += text;
  return span;
}

}  // namespace krnqb
