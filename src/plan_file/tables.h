#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "krnqb/plan_object.h"
#include "plan_file/document.h"

namespace krnqb::plan_file {

/// The tables of an open plan, in memory. Loaded tables reach the file when the plan is saved.
class PlanTables : public PlanData {
 public:
  explicit PlanTables(PlanDocument document) : document_(std::move(document)) {}

  /// Returns the table with exactly that id. Throws Error 9, naming the id, if the plan has none. The table's
  /// `Serialize` returns the current `tableitem` element.
  std::shared_ptr<PlanTable> tables(std::string_view id) override;

  /// Loads every `tableitem` of a document, wherever it stands in it, in order: its `tableblocks` and, where
  /// it has one, its `lastsavedid` replace the table's own. Attributes and other elements of the table are
  /// the planning program's and stay.
  ///
  /// A text that is empty or does not parse changes nothing; one that does not parse is added to
  /// `RefusedLoads`. Otherwise everything is checked first, and
  /// nothing is changed when there is an Error: 9 for an id that the plan does not have, 5 for a `tableitem`
  /// without an id or without `tableblocks`. `text` itself is left as it is.
  void Deserialize(std::string& text) override;

  const PlanDocument& Document() const noexcept { return document_; }
  /// The `tableitem` element of that id; error 9 as in `tables`.
  XmlElement Element(std::string_view id) const;

  /// Whether tables have been loaded since the plan was opened or last saved.
  bool Changed() const noexcept { return changed_; }
  void Saved() noexcept { changed_ = false; }

  /// Returns, for each load of a text that did not parse, the line (counted from 1) and the reason.
  const std::vector<std::string>& RefusedLoads() const noexcept { return refusedLoads_; }

 private:
  PlanDocument document_;
  bool changed_ = false;
  std::vector<std::string> refusedLoads_;
};

}  // namespace krnqb::plan_file
