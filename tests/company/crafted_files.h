#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "qbxml/request_catalogue.h"

namespace krnqb::company::testing {

/// Returns a number as four bytes, the highest first, as databases and journals store numbers.
inline std::string FourBytes(std::uint32_t number) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>((number >> shift) & 0xFF);
  return bytes;
}

constexpr std::string_view journalMagic = "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7";
constexpr std::uint32_t pageSize = 16'384;

/// Returns the journal of a load that was killed before it changed any of the company's pages: a database
/// that finds it undoes that load.
inline std::string EmptyJournal(std::uint32_t pages) {
  std::string journal(journalMagic);
  journal += FourBytes(0) + FourBytes(7) + FourBytes(pages) + FourBytes(512) + FourBytes(pageSize);
  journal.resize(512, '\0');
  return journal;
}

/// Returns such a journal that belongs to several databases and names the file that joins them, which is
/// removed once the load is undone.
inline std::string JournalNaming(std::string_view file, std::uint32_t pages) {
  std::uint32_t sum = 0;
  for (const char character : file) sum += static_cast<std::uint32_t>(static_cast<signed char>(character));
  constexpr std::uint32_t pendingPage = 0x4000'0000 / pageSize + 1;
  return EmptyJournal(pages) + FourBytes(pendingPage) + std::string(file) +
         FourBytes(static_cast<std::uint32_t>(file.size())) + FourBytes(sum) + std::string(journalMagic);
}

/// Returns everything that a company answers to the requests of an import: lists and transactions, or reports
/// from version 2.0.
template <typename Company>
std::string Figures(const Company& company) {
  namespace number = request_number;
  std::string figures;
  const auto ask = [&](std::int32_t request) {
    std::string document = BuildRequest(request, "2001-01-01", "2002-12-31");
    const std::size_t placeholder = document.find(accountTypePlaceholder);
    if (placeholder != std::string::npos) {
      document.replace(placeholder, accountTypePlaceholder.size(), "Income");
    }
    figures += company.Answer(document);
  };
  for (const std::int32_t request :
       {number::incomeAccounts, number::costAccounts, number::expenseAccounts, number::items,
        number::allAccounts, number::company, number::preferences}) {
    ask(request);
  }
  if (company.ProcessorVersion() == "2.0") {
    for (const std::int32_t request :
         {number::incomeByMonth, number::expenseByMonth, number::costByMonth, number::balanceSheetByType}) {
      ask(request);
    }
  } else {
    for (const std::int32_t request : {number::bills, number::checks, number::creditCardCharges,
                                       number::invoices, number::salesReceipts}) {
      ask(request);
    }
  }
  return figures;
}

}  // namespace krnqb::company::testing
