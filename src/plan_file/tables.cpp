#include "plan_file/tables.h"

#include <fmt/format.h>

#include <unordered_map>
#include <utility>

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

// What the last of several loads of one table leaves. The others are not copied: each may contain the next.
class Replacements {
 public:
  void Add(const Load& load) {
    into_ = load.into;
    if (XmlElement stamp = load.from.Child("lastsavedid")) stamp_ = std::move(stamp);
    blocks_ = load.from.Child("tableblocks");
  }

  void Apply() const {
    Replace("lastsavedid", stamp_);
    Replace("tableblocks", blocks_);
  }

 private:
  void Replace(std::string_view name, const XmlElement& replacement) const {
    if (!replacement) return;
    XmlElement table = into_;
    XmlElement present = table.Child(name);
    table.InsertCopy(replacement, present);
    if (present) present.Remove();
  }

  XmlElement into_;
  XmlElement stamp_;
  XmlElement blocks_;
};

}  // namespace

PlanTables::PlanTables(PlanDocument document) : document_(std::move(document)) {
  for (const StoredTable& table : document_.tables) elements_.emplace(table.id, table.element);
}

XmlElement PlanTables::Element(std::string_view id) const {
  const auto found = elements_.find(std::string(id));
  if (found == elements_.end()) {
    throw Error(error_number::subscriptOutOfRange,
                fmt::format("Subscript out of range: the plan has no table {}", id));
  }
  return found->second;
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
  std::unordered_map<std::string, Replacements> lastById;
  for (const XmlElement& item : parsed.element.SelectAll("descendant-or-self::tableitem")) {
    lastById[item.Attribute("id").value_or("")].Add(CheckedLoad(item, *this));
  }
  for (const auto& [id, last] : lastById) {
    last.Apply();
    changed_ = true;
  }
}

}  // namespace krnqb::plan_file
