#include "TavoXMLUtils/domutils/AttributeReaders.hpp"

#include "TavoXMLUtils/domutils/ScalarConversion.hpp"
#include "TavoXMLUtils/domutils/internal/ReaderSupport.hpp"

#include <xercesc/dom/DOMElement.hpp>

namespace TavoXMLUtils {

namespace {

constexpr char gAttributePrefix[] = "Attribute: '";
constexpr char gAttributeSuffix[] = "' (missing or incorrect); ";

// Reads the attribute, trims it, and converts it with `convert` inside the wrapper that names the
// attribute. The transcoding comes first and unguarded: its failure carries no prefix.
template <class Convert>
auto ReadAttribute(const xercesc::DOMElement* tag, const Tavo::UniString& name, Convert convert)
    -> decltype(convert("")) {
    // A null tag is outside the contract; it is read as one without the attribute.
    const XMLCh* const value = tag == nullptr ? nullptr : tag->getAttribute(name.GetU16Str());
    const TavoXML::detail::CharArray converted(UnicodeToString(Tavo::UniString(value), false));
    char* text = converted.get();
    CutTabSpace(text);
    try {
        return convert(text);
    } catch (ConvException& e) {
        TavoXML::detail::Prefix(
            e, Tavo::UniString(Tavo::UniString(gAttributePrefix) + name + gAttributeSuffix), tag);
        throw;
    }
}

} // namespace

std::int32_t GetSLongAttr(const xercesc::DOMElement* tag, const Tavo::UniString& name) {
    return ReadAttribute(tag, name, [](const char* text) { return GetSignedLong(text); });
}

std::uint32_t GetULongAttr(const xercesc::DOMElement* tag, const Tavo::UniString& name) {
    return ReadAttribute(tag, name, [](const char* text) { return GetULong(text); });
}

bool GetBooleanAttr(const xercesc::DOMElement* tag, const Tavo::UniString& name) {
    return ReadAttribute(tag, name, [](const char* text) { return TavoXML::detail::ParseBoolean(text); });
}

} // namespace TavoXMLUtils
