// libFuzzer target: arbitrary bytes through ParseXMLDoc; what parses is formatted in UTF-8, UTF-16 and
// ISO-8859-1, each result is parsed again, and the second tree must equal the first (names,
// attributes, texts, comments, CDATA sections, processing instructions), compared by a plain walk.
//
// The comparison allows for what the formatter gives up on purpose:
// - the parser normalises line ends in text, and line ends and tabs to blanks in attribute values (and
//   more for attributes of other types than CDATA);
// - a character that ISO-8859-1 lacks is written as a reference, which is not read back as one in a
//   comment, a CDATA section or processing-instruction data, and which makes the text unreadable in a
//   name, a document type or for a surrogate (one reference per unit); those documents only have to
//   format without a crash in ISO-8859-1;
// - the declaration always says version 1.0, so a 1.1 document only has to format without a crash;
// - a system identifier holding a double quote is written between double quotes;
// - the internal subset is written as the DOM gives it, and the parser rebuilds that text from the
//   declarations, losing on the way the quotes of entity values (they come back as replacement text)
//   and the "%" of parameter entities; a document whose subset declares entities or attribute lists
//   therefore only has to format without a crash.
#include "TavoXMLUtils/output/FormatXMLDoc.hpp"

#include "TavoRoot/OChannel.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

extern "C" char const* __asan_default_options() {
    return "fast_unwind_on_malloc=0:malloc_context_size=8";
}

namespace {

using namespace xercesc;

struct Release {
    void operator()(DOMDocument* document) const { document->release(); }
};
using Document = std::unique_ptr<DOMDocument, Release>;

Document Parse(unsigned char const* bytes, std::size_t size) {
    return Document(ParseXMLDoc(bytes, static_cast<unsigned int>(size), AbstractDOMParser::Val_Never, true,
                                Tavo::UniString("fuzz.xml"), nullptr, nullptr, nullptr));
}

std::u16string Text(XMLCh const* text) {
    return text != nullptr ? std::u16string(text) : std::u16string();
}

// Line ends as a parser leaves them: "\r\n" and a lone "\r" become "\n".
std::u16string NormaliseLineEnds(std::u16string const& text) {
    std::u16string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r') {
            result += u'\n';
            if (i + 1 < text.size() && text[i + 1] == u'\n') {
                ++i;
            }
        } else {
            result += text[i];
        }
    }
    return result;
}

// An attribute value as a CDATA attribute is read back: line ends and tabs become blanks.
std::u16string AttributeAsRead(std::u16string const& value) {
    std::u16string result = NormaliseLineEnds(value);
    for (char16_t& c : result) {
        if (c == u'\n' || c == u'\t') {
            c = u' ';
        }
    }
    return result;
}

// The further normalisation of attributes of other declared types: runs of blanks collapsed, trimmed.
std::u16string Collapsed(std::u16string const& value) {
    std::u16string result;
    for (char16_t c : value) {
        if (c != u' ' || (!result.empty() && result.back() != u' ')) {
            result += c;
        }
    }
    if (!result.empty() && result.back() == u' ') {
        result.pop_back();
    }
    return result;
}

// Unquoted text (comments, CDATA, PI data) after the formatter wrote it in ISO-8859-1.
std::u16string WithReferences(std::u16string const& text) {
    std::u16string result;
    for (char16_t c : text) {
        if (c <= 0xFF) {
            result += c;
            continue;
        }
        XMLCh digits[9];
        XMLString::binToText(static_cast<unsigned int>(c), digits, 8, 16);
        result += u"&#x";
        result += digits;
        result += u';';
    }
    return result;
}

bool Beyond(std::u16string const& text, char16_t limit) {
    for (char16_t c : text) {
        if (c > limit) {
            return true;
        }
    }
    return false;
}

bool IsSurrogate(char16_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}

// Whether ISO-8859-1 output of this tree cannot be read back, and whether it may not be compared.
bool Latin1Unreadable(DOMDocument const* document) {
    DOMDocumentType const* type = document->getDoctype();
    if (type != nullptr &&
        (Beyond(Text(type->getName()), 0xFF) || Beyond(Text(type->getInternalSubset()), 0xFF) ||
         Beyond(Text(type->getSystemId()), 0xFF) || Beyond(Text(type->getPublicId()), 0xFF))) {
        return true;
    }
    std::vector<DOMNode const*> pending{document};
    while (!pending.empty()) {
        DOMNode const* node = pending.back();
        pending.pop_back();
        std::u16string const name = Text(node->getNodeName());
        std::u16string const value = Text(node->getNodeValue());
        if (Beyond(name, 0xFF)) {
            return true;
        }
        for (char16_t c : value) {
            if (IsSurrogate(c)) {
                return true;
            }
        }
        if (DOMNamedNodeMap const* attributes = node->getAttributes()) {
            for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
                pending.push_back(attributes->item(i));
            }
        }
        if (node->getNodeType() == DOMNode::ENTITY_REFERENCE_NODE) {
            continue;
        }
        for (DOMNode const* child = node->getFirstChild(); child != nullptr;
             child = child->getNextSibling()) {
            pending.push_back(child);
        }
    }
    return false;
}

// The children that a comparison looks at: adjacent texts joined (the parser may split or join them),
// a document type kept by its name.
struct Item {
    short kind;
    std::u16string name;
    std::u16string value;
    DOMNode const* node;
};

std::vector<Item> Children(DOMNode const* parent, bool latin1) {
    std::vector<Item> items;
    for (DOMNode const* child = parent->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        short const kind = child->getNodeType();
        std::u16string value = Text(child->getNodeValue());
        if (kind == DOMNode::TEXT_NODE) {
            value = NormaliseLineEnds(value);
            if (!items.empty() && items.back().kind == DOMNode::TEXT_NODE) {
                items.back().value += value;
                continue;
            }
        } else if (latin1 && (kind == DOMNode::COMMENT_NODE || kind == DOMNode::CDATA_SECTION_NODE ||
                              kind == DOMNode::PROCESSING_INSTRUCTION_NODE)) {
            value = WithReferences(value);
        }
        if (kind == DOMNode::DOCUMENT_TYPE_NODE) {
            value.clear();
        }
        items.push_back({kind, Text(child->getNodeName()), value, child});
    }
    return items;
}

std::vector<Item> ReadBackChildren(DOMNode const* parent) {
    return Children(parent, false);
}

bool SameAttributes(DOMNode const* original, DOMNode const* readBack) {
    DOMNamedNodeMap const* left = original->getAttributes();
    DOMNamedNodeMap const* right = readBack->getAttributes();
    if (left == nullptr || right == nullptr) {
        return left == right;
    }
    if (left->getLength() != right->getLength()) {
        return false;
    }
    for (XMLSize_t i = 0; i < left->getLength(); ++i) {
        DOMNode const* attribute = left->item(i);
        DOMNode const* match = right->getNamedItem(attribute->getNodeName());
        if (match == nullptr) {
            return false;
        }
        std::u16string const expected = AttributeAsRead(Text(attribute->getNodeValue()));
        std::u16string const actual = Text(match->getNodeValue());
        if (expected != actual && Collapsed(expected) != actual) {
            return false;
        }
    }
    return true;
}

// Walks both trees side by side without recursion.
bool SameTree(DOMDocument const* original, DOMDocument const* readBack, bool latin1) {
    std::vector<std::pair<DOMNode const*, DOMNode const*>> pending{{original, readBack}};
    while (!pending.empty()) {
        auto const [left, right] = pending.back();
        pending.pop_back();
        if (!SameAttributes(left, right)) {
            return false;
        }
        if (left->getNodeType() == DOMNode::ENTITY_REFERENCE_NODE) {
            continue;
        }
        std::vector<Item> const expected = Children(left, latin1);
        std::vector<Item> const actual = ReadBackChildren(right);
        if (expected.size() != actual.size()) {
            return false;
        }
        for (std::size_t i = 0; i < expected.size(); ++i) {
            if (expected[i].kind != actual[i].kind || expected[i].name != actual[i].name ||
                expected[i].value != actual[i].value) {
                return false;
            }
            pending.emplace_back(expected[i].node, actual[i].node);
        }
    }
    return true;
}

bool SystemIdHasQuote(DOMDocument const* document) {
    DOMDocumentType const* type = document->getDoctype();
    return type != nullptr && Text(type->getSystemId()).find(u'"') != std::u16string::npos;
}

// Whether the subset declares what changes the tree (entities, attribute defaults and types).
bool SubsetShapesTree(DOMDocument const* original) {
    DOMDocumentType const* type = original->getDoctype();
    std::u16string const subset = type != nullptr ? Text(type->getInternalSubset()) : std::u16string();
    return subset.find(u"<!ENTITY") != std::u16string::npos ||
           subset.find(u"<!ATTLIST") != std::u16string::npos;
}

void Check(DOMDocument const* original, char16_t const* encoding, bool latin1) {
    Tavo::MemoryOChannel channel;
    if (!FormatXMLDoc(original, &channel, reinterpret_cast<unsigned short const*>(encoding), true)) {
        std::fprintf(stderr, "formatting failed\n");
        std::abort();
    }
    if (Text(original->getXmlVersion()) == u"1.1" || SystemIdHasQuote(original) ||
        SubsetShapesTree(original) || (latin1 && Latin1Unreadable(original))) {
        return;
    }
    std::string const& bytes = channel.GetData();
    Document const readBack = Parse(reinterpret_cast<unsigned char const*>(bytes.data()), bytes.size());
    if (readBack == nullptr || !SameTree(original, readBack.get(), latin1)) {
        std::fprintf(stderr, "read back differs:\n%.*s\n", static_cast<int>(bytes.size()), bytes.data());
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    XMLPlatformUtils::Initialize();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Document const original = Parse(data, size);
    if (original == nullptr) {
        return 0;
    }
    Check(original.get(), u"UTF-8", false);
    Check(original.get(), u"UTF-16", false);
    Check(original.get(), u"ISO-8859-1", true);
    return 0;
}
