// Relocatable memory blocks that know their size ("handles"): a handle is a char** whose *handle points
// at the block. The char** forms of the hex CDATA operations of the XML channels take handles.
#pragma once

#include "TavoRoot/TavoRootExport.hpp"

namespace Tavo {

// A new handle of `size` zero-filled bytes, or null when memory is short; the caller frees it with
// DisposeHandle. *handle is never null, even for size 0.
TAVOROOT_API char** NewHandle(unsigned int size);
// Frees a handle from NewHandle; null is allowed.
TAVOROOT_API void DisposeHandle(char** handle) noexcept;
// The byte count of the block; 0 for a null handle.
TAVOROOT_API unsigned int GetHandleSize(char** handle) noexcept;
// Resizes the block, keeping its first bytes and zero-filling new ones; *handle may change.
// Returns 0 on success, nonzero when memory is short or the handle is null.
TAVOROOT_API int SetHandleSize(char** handle, unsigned int size) noexcept;

} // namespace Tavo
