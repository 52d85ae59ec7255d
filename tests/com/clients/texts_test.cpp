// Texts cross the boundary unchanged, whatever they contain and however long they are.
#include <gtest/gtest.h>

#include "host/component.h"
#include "qbxml/request_catalogue.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

using namespace std::string_view_literals;

std::wstring PassedThrough(std::wstring_view text) {
  const Exchange exchange = NewExchange();
  EXPECT_EQ(S_OK, exchange->put_ErrorDescription(Text(text).Get()));
  Text read;
  EXPECT_EQ(S_OK, exchange->get_ErrorDescription(read.Receive()));
  return std::wstring(read.View());
}

TEST(Texts, PreserveEveryCharacter) {
  for (const std::wstring_view text : {L""sv, L"caf\u00e9"sv, L"\u20ac\u4e2d\U0001F600"sv, L"one\0two\0"sv,
                                       L"\r\n\t\x01\x7f"sv, L"\uffff\ufeff"sv}) {
    EXPECT_EQ(text, PassedThrough(text));
  }
}

TEST(Texts, ReplaceUnpairedSurrogates) {
  EXPECT_EQ(L"a\uFFFDb", PassedThrough(std::wstring{L'a', wchar_t(0xD800), L'b'}));
  EXPECT_EQ(L"a\uFFFDb", PassedThrough(std::wstring{L'a', wchar_t(0xDC00), L'b'}));
  EXPECT_EQ(L"\uFFFD\uFFFD", PassedThrough(std::wstring{wchar_t(0xDC00), wchar_t(0xD800)}));
  EXPECT_EQ(L"\uFFFD\U0001F600",
            PassedThrough(std::wstring{wchar_t(0xD83D), wchar_t(0xD83D), wchar_t(0xDE00)}));
}

TEST(Texts, TreatNullAsEmpty) {
  const Exchange exchange = NewExchange();
  exchange->put_ErrorDescription(Text(L"before").Get());
  EXPECT_EQ(S_OK, exchange->put_ErrorDescription(nullptr));
  Text read;
  exchange->get_ErrorDescription(read.Receive());
  EXPECT_EQ(0U, read.View().size());
  EXPECT_EQ(S_OK, exchange->put_QBCompany(nullptr));
  Value result;
  VARIANT null{};
  null.vt = VT_BSTR;
  EXPECT_EQ(S_OK, exchange->KRNDeserialize(null, nullptr, result.Receive()));
  EXPECT_EQ(L"", result.AsText());
  VARIANT_BOOL opened = VARIANT_FALSE;
  EXPECT_EQ(RunTimeError(91), exchange->KRNOpenPlan(nullptr, &opened));
}

TEST(Texts, MayBeTwentyMegabytesLong) {
  std::wstring text(10 * 1024 * 1024, L'x');
  text.front() = L'\u00e9';
  text.back() = L'\u20ac';
  EXPECT_TRUE(text == PassedThrough(text));
}

TEST(Texts, IncludeAllOfATwentyMegabyteResponse) {
  const std::wstring answer = L"<answer>" + std::wstring(10 * 1024 * 1024, L'y') + L"</answer>";
  auto recorded = UsualAnswers();
  recorded.emplace_back(50, Utf8(answer));
  const Answering answers(1, recorded);
  const LateBound exchange = NewLateBoundExchange();
  const Outcome given = exchange.Call(L"QbSerialize", {Value(Utf16(BuildRequest(50, "", "")))});
  ASSERT_EQ(S_OK, given.result);
  EXPECT_TRUE(answer == given.value.AsText());
}

}  // namespace
}  // namespace krnqb::testing
