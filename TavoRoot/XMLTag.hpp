// Tavo::XMLTag: a scoped element on an output channel, opened with its attributes on construction and
// closed on destruction.
#pragma once

#include "TavoRoot/Array.hpp"
#include "TavoRoot/TavoRootExport.hpp"
#include "TavoRoot/XMLOChannel.hpp"

#include <string>

namespace Tavo {

class TAVOROOT_API XMLTag {
public:
    // A name and a value; keeps its own copies, since callers build it from temporaries.
    class TAVOROOT_API XMLAttribute {
    public:
        XMLAttribute(char const* name, char const* value);
        XMLAttribute(XMLAttribute const&) = default;
        XMLAttribute(XMLAttribute&&) noexcept = default;
        XMLAttribute& operator=(XMLAttribute const&) = default;
        XMLAttribute& operator=(XMLAttribute&&) noexcept = default;
        ~XMLAttribute();
        char const* GetName() const noexcept { return name.c_str(); }
        char const* GetValue() const noexcept { return value.c_str(); }

    private:
        std::string name;
        std::string value;
    };

    // WriteStartElement(name), then WriteXMLAttr for each attribute if the pointer is not null.
    XMLTag(XMLOChannel& channel, char const* name, Array<XMLAttribute> const* attributes);
    XMLTag(XMLTag const&) = delete;
    XMLTag& operator=(XMLTag const&) = delete;
    // WriteEndElement(); a failure there is not reported.
    ~XMLTag();

private:
    XMLOChannel& channel;
};

} // namespace Tavo
