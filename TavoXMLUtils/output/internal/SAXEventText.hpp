// The markup that both SAX writers write for the events they share: the declaration, end tags,
// character data and processing instructions. Each writes straight into the caller's XMLFormatter;
// whatever the formatter throws passes through.
#pragma once

#include <xercesc/framework/XMLFormatter.hpp>

namespace TavoXML::detail {

inline constexpr XMLCh gSAXEndElement[] = u"</";

// The declaration names the formatter's encoding.
inline void WriteSAXDeclaration(xercesc::XMLFormatter& formatter) {
    formatter << u"<?xml version=\"1.0\" encoding=\"" << formatter.getEncodingName() << u"\"?>\n";
}

inline void WriteSAXCharacters(xercesc::XMLFormatter& formatter, XMLCh const* chars, XMLSize_t length) {
    formatter.formatBuf(chars, length, xercesc::XMLFormatter::CharEscapes,
                        xercesc::XMLFormatter::DefaultUnRep);
}

// Ignorable white space goes out as it came, unescaped.
inline void WriteSAXIgnorable(xercesc::XMLFormatter& formatter, XMLCh const* chars, XMLSize_t length) {
    formatter.formatBuf(chars, length, xercesc::XMLFormatter::NoEscapes, xercesc::XMLFormatter::DefaultUnRep);
}

inline void WriteSAXProcessingInstruction(xercesc::XMLFormatter& formatter, XMLCh const* target,
                                          XMLCh const* data) {
    formatter << xercesc::XMLFormatter::NoEscapes << u"<?" << target;
    if (data != nullptr) {
        formatter << u' ' << data;
    }
    formatter << xercesc::XMLFormatter::NoEscapes << u"?>";
}

} // namespace TavoXML::detail
