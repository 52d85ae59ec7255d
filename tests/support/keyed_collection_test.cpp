#include "krnqb/keyed_collection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "thrown_error.h"

namespace krnqb {
namespace {

using tests::NumberThrownBy;

TEST(FoldedKey, LowercasesEachCodePointOneToOne) {
  EXPECT_EQ(FoldedKey("Rent & UTILITIES"), "rent & utilities");
  EXPECT_EQ(FoldedKey("ÄÖÜ"), "äöü");
  EXPECT_EQ(FoldedKey("ДОХОД"), "доход");
  EXPECT_EQ(FoldedKey("ΣΊΣΥΦΟΣ"), "σίσυφοσ");
  EXPECT_EQ(FoldedKey("ς"), "ς");
  EXPECT_EQ(FoldedKey("STRAẞE"), "straße");
  EXPECT_EQ(FoldedKey("İ"), "i");
  EXPECT_EQ(FoldedKey("ı"), "ı");
  EXPECT_EQ(FoldedKey("\u212A"), "k");
  EXPECT_EQ(FoldedKey("\U00010400"), "\U00010428");
}

TEST(FoldedKey, DistinguishesSharpSFromDoubleS) {
  EXPECT_EQ(FoldedKey("Straße"), "straße");
  EXPECT_NE(FoldedKey("Straße"), FoldedKey("Strasse"));
}

TEST(FoldedKey, DoesNotNormalise) {
  EXPECT_NE(FoldedKey("e\u0301"), FoldedKey("\u00e9"));
}

TEST(FoldedKey, PreservesBytesThatAreNotUtf8) {
  EXPECT_EQ(FoldedKey("A\xff\xc3Z"), "a\xff\xc3z");
}

TEST(KeyedCollection, FindsItemsByKeyIgnoringCase) {
  KeyedCollection<int> collection;
  collection.Add(1, "Rent");
  collection.Add(2, "ÉTUDES");
  EXPECT_EQ(collection.At("RENT"), 1);
  EXPECT_EQ(collection.At("études"), 2);
  ASSERT_NE(collection.Find("rent"), nullptr);
  EXPECT_EQ(collection.Find("Rents"), nullptr);
}

TEST(KeyedCollection, RejectsADuplicateKeyAndStaysUnchanged) {
  KeyedCollection<int> collection;
  collection.Add(1, "Rent");
  EXPECT_EQ(NumberThrownBy([&] { collection.Add(2, "rent"); }), 457);
  EXPECT_EQ(collection.Count(), 1U);
  EXPECT_EQ(collection.At("Rent"), 1);
}

TEST(KeyedCollection, ThrowsForAMissingKey) {
  KeyedCollection<int> collection;
  EXPECT_EQ(NumberThrownBy([&] { collection.At("Rent"); }), 5);
}

TEST(KeyedCollection, ThrowsForAPositionOutOfRange) {
  KeyedCollection<int> collection;
  collection.Add(7);
  EXPECT_EQ(collection.AtPosition(1), 7);
  EXPECT_EQ(NumberThrownBy([&] { collection.AtPosition(0); }), 9);
  EXPECT_EQ(NumberThrownBy([&] { collection.AtPosition(2); }), 9);
}

TEST(KeyedCollection, IteratesInInsertionOrder) {
  KeyedCollection<std::string> collection;
  collection.Add("z", "z");
  collection.Add("a");
  collection.Add("m", "m");
  EXPECT_EQ(std::vector<std::string>(collection.begin(), collection.end()),
            (std::vector<std::string>{"z", "a", "m"}));
}

TEST(KeyedCollection, KeepsReferencesValidWhileItGrows) {
  KeyedCollection<int> collection;
  collection.Add(1, "first");
  int& first = collection.At("first");
  for (int item = 0; item < 10000; ++item) collection.Add(item);
  first = 42;
  EXPECT_EQ(collection.At("first"), 42);
}

}  // namespace
}  // namespace krnqb
