// TavoXML::detail::ExportLength: the byte count of a serialised document as the export sinks take it,
// 32 bits. A document of 4 GiB or more cannot be handed over in the one call that the sinks promise:
// it is refused with a DOMBuilderException (code GeneralError) instead of being handed over cut.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/support/internal/Failures.hpp"
#include "TavoXMLUtils/support/internal/Throw.hpp"

#include <cstdint>
#include <limits>
#include <string>

namespace TavoXML::detail {

inline unsigned int ExportLength(std::uint64_t length) {
    constexpr std::uint64_t limit = std::numeric_limits<unsigned int>::max();
    if (length > limit) {
        std::string const text = "Document too large to export: " + std::to_string(length) +
                                 " bytes, the limit is " + std::to_string(limit);
        Throw<DOMBuilderException>(text.c_str(), GeneralError);
    }
    return static_cast<unsigned int>(length);
}

} // namespace TavoXML::detail
