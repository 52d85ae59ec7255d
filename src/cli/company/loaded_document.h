#pragma once

#include <memory>
#include <string>

#include "company/file.h"
#include "files/input_file.h"

namespace krnqb::cli {

/// A document to be loaded into a company: a qbXML response document or the recording of an exchange, in a
/// file or a pipe.
class LoadedDocument {
 public:
  /// Throws Error if the document is missing, cannot be read or is too large. `operations` must outlive the
  /// object.
  LoadedDocument(std::string name, files::FileOperations& operations);

  /// Loads the document, reading it part by part; call it once. Throws Error as `CompanyFile::Load` does.
  company::LoadSummary LoadInto(company::CompanyFile& company, company::UnknownKinds unknownKinds);

 private:
  std::unique_ptr<files::InputFile> Open() const;

  std::string name_;
  files::FileOperations& operations_;
  // A pipe. There may be more files than a process can have open, so a file is opened again when it is
  // loaded.
  std::unique_ptr<files::InputFile> pipe_;
};

}  // namespace krnqb::cli
