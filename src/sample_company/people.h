#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sample_company/random.h"

namespace krnqb::sample_company {

/// A customer, a customer's job, a vendor or an employee. A company file keeps no records of them: they are
/// only referred to.
struct Party {
  std::string reference;  ///< the lines that refer to it
  std::string address;    ///< the lines of its address
  int termDays = 0;       ///< how long an account with it runs: 0, 15 or 30
};

struct People {
  std::vector<Party> customers;
  std::vector<Party> vendors;
  std::vector<Party> employees;
};

/// As many customers, their jobs included, as wanted, vendors in proportion, and employees.
People MakePeople(std::int64_t customers, std::int64_t begun, Random& random);

}  // namespace krnqb::sample_company
