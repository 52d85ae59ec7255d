#include "cli/doctor/healthy_pair.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace krnqb::cli::tests {
namespace {

// The company is made once; each pair gets a copy.
const std::string& CompanyBytes() {
  static const std::string bytes = [] {
    const Workplace place;
    return ReadText(place.NurseryYear());
  }();
  return bytes;
}

}  // namespace

HealthyPair::HealthyPair() {
  WriteText(Company(), CompanyBytes());
  EXPECT_EQ(RunProgram({"plan", "new", Plan(), "--product", "ald", "--start", "2003-01"}).code, 0);
}

void HealthyPair::ChangePlan(std::string_view part, std::string_view replacement) const {
  WriteText(Plan(), Replaced(ReadText(Plan()), part, replacement));
}

void HealthyPair::Load(std::string_view response, std::string_view records) const {
  const std::string name(response);
  WriteText(File("more.xml"), "<?xml version=\"1.0\"?><QBXML><QBXMLMsgsRs><" + name +
                                  " requestID=\"1\" statusCode=\"0\" statusSeverity=\"Info\" "
                                  "statusMessage=\"Status OK\">" +
                                  std::string(records) + "</" + name + "></QBXMLMsgsRs></QBXML>");
  const ProgramRun loaded = RunProgram({"company", "load", Company(), File("more.xml")});
  EXPECT_EQ(loaded.code, 0) << loaded.err;
}

ProgramRun HealthyPair::Import(const Words& more) const {
  return RunProgram(With(
      {"import", "--company", Company(), "--plan", Plan(), "--expenses", "--income", "--balances", "all"},
      more));
}

ProgramRun HealthyPair::Doctor(const Words& more) const {
  return RunProgram(With({"doctor", "--company", Company(), "--plan", Plan()}, more));
}

}  // namespace krnqb::cli::tests
