#pragma once

#include <cstdint>
#include <vector>

#include "sample_company/calendar.h"
#include "sample_company/draft.h"
#include "sample_company/obligations.h"
#include "sample_company/purchases.h"
#include "sample_company/random.h"
#include "sample_company/routine.h"
#include "sample_company/sales.h"

namespace krnqb::sample_company {

/// Generates a company's transactions, in order of date.
class Business {
 public:
  Business(Company& company, const std::vector<MonthPlan>& months, Random& random);

  /// Passes all transactions to `receive` and returns the number of their lines.
  std::int64_t Run(const company::RecordReceiver& receive);

 private:
  void RunMonth(const MonthPlan& month, const company::RecordReceiver& receive);
  void BeginYear(std::size_t january);
  company::CompanyRecord Next(std::int64_t transaction, const Occasion& occasion);
  company::CompanyRecord Settle(const Obligation& obligation, const Occasion& occasion);
  company::CompanyRecord Ordinary(const Occasion& occasion);

  const std::vector<MonthPlan>& months_;
  Random& random_;
  Draft draft_;
  Obligations obligations_;
  Purchases purchases_;
  Sales sales_;
  Routine routine_;
  std::int64_t left_ = 0;  // transactions until the end, including the current one
  std::int64_t leftInYear_ = 0;
  bool hasJustSettled_ = false;
};

}  // namespace krnqb::sample_company
