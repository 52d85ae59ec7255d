#include "qbxml/envelope.h"

namespace krnqb {
namespace {

constexpr std::string_view messageSetLines =
    "<QBXML>\r\n"
    "<QBXMLMsgsRq onError=\"continueOnError\">";

// Up to 1.1 a document type states the version, from 2.0 on a processing instruction. The 1.0 document type
// has no system identifier: QuickBooks 2002 expects none.
std::string_view VersionLine(std::string_view version) {
  if (version == "2.0") return "<?qbxml version=\"2.0\"?>";
  if (version == "1.1") {
    return "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 1.1//EN' 'http://developer.intuit.com'>";
  }
  return "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 1.0//EN' >";
}

}  // namespace

std::string EnvelopeHead(std::string_view version) {
  std::string head = "<?xml version=\"1.0\"?>\r\n";
  head += VersionLine(version);
  head += "\r\n";
  head += messageSetLines;
  return head;
}

std::string EnvelopeTail() {
  return "</QBXMLMsgsRq>\r\n"
         "</QBXML>";
}

}  // namespace krnqb
