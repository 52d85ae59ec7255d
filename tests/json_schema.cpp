#include "json_schema.h"

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>

#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <stdexcept>

#include "build_paths.h"

namespace krnqb::tests {
namespace {

using rapidjson::Document;
using rapidjson::SchemaDocument;
using rapidjson::SizeType;

// Fails on bytes that are not UTF-8 and on anything after the value.
std::string ParseInto(Document& document, std::string_view json) {
  document.Parse<rapidjson::kParseValidateEncodingFlag>(json.data(), json.size());
  if (!document.HasParseError()) return {};
  return "not JSON: " + std::string(rapidjson::GetParseError_En(document.GetParseError())) + " at byte " +
         std::to_string(document.GetErrorOffset());
}

std::string TextOf(const rapidjson::Pointer& pointer) {
  rapidjson::StringBuffer text;
  pointer.StringifyUriFragment(text);
  return {text.GetString(), text.GetSize()};
}

// The schemas of the folder, each compiled when it is first needed. A schema that another one refers to lives
// as long as that one.
class Schemas : public rapidjson::IRemoteSchemaDocumentProvider {
 public:
  const SchemaDocument& Named(const std::string& fileName) {
    if (const auto known = compiled_.find(fileName); known != compiled_.end()) return *known->second;
    std::ifstream file(SchemasFolder() + "/" + fileName, std::ios::binary);
    if (!file) throw std::runtime_error("docs/schema has no " + fileName);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    Document document;
    if (const std::string fault = ParseInto(document, text); !fault.empty()) {
      throw std::runtime_error("docs/schema/" + fileName + " is " + fault);
    }
    return *compiled_.emplace(fileName, std::make_unique<SchemaDocument>(document, this)).first->second;
  }

  // The library passes one byte less than the file's name has, so the name is read up to its fragment.
  const SchemaDocument* GetRemoteDocument(const char* uri, SizeType /*length*/) override {
    const std::string_view reference(uri);
    return &Named(std::string(reference.substr(0, reference.find('#'))));
  }

 private:
  std::map<std::string, std::unique_ptr<SchemaDocument>> compiled_;
};

}  // namespace

std::string SchemaViolation(const std::string& schema, std::string_view json) {
  static Schemas schemas;
  const SchemaDocument& rules = schemas.Named(schema + ".schema.json");
  Document document;
  if (std::string fault = ParseInto(document, json); !fault.empty()) return fault;
  rapidjson::SchemaValidator validator(rules);
  if (document.Accept(validator)) return {};
  return TextOf(validator.GetInvalidDocumentPointer()) + " breaks \"" + validator.GetInvalidSchemaKeyword() +
         "\" of " + schema + ".schema.json" + TextOf(validator.GetInvalidSchemaPointer());
}

}  // namespace krnqb::tests
