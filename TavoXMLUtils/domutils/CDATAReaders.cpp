#include "TavoXMLUtils/domutils/CDATAReaders.hpp"

#include "TavoXMLUtils/domutils/ScalarConversion.hpp"
#include "TavoXMLUtils/domutils/internal/ReaderSupport.hpp"
#include "TavoXMLUtils/parsing/NodeLocations.hpp"

#include <xercesc/dom/DOMCDATASection.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <string>
#include <string_view>

namespace TavoXMLUtils {

using TavoXML::detail::CharArray;
using TavoXML::detail::TagMessage;

namespace {

constexpr char gMissingSection[] = "Missing CDATA section in tag '";
constexpr char gSecondSection[] = "More than one CDATA section in tag '";
constexpr char gUnexpectedNode[] = "Unexpected XML node in tag '";
constexpr char gNotTranscoded[] = "CDATA section could not be transcoded in tag '";
constexpr char gLossyWarning[] = "Some characters cannot be converted correctly to local codepage in tag '";
constexpr char16_t gNodeLocationsKey[] = u"NodeLocations";

// The recorded line of `node`, 0 when the document carries no node locations or none for the node. A
// warning list is meant for documents that carry them; without them the warning simply has no line.
std::uint32_t RecordedLine(const xercesc::DOMNode* node) {
    const xercesc::DOMDocument* const document = node->getOwnerDocument();
    const auto* const locations =
        document == nullptr ? nullptr
                            : static_cast<const NodeLocations*>(document->getUserData(gNodeLocationsKey));
    const NodeLocationInfo* const found = locations == nullptr ? nullptr : locations->Find(node);
    return found == nullptr ? 0 : found->lineNumber;
}

} // namespace

xercesc::DOMCDATASection* GetFirstCDataChild(const xercesc::DOMElement* tag) {
    // A null tag is outside the contract; it is read as a tag without children.
    xercesc::DOMNode* child = tag == nullptr ? nullptr : tag->getFirstChild();
    xercesc::DOMCDATASection* section = nullptr;
    for (; child != nullptr; child = child->getNextSibling()) {
        switch (child->getNodeType()) {
            case xercesc::DOMNode::TEXT_NODE:
            case xercesc::DOMNode::COMMENT_NODE:
                break;
            case xercesc::DOMNode::CDATA_SECTION_NODE:
                if (section != nullptr) {
                    throw ConvException(TagMessage(gSecondSection, tag), child);
                }
                section = static_cast<xercesc::DOMCDATASection*>(child);
                break;
            default:
                throw ConvException(TagMessage(gUnexpectedNode, tag), child);
        }
    }
    if (section == nullptr) {
        throw ConvException(TagMessage(gMissingSection, tag), tag);
    }
    return section;
}

void ConvertCDATA(Tavo::UniString& text) {
    const std::u16string_view view = text.View();
    constexpr std::u16string_view marker = u"]] ";
    if (view.size() < marker.size() || view.find(marker) == std::u16string_view::npos) {
        return;
    }
    std::u16string result;
    result.reserve(view.size());
    std::size_t i = 0;
    while (i < view.size()) {
        if (view.substr(i, marker.size()) == marker) {
            // The blank goes; the scan goes on at the character that stood behind it.
            result.append(u"]]");
            i += marker.size();
        } else {
            result.push_back(view[i]);
            ++i;
        }
    }
    text = Tavo::UniString(std::u16string_view(result));
}

Tavo::UniString GetCDATANodeUniString(const xercesc::DOMElement* tag) {
    Tavo::UniString text(GetFirstCDataChild(tag)->getData());
    ConvertCDATA(text);
    return text;
}

char* GetCDATANode(const xercesc::DOMElement* tag, Tavo::VAArray<WarningData>* warnings) {
    const xercesc::DOMCDATASection* const section = GetFirstCDataChild(tag);
    Tavo::UniString text(section->getData());
    ConvertCDATA(text);
    CharArray bytes;
    try {
        bytes.reset(UnicodeToString(text, false));
    } catch (const ConvException&) {
        try {
            bytes.reset(UnicodeToString(text, true));
        } catch (ConvException& cause) {
            TavoXML::detail::Prefix(cause, Tavo::UniString(TagMessage(gNotTranscoded, tag) + "; "), tag);
            throw;
        }
        if (warnings != nullptr) {
            warnings->Push(WarningData{TagMessage(gLossyWarning, tag), RecordedLine(section)});
        }
    }
    for (char* c = bytes.get(); *c != '\0'; ++c) {
        if (*c == '\n') {
            *c = '\r';
        }
    }
    return bytes.release();
}

unsigned short* GetCDATANodeU(const xercesc::DOMElement* tag, Tavo::VAArray<WarningData>* /*warnings*/) {
    const Tavo::UniString text = GetCDATANodeUniString(tag);
    auto* const copy = new (std::nothrow) unsigned short[std::size_t(text.GetLength()) + 1];
    if (copy == nullptr) {
        TavoXML::detail::ThrowMemoryError();
    }
    Tavo::ucscpy(copy, text.GetUStr());
    return copy;
}

} // namespace TavoXMLUtils
