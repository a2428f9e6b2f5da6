// A client of the installed library, through its one public header: writes a small document through
// an output channel and prints its text.
#include "TavoXMLUtils/TavoXMLUtils.hpp"

#include <cstdio>

int main() {
    Tavo::XMLOChannel* channel = TavoXML::CreateXMLOChannel("Settings", TavoXML::ReturnNullOnError);
    if (channel == nullptr) {
        std::puts("no channel");
        return 1;
    }
    channel->WriteStartDocument();
    channel->WriteXML("Width", 640);
    channel->WriteXML("Scale", 2.5);
    channel->WriteEndDocument();
    Tavo::UniString const text = TavoXML::ExportOChannelToUniString(channel);
    TavoXML::DisposeXMLOChannel(channel);
    std::fputs(text.ToCStr(0, Tavo::UniString::kAll, TavoCharCodeUTF8).Get(), stdout);
    return text.IsEmpty() ? 1 : 0;
}
