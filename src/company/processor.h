#pragma once

#include <memory>

#include "company/records/database.h"
#include "krnqb/request_processor.h"

namespace krnqb::company {

/// Returns a factory of request processors for company files, which are opened for reading. A session begins
/// with the file's path; an empty path fails with `company_error::noCompanyOpen`, because no company is ever
/// open already. The file mode is ignored. Operations out of order fail with `company_error::unexpected`: a
/// session without a connection, a second session, a request with a ticket of another session, a version
/// query without a session. Requests end with the error "interrupted" soon after `interrupted` returns true.
std::shared_ptr<RequestProcessorFactory> EmbeddedProcessors(Interruption interrupted = {});

}  // namespace krnqb::company
