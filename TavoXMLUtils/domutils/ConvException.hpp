// TavoXMLUtils::ConvException: the exception of every reading function of the DOM utilities. It is a
// plain class without a base, thrown by value and caught by reference. It carries the text of the error
// and the source line of the node it concerns (0 when unknown).
//
// State model: the readers catch it on its way out, put more words in front of `message` and throw the
// same object again; `line` is set once, by the first StoreErrLoc that finds a line, so the line of the
// innermost node survives the wrappers.
//
// Failures: the constructors copy a string and may throw what the string's allocation throws;
// StoreErrLoc never throws of its own and silently finds no line when the document carries no node
// locations.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/util/XercesDefs.hpp>

#include <cstdint>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

struct NodeLocationInfo;

namespace TavoXMLUtils {

class TAVOXMLUTILS_API ConvException {
public:
    ConvException() = default;
    // `message` is zero-terminated 8-bit text in TavoCharCodeDefault; a null location gives line 0.
    ConvException(const char* message, const NodeLocationInfo* location);
    ConvException(const Tavo::UniString& message, const NodeLocationInfo* location);
    // Line 0, then the line of `node` as StoreErrLoc finds it.
    ConvException(const Tavo::UniString& message, const XERCES_CPP_NAMESPACE::DOMNode* node);

    // Fills `line` from the "NodeLocations" user data of the node's document. The first line found
    // wins: nothing happens when `node` is null or `line` is already set.
    void StoreErrLoc(const XERCES_CPP_NAMESPACE::DOMNode* node);

    Tavo::UniString message;
    std::uint32_t line = 0;
};

} // namespace TavoXMLUtils
