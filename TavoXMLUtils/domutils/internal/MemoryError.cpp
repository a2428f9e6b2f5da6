#include "TavoXMLUtils/domutils/internal/MemoryError.hpp"

#include <xercesc/dom/DOMException.hpp>

namespace TavoXML::detail {

char16_t const gMemoryErrorText[] = u"Memory error";

void ThrowMemoryError() {
    // A default-built DOMException owns no text, so the constant can stand in it: copies share the
    // pointer and nobody frees it. The message catalogue is not involved.
    xercesc::DOMException error;
    error.code = 0;
    error.msg = gMemoryErrorText;
    throw error;
}

} // namespace TavoXML::detail
