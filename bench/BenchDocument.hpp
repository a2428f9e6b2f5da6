// The document of the channel benchmarks: root > Group (attribute) > Section (attribute) > Record
// (attribute and nine values). 100,000 records of ten values each make 1,000,000 values; the outer
// attributes add 1,010 more. Written through any output channel, so that the writing and the reading
// benchmark work on the same text.
#pragma once

#include "TavoXMLUtils/TavoXMLUtils.hpp"

#include <array>

namespace bench {

struct Shape {
    int groups;
    int sections;
    int records;
};
inline constexpr Shape gFullShape{10, 100, 100};

// Texts of the string values, non-ASCII and markup characters among them.
inline std::array<Tavo::UniString, 4> const& Texts() {
    static std::array<Tavo::UniString, 4> const texts{
        Tavo::UniString("alpha"), Tavo::UniString("A somewhat longer text value with spaces"),
        Tavo::UniString("Z\xC3\xBCrich \xE2\x80\x93 \xC3\x86r\xC3\xB8", TavoCharCodeUTF8),
        Tavo::UniString("x < y & z")};
    return texts;
}

// Writes the whole document, WriteStartDocument to WriteEndDocument, below the channel's root.
inline void WriteBenchDocument(Tavo::XMLOChannel& channel, Shape shape) {
    auto const& texts = Texts();
    channel.WriteStartDocument();
    for (int g = 0; g < shape.groups; ++g) {
        channel.WriteStartElement("Group");
        channel.WriteXMLAttr("id", g);
        for (int s = 0; s < shape.sections; ++s) {
            channel.WriteStartElement("Section");
            channel.WriteXMLAttr("name", texts[s % 4]);
            for (int r = 0; r < shape.records; ++r) {
                int const n = (g * shape.sections + s) * shape.records + r;
                channel.WriteStartElement("Record");
                channel.WriteXMLAttr("index", n);
                channel.WriteXML("Count", n);
                channel.WriteXML("Total", static_cast<long long>(n) * 1000003);
                channel.WriteXML("Flags", static_cast<unsigned int>(n ^ 0x5A5A));
                channel.WriteXML("Small", static_cast<short>(n % 30000));
                channel.WriteXML("Name", texts[r % 4]);
                channel.WriteXML("Label", texts[(r + 1) % 4]);
                channel.WriteXML("Note", texts[(r + 2) % 4]);
                channel.WriteXML("Code", texts[(r + 3) % 4]);
                channel.WriteXML("Last", n - 1);
                channel.WriteEndElement();
            }
            channel.WriteEndElement();
        }
        channel.WriteEndElement();
    }
    channel.WriteEndDocument();
}

} // namespace bench
