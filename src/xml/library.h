#pragma once

namespace krnqb {

/// Frees the memory that the XML library keeps between documents. Call it last, before this code is unloaded
/// from a process that goes on: no document may exist, and none may be created afterwards.
void ReleaseXmlLibrary() noexcept;

/// Frees the memory that the XML library keeps for this thread, which is ending. Windows only: elsewhere the
/// thread library does this.
void ReleaseXmlThread() noexcept;

}  // namespace krnqb
