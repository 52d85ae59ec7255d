#include "sample_company/people.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "sample_company/names.h"
#include "sample_company/text.h"

namespace krnqb::sample_company {
namespace {

constexpr std::int64_t fewestVendors = 8;
constexpr std::int64_t mostVendors = 2'000;
// The lists are begun one after the other.
constexpr std::int64_t secondsAfterAccounts = std::int64_t{30} * 24 * 3600;
constexpr std::size_t employees = 12;
constexpr unsigned percentJobs = 35;
constexpr std::array<int, 4> customaryTerms = {0, 15, 30, 30};

class PeopleMaker {
 public:
  PeopleMaker(std::int64_t begun, Random& random) : begun_(begun), random_(random) {}

  // A job belongs to the preceding customer, so that a customer's jobs follow it.
  Party Customer() {
    if (!lastCustomer_.empty() && random_.Chance(percentJobs)) {
      return Make(lastCustomer_ + ":" + names_.Take(lastCustomer_, random_.Pick(JobNames())));
    }
    lastCustomer_ = names_.Take("", random_.Chance(60) ? PersonName() : BusinessName());
    return Make(lastCustomer_);
  }

  Party Vendor() { return Make(names_.Take("", BusinessName())); }
  Party Employee() { return Make(names_.Take("", PersonName())); }

 private:
  std::string PersonName() {
    const std::string_view family = random_.Pick(FamilyNames());
    return fmt::format("{}, {}", family, random_.Pick(GivenNames()));
  }

  std::string BusinessName() {
    const std::string_view business = random_.Pick(BusinessNames());
    return fmt::format("{} {}", business, random_.Pick(BusinessForms()));
  }

  Party Make(const std::string& fullName) {
    Party party;
    party.reference = ReferenceLines(ListIdText(++number_, begun_), fullName);
    ElementText address;
    address.Text("Addr1", Escaped(fullName.substr(0, fullName.find(':'))));
    address.Text("City", Escaped(random_.Pick(TownNames())));
    address.Text("State", "OR");
    address.Number("PostalCode", 97000 + random_.Between(0, 920));
    party.address = address.Xml();
    party.termDays = random_.Pick(customaryTerms);
    return party;
  }

  std::int64_t begun_;
  Random& random_;
  std::int64_t number_ = 0;
  std::string lastCustomer_;
  UniqueNames names_;
};

}  // namespace

People MakePeople(std::int64_t customers, std::int64_t begun, Random& random) {
  People people;
  PeopleMaker customerMaker(begun + secondsAfterAccounts, random);
  while (static_cast<std::int64_t>(people.customers.size()) < customers) {
    people.customers.push_back(customerMaker.Customer());
  }
  PeopleMaker vendorMaker(begun + 2 * secondsAfterAccounts, random);
  const std::int64_t vendors = std::clamp(customers / 3, fewestVendors, mostVendors);
  while (static_cast<std::int64_t>(people.vendors.size()) < vendors) {
    people.vendors.push_back(vendorMaker.Vendor());
  }
  PeopleMaker employeeMaker(begun + 3 * secondsAfterAccounts, random);
  while (people.employees.size() < employees) people.employees.push_back(employeeMaker.Employee());
  return people;
}

}  // namespace krnqb::sample_company
