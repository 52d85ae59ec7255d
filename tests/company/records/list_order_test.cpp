#include "company/records/list_order.h"

#include <gtest/gtest.h>

namespace krnqb::company {
namespace {

std::string KeysInOrder(const std::vector<ListEntry>& entries) {
  std::string keys;
  for (const std::size_t entry : ListOrder(entries)) keys += entries[entry].key + " ";
  return keys;
}

TEST(ListOrder, KeepsTheInputOrderWithinARank) {
  EXPECT_EQ(KeysInOrder({{"b", "", 1}, {"a", "", 1}}), "b a ");
}

TEST(ListOrder, SortsByRank) {
  EXPECT_EQ(KeysInOrder({{"c", "", 2}, {"a", "", 0}, {"b", "", 1}, {"a2", "", 0}}), "a a2 b c ");
}

TEST(ListOrder, PutsChildrenRightAfterTheirParent) {
  EXPECT_EQ(KeysInOrder({{"p", "", 0}, {"q", "", 0}, {"p1", "p", 0}, {"p1x", "p1", 0}, {"p2", "p", 0}}),
            "p p1 p1x p2 q ");
}

TEST(ListOrder, PutsAParentBeforeEarlierChildren) {
  EXPECT_EQ(KeysInOrder({{"p1x", "p1", 0}, {"p1", "p", 0}, {"q", "", 0}, {"p", "", 0}}), "q p p1 p1x ");
}

TEST(ListOrder, PutsEntriesWithoutTheirParentAtTheTopLevel) {
  EXPECT_EQ(KeysInOrder({{"x", "unknown", 0}, {"a", "", 0}}), "x a ");
}

TEST(ListOrder, IgnoresAParentOfAnotherRank) {
  EXPECT_EQ(KeysInOrder({{"p", "", 1}, {"c", "p", 0}}), "c p ");
  EXPECT_EQ(KeysInOrder({{"p", "", 0}, {"x", "", 0}, {"c", "p", 1}}), "p x c ");
}

TEST(ListOrder, KeepsAllEntriesWhenParentsFormACycle) {
  EXPECT_EQ(KeysInOrder({{"self", "self", 0}, {"a", "b", 0}, {"b", "a", 0}, {"hanging", "b", 0}}),
            "self a b hanging ");
  EXPECT_EQ(KeysInOrder({{"hanging", "a", 0}, {"a", "b", 0}, {"b", "a", 0}}), "a hanging b ");
}

TEST(ListOrder, HasNoDepthLimit) {
  std::vector<ListEntry> chain;
  for (int depth = 0; depth < 100'000; ++depth) {
    chain.push_back({std::to_string(depth), std::to_string(depth + 1), 0});
  }
  const std::vector<std::size_t> order = ListOrder(chain);
  ASSERT_EQ(order.size(), chain.size());
  EXPECT_EQ(order.front(), chain.size() - 1);
  EXPECT_EQ(order.back(), 0U);
}

}  // namespace
}  // namespace krnqb::company
