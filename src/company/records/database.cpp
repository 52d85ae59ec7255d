#include "company/records/database.h"

#include <utility>

#include "company/records/errors.h"

namespace krnqb::company {

constinit const database::FileKind companyFileKind = {
    .name = "company file",
    .plural = "company files",
    .writer = "load",
    .restoreRemedy = "restore a copy of the file",
    .damageRemedy = "restore a copy of the file (krnqb company check {0} lists all damage)",
    .journalRemedy = "remove it and run krnqb company check {0}",
    .unfinishedWriting =
        "A load into the company file {0} was interrupted and has to be undone first; run krnqb "
        "company check --fix {0}",
    .cannotOpen = company_error::cannotOpen,
    .unexpected = company_error::unexpected};

Database::Database(const std::filesystem::path& file, FileAccess access, Interruption interrupted)
    : Connection(companyFileKind, file, access, std::move(interrupted)) {}

}  // namespace krnqb::company
