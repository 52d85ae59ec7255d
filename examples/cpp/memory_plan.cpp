#include "memory_plan.h"

#include <krnqb/error.h>

#include <utility>

namespace {

class MemoryTable : public krnqb::PlanTable {
 public:
  explicit MemoryTable(std::string xml) : xml_(std::move(xml)) {}
  std::string Serialize() override { return xml_; }

 private:
  std::string xml_;
};

}  // namespace

class MemoryPlan::Tables : public krnqb::PlanData {
 public:
  std::shared_ptr<krnqb::PlanTable> tables(std::string_view id) override {
    const auto found = texts.find(id);
    if (found == texts.end()) throw krnqb::Error(krnqb::error_number::subscriptOutOfRange);
    return std::make_shared<MemoryTable>(found->second);
  }

  void Deserialize(std::string& document) override {
    for (const krnqb::XmlElement& table : krnqb::XmlElement::Parse(document).Children()) {
      if (const auto id = table.Attribute("id")) texts.insert_or_assign(*id, table.Xml());
    }
  }

  std::map<std::string, std::string, std::less<>> texts;
};

MemoryPlan::MemoryPlan() : tables_(std::make_shared<Tables>()) {}

void MemoryPlan::AddTable(std::string_view id, std::string_view xml) {
  tables_->texts.insert_or_assign(std::string(id), std::string(xml));
}

std::vector<std::string> MemoryPlan::RowNames(std::string_view tableId, std::string_view block) const {
  std::vector<std::string> names;
  const auto table = tables_->texts.find(tableId);
  if (table == tables_->texts.end()) return names;
  for (const krnqb::XmlElement& candidate :
       krnqb::XmlElement::Parse(table->second).Child("tableblocks").Children()) {
    if (candidate.Attribute("id") != block) continue;
    for (const krnqb::XmlElement& row : candidate.Children()) names.push_back(row.FirstChild().Text());
  }
  return names;
}

bool MemoryPlan::OpenPlan(std::string_view /*planFile*/) {
  return false;
}

std::shared_ptr<krnqb::PlanData> MemoryPlan::Data() {
  return tables_;
}
