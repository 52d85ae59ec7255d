#include "plan_file/tables.h"

#include <fmt/format.h>

#include <algorithm>

#include "krnqb/error.h"
#include "xml/parser.h"

namespace krnqb::plan_file {
namespace {

class ElementTable : public PlanTable {
 public:
  explicit ElementTable(XmlElement element) : element_(std::move(element)) {}
  std::string Serialize() override { return element_.Xml(); }

 private:
  XmlElement element_;
};

// A table of the document being loaded and the table of the plan that it replaces.
struct Load {
  XmlElement from;
  XmlElement into;
};

Load CheckedLoad(const XmlElement& item, const PlanTables& tables) {
  const std::optional<std::string> id = item.Attribute("id");
  if (!id || id->empty()) {
    throw Error(error_number::invalidProcedureCall,
                "Invalid procedure call or argument: a tableitem has no id");
  }
  if (!item.Child("tableblocks")) {
    throw Error(error_number::invalidProcedureCall,
                fmt::format("Invalid procedure call or argument: the tableitem {} has no tableblocks", *id));
  }
  return {item, tables.Element(*id)};
}

void ReplaceChild(const Load& load, std::string_view name) {
  const XmlElement replacement = load.from.Child(name);
  if (!replacement) return;
  XmlElement table = load.into;
  XmlElement present = table.Child(name);
  table.InsertCopy(replacement, present);
  if (present) present.Remove();
}

}  // namespace

XmlElement PlanTables::Element(std::string_view id) const {
  const auto found = std::find_if(document_.tables.begin(), document_.tables.end(),
                                  [&](const StoredTable& table) { return table.id == id; });
  if (found == document_.tables.end()) {
    throw Error(error_number::subscriptOutOfRange,
                fmt::format("Subscript out of range: the plan has no table {}", id));
  }
  return found->element;
}

std::shared_ptr<PlanTable> PlanTables::tables(std::string_view id) {
  return std::make_shared<ElementTable>(Element(id));
}

void PlanTables::Deserialize(std::string& text) {
  const XmlParseResult parsed = ParseXmlText(text);
  if (parsed.fault) {
    if (!text.empty()) {
      refusedLoads_.push_back(fmt::format("line {}: {}", parsed.fault->line, parsed.fault->message));
    }
    return;
  }
  std::vector<Load> loads;
  for (const XmlElement& item : parsed.element.SelectAll("descendant-or-self::tableitem")) {
    loads.push_back(CheckedLoad(item, *this));
  }
  for (const Load& load : loads) {
    ReplaceChild(load, "lastsavedid");
    ReplaceChild(load, "tableblocks");
    changed_ = true;
  }
}

}  // namespace krnqb::plan_file
