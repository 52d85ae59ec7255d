#pragma once

#include <memory>

#include "krnqb/request_processor.h"

namespace krnqb::company {

/// Makes request processors whose companies are company files, opened for reading. A session is begun with
/// the file's path: no company is open by itself, so that an empty path is refused with
/// `company_error::noCompanyOpen`. The file mode means nothing. `company_error::unexpected` is the refusal of
/// an operation out of order: a session without a connection, a second session, a request with another ticket
/// than the session's, a version without a session.
std::shared_ptr<RequestProcessorFactory> EmbeddedProcessors();

}  // namespace krnqb::company
