#include "cli/import/request_names.h"

#include <gtest/gtest.h>

#include "qbxml/request_catalogue.h"

namespace krnqb::cli {
namespace {

constexpr std::int32_t catalogue[] = {1,  2,  4,   9,   10,  11,  12,  20,  21,
                                      50, 60, 100, 101, 102, 300, 310, 320, 330};

TEST(RequestName, IsThereForEveryRequestOfTheCatalogue) {
  for (const std::int32_t number : catalogue) EXPECT_NE(RequestName(number), "") << number;
  EXPECT_EQ(RequestName(3), "");
}

TEST(PlaceOfRequest, TellsTheNumberOfEveryDocumentOfTheCatalogue) {
  for (const std::int32_t number : catalogue) {
    EXPECT_EQ(PlaceOfRequest(BuildRequest(number, {}, {})).request, number);
    EXPECT_EQ(PlaceOfRequest(BuildRequest(number, "2002-01-01", "2002-01-31")).request, number);
  }
}

TEST(PlaceOfRequest, TellsThePeriod) {
  for (const std::int32_t number : {10, 11, 12, 20, 21, 300, 310, 320, 330}) {
    const Place place = PlaceOfRequest(BuildRequest(number, "2002-01-01", "2002-01-31"));
    EXPECT_EQ(place.fromDate, "2002-01-01") << number;
    EXPECT_EQ(place.toDate, "2002-01-31") << number;
  }
  EXPECT_EQ(PlaceOfRequest(BuildRequest(4, "2002-01-01", "2002-01-31")).fromDate, "");
}

TEST(PlaceOfRequest, TellsNoNumberOfAnotherDocument) {
  EXPECT_EQ(PlaceOfRequest("<QBXML/>").request, std::nullopt);
  EXPECT_EQ(PlaceOfRequest("").request, std::nullopt);
}

TEST(RequestText, NamesRequestAndPeriod) {
  EXPECT_EQ(RequestText({"", 10, "2002-01-01", "2002-01-31"}),
            "request 10 (bills) for 2002-01-01 to 2002-01-31");
  EXPECT_EQ(RequestText({"", 4, "", ""}), "request 4 (expense accounts)");
  EXPECT_EQ(RequestText({"", 999, "", ""}), "request 999");
  EXPECT_EQ(RequestText({"", std::nullopt, "", ""}), "a request");
}

}  // namespace
}  // namespace krnqb::cli
