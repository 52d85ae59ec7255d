#include <fmt/format.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "host/plan.h"
#include "xml/parser.h"

namespace krnqb::testing {
namespace {

constexpr HRESULT subscriptOutOfRange = static_cast<HRESULT>(0x800A0009);

std::string FileText(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void AppendUnit(std::string& ascii, wchar_t unit) {
  switch (unit) {
    case L'\n':
      ascii += "\\n";
      return;
    case L'\r':
      ascii += "\\r";
      return;
    case L'\t':
      ascii += "\\t";
      return;
    case L'\\':
      ascii += "\\\\";
      return;
    default:
      break;
  }
  if (unit >= 0x20 && unit < 0x7F) {
    ascii += static_cast<char>(unit);
  } else {
    fmt::format_to(std::back_inserter(ascii), "\\u{:04x}", static_cast<unsigned>(unit));
  }
}

std::string Ascii(const std::string& text) {
  std::wstring wide(text.size(), L'\0');
  const int length = static_cast<int>(text.size());
  wide.resize(
      static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length)));
  std::string ascii;
  for (const wchar_t unit : wide) AppendUnit(ascii, unit);
  return ascii;
}

void AppendBlock(std::string& listing, const std::string& place, const XmlElement& block) {
  int rowNumber = 0;
  for (const XmlElement& row : block.Children()) {
    int column = 0;
    for (const XmlElement& cell : row.Children()) {
      listing += fmt::format("{}\t{}\t{}\t{}\n", place, rowNumber, column, Ascii(cell.Text()));
      ++column;
    }
    ++rowNumber;
  }
}

}  // namespace

PlanTables::PlanTables(const std::string& path) : document_(ParseXmlBytes(FileText(path)).element) {
  if (!document_) ADD_FAILURE() << "no plan: " << path;
}

XmlElement PlanTables::Table(const std::string& id) const {
  return document_.Select("tables/tableitem[@id=\"" + id + "\"]");
}

HRESULT PlanTables::Take(const std::string& text) {
  const XmlElement changed = XmlElement::Parse(text);
  if (!changed) return S_OK;
  for (const XmlElement& from : changed.SelectAll("//tableitem")) {
    XmlElement into = Table(from.Attribute("id").value_or(""));
    if (!into) return subscriptOutOfRange;
    for (const char* name : {"lastsavedid", "tableblocks"}) {
      XmlElement present = into.Child(name);
      into.InsertCopy(from.Child(name), present);
      present.Remove();
    }
  }
  return S_OK;
}

std::string PlanTables::Cells() const {
  std::string listing;
  for (const XmlElement& table : document_.SelectAll("tables/tableitem")) {
    for (const XmlElement& block : table.Child("tableblocks").Children()) {
      AppendBlock(listing, *table.Attribute("id") + '\t' + Ascii(block.Attribute("id").value_or("")), block);
    }
  }
  return listing;
}

}  // namespace krnqb::testing
