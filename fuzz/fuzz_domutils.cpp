// libFuzzer target of the DOM utilities. Every input is used twice:
// - its bytes up to the first NUL are the text of GetIntNum, GetSignedLong, GetULong, GetDouble,
//   GetStringValue and the trimming functions, each checked against a reference computed here with the
//   standard library (the value, or the exact message);
// - the whole input is parsed as a document with its node locations stored on it, and every element is
//   walked with the navigation functions and read with every tag, CDATA and attribute reader. The typed
//   tag readers are checked against the scalar references applied to GetTagText's result.
// Only ConvException may leave a reader; anything else escapes and ends the run.
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/VAArray.hpp"
#include "TavoXMLUtils/domutils/AttributeReaders.hpp"
#include "TavoXMLUtils/domutils/CDATAReaders.hpp"
#include "TavoXMLUtils/domutils/ConvException.hpp"
#include "TavoXMLUtils/domutils/ScalarConversion.hpp"
#include "TavoXMLUtils/domutils/TagReaders.hpp"
#include "TavoXMLUtils/domutils/TreeNavigation.hpp"
#include "TavoXMLUtils/domutils/TypedNodeAccessors.hpp"
#include "TavoXMLUtils/parsing/NodeLocations.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "tests/common/DocumentOrder.hpp"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLNetAccessor.hpp>

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

using namespace TavoXMLUtils;

namespace {

// An outcome as text: "ok:" + value or "error:" + message, so that results and references compare as
// one string each.
std::string Ok(const std::string& value) {
    return "ok:" + value;
}
std::string Error(const std::string& message) {
    return "error:" + message;
}
std::string Bits(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return std::to_string(bits);
}

template <class Call>
std::string Outcome(Call call) {
    try {
        return Ok(call());
    } catch (const ConvException& e) {
        return Error(Tavo::ToUTF8String(e.message));
    }
}

void Expect(const std::string& actual, const std::string& expected, const char* what, std::string_view text) {
    if (actual != expected) {
        std::fprintf(stderr, "%s of [%.*s]: got %s, expected %s\n", what, static_cast<int>(text.size()),
                     text.data(), actual.c_str(), expected.c_str());
        std::abort();
    }
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// References of the parsers, written from their rules.
std::string RefIntNum(std::string_view text, std::uint64_t& value) {
    if (text.empty()) {
        return Error("");
    }
    std::size_t digits = 0;
    while (digits < text.size() && IsDigit(text[digits])) {
        ++digits;
    }
    if (digits == 0) {
        return Error("Too many data");
    }
    std::string_view significant = text.substr(0, digits);
    while (!significant.empty() && significant.front() == '0') {
        significant.remove_prefix(1);
    }
    value = 0;
    if (significant.size() > 10) {
        return Error("Integer Overflow");
    }
    std::from_chars(significant.data(), significant.data() + significant.size(), value);
    if (value > 4294967295u) {
        return Error("Integer Overflow");
    }
    if (digits != text.size()) {
        return Error("Too many data");
    }
    return Ok(std::to_string(value));
}

std::string RefSignedLong(std::string_view text) {
    const bool negative = !text.empty() && text.front() == '-';
    const bool sign = negative || (!text.empty() && text.front() == '+');
    std::uint64_t magnitude = 0;
    const std::string parsed = RefIntNum(sign ? text.substr(1) : text, magnitude);
    if (parsed.starts_with("error:")) {
        return parsed;
    }
    if (negative) {
        return magnitude > 2147483648u ? Error("Integer Underflow")
                                       : Ok(std::to_string(-static_cast<std::int64_t>(magnitude)));
    }
    return magnitude >= 2147483648u ? Error("Integer Overflow") : Ok(std::to_string(magnitude));
}

std::string RefULong(std::string_view text) {
    std::uint64_t value = 0;
    return RefIntNum(!text.empty() && text.front() == '+' ? text.substr(1) : text, value);
}

std::string RefDouble(const std::string& text) {
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(text.c_str(), &end);
    if (end == text.c_str() || (value != 0.0 && errno == ERANGE)) { // NaN is not zero
        return Error("Floating point number error");
    }
    return *end != '\0' ? Error("Too many data") : Ok(Bits(value));
}

std::string RefStringValue(std::string_view text) {
    const bool quoted = text.size() >= 2 &&
                        (text.front() == '"' || text.front() == '\'' || text.front() == '`') &&
                        text.back() == text.front();
    return quoted ? Ok(std::string(text.substr(1, text.size() - 2))) : Error("String value error");
}

std::string RefBoolean(std::string_view text) {
    if (text == "true" || text == "yes" || text == "1") {
        return Ok("1");
    }
    if (text == "false" || text == "no" || text == "0") {
        return Ok("0");
    }
    // The message holds the text as characters of the default code, here in UTF-8.
    const std::string shown =
        Tavo::ToUTF8String(Tavo::UniString(std::string(text).c_str(), TavoCharCodeDefault));
    return Error("'yes/true' or 'no/false' expected, '" + shown + "' found");
}

std::string RefTrim(std::string_view text, const char* set) {
    const std::size_t first = text.find_first_not_of(set);
    if (first == std::string_view::npos) {
        return "";
    }
    return std::string(text.substr(first, text.find_last_not_of(set) - first + 1));
}

void CheckScalars(const std::string& text) {
    Expect(
        Outcome([&] { return std::to_string(GetIntNum(text.c_str())); }),
        [&] {
            std::uint64_t value = 0;
            return RefIntNum(text, value);
        }(),
        "GetIntNum", text);
    Expect(Outcome([&] { return std::to_string(GetSignedLong(text.c_str())); }), RefSignedLong(text),
           "GetSignedLong", text);
    Expect(Outcome([&] { return std::to_string(GetULong(text.c_str())); }), RefULong(text), "GetULong", text);
    Expect(Outcome([&] { return Bits(GetDouble(text.c_str())); }), RefDouble(text), "GetDouble", text);
    std::string copy = text;
    Expect(Outcome([&] { return std::string(GetStringValue(copy.data())); }), RefStringValue(text),
           "GetStringValue", text);

    copy = text;
    char* trimmed = copy.data();
    CutWhSpace(trimmed);
    Expect(trimmed, RefTrim(text, "\t\n\r "), "CutWhSpace", text);
    copy = text;
    trimmed = copy.data();
    CutTabSpace(trimmed);
    Expect(trimmed, RefTrim(text, "\t "), "CutTabSpace", text);
}

// Runs a reader whose failures are ConvExceptions; the result is dropped.
template <class Call>
void Try(Call call) {
    try {
        call();
    } catch (const ConvException&) {
    }
}

std::string Name(const xercesc::DOMNode* node) {
    return Tavo::ToUTF8String(Tavo::UniString(node->getNodeName()));
}

// The typed tag readers agree with the scalar references applied to the tag text.
void CheckTypedTags(const xercesc::DOMElement* element) {
    const std::string prefix = "Tag '" + Name(element) + "'; ";
    std::string text;
    std::string failure;
    try {
        const std::unique_ptr<char[]> owned(GetTagText(element));
        text = owned.get();
    } catch (const ConvException& e) {
        failure = Error(prefix + Tavo::ToUTF8String(e.message));
    }
    auto expected = [&](const std::string& reference) {
        if (!failure.empty()) {
            return failure;
        }
        return reference.starts_with("error:") ? Error(prefix + reference.substr(6)) : reference;
    };
    Expect(Outcome([&] { return std::to_string(GetSLongTag(element)); }), expected(RefSignedLong(text)),
           "GetSLongTag", text);
    Expect(Outcome([&] { return std::to_string(GetULongTag(element)); }), expected(RefULong(text)),
           "GetULongTag", text);
    Expect(Outcome([&] { return Bits(GetDoubleTag(element)); }), expected(RefDouble(text)), "GetDoubleTag",
           text);
    Expect(Outcome([&] { return std::string(GetBoolTag(element) ? "1" : "0"); }), expected(RefBoolean(text)),
           "GetBoolTag", text);
}

void ReadStrings(const xercesc::DOMElement* element, Tavo::VAArray<WarningData>& warnings) {
    Try([&] { std::unique_ptr<char[]>(GetStringTag(element, &warnings)); });
    Try([&] { std::unique_ptr<char[]>(GetStringTag(element, nullptr)); });
    Try([&] { std::unique_ptr<unsigned short[]>(GetStringTagU(element, &warnings)); });
    Try([&] { GetTagTextU(element); });
    Try([&] { GetFirstCDataChild(element); });
    Try([&] { GetCDATANodeUniString(element); });
    Try([&] { std::unique_ptr<char[]>(GetCDATANode(element, &warnings)); });
    Try([&] { std::unique_ptr<unsigned short[]>(GetCDATANodeU(element, &warnings)); });
}

void ReadAttributes(const xercesc::DOMElement* element) {
    std::vector<Tavo::UniString> names{Tavo::UniString("no-such-attribute")};
    if (const xercesc::DOMNamedNodeMap* attributes = element->getAttributes()) {
        for (XMLSize_t index = 0; index < attributes->getLength(); ++index) {
            names.emplace_back(attributes->item(index)->getNodeName());
        }
    }
    for (const Tavo::UniString& name : names) {
        Try([&] { GetSLongAttr(element, name); });
        Try([&] { GetULongAttr(element, name); });
        Try([&] { GetBooleanAttr(element, name); });
    }
}

void Navigate(xercesc::DOMElement* element) {
    std::uint32_t elements = 0;
    for (xercesc::DOMNode* child = element->getFirstChild(); child != nullptr;
         child = child->getNextSibling()) {
        elements += child->getNodeType() == xercesc::DOMNode::ELEMENT_NODE ? 1 : 0;
        xercesc::DOMNode* node = nullptr;
        xercesc::DOMElement* next = nullptr;
        GetNextSibling(child, node);
        GetNextSibling(child, next);
        SkipTextNodes(node);
        SkipTextNodes(next);
    }
    if (GetChildElementCount(element) != elements) {
        std::abort();
    }
    xercesc::DOMNode* node = nullptr;
    xercesc::DOMElement* child = nullptr;
    GetFirstChild(element, node);
    GetFirstChild(element, child);
    GetLastElementChild(element);
    GetPreviousElementSibling(element);
    GetNextElementSibling(element);
    if (!IsNodeOk(element, Tavo::UniString(element->getNodeName()))) {
        std::abort();
    }
    // GetNextTag refuses sections and instructions; the walk steps over them by hand.
    xercesc::DOMNode* cursor = element->getFirstChild();
    while (cursor != nullptr) {
        try {
            GetNextTag(cursor);
        } catch (const ConvException&) {
            cursor = cursor->getNextSibling();
        }
    }
}

// The lenient accessors, by the element's own name and by another: they always answer true.
void ReadLeniently(const xercesc::DOMElement* element) {
    const Tavo::UniString name(element->getNodeName());
    for (const Tavo::UniString& asked : {name, Tavo::UniString("other")}) {
        const Tavo::String narrow(asked.ToCStr().Get());
        Tavo::UniString text;
        Tavo::String text8;
        short s = 0;
        unsigned short us = 0;
        int l = 0;
        unsigned int ul = 0;
        bool b = false;
        const bool all = ReadTextNode(element, asked, text) && ReadTextNode(element, narrow, text8) &&
                         ReadShortNode(element, asked, s) && ReadShortNode(element, narrow, s) &&
                         ReadUShortNode(element, asked, us) && ReadUShortNode(element, narrow, us) &&
                         ReadLongNode(element, asked, l) && ReadLongNode(element, narrow, l) &&
                         ReadULongNode(element, asked, ul) && ReadULongNode(element, narrow, ul) &&
                         ReadBooleanNode(element, asked, b) && ReadBooleanNode(element, narrow, b);
        if (!all) {
            std::abort();
        }
    }
}

void ReadElement(xercesc::DOMElement* element, Tavo::VAArray<WarningData>& warnings) {
    Navigate(element);
    CheckTypedTags(element);
    ReadStrings(element, warnings);
    ReadAttributes(element);
    ReadLeniently(element);
}

void CheckDocument(const std::uint8_t* data, std::size_t size) {
    NodeLocations locations;
    xercesc::DOMDocument* const document =
        ParseXMLDoc(data, static_cast<unsigned int>(size), xercesc::AbstractDOMParser::Val_Never, false,
                    Tavo::UniString("fuzz.xml"), &locations);
    if (document == nullptr) {
        return;
    }
    const DOMDocumentSentry sentry(document);
    document->setUserData(u"NodeLocations", &locations, nullptr);
    Tavo::VAArray<WarningData> warnings;
    // Pre-order walk without recursion: documents may be deep.
    xercesc::DOMNode* node = document->getDocumentElement();
    while (node != nullptr) {
        if (node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE) {
            ReadElement(static_cast<xercesc::DOMElement*>(node), warnings);
        }
        node = TavoTest::NextInDocumentOrder(node);
    }
    document->setUserData(u"NodeLocations", nullptr, nullptr);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // No input may reach the network: without a net accessor, external references by URL fail to open.
    delete xercesc::XMLPlatformUtils::fgNetAccessor;
    xercesc::XMLPlatformUtils::fgNetAccessor = nullptr;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto* const bytes = reinterpret_cast<const char*>(data);
    CheckScalars(std::string(bytes, strnlen(bytes, size)));
    CheckDocument(data, size);
    return 0;
}
