#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sample_company/random.h"

namespace krnqb::sample_company {

/// A customer, a customer's job, a vendor or an employee. Company files have no records of them, only
/// references.
struct Party {
  std::string reference;  ///< the elements of a reference to it
  std::string address;    ///< the elements of its address
  int termDays = 0;       ///< payment term in days: 0, 15 or 30
};

struct People {
  std::vector<Party> customers;
  std::vector<Party> vendors;
  std::vector<Party> employees;
};

/// Returns as many customers, including jobs, as requested, vendors in proportion, and employees.
People MakePeople(std::int64_t customers, std::int64_t begun, Random& random);

}  // namespace krnqb::sample_company
