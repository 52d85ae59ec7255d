#pragma once

#include <initializer_list>
#include <string>

namespace krnqb::expected {

// Each function returns a part of the journal of an import, one call or event per line.

inline std::string Lines(std::initializer_list<std::string> lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

inline std::string Sequence(std::initializer_list<std::string> pieces) {
  std::string text;
  for (const std::string& piece : pieces) text += piece;
  return text;
}

inline std::string Progress(int percent) {
  return "ProgressBarChange " + std::to_string(percent) + " Processing...\n";
}

/// Checks an open session.
inline std::string FindsSession() {
  return "GetCurrentCompanyFileName\n";
}

inline std::string Connects() {
  return Lines(
      {"create processor", "OpenConnection KRN6_QB2002.dll, Korrin Software Data Exchange Component"});
}

/// Opens the first session and sends the request of the company check.
inline std::string OpensSession(const std::string& path = {}) {
  return Connects() + Lines({"BeginSession \"" + path + "\" 2", "ProcessRequest 101"});
}

/// Replaces a processor without a session by a new one.
inline std::string ReplacesProcessor() {
  return Lines({"create processor", "processor released",
                "OpenConnection KRN6_QB2002.dll, Korrin Software Data Exchange Component"});
}

/// Sends a request in an open session.
inline std::string Asks(const std::string& request) {
  return FindsSession() + "ProcessRequest " + request + "\n";
}

/// Reads the company in an open session.
inline std::string ReadsCompany() {
  return Asks("100") + Lines({"GetCurrentCompanyFileName", "MajorVersion", "MinorVersion"});
}

/// Runs a pass from its start until the account lists are read.
inline std::string BeginsFirstPass(const std::string& path = {}) {
  return Sequence(
      {Progress(20), OpensSession(path), ReadsCompany(), Progress(40), Asks("100"), Progress(60)});
}
inline std::string BeginsPassInOpenSession() {
  return Sequence({Progress(20), FindsSession(), ReadsCompany(), Progress(40), Asks("100"), Progress(60)});
}

inline std::string ReadsTable(const std::string& id) {
  return Lines({"Data", "tables " + id, "Serialize"});
}
inline std::string ReadsTables(const std::string& planned, const std::string& actual) {
  return ReadsTable(planned) + ReadsTable(actual);
}
inline std::string LoadsTables(const std::string& ids) {
  return Lines({"Data", "Deserialize " + ids});
}

/// Reads the tables that sales and costs share.
inline std::string ReadsSalesTables() {
  return ReadsTables("20..0400", "21..0400");
}
inline std::string LoadsSalesTables() {
  return LoadsTables("20..0400 21..0400");
}
inline std::string ReadsExpenseTables() {
  return ReadsTables("20..0600", "21..0600");
}
inline std::string LoadsExpenseTables() {
  return LoadsTables("20..0600 21..0600");
}

/// Requests all lists, for an import of both groups of accounts and of balances.
inline std::string AsksAllLists() {
  return Asks("4") + Asks("1") + Asks("2") + Asks("50");
}

/// Reads the twelve months of a year, with these requests for each month.
inline std::string ReadsMonths(int year, const std::string& progressText,
                               std::initializer_list<std::string> requests) {
  static constexpr int percents[] = {8, 17, 25, 33, 42, 50, 58, 67, 75, 83, 92, 100};
  static constexpr int lastDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  std::string text;
  for (int month = 1; month <= 12; ++month) {
    const int lastDay = lastDays[month - 1] + (month == 2 && year % 4 == 0 ? 1 : 0);
    const std::string monthText = std::to_string(year) + (month < 10 ? "-0" : "-") + std::to_string(month);
    const std::string dates = monthText + "-01 " + monthText + "-" + std::to_string(lastDay);
    text += "ProgressBarChange " + std::to_string(percents[month - 1]) + " " + progressText + "\n";
    for (const std::string& request : requests) text += Asks(request + " " + dates);
  }
  return text;
}

inline std::string ReadsExpenses(int year) {
  return ReadsMonths(year, "Importing expense balances...", {"10", "11", "12"});
}
inline std::string ReadsIncome(int year) {
  return ReadsMonths(year, "Importing income balances...", {"20", "21"});
}

/// Reads the transactions of 2002, for a plan that begins in January 2003.
inline std::string ReadsTransactions() {
  return FindsSession() + ReadsExpenses(2002) + FindsSession() + ReadsIncome(2002);
}

/// Writes past performance into a plan that begins in January 2003, for a company without cost accounts:
/// reads only the first period and the expenses of the import's year, and writes one cell.
inline std::string WritesFirstPastPeriod() {
  return ReadsTable("20..0800") + Asks("60") + ReadsExpenses(2002) + ReadsIncome(2000) +
         LoadsTables("20..0800");
}

inline std::string EndsImport() {
  return Lines({"AfterImport", "processor released"});
}

}  // namespace krnqb::expected
