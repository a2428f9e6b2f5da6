// The front door of the input side: factories that hand out XML input channels (TavoXML::DOMReader
// behind the abstract Tavo::XMLIChannel) and their disposal. A failed construction comes back as null
// or as one XMLIChannelException, by TavoXML::ExceptionPolicy.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLIChannel.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/interface/TavoXMLInterface.hpp"

#include <functional>

namespace Vesk {
class Location;
}

namespace TavoXML {

class DOMReader;

// Channels over a document in memory; the bytes are parsed at once and need not outlive the call. The
// caller owns the result and gives it back with DisposeXMLIChannel.
TAVOXMLUTILS_API Tavo::XMLIChannel* CreateXMLIChannelFromMemory(unsigned char const* data,
                                                                unsigned int length, char const* topLevelTag,
                                                                ExceptionPolicy policy);
TAVOXMLUTILS_API Tavo::XMLIChannel* CreateXMLIChannelFromMemory(unsigned char const* data,
                                                                unsigned int length,
                                                                Tavo::XMLNoTopLevelTagType,
                                                                ExceptionPolicy policy);
// The text reaches the parser as UTF-8; a zero character in it ends the document.
TAVOXMLUTILS_API Tavo::XMLIChannel*
CreateXMLIChannelFromMemory(Tavo::UniString const& text, char const* topLevelTag, ExceptionPolicy policy);
TAVOXMLUTILS_API Tavo::XMLIChannel*
CreateXMLIChannelFromMemory(Tavo::UniString const& text, Tavo::XMLNoTopLevelTagType, ExceptionPolicy policy);
// Channels over the file at `location`.
TAVOXMLUTILS_API Tavo::XMLIChannel* CreateXMLIChannel(Vesk::Location const& location, char const* topLevelTag,
                                                      ExceptionPolicy policy);
TAVOXMLUTILS_API Tavo::XMLIChannel* CreateXMLIChannel(Vesk::Location const& location,
                                                      Tavo::XMLNoTopLevelTagType, ExceptionPolicy policy);

// The worker of the factories: calls `construct` and turns whatever it throws into null or one
// XMLIChannelException, by `policy`. A DOMReaderException passes its own message on (the composed
// parse report); the other failures get fixed texts.
TAVOXMLUTILS_API Tavo::XMLIChannel* CreateXMLIChannelInternal(std::function<DOMReader*()> const& construct,
                                                              ExceptionPolicy policy);

// Deletes the channel, if any, and sets the caller's pointer to null.
TAVOXMLUTILS_API void DisposeXMLIChannel(Tavo::XMLIChannel*& channel);

} // namespace TavoXML
