// libFuzzer target of the comparison. The input, but for its last two bytes, is a document; those two
// bytes choose one byte of it and a new value. Oracles:
// - the document compared with itself under SkipWhitespaceTextsCompareFilter is equal; the one
//   exception is a value that reads as an infinite or undefined real, whose difference from itself is
//   no number and so never inside a tolerance;
// - compared with its one-byte mutation (if that parses), with and without the filter and with both
//   ready options, it is equal or throws a difference report, or a refusal of a tree too deep;
// - never a crash, a hang or a leak.
#include "TavoRoot/Numbers.hpp"
#include "TavoRoot/TavoException.hpp"
#include "TavoXMLUtils/compare/AttrRuledCompareOptions.hpp"
#include "TavoXMLUtils/compare/DoXMLCompare.hpp"
#include "TavoXMLUtils/compare/SkipWhitespaceTextsCompareFilter.hpp"
#include "TavoXMLUtils/compare/StrictOrderAutoValueCompareOptions.hpp"
#include "TavoXMLUtils/compare/XMLCompareExceptions.hpp"
#include "TavoXMLUtils/compare/XMLNodeComparators.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

extern "C" char const* __asan_default_options() {
    return "fast_unwind_on_malloc=0:malloc_context_size=8";
}

namespace {

struct Release {
    void operator()(xercesc::DOMDocument* document) const { document->release(); }
};
using Document = std::unique_ptr<xercesc::DOMDocument, Release>;

Document Parse(std::uint8_t const* data, std::size_t size) {
    return Document(ParseXMLDoc(data, static_cast<unsigned int>(size), xercesc::AbstractDOMParser::Val_Never,
                                true, Tavo::UniString("fuzz.xml")));
}

bool DiffersFromItself(Tavo::UniString const& value) {
    double real = 0.0;
    return Tavo::UniStringToValue(value, real) && !std::isfinite(real);
}

// The one refusal a comparison of two parsed documents with the ready options may give.
void ExpectDepthRefusal(Tavo::TavoException const& refusal) {
    Tavo::UniString const expected("The trees are nested deeper");
    if (refusal.GetMessage().GetLength() < expected.GetLength() ||
        !(Tavo::UniString(refusal.GetMessage(), 0, expected.GetLength()) == expected)) {
        std::abort();
    }
}

// Equal, a difference report or a refusal of depth; anything else escapes and ends the run.
void CompareAllowingDifferences(xercesc::DOMDocument const* left, xercesc::DOMDocument const* right,
                                xercesc::DOMNodeFilter* filter, TavoXML::IXMLCompareOptions const& options) {
    TavoXML::XMLCompareStrictOrder comparator;
    try {
        TavoXML::DoXMLCompare(left, right, &comparator, filter, options);
    } catch (TavoXML::XMLCompareException const& report) {
        (void)report.GetText();
    } catch (Tavo::TavoException const& refusal) {
        ExpectDepthRefusal(refusal);
    }
}

void CompareWithItself(xercesc::DOMDocument const* document) {
    TavoXML::SkipWhitespaceTextsCompareFilter filter;
    TavoXML::XMLCompareStrictOrder comparator;
    try {
        TavoXML::DoXMLCompare(document, document, &comparator, &filter,
                              TavoXML::StrictOrderAutoValueCompareOptions());
    } catch (TavoXML::TextNodeValuesDontMatchException const& report) {
        Tavo::UniString const value = report.GetTextNodeValue(TavoXML::XMLCompareException::Left);
        if (!(value == report.GetTextNodeValue(TavoXML::XMLCompareException::Right)) ||
            !DiffersFromItself(value)) {
            std::abort();
        }
    } catch (TavoXML::AttributesDontMatchException const& report) {
        Tavo::UniString const value = report.GetAttributeValue(TavoXML::XMLCompareException::Left);
        if (!(value == report.GetAttributeValue(TavoXML::XMLCompareException::Right)) ||
            !DiffersFromItself(value)) {
            std::abort();
        }
    } catch (TavoXML::NoElementsInDocumentException const&) {
    } catch (TavoXML::XMLCompareException const&) {
        std::abort(); // a document differs from itself
    } catch (Tavo::TavoException const& refusal) {
        ExpectDepthRefusal(refusal);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    xercesc::XMLPlatformUtils::Initialize();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size < 3) {
        return 0;
    }
    std::size_t const documentSize = size - 2;
    Document const original = Parse(data, documentSize);
    if (!original) {
        return 0;
    }
    CompareWithItself(original.get());

    std::vector<std::uint8_t> mutated(data, data + documentSize);
    std::size_t const position =
        (static_cast<std::size_t>(data[size - 2]) * 256 + data[size - 1]) % documentSize;
    mutated[position] = static_cast<std::uint8_t>(mutated[position] + 1 + data[size - 1] % 255);
    Document const changed = Parse(mutated.data(), mutated.size());
    if (!changed) {
        return 0;
    }
    TavoXML::SkipWhitespaceTextsCompareFilter filter;
    CompareAllowingDifferences(original.get(), changed.get(), &filter,
                               TavoXML::StrictOrderAutoValueCompareOptions());
    CompareAllowingDifferences(original.get(), changed.get(), nullptr,
                               TavoXML::StrictOrderAutoValueCompareOptions());
    CompareAllowingDifferences(changed.get(), original.get(), &filter, TavoXML::AttrRuledCompareOptions());
    return 0;
}
