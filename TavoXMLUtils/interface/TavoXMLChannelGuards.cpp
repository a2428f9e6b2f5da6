// Channel guards: harvest the messages of a channel into the caller's array, then delete the channel.
#include "TavoXMLUtils/interface/TavoXMLChannelGuards.hpp"

#include "Vesk/Location.hpp"

#include <utility>

namespace TavoXML {

namespace {

// Steps shared by both guards; `formatPrefix(logText, line)` makes the start of each entry.
template <class Channel, class FormatPrefix>
void HarvestAndDelete(Channel** channel, Tavo::Array<Tavo::UniString>* messages,
                      FormatPrefix const& formatPrefix) {
    if (channel == nullptr || *channel == nullptr) {
        return;
    }
    if (messages != nullptr) {
        int const count = (*channel)->GetNumberOfMessage();
        if (count > 0) {
            Vesk::Location location;
            (*channel)->GetLocation(location);
            Tavo::UniString const logText = location.ToLogText();
            for (int index = 0; index < count; ++index) {
                Tavo::UniString text;
                int line = 0;
                (*channel)->GetMessage(index, text, line);
                Tavo::UniString entry = formatPrefix(logText, line);
                entry.Append(text);
                entry.Append("\n");
                messages->Push(std::move(entry));
            }
        }
    }
    delete *channel;
    *channel = nullptr;
}

} // namespace

XMLOChannelGuard::XMLOChannelGuard(Tavo::XMLOChannel** channel) noexcept
    : channel(channel), messages(nullptr) {}

XMLOChannelGuard::XMLOChannelGuard(Tavo::XMLOChannel** channel,
                                   Tavo::Array<Tavo::UniString>* messages) noexcept
    : channel(channel), messages(messages) {}

XMLOChannelGuard::~XMLOChannelGuard() {
    HarvestAndDelete(channel, messages, [](Tavo::UniString const& logText, int line) {
        // The output side passes the log text as 8-bit text in the default character code.
        return Tavo::UniString::PrintfFwd(
            "%s (%d):  ", logText.ToCStr(0, Tavo::UniString::kAll, TavoCharCodeDefault, 0).Get(), line);
    });
}

XMLIChannelGuard::XMLIChannelGuard(Tavo::XMLIChannel** channel) noexcept
    : channel(channel), messages(nullptr) {}

XMLIChannelGuard::XMLIChannelGuard(Tavo::XMLIChannel** channel,
                                   Tavo::Array<Tavo::UniString>* messages) noexcept
    : channel(channel), messages(messages) {}

XMLIChannelGuard::~XMLIChannelGuard() {
    HarvestAndDelete(channel, messages, [](Tavo::UniString const& logText, int line) {
        // The input side passes the log text as 16-bit text, so no character is lost.
        return Tavo::UniString::PrintfFwd("%ls (%d):  ", logText.ToUStr().Get(), line);
    });
}

} // namespace TavoXML
