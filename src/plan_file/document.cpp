#include "plan_file/document.h"

#include <fmt/format.h>

#include <unordered_set>

#include "krnqb/error.h"
#include "support/path_text.h"
#include "xml/parser.h"

namespace krnqb::plan_file {
namespace {

// Builds errors that name the file and mostly the line.
class Faults {
 public:
  explicit Faults(const std::filesystem::path& file) : file_(file) {}

  Error At(long line, std::string_view fault, std::string_view remedy) const {
    return Error(error_number::unspecified, fmt::format("cannot open the plan {}: line {}: {}; {}",
                                                        TextOfPath(file_), line, fault, remedy));
  }

  Error InFile(std::string_view fault, std::string_view remedy) const {
    return Error(error_number::unspecified,
                 fmt::format("cannot open the plan {}: {}; {}", TextOfPath(file_), fault, remedy));
  }

 private:
  const std::filesystem::path& file_;
};

constexpr std::string_view checkPath = "check that the path is that of a plan";
constexpr std::string_view restore = "correct it, or restore the plan from its .bak file";

// Returns whether a file begins as XML does, after blanks: in UTF-16 with a byte order mark or a "<".
bool LooksLikeXml(std::string_view bytes) {
  for (const std::string_view mark : {"\xEF\xBB\xBF", "\xFE\xFF", "\xFF\xFE"}) {
    if (!bytes.starts_with(mark)) continue;
    if (mark.size() == 2) return true;
    bytes.remove_prefix(mark.size());
  }
  constexpr std::string_view blanks(" \t\r\n\0", 5);
  const std::size_t begin = bytes.find_first_not_of(blanks);
  return begin != std::string_view::npos && bytes[begin] == '<';
}

XmlElement PlanElement(std::string_view bytes, const Faults& faults) {
  XmlParseResult parsed = ParseXmlBytes(bytes);
  if (parsed.fault && !LooksLikeXml(bytes)) {
    if (bytes.empty())
      throw faults.InFile("it is empty", "check the path, or restore the plan from its .bak file");
    throw faults.InFile("it is not an XML document", checkPath);
  }
  if (parsed.fault) {
    throw faults.At(parsed.fault->line, fmt::format("not well-formed XML ({})", parsed.fault->message),
                    restore);
  }
  if (!parsed.element.IsNamed("plan")) {
    const std::string name = parsed.element.Name();
    throw faults.At(parsed.element.Line(),
                    name == "plan" ? R"(the root element "plan" is in a namespace)"
                                   : fmt::format(R"(the root element is "{}", not "plan")", name),
                    checkPath);
  }
  return std::move(parsed.element);
}

std::optional<QBKRNproduct> ProductOf(const XmlElement& plan, const Faults& faults) {
  const std::optional<std::string> text = plan.Attribute("product");
  if (!text) return std::nullopt;
  const std::optional<QBKRNproduct> product = ProductFromText(*text);
  if (!product) {
    throw faults.At(plan.Line(), fmt::format("unknown product \"{}\"", *text), "write ald, bri or cor");
  }
  return product;
}

std::optional<YearMonth> StartOf(const XmlElement& plan, const Faults& faults) {
  const std::optional<std::string> text = plan.Attribute("start");
  if (!text) return std::nullopt;
  const std::optional<YearMonth> start = PlanStartFromText(*text);
  if (!start) {
    throw faults.At(plan.Line(), fmt::format("the start \"{}\" is not a month", *text),
                    "write it as YYYY-MM");
  }
  return start;
}

XmlElement TablesElement(const XmlElement& plan, const Faults& faults) {
  XmlElement tables = plan.Child("tables");
  if (!tables) throw faults.At(plan.Line(), "the plan has no \"tables\"", restore);
  for (XmlElement other = tables.NextSibling(); other; other = other.NextSibling()) {
    if (other.IsNamed("tables")) throw faults.At(other.Line(), "the plan has two \"tables\"", restore);
  }
  return tables;
}

// Loading a table also loads those inside it, which would replace other tables of the plan.
void RefuseInnerTables(const XmlElement& table, const std::string& id, const Faults& faults) {
  if (const XmlElement inner = table.Select("descendant::tableitem")) {
    throw faults.At(inner.Line(), fmt::format("the table {} contains another table", id), restore);
  }
}

// Listings repeat the ids in every line.
void RefuseLongId(const XmlElement& element, std::string_view what, const Faults& faults) {
  constexpr std::size_t longest = 1000;
  if (element.Attribute("id").value_or("").size() > longest) {
    throw faults.At(element.Line(), fmt::format("the id of a {} is longer than 1,000 bytes", what), restore);
  }
}

std::vector<StoredTable> TablesOf(const XmlElement& plan, const Faults& faults) {
  std::vector<StoredTable> tables;
  std::unordered_set<std::string> ids;
  for (const XmlElement& element : TablesElement(plan, faults).Children()) {
    if (!element.IsNamed("tableitem")) continue;
    const std::string id = element.Attribute("id").value_or("");
    if (id.empty()) throw faults.At(element.Line(), "a table has no id", restore);
    if (!ids.insert(id).second) {
      throw faults.At(element.Line(), fmt::format("the table {} occurs twice", id), restore);
    }
    RefuseLongId(element, "table", faults);
    RefuseInnerTables(element, id, faults);
    const XmlElement blocks = element.Child("tableblocks");
    for (XmlElement block = blocks.FirstChild(); block; block = block.NextSibling()) {
      RefuseLongId(block, "block", faults);
    }
    tables.push_back({id, element});
  }
  return tables;
}

}  // namespace

PlanDocument ReadPlanDocument(std::string_view bytes, const std::filesystem::path& file) {
  const Faults faults(file);
  PlanDocument document;
  document.plan = PlanElement(bytes, faults);
  document.product = ProductOf(document.plan, faults);
  document.start = StartOf(document.plan, faults);
  document.tables = TablesOf(document.plan, faults);
  document.frame = FrameOf(bytes);
  return document;
}

std::string PlanDocumentText(const PlanDocument& document) {
  return document.frame.head + document.plan.Xml() + document.frame.tail;
}

}  // namespace krnqb::plan_file
