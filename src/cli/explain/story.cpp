#include "cli/explain/story.h"

namespace krnqb::cli {
namespace {

using ledger::LedgerBooking;
using ledger::LedgerFile;
using ledger::LedgerSlot;

bool TellsNothing(const LedgerBooking& booking, bool replaced) {
  return booking.rule == BookingRule::PeriodBegins ||
         (replaced && booking.rule == BookingRule::PreviousPeriod);
}

SumStory StoryOf(const LedgerFile& ledger, const LedgerSlot& slot, bool subtracted) {
  SumStory story{.slot = slot, .subtracted = subtracted, .sum = ledger.SumOf(slot.id)};
  ledger.ForEachBooking(slot.id, [&](const LedgerBooking& booking, bool replaced) {
    if (TellsNothing(booking, replaced)) return;
    StoryLine& line =
        story.lines.emplace_back(StoryLine{.booking = booking, .replaced = replaced, .months = {}});
    if (booking.line != 0) {
      line.line = ledger.Line(booking.line);
      const bool sameDocument = story.lines.size() > 1 && story.lines.end()[-2].document &&
                                story.lines.end()[-2].document->id == line.line->document;
      line.document = sameDocument ? story.lines.end()[-2].document : ledger.Document(line.line->document);
    }
    if (replaced) return;
    for (const LedgerSlot& month : MonthsOf(ledger, slot, booking)) {
      SumStory monthStory = StoryOf(ledger, month, false);
      if (!monthStory.lines.empty()) line.months.push_back(std::move(monthStory));
    }
    const bool emptyAccount = booking.rule == BookingRule::PeriodTotal && booking.amount == 0;
    if (emptyAccount && line.months.empty()) story.lines.pop_back();
  });
  return story;
}

}  // namespace

std::vector<SumStory> StoryOf(const LedgerFile& ledger, const ledger::Figure& figure) {
  std::vector<SumStory> stories;
  stories.reserve(figure.terms.size());
  for (const ledger::LedgerTerm& term : figure.terms) {
    stories.push_back(StoryOf(ledger, ledger.Slot(term.slot), term.subtracted));
  }
  return stories;
}

}  // namespace krnqb::cli
