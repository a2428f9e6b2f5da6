// Helpers of the DOMBuilder tests: the exported bytes of a channel and the XML declaration.
#pragma once

#include "TavoXMLUtils/builder/TavoXMLDOMBuilder.hpp"

#include <string>

namespace BuilderTest {

inline constexpr char kDeclaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>";

// The UTF-8 export of the channel; also checks that the sink is called exactly once.
inline std::string Exported(TavoXML::DOMBuilder& channel, bool withDeclaration = true) {
    std::string text;
    int calls = 0;
    channel.Export(
        [&](char const* data, unsigned int length) {
            text.assign(data, length);
            ++calls;
        },
        withDeclaration);
    return calls == 1 ? text : "sink called " + std::to_string(calls) + " times";
}

} // namespace BuilderTest
