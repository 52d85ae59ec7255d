#pragma once

#include <functional>
#include <string_view>

#include "company/records/company_record.h"
#include "xml/byte_source.h"

namespace krnqb::company {

/// Receives records one by one.
using RecordReceiver = std::function<void(CompanyRecord&&)>;

/// Receives the element name of each record that company files cannot store.
using PassedOverReceiver = std::function<void(std::string_view element)>;

/// Passes the records of a qbXML response document to `receive`, in document order, each as soon as it has
/// been read: the document is in memory one record at a time. The bytes are in the encoding that the document
/// declares. Skips answers to `HostQueryRq`, which describe a program and not a company. Records of a kind
/// that company files cannot store are passed over and reported to `passOver`; if it is empty, they are
/// faults. Throws Error `company_error::cannotParse` at the first fault; the description names the document,
/// the line and the reason. What `document` and the receivers throw is passed on.
void ReadDocument(std::string_view documentName, const ByteSource& document, const RecordReceiver& receive,
                  const PassedOverReceiver& passOver);

}  // namespace krnqb::company
