#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "krnqb/enumerations.h"
#include "krnqb/xml_element.h"
#include "plan_file/attributes.h"
#include "plan_file/frame.h"

namespace krnqb::plan_file {

/// One `tableitem` of a plan.
struct StoredTable {
  std::string id;
  XmlElement element;  ///< in the plan's own document
};

/// A parsed plan file: the element `plan` with its attributes `product` and `start`, and the `tableitem`
/// elements of its child `tables`, in order, with unique ids and none inside another. Elements of these names
/// in a namespace are ignored and remain in the plan.
struct PlanDocument {
  PlanFrame frame;
  XmlElement plan;
  std::optional<QBKRNproduct> product;
  std::optional<YearMonth> start;
  std::vector<StoredTable> tables;
};

/// Parses a plan file, given as bytes in the encoding that they declare. Throws Error if they are not a plan;
/// the description names `file`, the line and the fault.
PlanDocument ReadPlanDocument(std::string_view bytes, const std::filesystem::path& file);

/// Returns the text of the plan's file, in UTF-8.
std::string PlanDocumentText(const PlanDocument& document);

}  // namespace krnqb::plan_file
