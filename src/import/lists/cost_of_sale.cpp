#include "import/lists/cost_of_sale.h"

#include <fmt/format.h>

#include "krnqb/error.h"
#include "qbxml/response_element.h"

namespace krnqb {
namespace {

// Returns whether an attribute with this text reads back unchanged. Tabs and line breaks become blanks.
bool ReadsBackUnchanged(std::string_view text) {
  return text.find_first_of("\"&<\t\r\n") == std::string_view::npos;
}

}  // namespace

std::string CostOfGoodsMarker(const CostOfSale& sale) {
  return fmt::format(R"(<COGS  cogsid="{}" workid="{}" averagecost="{}"/>)", sale.costAccount,
                     sale.incomeAccount, sale.averageCost);
}

bool IsCostOfGoodsMarker(std::string_view account) noexcept {
  return account.starts_with("<COGS");
}

CostOfSale ReadCostOfGoodsMarker(const std::string& marker) {
  const XmlElement element = ResponseElement(marker, {});
  if (!element) throw Error(error_number::objectNotSet);
  const auto attribute = [&](std::string_view name) { return element.Attribute(name).value_or(""); };
  return {attribute("cogsid"), attribute("workid"), attribute("averagecost")};
}

SalePosting PostingOf(const CostOfSale& sale) {
  if (ReadsBackUnchanged(sale.costAccount) && ReadsBackUnchanged(sale.incomeAccount) &&
      ReadsBackUnchanged(sale.averageCost)) {
    return sale;
  }
  return CostOfGoodsMarker(sale);
}

std::string PostingText(const SalePosting& posting) {
  const auto* const sale = std::get_if<CostOfSale>(&posting);
  return sale == nullptr ? std::get<AccountId>(posting) : CostOfGoodsMarker(*sale);
}

}  // namespace krnqb
