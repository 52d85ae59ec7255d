#include <gtest/gtest.h>

#include "fakes/test_host.h"

// An import preserves texts: accents, markup characters, and everything in the host's tables besides the
// cells.

namespace krnqb {
namespace {

using fakes::Account;
using fakes::AccountAnswer;
using fakes::Block;
using fakes::Row;
using fakes::TableBlocks;
using fakes::TableId;
using fakes::TableRecord;
using fakes::TablesDocument;
using fakes::TableText;
using fakes::TestHost;
using fakes::TextOf;

class AccountTexts : public testing::Test {
 protected:
  void Put(const std::string& id, const std::string& tableBlocks) {
    host.planContent->tables[id] = TableText(id, tableBlocks);
  }
  void PutPlain() {
    Put(planned, TableBlocks({Block("db_income_range_cat3", {Row({"A"}), Row({"B"}), Row({"C"})})}));
  }
  std::string Document(const std::string& answer) {
    return TextOf(host.component.KRNDeserialize(Variant(answer)));
  }

  TestHost host;
  const std::string planned = TableId("20", "0600");
  const std::string actual = TableId("21", "0600");
};

TEST_F(AccountTexts, KeepMarkupCharactersAndAccents) {
  PutPlain();
  const char* names[] = {"Meals &amp; Entertainment",
                         "Caf\xC3\xA9 cr\xC3\xA8me",
                         "&lt;b&gt;",
                         "O'Neill \"Ltd\"",
                         "\xE2\x82\xAC 5",
                         "\xF0\x9F\x8C\xB1",
                         "a ]] b"};
  for (const char* name : names) {
    const std::string document = Document(AccountAnswer("4", {Account("1", name)}));
    EXPECT_TRUE(fakes::Holds(document, Row({"A"}) + Row({name}) + Row({"B"}))) << document;
  }
}

TEST_F(AccountTexts, ReadCharacterReferences) {
  PutPlain();
  EXPECT_TRUE(fakes::Holds(Document(AccountAnswer("4", {Account("1", "60200 &#183; Auto &apos;&quot;")})),
                           Row({"60200 \xC2\xB7 Auto '\""})));
}

TEST_F(AccountTexts, ReadTheWholeTextOfAName) {
  PutPlain();
  const std::string name = "<![CDATA[Meals & ]]><b>Enter<!-- x -->tain</b>ment";
  EXPECT_TRUE(
      fakes::Holds(Document(AccountAnswer("4", {Account("1", name)})), Row({"Meals &amp; Entertainment"})));
}

TEST_F(AccountTexts, MatchThePlanWithMarkupCharactersAndAccents) {
  const std::string blocks = TableBlocks(
      {Block("db_income_range_cat3", {Row({"Meals &amp; More"}), Row({"Caf\xC3\xA9"}), Row({"C"})})});
  Put(planned, blocks);
  const std::string document =
      Document(AccountAnswer("4", {Account("1", "Meals &amp; More"), Account("2", "Caf&#233;")}));
  EXPECT_TRUE(fakes::Holds(document, blocks)) << document;
}

TEST_F(AccountTexts, IgnoreADeclaredEncoding) {
  PutPlain();
  const std::string body =
      "<AccountQueryRs requestID=\"4\">" + Account("1", "Caf\xC3\xA9") + "</AccountQueryRs>";
  for (const char* encoding : {"UTF-8", "UTF-16", "ISO-8859-1", "windows-1252", "ibm850"}) {
    const std::string answer =
        "<?xml version=\"1.0\" encoding=\"" + std::string(encoding) + "\"?>\r\n" + body;
    EXPECT_TRUE(fakes::Holds(Document(answer), Row({"Caf\xC3\xA9"}))) << encoding;
  }
}

TEST_F(AccountTexts, AreRefusedInADocumentThatDeclaresEntities) {
  const std::string body = "<AccountQueryRs requestID=\"4\">" + Account("1", "Rent") + "</AccountQueryRs>";
  EXPECT_EQ(Document("<!DOCTYPE AccountQueryRs [<!ENTITY e \"x\">]>" + body), "");
  EXPECT_EQ(Document("<!DOCTYPE AccountQueryRs [<!ENTITY % p \"x\">]>" + body), "");
  EXPECT_NE(Document("<!DOCTYPE AccountQueryRs PUBLIC '-//X//DTD X//EN' 'http://127.0.0.1:1/x.dtd'>" + body),
            "")
      << "a document type without entities is ignored and nothing is loaded";
}

TEST_F(AccountTexts, AreRefusedInADocumentThatIsNotWellFormed) {
  for (const std::string& name : {std::string("a ]]> b"), std::string("a & b"), std::string("a &nbsp; b"),
                                  std::string("a < b"), std::string("\x01"), std::string("\xFF")}) {
    EXPECT_EQ(Document(AccountAnswer("4", {Account("1", name)})), "") << name;
  }
}

TEST_F(AccountTexts, OfTheTableSurviveAnImportThatAddsNothing) {
  const std::string blocks =
      "<tableblocks z=\"1\" a=\"&quot;\xC3\xA9&quot;\">\n  <!-- kept -->\n  <block startrow=\"2\" "
      "id=\"db_income_range_cat3\" name=\"Caf\xC3\xA9\">\n    <row>\n      <c b=\"2\" a=\"1\">A</c>\n      "
      "<c><![CDATA[=B2 & <x>]]></c><?page break?>\n    </row>\n  </block>\n</tableblocks>";
  Put(planned, blocks);
  Put(actual, blocks);
  EXPECT_EQ(Document(AccountAnswer("4", {})),
            TablesDocument({TableRecord(planned, blocks), TableRecord(actual, blocks)}));
}

TEST_F(AccountTexts, OfTheTableSurviveWhenARowIsAdded) {
  Put(planned,
      "<tableblocks>\n  <!-- kept -->\n  <block startrow=\"2\" id=\"db_income_range_cat3\">\n    "
      "<row h=\"\xC3\xA9\"><c>A</c></row>\n    <row><c><![CDATA[B & B]]></c></row>\n    <row><c>C</c></row>\n"
      "  </block>\n</tableblocks>");
  const std::string document = Document(AccountAnswer("4", {Account("1", "Rent")}));
  for (const char* kept :
       {"<tableblocks>\n  <!-- kept -->\n  <block startrow=\"2\" id=\"db_income_range_cat3\">\n",
        "<row h=\"\xC3\xA9\"><c>A</c></row>", "<row h=\"\xC3\xA9\"><c>Rent</c></row>",
        "<row><c><![CDATA[B & B]]></c></row>", "<row><c>C</c></row>\n  </block>\n</tableblocks>"}) {
    EXPECT_TRUE(fakes::Holds(document, kept)) << kept << " in " << document;
  }
}

TEST_F(AccountTexts, OfATableMayBeginWithAnXmlDeclaration) {
  host.planContent->tables[planned] =
      "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n" +
      TableText(planned,
                TableBlocks({Block("db_income_range_cat3", {Row({"\xC3\x84"}), Row({"B"}), Row({"C"})})}));
  EXPECT_TRUE(fakes::Holds(Document(AccountAnswer("4", {Account("1", "Rent")})),
                           Row({"\xC3\x84"}) + Row({"Rent"}) + Row({"B"})));
}

}  // namespace
}  // namespace krnqb
