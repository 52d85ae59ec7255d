#include "qbxml/envelope.h"

#include <gtest/gtest.h>

namespace krnqb {
namespace {

TEST(EnvelopeHead, StatesVersion20InAProcessingInstruction) {
  EXPECT_EQ(EnvelopeHead("2.0"),
            "<?xml version=\"1.0\"?>\r\n<?qbxml version=\"2.0\"?>\r\n<QBXML>\r\n"
            "<QBXMLMsgsRq onError=\"continueOnError\">");
}

TEST(EnvelopeHead, StatesVersion11InADocumentTypeWithAnAddress) {
  EXPECT_EQ(EnvelopeHead("1.1"),
            "<?xml version=\"1.0\"?>\r\n"
            "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 1.1//EN' "
            "'http://developer.intuit.com'>\r\n<QBXML>\r\n"
            "<QBXMLMsgsRq onError=\"continueOnError\">");
}

TEST(EnvelopeHead, IsThatOfVersion10ForAnyOtherText) {
  const std::string head =
      "<?xml version=\"1.0\"?>\r\n<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 1.0//EN' >\r\n<QBXML>\r\n"
      "<QBXMLMsgsRq onError=\"continueOnError\">";
  for (const char* version : {"1.0", "", "3.0", "2"}) EXPECT_EQ(EnvelopeHead(version), head) << version;
}

TEST(EnvelopeTail, ClosesMessageSetAndDocument) {
  EXPECT_EQ(EnvelopeTail(), "</QBXMLMsgsRq>\r\n</QBXML>");
}

}  // namespace
}  // namespace krnqb
