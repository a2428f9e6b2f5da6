// Writes a small document through an output channel to a file in the temporary folder, then prints the
// file. The channel writes its file when it is disposed of.
#include "TavoXMLUtils/TavoXMLUtils.hpp"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>

namespace {

// One chapter: an element with an attribute and nested values.
void WriteChapter(Tavo::XMLOChannel& channel, int number, char const* title, int pages) {
    channel.WriteStartElement("Chapter");
    channel.WriteXMLAttr("number", number);
    channel.WriteXML("Title", title, 0);
    channel.WriteXML("Pages", pages);
    channel.WriteEndElement();
}

} // namespace

int main() {
    Vesk::Location location;
    Vesk::fileSystem.GetSpecialLocation(Vesk::SpecialLocationTemporary, &location);
    location.AppendToLocal(Vesk::Name("write_document_example.xml"));

    try {
        Tavo::XMLOChannel* channel = TavoXML::CreateXMLOChannel(location, "Library", TavoXML::ThrowOnError);
        channel->WriteStartDocument();
        channel->WriteXMLVersionAttr(Tavo::ClassVersion(2, 1));
        channel->WriteComment(Tavo::UniString(" A catalogue of one book "));

        channel->WriteStartElement("Book");
        channel->WriteXMLAttr("id", Tavo::Guid::Generate());
        channel->WriteXML("Title", Tavo::UniString("Grüße aus Zürich – Ærø & Łódź", TavoCharCodeUTF8));
        channel->WriteXML("Year", 2021);
        channel->WriteXML("Price", 24.5);
        channel->WriteXML("InPrint", true);
        channel->WriteStartElement("Chapters");
        WriteChapter(*channel, 1, "Arrival", 34);
        WriteChapter(*channel, 2, "The lake <by night>", 51);
        channel->WriteEndElement();
        channel->WriteStartElement("Notes"); // stays an empty element on one line
        channel->WriteEndElement();
        channel->WriteEndElement();

        channel->WriteEndDocument();
        TavoXML::DisposeXMLOChannel(channel);
    } catch (Tavo::TavoException const& exception) {
        Tavo::MemoryOChannel text;
        exception.Print(text);
        std::cerr << text.GetData();
        return 1;
    }

    std::ifstream file(location.GetNativePath(), std::ios::binary);
    if (!file) {
        std::cerr << "The document was not written to " << location.GetNativePath() << '\n';
        return 1;
    }
    std::cout << "Written to " << location.GetNativePath() << ":\n" << file.rdbuf();
    return 0;
}
