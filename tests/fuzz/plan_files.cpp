#include "fuzz/input.h"
#include "fuzz/plan_promises.h"
#include "plan_file/changes.h"
#include "plan_file/views/figures.h"
#include "plan_file/views/planned_names.h"
#include "plan_file/views/row_figures.h"
#include "plan_file/views/table_view.h"
#include "support/display_width.h"

// Plan files: the input is a file's bytes; what follows its first NUL, if there is one, is loaded into it.

namespace krnqb::fuzz {
namespace {

using plan_file::PlanContent;

void RequireListing(const PlanContent& content) {
  const std::string listing = plan_file::CellListing(content);
  for (const char character : listing) {
    Require((character >= ' ' && character < '\x7F') || character == '\t' || character == '\n',
            "a listing is printable ASCII", listing);
  }
  std::size_t cells = 0;
  for (const auto& table : content) {
    for (const auto& block : table.blocks) {
      for (const auto& row : block.rows) cells += row.size();
    }
  }
  Require(static_cast<std::size_t>(std::ranges::count(listing, '\n')) == cells,
          "a listing has a line per cell", listing);
}

void RequireNoChange(const PlanContent& before, const PlanContent& after) {
  for (const plan_file::TableChange& change : plan_file::CompareTables(before, after)) {
    Require(!change.Any() && change.changed.empty() && change.added.empty(), "a plan equals itself",
            change.id);
  }
}

// A row keeps its name, rows keep their order, and all are matched or new.
void RequireMatches(const PlanContent& content) {
  const plan_file::PlanBlock* earlier = nullptr;
  for (const auto& table : content) {
    for (const auto& block : table.blocks) {
      if (earlier != nullptr) {
        const auto matches = plan_file::MatchRows(earlier->rows, block.rows);
        Require(matches.size() == block.rows.size(), "every row is matched or new", block.id);
        std::optional<std::size_t> last;
        for (const auto& match : matches) {
          if (!match) continue;
          Require(*match < earlier->rows.size() && (!last || *match > *last), "matched rows keep their order",
                  block.id);
          last = match;
        }
      }
      earlier = &block;
    }
  }
}

void RequireViews(PlanContent content, std::optional<YearMonth> start) {
  constexpr std::size_t width = 40;
  plan_file::NameRowsAfterPlanned(content);
  for (const auto& table : content) {
    for (const plan_file::CellView cells : {plan_file::CellView::Texts, plan_file::CellView::Values}) {
      const std::string view = plan_file::TableView(table, start, {.width = width, .cells = cells});
      for (std::size_t at = 0; at < view.size(); at = view.find('\n', at) + 1) {
        const std::string line = view.substr(at, view.find('\n', at) - at);
        Require(DisplayWidth(line) <= width, "no line of a view is wider than asked for", line);
      }
    }
  }
  plan_file::FiguresOf(content, QBKRN_ALD, plan_file::BlockKind::Planned);
  plan_file::FiguresOf(content, QBKRN_BRI, plan_file::BlockKind::Actual);
  RowFiguresOf(content, QBKRN_ALD, plan_file::FigureSource::ActualCells);
  RowFiguresOf(content, QBKRN_BRI, plan_file::FigureSource::GrowthFormulas);
}

void Run(Input input) {
  const std::string bytes = input.Text();
  plan_file::PlanDocument document;
  const auto refusal = ErrorOf([&] { document = plan_file::ReadPlanDocument(bytes, "plan.kpf"); });
  if (refusal) {
    constexpr std::string_view failed = "cannot open the plan plan.kpf: ";
    const std::string expected = std::string(failed) + (bytes.empty() ? "it is empty; " : "line ");
    Require(refusal->Description().starts_with(expected), "a fault is reported with its line",
            refusal->Description());
    return;
  }
  const PlanContent content = ContentOf(document);
  const std::string text = plan_file::PlanDocumentText(document);
  RequirePlan(text);
  const PlanContent again = ContentOf(plan_file::ReadPlanDocument(text, "plan.kpf"));
  RequireNoChange(content, again);
  Require(plan_file::CellListing(content) == plan_file::CellListing(again), "a plan keeps its cells", text);
  RequireListing(content);
  RequireMatches(content);
  RequireViews(content, document.start);

  MemoryPlan plan(std::move(document));
  std::string tables = input.Text();
  ErrorOf([&] { plan.Tables().Deserialize(tables); });
  RequirePlan(plan.Text());
  plan_file::ChangeListing(plan_file::CompareTables(content, ContentOf(plan.Tables().Document())));
}

}  // namespace
}  // namespace krnqb::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  krnqb::fuzz::Run({data, size});
  return 0;
}
