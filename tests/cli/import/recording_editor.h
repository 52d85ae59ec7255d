#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "cli/workplace.h"

namespace krnqb::cli::tests {

/// Returns the lines of a recorded exchange.
inline std::vector<nlohmann::ordered_json> RecordingLines(const std::string& file) {
  std::vector<nlohmann::ordered_json> lines;
  std::istringstream text(ReadText(file));
  for (std::string line; std::getline(text, line);) lines.push_back(nlohmann::ordered_json::parse(line));
  return lines;
}

/// Edits the recorded line of every request whose text contains `part`. Fails the test if no text contains
/// it.
inline void EditRecording(const std::string& file, const std::string& part,
                          const std::function<void(nlohmann::ordered_json&)>& edit) {
  std::string edited;
  int found = 0;
  for (nlohmann::ordered_json& line : RecordingLines(file)) {
    if (line.value("request", "").find(part) != std::string::npos) {
      edit(line);
      ++found;
    }
    edited += line.dump() + '\n';
  }
  EXPECT_GT(found, 0) << "no request contains " << part;
  WriteText(file, edited);
}

/// Returns an answer to the account query `requestId` with one top-level account of each name.
inline std::string AccountsAnswer(int requestId, const std::string& status,
                                  const std::vector<std::string>& names) {
  std::string answer = "<?xml version=\"1.0\" ?>\n<QBXML>\n<QBXMLMsgsRs>\n<AccountQueryRs requestID=\"" +
                       std::to_string(requestId) + "\" " + status + ">\n";
  for (const std::string& name : names) {
    answer.append("<AccountRet>\n<ListID>").append(name).append("-1</ListID>\n<Name>").append(name);
    answer += "</Name>\n<Sublevel>0</Sublevel>\n</AccountRet>\n";
  }
  return answer + "</AccountQueryRs>\n</QBXMLMsgsRs>\n</QBXML>\n";
}

}  // namespace krnqb::cli::tests
