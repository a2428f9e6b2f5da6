#include "TavoXMLUtils/domutils/TagReaders.hpp"

#include "TavoXMLUtils/domutils/CDATAReaders.hpp"
#include "TavoXMLUtils/domutils/ScalarConversion.hpp"
#include "TavoXMLUtils/domutils/internal/ReaderSupport.hpp"

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>

#include <new>

namespace TavoXMLUtils {

using TavoXML::detail::CharArray;
using TavoXML::detail::UShortArray;

namespace {

constexpr char gOneTextNode[] = "One text node expected in tag '";
constexpr char gTagPrefix[] = "Tag '";

// The single text child of `tag`, or the exception that says there is none.
const xercesc::DOMNode* SingleTextChild(const xercesc::DOMElement* tag) {
    // A null tag is outside the contract; it is read as a tag without children.
    const xercesc::DOMNodeList* const children = tag == nullptr ? nullptr : tag->getChildNodes();
    if (children == nullptr || children->getLength() != 1 ||
        children->item(0)->getNodeType() != xercesc::DOMNode::TEXT_NODE) {
        throw ConvException(TavoXML::detail::TagMessage(gOneTextNode, tag), tag);
    }
    return children->item(0);
}

// The wrapper of the typed and string tag readers: `read` runs guarded, and a ConvException leaving it
// gets the tag's name in front and the tag's line unless it has one. `read` owns what it allocates.
template <class Read>
auto ReadTag(const xercesc::DOMElement* tag, Read read) -> decltype(read()) {
    try {
        return read();
    } catch (ConvException& e) {
        TavoXML::detail::Prefix(e, Tavo::UniString(gTagPrefix) + TavoXML::detail::NodeNameOf(tag) + "'; ",
                                tag);
        throw;
    }
}

} // namespace

char* GetTagText(const xercesc::DOMElement* tag) {
    const xercesc::DOMNode* const text = SingleTextChild(tag);
    const CharArray converted(UnicodeToString(Tavo::UniString(text->getNodeValue()), false));
    char* trimmed = converted.get();
    CutWhSpace(trimmed);
    return TavoXML::detail::CopyText(trimmed);
}

Tavo::UniString GetTagTextU(const xercesc::DOMElement* tag) {
    Tavo::UniString text(SingleTextChild(tag)->getNodeValue());
    text.Trim();
    return text;
}

std::int32_t GetSLongTag(const xercesc::DOMElement* tag) {
    return ReadTag(tag, [tag] { return GetSignedLong(CharArray(GetTagText(tag)).get()); });
}

std::uint32_t GetULongTag(const xercesc::DOMElement* tag) {
    return ReadTag(tag, [tag] { return GetULong(CharArray(GetTagText(tag)).get()); });
}

double GetDoubleTag(const xercesc::DOMElement* tag) {
    return ReadTag(tag, [tag] { return GetDouble(CharArray(GetTagText(tag)).get()); });
}

bool GetBoolTag(const xercesc::DOMElement* tag) {
    return ReadTag(tag, [tag] { return TavoXML::detail::ParseBoolean(CharArray(GetTagText(tag)).get()); });
}

char* GetStringTag(const xercesc::DOMElement* tag, Tavo::VAArray<WarningData>* warnings) {
    return ReadTag(tag, [tag, warnings] {
        const CharArray section(GetCDATANode(tag, warnings));
        char* text = section.get();
        CutWhSpace(text);
        return TavoXML::detail::CopyText(GetStringValue(text));
    });
}

unsigned short* GetStringTagU(const xercesc::DOMElement* tag, Tavo::VAArray<WarningData>* warnings) {
    return ReadTag(tag, [tag, warnings] {
        const UShortArray section(GetCDATANodeU(tag, warnings));
        unsigned short* text = section.get();
        CutWhSpaceU(text);
        const unsigned short* const value = GetStringValueU(text);
        auto* const copy = new (std::nothrow) unsigned short[std::size_t(Tavo::ucslen(value)) + 1];
        if (copy == nullptr) {
            TavoXML::detail::ThrowMemoryError();
        }
        Tavo::ucscpy(copy, value);
        return copy;
    });
}

} // namespace TavoXMLUtils
