// The library's failure vocabulary: every status and error code that more than one place returns or
// throws, under one name. Nothing here fails; the values are fixed by the channel contract.
//   NoError / GeneralError      status of every channel operation (TavoRoot/XMLTypes.hpp)
//   PlainFailureStatus          the plain failure status 2 that some value writers and readers return
//   ConstructionErrorCode       code of the exceptions thrown when a channel or document cannot be made
#pragma once

#include "TavoRoot/XMLTypes.hpp"

namespace TavoXML::detail {

using Tavo::GeneralError;
using Tavo::NoError;

inline constexpr int PlainFailureStatus = 2;
inline constexpr int ConstructionErrorCode = -36;

} // namespace TavoXML::detail
