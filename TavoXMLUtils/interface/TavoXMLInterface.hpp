// The front door of the output side: factories that hand out XML output channels, their disposal, and
// the export of a channel's document as UTF-8 text. Input-side factories are in
// TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp and share TavoXML::ExceptionPolicy.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLOChannel.hpp"
#include "TavoRoot/XMLTypes.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <functional>

namespace Vesk {
class Location;
}

namespace TavoXML {

class DOMBuilder;

// What a factory does when the channel cannot be constructed. Only the value 1 throws; every other
// value behaves like ReturnNullOnError.
enum ExceptionPolicy : int {
    ReturnNullOnError = 0, // return null; the reason is dropped
    ThrowOnError = 1,      // throw XMLOChannelException (XMLIChannelException on the input side), code -36
};

// Channels that build a document in memory, with automatic tabs. The caller owns the result and gives
// it back with DisposeXMLOChannel.
TAVOXMLUTILS_API Tavo::XMLOChannel* CreateXMLOChannel(char const* topLevelTag, ExceptionPolicy policy);
TAVOXMLUTILS_API Tavo::XMLOChannel* CreateXMLOChannel(Tavo::XMLNoTopLevelTagType, ExceptionPolicy policy);
// Channels that also write their document to `location` when they are deleted. An empty location
// writes to a new scratch file in the temporary folder.
TAVOXMLUTILS_API Tavo::XMLOChannel* CreateXMLOChannel(Vesk::Location const& location, char const* topLevelTag,
                                                      ExceptionPolicy policy);
TAVOXMLUTILS_API Tavo::XMLOChannel* CreateXMLOChannel(Vesk::Location const& location,
                                                      Tavo::XMLNoTopLevelTagType, ExceptionPolicy policy);

// The worker of the factories: calls `construct` and turns whatever it throws into null or one
// XMLOChannelException with a fixed text, by `policy`. Usable for any construction of a DOMBuilder.
TAVOXMLUTILS_API Tavo::XMLOChannel* CreateXMLOChannelInternal(std::function<DOMBuilder*()> const& construct,
                                                              ExceptionPolicy policy);

// Deletes the channel, if any, and sets the caller's pointer to null.
TAVOXMLUTILS_API void DisposeXMLOChannel(Tavo::XMLOChannel*& channel);

// The document of a DOMBuilder channel as text with its XML declaration; the empty string for null or
// for a channel of another class.
TAVOXMLUTILS_API Tavo::UniString ExportOChannelToUniString(Tavo::XMLOChannel* channel);
// The same as UTF-8 bytes, handed to `sink` in one call; nothing happens for null or another class.
// A document of 4 GiB or more does not fit the sink's length: it is refused with a DOMBuilderException
// (code GeneralError) before the sink is called, rather than handed over cut.
TAVOXMLUTILS_API void ExportOChannel(Tavo::XMLOChannel* channel,
                                     std::function<void(char const*, unsigned int)> sink);

} // namespace TavoXML
