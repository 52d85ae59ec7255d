#include "plan_file/fixture.h"

#include <fmt/format.h>

#include <charconv>

namespace krnqb::plan_file {

namespace fs = std::filesystem;

std::string SmallPlanText() {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- Garden plan -->
<plan start='2003-04' product="ald">
  <tables>
    <!-- planned -->
    <tableitem title='Expenses &amp; more' id="20000000000000000000000000000600">
      <lastsavedid>17</lastsavedid>
      <notes>keep me</notes>
      <tableblocks>
        <block startrow='5' id="db_income_range_cat3">
          <row><c>Rent</c><c>0</c></row>
          <row><c><![CDATA[R&D]]></c><c>=SUM(B5:B5)</c></row><!-- closing -->
        </block>
      </tableblocks>
    </tableitem>
    <tableitem id="21000000000000000000000000000600">
      <lastsavedid>17</lastsavedid>
      <tableblocks><block id="db_income_range_cat3_actual" startrow="5"><row><c>Rent</c><c>0</c></row></block></tableblocks>
    </tableitem>
  </tables>
</plan>
)";
}

void MarkVersion(PlanFile& plan, int version) {
  std::string document = "<tables>";
  for (const std::string& id : plan.TableIds()) {
    XmlElement blocks = plan.Table(id).Child("tableblocks").Clone();
    blocks.FirstChild().FirstChild().FirstChild().SetText(fmt::format("version {}", version));
    document += fmt::format(R"(<tableitem id="{}"><lastsavedid>{}</lastsavedid>{}</tableitem>)", id, version,
                            blocks.Xml());
  }
  document += "</tables>";
  plan.Data()->Deserialize(document);
}

std::optional<int> WholeVersion(const fs::path& file) {
  std::optional<std::string> whole;
  try {
    const std::shared_ptr<PlanFile> plan = PlanFile::Open(file);
    for (const std::string& id : plan->TableIds()) {
      const XmlElement table = plan->Table(id);
      const std::string stamp = table.Child("lastsavedid").Text();
      const std::string cell = table.Child("tableblocks").FirstChild().FirstChild().FirstChild().Text();
      if (cell != "version " + stamp || (whole && *whole != stamp)) return std::nullopt;
      whole = stamp;
    }
  } catch (const Error&) {
    return std::nullopt;
  }
  int version = 0;
  if (!whole) return std::nullopt;
  std::from_chars(whole->data(), whole->data() + whole->size(), version);
  return version;
}

}  // namespace krnqb::plan_file
