#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/test_host.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using fakes::HostAnswer;
using fakes::TestHost;
using tests::NumberThrownBy;

/// Returns "yes", "no", or a note on any other value.
std::string Said(const Variant& answer) {
  const bool* truth = answer.AsBoolean();
  if (truth == nullptr) return "not a Boolean";
  return *truth ? "yes" : "no";
}

TEST(IsSDKVersionSupported, ComparesTheWholeVersionText) {
  TestHost host;
  host.quickBooks->answers["100"] = HostAnswer({"1.0", "1.10", " 2.0"});
  EXPECT_EQ(Said(host.component.IsSDKVersionSupported("1.0")), "yes");
  EXPECT_EQ(Said(host.component.IsSDKVersionSupported("1.10")), "yes");
  EXPECT_EQ(Said(host.component.IsSDKVersionSupported("1.1")), "no");
  EXPECT_EQ(Said(host.component.IsSDKVersionSupported("2.0")), "no");
  EXPECT_EQ(Said(host.component.IsSDKVersionSupported("1")), "no");
  EXPECT_EQ(Said(host.component.IsSDKVersionSupported("")), "no");
}

TEST(IsSDKVersionSupported, ComparesEachTextNodeSeparately) {
  TestHost host;
  host.quickBooks->answers["100"] = HostAnswer({"1.<!-- split -->1"});
  EXPECT_EQ(Said(host.component.IsSDKVersionSupported("1.1")), "no");
  EXPECT_EQ(Said(host.component.IsSDKVersionSupported("1.")), "yes");
}

TEST(IsSDKVersionSupported, DefaultsToQbXml11) {
  TestHost host;
  host.quickBooks->answers["100"] = HostAnswer({"1.1"});
  EXPECT_EQ(Said(host.component.IsSDKVersionSupported()), "yes");
  host.quickBooks->answers["100"] = HostAnswer({"1.0", "2.0"});
  EXPECT_EQ(Said(host.component.IsSDKVersionSupported()), "no");
}

TEST(IsSDKVersionSupported, SendsRequest100EachTime) {
  TestHost host;
  host.component.IsSDKVersionSupported();
  host.component.IsSDKVersionSupported();
  EXPECT_EQ(host.journal->Text(),
            expected::Sequence({expected::OpensSession(), "ProcessRequest 100\n", expected::Asks("100")}));
}

TEST(IsSDKVersionSupported, RaisesWithoutASession) {
  TestHost host;
  host.journal->Fail("BeginSession \"\" 2", Error(-2147220458, "x"));
  EXPECT_EQ(NumberThrownBy([&host] { host.component.IsSDKVersionSupported(); }), 91);
  EXPECT_EQ(host.component.ErrorNumber(), -2147220458) << "opening the session wrote the pair";
}

TEST(IsSDKVersionSupported, RaisesTheProcessorsError) {
  TestHost host;
  host.journal->Fail("ProcessRequest 100", Error(-2147220478, "unexpected"));
  EXPECT_EQ(NumberThrownBy([&host] { host.component.IsSDKVersionSupported(); }), -2147220478);
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST(IsSDKVersionSupported, RaisesWhenTheResponseHasNoElement) {
  for (const char* answer : {"", "no XML", "<QBXML>", "<!DOCTYPE a [<!ENTITY e \"1.1\">]><a/>"}) {
    TestHost host;
    host.quickBooks->answers["100"] = answer;
    EXPECT_EQ(NumberThrownBy([&host] { host.component.IsSDKVersionSupported(); }), 91) << answer;
    EXPECT_EQ(host.component.ErrorNumber(), 0) << answer;
  }
}

TEST(IsSDKVersionSupported, RaisesForAVersionTextWithADoubleQuote) {
  TestHost host;
  const auto error = tests::ErrorOf([&host] { host.component.IsSDKVersionSupported("1\"1"); });
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->Number(), -2147467259);
  EXPECT_EQ(error->Description(), "Unspecified error");
  EXPECT_EQ(NumberThrownBy([&host] { host.component.IsSDKVersionSupported("9\" or \"a\"=\"a"); }),
            -2147467259)
      << "even if the quotes make a well-formed path";
  EXPECT_EQ(Said(host.component.IsSDKVersionSupported("1'1")), "no")
      << "an apostrophe is an ordinary character";
}

}  // namespace
}  // namespace krnqb
