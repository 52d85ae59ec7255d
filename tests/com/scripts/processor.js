// usage: cscript //nologo processor.js REQUEST-NUMBER
//
// Calls the test processor late-bound, as scripts call a request processor: it answers from the recording, counts, and
// refuses what it is told to refuse.

var processor = new ActiveXObject("KRN6_TestProcessor.RequestProcessor");

function Attempt(name, call) {
  try {
    WScript.Echo(name + ": " + call());
  } catch (error) {
    WScript.Echo(name + " refused: " + (error.number >>> 0).toString(16) + " " + error.description);
  }
}

var request = '<?xml version="1.0"?>\r\n<!DOCTYPE QBXML PUBLIC \'-//INTUIT//DTD QBXML QBD 1.0//EN\' >\r\n<QBXML>\r\n' +
  '<QBXMLMsgsRq onError="continueOnError">\r\n<CompanyQueryRq requestID="101"/>\r\n</QBXMLMsgsRq>\r\n</QBXML>';
var ticket = "";
Attempt("connection", function () { return String(processor.OpenConnection("id", "name")); });
Attempt("session", function () { ticket = processor.BeginSession("", 2); return ticket; });
Attempt("company", function () { return processor.GetCurrentCompanyFileName(ticket); });
Attempt("major", function () { return processor.MajorVersion; });
Attempt("minor", function () { return processor.MinorVersion; });
Attempt("request", function () {
  return /<FirstMonthFiscalYear>(\w+)</.exec(processor.ProcessRequest(ticket, request))[1];
});
Attempt("unknown request", function () { return processor.ProcessRequest(ticket, "<none/>"); });
WScript.Echo("end of processor.js");
WScript.Quit(0);
