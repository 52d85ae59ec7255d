#include "reconcile/cause.h"

#include <array>

namespace krnqb::reconcile {
namespace {

struct Described {
  CauseCode code;
  std::string_view word;
  std::string_view text;
};

constexpr std::array described{
    Described{CauseCode::AnotherPeriod, "another-period", "the last import was of other months"},
    Described{CauseCode::NotImported, "not-imported", "not imported into the plan"},
    Described{CauseCode::EditedSince, "edited-since", "changed in the plan after the import"},
    Described{CauseCode::RowTwice, "row-twice", "a second row of the same account"},
    Described{CauseCode::MisalignedRow, "misaligned-row", "in an actual row of another name"},
    Described{CauseCode::DepreciationSum, "depreciation-sum", "in the sums of the row Depreciation"},
    Described{CauseCode::NoRow, "no-row", "no row or cell in the plan"},
    Described{CauseCode::NotAskedFor, "not-asked-for", "not included in the last import"},
    Described{CauseCode::BooksChanged, "books-changed", "the books have changed since the import"},
    Described{CauseCode::SpreadBalance, "spread-balance", "today's balance, divided over months"},
    Described{CauseCode::ReportRowTwice, "report-row-twice",
              "added twice: the report has the account's own row and its subtotal"},
    Described{CauseCode::KindNotRead, "kind-not-read", "transactions of a kind that is not imported"},
    Described{CauseCode::TypeNotTaken, "type-not-taken",
              "lines that are not imported to accounts of this type"},
    Described{CauseCode::ItemGroup, "item-group", "purchase lines inside an item group"},
    Described{CauseCode::ItemWithoutAccount, "item-without-account", "items without an account"},
    Described{CauseCode::PendingSale, "pending-sale", "pending sales, which are not in the books yet"},
    Described{CauseCode::BilledOnce, "billed-once", "expenses taken back because a customer was billed"},
    Described{CauseCode::BilledAgain, "billed-again", "more taken back than had been an expense"},
    Described{CauseCode::TextCut, "text-cut", "a number could be read only in part"},
    Described{CauseCode::QuantityAsOne, "quantity-as-one", "a quantity that is not a number counts as 1"},
    Described{CauseCode::WithoutAmount, "without-amount", "sales without an amount, whose cost is left out"},
    Described{CauseCode::OtherAccount, "other-account", "in another account than in the books"},
    Described{CauseCode::AverageCost, "average-cost", "sales at today's average cost"},
    Described{CauseCode::NotLoaded, "not-loaded", "in the books, but not among the loaded transactions"},
    Described{CauseCode::NotInBooks, "not-in-books", "loaded transactions that the books do not have"},
    Described{CauseCode::Rounding, "rounding", "rounding"}};

static_assert(described.size() == static_cast<std::size_t>(CauseCode::Rounding) + 1);

const Described& Of(CauseCode code) noexcept {
  return described[static_cast<std::size_t>(code)];
}

}  // namespace

std::string_view CauseWord(CauseCode code) noexcept {
  return Of(code).word;
}

std::string_view CauseText(CauseCode code) noexcept {
  return Of(code).text;
}

}  // namespace krnqb::reconcile
