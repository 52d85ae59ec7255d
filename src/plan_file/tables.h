#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "krnqb/plan_object.h"
#include "plan_file/document.h"

namespace krnqb::plan_file {

/// The tables of an open plan, in memory. Loaded tables reach the file when the plan is saved.
class PlanTables : public PlanData {
 public:
  explicit PlanTables(PlanDocument document);

  /// Returns the table with exactly that id. Throws Error 9, naming the id, if the plan has none. The table's
  /// `Serialize` returns the current `tableitem` element.
  std::shared_ptr<PlanTable> tables(std::string_view id) override;

  /// Loads every `tableitem` of a document, at any depth, in document order: its `tableblocks` and, if it has
  /// one, its `lastsavedid` replace the table's own. The table's attributes and other elements belong to the
  /// planning program and stay.
  ///
  /// A text that is empty or does not parse changes nothing; one that does not parse is added to
  /// `RefusedLoads`. Any other document is checked first and changes nothing if it has a fault: throws
  /// Error 9 for an id that the plan does not have, and Error 5 for a `tableitem` without an id or
  /// `tableblocks`. `text` is unchanged.
  void Deserialize(std::string& text) override;

  const PlanDocument& Document() const noexcept { return document_; }
  /// Returns the `tableitem` element with that id. Throws Error 9 as `tables` does.
  XmlElement Element(std::string_view id) const;

  /// Returns whether tables have been loaded since the plan was opened or last saved.
  bool Changed() const noexcept { return changed_; }
  void Saved() noexcept { changed_ = false; }

  /// Returns, for each load of a text that did not parse, the line (counted from 1) and the reason.
  const std::vector<std::string>& RefusedLoads() const noexcept { return refusedLoads_; }

 private:
  PlanDocument document_;
  std::unordered_map<std::string, XmlElement> elements_;  // the tables by id
  bool changed_ = false;
  std::vector<std::string> refusedLoads_;
};

}  // namespace krnqb::plan_file
