#pragma once

#include <cstddef>
#include <string>

#include "sample_company/accounts.h"
#include "sample_company/generator.h"
#include "sample_company/items.h"
#include "sample_company/people.h"
#include "sample_company/text.h"

namespace krnqb::sample_company {

/// Returns the company's own record.
std::string CompanyText(const GeneratorSettings& settings);
std::string PreferencesText(const GeneratorSettings& settings);

/// Returns an account's record. `totalBalance` includes sub-accounts.
std::string AccountText(const ChartOfAccounts& accounts, std::size_t index, Cents totalBalance,
                        bool withNumber);

/// Returns an item's record.
std::string ItemText(const ItemList& list, std::size_t item, const ChartOfAccounts& accounts,
                     const People& people);

}  // namespace krnqb::sample_company
