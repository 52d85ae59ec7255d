#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "fakes/import_surroundings.h"
#include "import/past_performance/collection.h"

namespace krnqb::tests {

inline std::string TypedAccount(std::string_view type, std::string_view name, std::string_view balance,
                                std::string_view sublevel = "0") {
  using fakes::Element;
  return Element("AccountRet", Element("Name", name) + Element("Sublevel", sublevel) +
                                   Element("AccountType", type) + Element("TotalBalance", balance));
}

/// An account of the type without which past performance ends.
inline const std::string costAccount = TypedAccount("CostOfGoodsSold", "Seeds", "0");

/// Collects past performance for a plan that starts in April 2003, from a company with one item that posts to
/// Plants.
class CollectingPastPerformance : public testing::Test {
 protected:
  CollectingPastPerformance() {
    surroundings.state.options.krnProduct = QBKRN_ALD;
    surroundings.state.options.period = {
        .krnStartingMonth = 4, .krnStartingYear = 2003, .startingMonth = 4, .startingYear = 2002};
    surroundings.SetItems(fakes::OneAccountItem("IT-1", "I-1"));
    surroundings.sessionState.qbMajorVersion = 1;
    SetAccounts(costAccount);
  }

  /// Sets the answer to the query for all accounts.
  void SetAccounts(const std::string& records) {
    surroundings.quickBooks->answers["60"] = fakes::AccountAnswer("60", {records});
  }
  void Collect() { CollectPastPerformance(surroundings.context, surroundings.sessionState.qbMajorVersion); }

  const cSubtotals& Figures(std::string_view type) const {
    return surroundings.state.pastPerformance->At(type);
  }
  /// Returns the figures of periods 1 to 14.
  std::vector<double> Periods(std::string_view type) const {
    std::vector<double> periods;
    for (std::int16_t period = 1; period <= 14; ++period) periods.push_back(Figures(type).SubTotal(period));
    return periods;
  }
  /// Returns the figures of the first periods, followed by zeros.
  static std::vector<double> First(std::vector<double> figures) {
    figures.resize(14);
    return figures;
  }
  std::vector<std::string> Types() const {
    std::vector<std::string> types;
    for (const cSubtotals& record : *surroundings.state.pastPerformance)
      types.push_back(record.Description());
    return types;
  }
  bool WasRequested(const std::string& question) const {
    return surroundings.journal->Count("ProcessRequest " + question) > 0;
  }

  fakes::ImportSurroundings surroundings;
};

}  // namespace krnqb::tests
