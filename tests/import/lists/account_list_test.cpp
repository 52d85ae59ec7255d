#include "import/lists/account_list.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/answer_texts.h"
#include "fakes/recording_observer.h"
#include "limited_child.h"

namespace krnqb {
namespace {

using fakes::Account;
using fakes::AccountAnswer;
using fakes::SubAccount;

AccountList List(std::initializer_list<std::string> accounts) {
  return AccountList(XmlElement::Parse(AccountAnswer("4", accounts)));
}

TEST(TopLevelAccountName, FindsTheTopLevelAncestor) {
  fakes::RecordingObserver observer;
  const AccountList list =
      List({Account("1", "Cars"), SubAccount("2", "Fuel", "1"), SubAccount("3", "Diesel", "2", "2"),
            SubAccount("4", "Winter diesel", "3", "3")});
  for (const std::string id : {"1", "2", "3", "4"})
    EXPECT_EQ(TopLevelAccountName(list, id, observer), "Cars") << id;
  EXPECT_TRUE(observer.notices.empty());
}

TEST(TopLevelAccountName, IsEmptyWithoutANoticeForAnUnlistedAccount) {
  fakes::RecordingObserver observer;
  EXPECT_EQ(TopLevelAccountName(List({Account("1", "Cars")}), "9", observer), "");
  EXPECT_TRUE(observer.notices.empty());
}

TEST(TopLevelAccountName, IsEmptyIfARecordOnTheWayIsIncomplete) {
  fakes::RecordingObserver observer;
  const AccountList list = List(
      {"<AccountRet><ListID>1</ListID><Name>No level</Name></AccountRet>",
       "<AccountRet><ListID>2</ListID><Name>No parent</Name><Sublevel>1</Sublevel></AccountRet>",
       SubAccount("3", "Orphan", "99"), "<AccountRet><ListID>4</ListID><Sublevel>0</Sublevel></AccountRet>"});
  for (const std::string id : {"1", "2", "3", "4"})
    EXPECT_EQ(TopLevelAccountName(list, id, observer), "") << id;
  EXPECT_EQ(observer.notices.size(), 4U);
}

TEST(TopLevelAccountName, DoesNotClimbPastAnAccountWithoutALevel) {
  fakes::RecordingObserver observer;
  const AccountList list =
      List({Account("1", "Cars"),
            "<AccountRet><ListID>2</ListID><Name>Fuel</Name><ParentRef><ListID>1</ListID></ParentRef>"
            "</AccountRet>"});
  EXPECT_EQ(TopLevelAccountName(list, "2", observer), "");
  EXPECT_EQ(observer.notices.size(), 1U);
}

TEST(TopLevelAccountName, IsEmptyIfTheParentsFormACycle) {
  fakes::RecordingObserver observer;
  const AccountList list = List({SubAccount("1", "Hen", "2"), SubAccount("2", "Egg", "1")});
  EXPECT_EQ(TopLevelAccountName(list, "1", observer), "");
  EXPECT_EQ(observer.notices.size(), 1U);
}

TEST(TopLevelAccountName, StartsAtTheFirstListIdInDocumentOrderAtAnyDepth) {
  fakes::RecordingObserver observer;
  // The sub-account comes before its parent, so the first "1" is the reference in the sub-account's own
  // record.
  const AccountList list = List({SubAccount("2", "Fuel", "1"), Account("1", "Cars")});
  EXPECT_EQ(TopLevelAccountName(list, "1", observer), "");
}

TEST(TopLevelAccountName, FollowsTheFirstParentReferenceWithAnId) {
  fakes::RecordingObserver observer;
  const AccountList list =
      List({Account("1", "Cars"),
            "<AccountRet><ListID>2</ListID><Name>Fuel</Name><ParentRef><FullName>Cars</FullName></ParentRef>"
            "<ParentRef><ListID>1</ListID></ParentRef><Sublevel>1</Sublevel></AccountRet>"});
  EXPECT_EQ(TopLevelAccountName(list, "2", observer), "Cars");
  EXPECT_TRUE(observer.notices.empty());
}

TEST(TopLevelAccountName, IgnoresIdsInANamespace) {
  fakes::RecordingObserver observer;
  const AccountList list =
      List({"<Note><ListID xmlns=\"urn:x\">1</ListID></Note>", Account("1", "Cars"),
            "<AccountRet><ListID>2</ListID><Name>Fuel</Name><ParentRef><ListID xmlns=\"urn:x\">9</ListID>"
            "<ListID>1</ListID></ParentRef><Sublevel>1</Sublevel></AccountRet>"});
  EXPECT_EQ(TopLevelAccountName(list, "1", observer), "Cars");
  EXPECT_EQ(TopLevelAccountName(list, "2", observer), "Cars");
}

TEST(TopLevelAccountName, IsEmptyForAnIdWithADoubleQuote) {
  fakes::RecordingObserver observer;
  EXPECT_EQ(TopLevelAccountName(List({Account("1", "Cars")}), "a\"b", observer), "");
  ASSERT_EQ(observer.notices.size(), 1U);
  EXPECT_EQ(observer.notices[0].number, -2147467259);
}

TEST(TopLevelAccountName, IsEmptyWithoutAList) {
  fakes::RecordingObserver observer;
  EXPECT_EQ(TopLevelAccountName(AccountList(), "1", observer), "");
}

TEST(TopLevelSubtotals, AreZerosByTopLevelAccountName) {
  fakes::RecordingObserver observer;
  const auto subtotals = TopLevelSubtotals(
      List({Account("1", "Cars"), SubAccount("2", "Fuel", "1"), Account("3", "Rent")}), observer);
  ASSERT_TRUE(subtotals);
  ASSERT_EQ(subtotals->Count(), 2U);
  EXPECT_EQ(subtotals->AtPosition(1).Description(), "Cars");
  EXPECT_EQ(subtotals->At("RENT").Description(), "Rent");
  EXPECT_EQ(subtotals->At("Rent").Total(), 0);
}

TEST(TopLevelSubtotals, AreNothingIfTwoAccountsHaveTheSameName) {
  fakes::RecordingObserver observer;
  EXPECT_FALSE(TopLevelSubtotals(List({Account("1", "Cars"), Account("2", "CARS")}), observer));
  EXPECT_TRUE(observer.Reported(NoticeKind::OperationEnded, 457));
}

TEST(TopLevelSubtotals, AreNothingWithoutAListAndIfAnAccountHasNoName) {
  fakes::RecordingObserver observer;
  EXPECT_FALSE(TopLevelSubtotals(AccountList(), observer));
  EXPECT_FALSE(TopLevelSubtotals(List({"<AccountRet><Sublevel>0</Sublevel></AccountRet>"}), observer));
  ASSERT_EQ(observer.notices.size(), 2U);
  EXPECT_EQ(observer.notices[0].meaning, NoticeMeaning::Complete) << "the list is missing";
  EXPECT_EQ(observer.notices[1].meaning, NoticeMeaning::Incomplete) << "an account has no name";
}

TEST(TopLevelSubtotals, AreAnEmptyCollectionForAnEmptyList) {
  fakes::RecordingObserver observer;
  const auto subtotals = TopLevelSubtotals(List({}), observer);
  ASSERT_TRUE(subtotals);
  EXPECT_EQ(subtotals->Count(), 0U);
}

std::string ChainOfAccounts(int depth) {
  std::string records = Account("0", "Top");
  for (int level = 1; level < depth; ++level) {
    records += SubAccount(std::to_string(level), "N", std::to_string(level - 1), std::to_string(level));
  }
  return records;
}

TEST(TopLevelAccountName, OfATreeThatIsTwentyThousandDeepIsFoundInTime) {
  const std::string answer = AccountAnswer("4", {ChainOfAccounts(20'000)});
  EXPECT_TRUE(tests::StaysWithinLimits(answer.size(), [&] {
    fakes::RecordingObserver observer;
    const AccountList list(XmlElement::Parse(answer));
    for (int level = 19'999; level >= 0; --level) {
      if (TopLevelAccountName(list, std::to_string(level), observer) != "Top") return false;
    }
    return observer.notices.empty();
  }));
  EXPECT_TRUE(tests::StaysWithinLimits(answer.size(), [&] {
    fakes::RecordingObserver observer;
    const AccountList list(XmlElement::Parse(answer));
    for (int level = 0; level < 20'000; ++level) {
      if (TopLevelAccountName(list, std::to_string(level), observer) != "Top") return false;
    }
    return true;
  }));
}

TEST(TopLevelAccountName, IsEmptyForEveryAccountThatLeadsIntoACycleOrNowhere) {
  for (const bool fromTheTop : {true, false}) {
    fakes::RecordingObserver observer;
    const AccountList list =
        List({SubAccount("1", "A", "2"), SubAccount("2", "B", "3"), SubAccount("3", "C", "2"),
              SubAccount("4", "D", "99"), SubAccount("5", "E", "4")});
    std::vector<std::string> ids{"1", "2", "3", "4", "5"};
    if (fromTheTop) std::reverse(ids.begin(), ids.end());
    for (const std::string& id : ids) EXPECT_EQ(TopLevelAccountName(list, id, observer), "") << id;
    ASSERT_EQ(observer.notices.size(), 5U);
    // This id is in the answer only as a parent's.
    EXPECT_EQ(TopLevelAccountName(list, "99", observer), "");
    ASSERT_EQ(observer.notices.size(), 6U);
    EXPECT_EQ(TopLevelAccountName(list, "100", observer), "");
    EXPECT_EQ(observer.notices.size(), 6U);
    for (const Notice& notice : observer.notices) EXPECT_EQ(notice.number, error_number::objectNotSet);
  }
}

TEST(TopLevelAccountName, OfAnIdThatIsAnExpressionIsFoundInTime) {
  const std::string answer = AccountAnswer("4", {ChainOfAccounts(3'000)});
  EXPECT_TRUE(tests::StaysWithinLimits(answer.size(), [&] {
    fakes::RecordingObserver observer;
    const AccountList list(XmlElement::Parse(answer));
    return TopLevelAccountName(list, "\" or //*[//*[//*[. = \"x\"]]] or . = \"", observer).empty();
  }));
  EXPECT_TRUE(tests::StaysWithinLimits(answer.size(), [&] {
    fakes::RecordingObserver observer;
    const AccountList list(XmlElement::Parse(answer));
    for (int index = 0; index < 5'000; ++index) {
      TopLevelAccountName(list, "\" or . = \"" + std::to_string(index) + "x", observer);
    }
    return true;
  }));
}

}  // namespace
}  // namespace krnqb
