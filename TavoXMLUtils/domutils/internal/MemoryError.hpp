// The failure of the tree writers: a DOMException with code 0 and the text "Memory error", thrown
// where the document gives no node or a buffer cannot be had, and for a null parent, which is outside
// the writers' contract but must not crash.
#pragma once

namespace TavoXML::detail {

// The text of the exception, a 16-bit constant that lives as long as the library.
extern char16_t const gMemoryErrorText[];

[[noreturn]] void ThrowMemoryError();

} // namespace TavoXML::detail
