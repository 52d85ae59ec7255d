#pragma once

namespace krnqb {

/// Gives back what the XML library keeps between documents. For the end of a library that is unloaded while
/// its process goes on: no document may exist any more, and none may be made afterwards.
void ReleaseXmlLibrary() noexcept;

}  // namespace krnqb
