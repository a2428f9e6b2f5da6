// Scope guards for channels from the factories. At the end of the scope a guard hands the channel's
// messages to the caller's array of strings, if one was given, then deletes the channel and clears the
// caller's pointer. The pointer is read only then, so a channel assigned after the guard was built is
// guarded, and one the caller disposed of before is skipped.
//
// Each harvested message is "<location log text> (<line>):  <message text>\n", pushed behind what the
// array already holds.
#pragma once

#include "TavoRoot/Array.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLIChannel.hpp"
#include "TavoRoot/XMLOChannel.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

namespace TavoXML {

class TAVOXMLUTILS_API XMLOChannelGuard {
public:
    explicit XMLOChannelGuard(Tavo::XMLOChannel** channel) noexcept;
    XMLOChannelGuard(Tavo::XMLOChannel** channel, Tavo::Array<Tavo::UniString>* messages) noexcept;
    XMLOChannelGuard(XMLOChannelGuard const&) = delete;
    XMLOChannelGuard& operator=(XMLOChannelGuard const&) = delete;
    // A failure while harvesting (memory) ends the process: a destructor must not throw.
    ~XMLOChannelGuard();

private:
    Tavo::XMLOChannel** channel;
    Tavo::Array<Tavo::UniString>* messages;
};

class TAVOXMLUTILS_API XMLIChannelGuard {
public:
    explicit XMLIChannelGuard(Tavo::XMLIChannel** channel) noexcept;
    XMLIChannelGuard(Tavo::XMLIChannel** channel, Tavo::Array<Tavo::UniString>* messages) noexcept;
    XMLIChannelGuard(XMLIChannelGuard const&) = delete;
    XMLIChannelGuard& operator=(XMLIChannelGuard const&) = delete;
    ~XMLIChannelGuard();

private:
    Tavo::XMLIChannel** channel;
    Tavo::Array<Tavo::UniString>* messages;
};

} // namespace TavoXML
