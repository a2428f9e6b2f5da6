#include "TavoXMLUtils/testing/XMLAssertions.hpp"

#include "TavoXMLUtils/TavoXMLUtils.hpp"

#include <xercesc/dom/DOMDocument.hpp>

#include <memory>
#include <sstream>
#include <string>

namespace TavoXML::testing {

namespace {

struct ReleaseDocument {
    void operator()(xercesc::DOMDocument* document) const { document->release(); }
};
using Document = std::unique_ptr<xercesc::DOMDocument, ReleaseDocument>;

// The line a node came from, through the table its document carries; a node the table does not hold
// (a text, an attribute) gives the line of its nearest ancestor that it does. 0 when there is none.
unsigned int LineOf(xercesc::DOMNode const* node) {
    if (node == nullptr) {
        return 0;
    }
    xercesc::DOMDocument const* document = node->getNodeType() == xercesc::DOMNode::DOCUMENT_NODE
                                               ? static_cast<xercesc::DOMDocument const*>(node)
                                               : node->getOwnerDocument();
    auto const* table = document != nullptr
                            ? static_cast<NodeLocations const*>(document->getUserData(u"NodeLocations"))
                            : nullptr;
    for (; table != nullptr && node != nullptr; node = node->getParentNode()) {
        if (NodeLocationInfo const* info = table->Find(node); info != nullptr && info->lineNumber != 0) {
            return info->lineNumber;
        }
    }
    return 0;
}

std::unique_ptr<StrictOrderAutoValueCompareOptions> MakeOptions(XMLCompareSettings const& settings) {
    std::unique_ptr<StrictOrderAutoValueCompareOptions> options;
    if (settings.attributeRuled) {
        options = std::make_unique<AttrRuledCompareOptions>();
    } else {
        options = std::make_unique<StrictOrderAutoValueCompareOptions>();
    }
    options->SetDoubleEps(settings.eps);
    return options;
}

::testing::AssertionResult Failure(XMLCompareException const& report) {
    std::ostringstream text;
    text << Tavo::ToUTF8String(report.GetText());
    unsigned int const expected = LineOf(report.GetNode(XMLCompareException::Left));
    unsigned int const actual = LineOf(report.GetNode(XMLCompareException::Right));
    if (expected != 0 || actual != 0) {
        text << "\n(expected line " << expected << ", actual line " << actual << ")";
    }
    return ::testing::AssertionFailure() << text.str();
}

template <class Node>
::testing::AssertionResult Compare(Node const* expected, Node const* actual,
                                   XMLCompareSettings const& settings) {
    if (expected == nullptr || actual == nullptr) {
        return ::testing::AssertionFailure() << (expected == nullptr ? "expected" : "actual") << " is null";
    }
    auto const options = MakeOptions(settings);
    XMLCompareStrictOrder comparator;
    SkipWhitespaceTextsCompareFilter filter;
    try {
        DoXMLCompare(expected, actual, &comparator, settings.skipWhitespace ? &filter : nullptr, *options);
    } catch (XMLCompareException const& report) {
        return Failure(report);
    } catch (Tavo::TavoException const& error) {
        return ::testing::AssertionFailure() << Tavo::ToUTF8String(error.GetMessage());
    }
    return ::testing::AssertionSuccess();
}

// A text parsed with a line table stored on the document, where LineOf finds it.
struct ParsedText {
    std::unique_ptr<NodeLocations> lines = std::make_unique<NodeLocations>();
    Document document;
    std::string error;
};

ParsedText Parse(Tavo::UniString const& text, char const* side) {
    ParsedText parsed;
    std::string const bytes = Tavo::ToUTF8String(text);
    NodeLocationInfo where;
    Tavo::UniString message;
    parsed.document.reset(ParseXMLDoc(reinterpret_cast<unsigned char const*>(bytes.data()),
                                      static_cast<unsigned int>(bytes.size()),
                                      xercesc::AbstractDOMParser::Val_Never, false, Tavo::UniString(side),
                                      parsed.lines.get(), &where, &message));
    if (parsed.document) {
        parsed.document->setUserData(u"NodeLocations", parsed.lines.get(), nullptr);
    } else {
        parsed.error = std::string(side) + " text does not parse: line " + std::to_string(where.lineNumber) +
                       ": " + Tavo::ToUTF8String(message);
    }
    return parsed;
}

} // namespace

::testing::AssertionResult XMLEqual(Tavo::UniString const& expected, Tavo::UniString const& actual,
                                    XMLCompareSettings const& settings) {
    ParsedText const left = Parse(expected, "expected");
    if (!left.document) {
        return ::testing::AssertionFailure() << left.error;
    }
    ParsedText const right = Parse(actual, "actual");
    if (!right.document) {
        return ::testing::AssertionFailure() << right.error;
    }
    return Compare<xercesc::DOMDocument>(left.document.get(), right.document.get(), settings);
}

::testing::AssertionResult XMLEqual(xercesc::DOMDocument const* expected, xercesc::DOMDocument const* actual,
                                    XMLCompareSettings const& settings) {
    return Compare(expected, actual, settings);
}

::testing::AssertionResult XMLEqual(xercesc::DOMNode const* expected, xercesc::DOMNode const* actual,
                                    XMLCompareSettings const& settings) {
    return Compare(expected, actual, settings);
}

} // namespace TavoXML::testing
