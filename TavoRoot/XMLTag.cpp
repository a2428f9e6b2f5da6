#include "TavoRoot/XMLTag.hpp"

namespace Tavo {

XMLTag::XMLAttribute::XMLAttribute(char const* name, char const* value)
    : name(name ? name : ""), value(value ? value : "") {}

XMLTag::XMLAttribute::~XMLAttribute() = default;

XMLTag::XMLTag(XMLOChannel& channel, char const* name, Array<XMLAttribute> const* attributes)
    : channel(channel) {
    channel.WriteStartElement(name);
    if (attributes) {
        for (XMLAttribute const& attribute : *attributes) {
            // Length 0: the value is written whole, up to its terminating zero.
            channel.WriteXMLAttr(attribute.GetName(), attribute.GetValue(), 0);
        }
    }
}

XMLTag::~XMLTag() {
    try {
        channel.WriteEndElement();
    } catch (...) {
        // A destructor must not throw; a channel whose document refuses the end tag is past saving.
    }
}

} // namespace Tavo
