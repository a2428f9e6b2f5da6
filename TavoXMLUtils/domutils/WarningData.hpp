// TavoXMLUtils::WarningData: one non-fatal warning of the readers, collected in a caller's
// Tavo::VAArray<WarningData>. The readers only append to such a list; they never remove or reorder
// what it holds. A list that cannot grow throws Tavo::BMOutOfMemoryException from its Push.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <cstdint>

namespace TavoXMLUtils {

struct TAVOXMLUTILS_API WarningData {
    Tavo::UniString message; // empty after default construction
    std::uint32_t line = 0;  // source line, 0 when unknown
};

} // namespace TavoXMLUtils
