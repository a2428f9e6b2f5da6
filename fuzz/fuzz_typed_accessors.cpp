// libFuzzer target of the tree writers and the lenient accessors. The input is parsed as a document;
// for every element:
// - every lenient reader runs with the element's own name and with another one (both name forms); they
//   must return true, and a reader that does not match must store 0;
// - the element's text is written into a scratch document by the lenient writer and by the NewTag
//   family, and must read back: exactly through ReadTextNode and GetTagTextU's trimmed form, and
//   through GetStringTagU whenever the text holds no carriage return and no "]]" (the two places where
//   the writers change a text on purpose);
// - a number made from the text's length and characters goes through every typed writer and its reader.
// Only ConvException may leave a reader of the throwing family; anything else ends the run.
#include "TavoRoot/String.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/domutils/ConvException.hpp"
#include "TavoXMLUtils/domutils/TagReaders.hpp"
#include "TavoXMLUtils/domutils/TagWriters.hpp"
#include "TavoXMLUtils/domutils/TreeNavigation.hpp"
#include "TavoXMLUtils/domutils/TypedNodeAccessors.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "tests/common/DocumentOrder.hpp"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLNetAccessor.hpp>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

using namespace TavoXMLUtils;
using xercesc::DOMElement;
using xercesc::DOMNode;

namespace {

void Check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void ReadLeniently(DOMNode const* node, Tavo::UniString const& name) {
    Tavo::UniString const other(u"\u00B7other");
    Tavo::String const narrowName(name.ToCStr().Get());
    short s = 1;
    unsigned short us = 1;
    int l = 1;
    unsigned int ul = 1;
    bool b = true;
    Tavo::UniString text(u"kept");
    Check(ReadShortNode(node, other, s) && s == 0);
    Check(ReadUShortNode(node, other, us) && us == 0);
    Check(ReadLongNode(node, other, l) && l == 0);
    Check(ReadULongNode(node, other, ul) && ul == 0);
    Check(ReadBooleanNode(node, other, b) && !b);
    Check(ReadTextNode(node, other, text) && text == Tavo::UniString(u"kept"));
    Check(ReadShortNode(node, name, s) && ReadShortNode(node, narrowName, s));
    Check(ReadUShortNode(node, name, us) && ReadUShortNode(node, narrowName, us));
    Check(ReadLongNode(node, name, l) && ReadLongNode(node, narrowName, l));
    Check(ReadULongNode(node, name, ul) && ReadULongNode(node, narrowName, ul));
    Check(ReadBooleanNode(node, name, b) && ReadBooleanNode(node, narrowName, b));
    Tavo::String narrow("old");
    Check(ReadTextNode(node, name, text) && ReadTextNode(node, narrowName, narrow));
}

bool HoldsWriterChanges(Tavo::UniString const& text) {
    std::u16string_view const view = text.View();
    return view.find(u'\r') != view.npos || view.find(u"]]") != view.npos;
}

// The element's first text child, or the empty string.
Tavo::UniString FirstText(DOMElement const* element) {
    Tavo::UniString text;
    DOMNode const* child = element->getFirstChild();
    if (child != nullptr && child->getNodeType() == DOMNode::TEXT_NODE) {
        text = Tavo::UniString(child->getNodeValue());
    }
    return text;
}

void WriteAndReadBack(DOMElement* scratch, Tavo::UniString const& text) {
    Tavo::UniString const name(u"V");
    Check(WriteTextElement(scratch, name, text, 1));
    DOMNode const* const written = scratch->getLastChild()->getPreviousSibling();
    Tavo::UniString read;
    Check(ReadTextNode(written, name, read) && read == text);

    Tavo::UniString trimmed = text;
    trimmed.Trim();
    DOMElement* tag = NewTextTag(scratch, name, text, 1);
    try {
        Check(GetTagTextU(tag) == trimmed);
    } catch (ConvException const&) {
        Check(false); // a single text node always reads
    }

    DOMElement* string = NewStringTag(scratch, "S", text.GetUStr(), 1);
    try {
        std::unique_ptr<unsigned short[]> const back(GetStringTagU(string, nullptr));
        Check(HoldsWriterChanges(text) || Tavo::UniString(back.get()) == text);
    } catch (ConvException const&) {
        Check(HoldsWriterChanges(text)); // only a changed text may fail to unquote
    }
    try {
        std::unique_ptr<char[]> const narrow(GetStringTag(string, nullptr));
    } catch (ConvException const&) {
    }
}

void Numbers(DOMElement* scratch, Tavo::UniString const& text) {
    std::uint32_t bits = text.GetLength() * 2654435761u;
    for (char16_t const c : text.View()) {
        bits = bits * 31u + c;
    }
    Tavo::UniString const name(u"N");
    auto last = [&] { return scratch->getLastChild()->getPreviousSibling(); };
    auto const i = static_cast<int>(bits);
    auto const s = static_cast<short>(bits);
    auto const us = static_cast<unsigned short>(bits);
    int readInt = 0;
    short readShort = 0;
    unsigned short readUShort = 0;
    unsigned int readUInt = 0;
    Check(WriteLongElement(scratch, name, i, 1) && ReadLongNode(last(), name, readInt) && readInt == i);
    Check(WriteULongElement(scratch, name, bits, 1) && ReadULongNode(last(), name, readUInt) &&
          readUInt == bits);
    Check(WriteShortElement(scratch, name, s, 1) && ReadShortNode(last(), name, readShort) && readShort == s);
    Check(WriteUShortElement(scratch, name, us, 1) && ReadUShortNode(last(), name, readUShort) &&
          readUShort == us);
    Check(GetSLongTag(NewSLongTag(scratch, "N", i, 1)) == i);
    Check(GetULongTag(NewULongTag(scratch, "N", bits, 1)) == bits);
    Check(GetBoolTag(NewBoolTag(scratch, "N", (bits & 1) != 0, 1)) == ((bits & 1) != 0));
    // Any bit pattern as a double: what reads back is what strtod makes of the written text.
    double value = 0;
    std::uint64_t const wide = (static_cast<std::uint64_t>(bits) << 32) | (bits ^ 0x9E3779B9u);
    static_assert(sizeof value == sizeof wide);
    std::memcpy(&value, &wide, sizeof value);
    DOMElement* real = NewDoubleTag(scratch, "D", value, 1);
    // Near and below the smallest normal double, strtod reports a range error on the written text.
    bool const tiny = value != 0 && std::fabs(value) < DBL_MIN * (1 + 1e-11);
    try {
        double const back = GetDoubleTag(real);
        Check(tiny ||
              (std::isnan(value) ? std::isnan(back)
                                 : back == value || std::fabs(back - value) <= std::fabs(value) * 1e-11));
    } catch (ConvException const&) {
        Check(tiny);
    }
}

void CheckDocument(std::uint8_t const* data, std::size_t size) {
    xercesc::DOMDocument* const document =
        ParseXMLDoc(data, static_cast<unsigned int>(size), xercesc::AbstractDOMParser::Val_Never, false,
                    Tavo::UniString("fuzz.xml"), nullptr);
    if (document == nullptr) {
        return;
    }
    DOMDocumentSentry const sentry(document);
    xercesc::DOMDocument* const scratchDocument =
        xercesc::DOMImplementation::getImplementation()->createDocument(
            nullptr, u"Scratch", nullptr, xercesc::XMLPlatformUtils::fgMemoryManager);
    DOMDocumentSentry const scratchSentry(scratchDocument);
    DOMElement* const scratch = scratchDocument->getDocumentElement();
    // Pre-order walk without recursion: documents may be deep.
    DOMNode* node = document->getDocumentElement();
    while (node != nullptr) {
        ReadLeniently(node, Tavo::UniString(node->getNodeName()));
        if (node->getNodeType() == DOMNode::ELEMENT_NODE) {
            Tavo::UniString const text = FirstText(static_cast<DOMElement*>(node));
            WriteAndReadBack(scratch, text);
            Numbers(scratch, text);
        }
        node = TavoTest::NextInDocumentOrder(node);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // No input may reach the network: without a net accessor, external references by URL fail to open.
    delete xercesc::XMLPlatformUtils::fgNetAccessor;
    xercesc::XMLPlatformUtils::fgNetAccessor = nullptr;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    CheckDocument(data, size);
    return 0;
}
