#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fakes/journal.h"
#include "krnqb/plan_object.h"

namespace krnqb::fakes {

/// Returns the short form of a table id in the journal: 20000000000000000000000000000600 is 20..0600.
inline std::string ShortTableId(std::string_view id) {
  const bool usual = id.size() == 32 && id.substr(2, 26) == std::string(26, '0');
  return usual ? std::string(id.substr(0, 2)) + ".." + std::string(id.substr(28)) : std::string(id);
}

/// Returns the table id with these first two and last four digits.
inline std::string TableId(std::string_view valueSet, std::string_view table) {
  return std::string(valueSet) + std::string(26, '0') + std::string(table);
}

/// The plan's tables as texts by id, and every document that was loaded into the plan.
struct PlanContent {
  std::map<std::string, std::string> tables;
  std::vector<std::string> loaded;
};

class FakePlanTable : public PlanTable {
 public:
  FakePlanTable(std::string text, std::shared_ptr<Journal> journal)
      : text_(std::move(text)), journal_(std::move(journal)) {}

  std::string Serialize() override {
    journal_->Record("Serialize");
    return text_;
  }

 private:
  std::string text_;
  std::shared_ptr<Journal> journal_;
};

class FakePlanData : public PlanData {
 public:
  FakePlanData(std::shared_ptr<PlanContent> content, std::shared_ptr<Journal> journal)
      : content_(std::move(content)), journal_(std::move(journal)) {}

  std::shared_ptr<PlanTable> tables(std::string_view id) override {
    journal_->Record("tables " + ShortTableId(id));
    const auto table = content_->tables.find(std::string(id));
    if (table == content_->tables.end()) throw Error(error_number::subscriptOutOfRange);
    return std::make_shared<FakePlanTable>(table->second, journal_);
  }

  /// Replaces the tables that the document contains. Overwrites the argument, since the component must not
  /// read it afterwards.
  void Deserialize(std::string& document) override {
    const std::string taken = std::exchange(document, "left behind by the plan");
    std::vector<std::string> items = TableItems(taken);
    std::string line = "Deserialize";
    for (const std::string& item : items) line += " " + ShortTableId(IdOf(item));
    if (items.empty()) line += taken.empty() ? " nothing" : " no table";
    journal_->Record(line);
    content_->loaded.push_back(taken);
    for (const std::string& item : items) content_->tables[IdOf(item)] = item;
  }

 private:
  static std::vector<std::string> TableItems(const std::string& document) {
    static constexpr std::string_view opening = "<tableitem ";
    static constexpr std::string_view closing = "</tableitem>";
    std::vector<std::string> items;
    for (auto start = document.find(opening); start != std::string::npos;
         start = document.find(opening, start + 1)) {
      const auto end = document.find(closing, start);
      if (end != std::string::npos) items.push_back(document.substr(start, end + closing.size() - start));
    }
    return items;
  }
  static std::string IdOf(const std::string& item) {
    const auto start = item.find("id=\"") + 4;
    return item.substr(start, item.find('"', start) - start);
  }

  std::shared_ptr<PlanContent> content_;
  std::shared_ptr<Journal> journal_;
};

class FakePlan : public PlanObject {
 public:
  FakePlan(std::shared_ptr<PlanContent> content, std::shared_ptr<Journal> journal)
      : content_(std::move(content)), journal_(std::move(journal)) {}
  ~FakePlan() override { journal_->Note("plan released"); }
  FakePlan(const FakePlan&) = delete;
  FakePlan& operator=(const FakePlan&) = delete;

  bool OpenPlan(std::string_view planFile) override {
    journal_->Record("OpenPlan " + std::string(planFile));
    return canOpen;
  }

  std::shared_ptr<PlanData> Data() override {
    journal_->Record("Data");
    return std::make_shared<FakePlanData>(content_, journal_);
  }

  bool canOpen = true;

 private:
  std::shared_ptr<PlanContent> content_;
  std::shared_ptr<Journal> journal_;
};

}  // namespace krnqb::fakes
