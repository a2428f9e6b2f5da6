// Comparing two equal documents of about 20 MB, parsed once before the timing: DoXMLCompare with
// StrictOrderAutoValueCompareOptions and with AttrRuledCompareOptions, against a comparison written on
// raw Xerces-C++ with two DOMTreeWalkers that makes the same checks (element names without regard to
// case, attributes by name, texts and attribute values as reals when both read as reals, otherwise as
// trimmed text without regard to case). The last lines give "ratio <case> <value>", the best processor
// time of the library over the best raw one.
#include "TavoXMLUtils/compare/AttrRuledCompareOptions.hpp"
#include "TavoXMLUtils/compare/DoXMLCompare.hpp"
#include "TavoXMLUtils/compare/StrictOrderAutoValueCompareOptions.hpp"
#include "TavoXMLUtils/compare/XMLCompareExceptions.hpp"
#include "TavoXMLUtils/compare/XMLNodeComparators.hpp"
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "bench/BenchReporter.hpp"

#include <benchmark/benchmark.h>
#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMTreeWalker.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace {

xercesc::DOMDocument* gLeft = nullptr;
xercesc::DOMDocument* gRight = nullptr;

// Records of a data file: attributes, numbers, words, and a tolerance and a type word here and there.
std::string DocumentText(std::size_t targetBytes) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Catalog version=\"3\" tavo_eps=\"1e-6\">\n";
    char const* const words[] = {"alpha", "A somewhat longer text value with spaces", "Z\xC3\xBCrich",
                                 "x &lt; y"};
    for (int section = 0; text.size() < targetBytes; ++section) {
        text += "  <Section id=\"s" + std::to_string(section) + "\" name=\"Section " +
                std::to_string(section) + "\"" + (section % 10 == 0 ? " tavo_eps=\"0.001\"" : "") + ">\n";
        for (int entry = 0; entry < 50; ++entry) {
            std::string const n = std::to_string(section * 50 + entry);
            text += "    <Entry key=\"k" + n + "\" weight=\"" + std::to_string(entry * 0.5) + "\">\n";
            text += "      <Name>" + std::string(words[entry % 4]) + "</Name>\n";
            text += "      <Value unit=\"mm\" tavo_type=\"double\">" +
                    std::to_string(entry * 1.25 + section) + "</Value>\n";
            text += "      <Count tavo_type=\"int\">" + n + "</Count>\n";
            text +=
                "      <Note>" + std::string(words[(entry + 1) % 4]) + " " + n + "</Note>\n    </Entry>\n";
        }
        text += "  </Section>\n";
    }
    text += "</Catalog>\n";
    return text;
}

xercesc::DOMDocument* Parse(std::string const& text) {
    return ParseXMLDoc(reinterpret_cast<unsigned char const*>(text.data()),
                       static_cast<unsigned int>(text.size()), xercesc::AbstractDOMParser::Val_Never, true,
                       Tavo::UniString("bench.xml"));
}

// ---- the raw comparison

bool ReadReal(XMLCh const* text, double& value) {
    char buffer[64];
    std::size_t length = 0;
    for (; text[length] != 0; ++length) {
        if (length + 1 >= sizeof buffer || text[length] > 0x7F) {
            return false;
        }
        buffer[length] = static_cast<char>(text[length]);
    }
    buffer[length] = 0;
    char* end = nullptr;
    value = std::strtod(buffer, &end);
    if (end == buffer) {
        return false;
    }
    while (*end == ' ' || *end == '\t' || *end == '\n' || *end == '\r') {
        ++end;
    }
    return *end == 0;
}

bool IsBlank(XMLCh c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool ValuesEqual(XMLCh const* left, XMLCh const* right, double eps) {
    double l = 0.0;
    double r = 0.0;
    if (ReadReal(left, l) && ReadReal(right, r)) {
        return std::fabs(l - r) < eps;
    }
    XMLSize_t leftEnd = xercesc::XMLString::stringLen(left);
    XMLSize_t rightEnd = xercesc::XMLString::stringLen(right);
    while (leftEnd > 0 && IsBlank(left[leftEnd - 1])) {
        --leftEnd;
    }
    while (rightEnd > 0 && IsBlank(right[rightEnd - 1])) {
        --rightEnd;
    }
    while (leftEnd > 0 && IsBlank(*left)) {
        ++left;
        --leftEnd;
    }
    while (rightEnd > 0 && IsBlank(*right)) {
        ++right;
        --rightEnd;
    }
    return leftEnd == rightEnd && xercesc::XMLString::compareNIString(left, right, leftEnd) == 0;
}

void Differ() {
    throw std::runtime_error("the documents differ");
}

void CheckPair(xercesc::DOMNode const* left, xercesc::DOMNode const* right, double eps) {
    if (left->getNodeType() != right->getNodeType()) {
        Differ();
    }
    if (left->getNodeType() == xercesc::DOMNode::TEXT_NODE) {
        if (!ValuesEqual(left->getNodeValue(), right->getNodeValue(), eps)) {
            Differ();
        }
        return;
    }
    if (xercesc::XMLString::compareIString(left->getNodeName(), right->getNodeName()) != 0) {
        Differ();
    }
    xercesc::DOMNamedNodeMap const* const leftMap = left->getAttributes();
    xercesc::DOMNamedNodeMap const* const rightMap = right->getAttributes();
    if (leftMap->getLength() != rightMap->getLength()) {
        Differ();
    }
    for (XMLSize_t i = 0; i < leftMap->getLength(); ++i) {
        auto const* const attribute = static_cast<xercesc::DOMAttr const*>(leftMap->item(i));
        auto const* const partner =
            static_cast<xercesc::DOMAttr const*>(rightMap->getNamedItem(attribute->getName()));
        if (partner == nullptr || !ValuesEqual(attribute->getValue(), partner->getValue(), eps)) {
            Differ();
        }
    }
}

void RawCompare(xercesc::DOMDocument* left, xercesc::DOMDocument* right, double eps) {
    xercesc::DOMElement* const leftRoot = left->getDocumentElement();
    xercesc::DOMTreeWalker* const l =
        left->createTreeWalker(leftRoot, xercesc::DOMNodeFilter::SHOW_ALL, nullptr, false);
    xercesc::DOMTreeWalker* const r = right->createTreeWalker(
        right->getDocumentElement(), xercesc::DOMNodeFilter::SHOW_ALL, nullptr, false);
    CheckPair(leftRoot, right->getDocumentElement(), eps);
    for (;;) {
        xercesc::DOMNode* leftNode = l->firstChild();
        xercesc::DOMNode* rightNode = r->firstChild();
        if (leftNode != nullptr && rightNode != nullptr) {
            CheckPair(leftNode, rightNode, eps);
            continue;
        }
        if (leftNode != nullptr || rightNode != nullptr) {
            Differ();
        }
        for (;;) {
            if (l->getCurrentNode() == leftRoot) {
                l->release();
                r->release();
                return;
            }
            leftNode = l->nextSibling();
            rightNode = r->nextSibling();
            if (leftNode != nullptr && rightNode != nullptr) {
                CheckPair(leftNode, rightNode, eps);
                break;
            }
            if (leftNode != nullptr || rightNode != nullptr) {
                Differ();
            }
            l->parentNode();
            r->parentNode();
        }
    }
}

// ---- the cases

void RawXerces(benchmark::State& state) {
    for (auto _ : state) {
        RawCompare(gLeft, gRight, 1e-05);
    }
}

void Library(benchmark::State& state, TavoXML::IXMLCompareOptions const& options) {
    for (auto _ : state) {
        TavoXML::XMLCompareStrictOrder comparator;
        try {
            TavoXML::DoXMLCompare(gLeft, gRight, &comparator, nullptr, options);
        } catch (TavoXML::XMLCompareException const& report) {
            state.SkipWithError(Tavo::ToUTF8String(report.GetText()).c_str());
            break;
        }
    }
}

void CompareAuto(benchmark::State& state) {
    Library(state, TavoXML::StrictOrderAutoValueCompareOptions());
}

void CompareAttrRuled(benchmark::State& state) {
    Library(state, TavoXML::AttrRuledCompareOptions());
}

BENCHMARK(RawXerces)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(CompareAuto)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(CompareAttrRuled)->Unit(benchmark::kMillisecond)->Repetitions(5);

} // namespace

int main(int argc, char** argv) {
    xercesc::XMLPlatformUtils::Initialize();
    std::string const text = DocumentText(20u << 20);
    gLeft = Parse(text);
    gRight = Parse(text);
    if (gLeft == nullptr || gRight == nullptr) {
        std::fprintf(stderr, "the benchmark document does not parse\n");
        return 1;
    }
    std::printf("two documents of %zu bytes\n", text.size());
    bench::InitializeInterleaved(argc, argv);
    bench::BestTimeReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    gLeft->release();
    gRight->release();
    double const raw = reporter.Best("RawXerces");
    for (auto const& [name, label] :
         {std::pair<char const*, char const*>{"CompareAuto", "compare_auto"},
          std::pair<char const*, char const*>{"CompareAttrRuled", "compare_attr_ruled"}}) {
        if (raw > 0 && reporter.Best(name) > 0) {
            std::printf("ratio %s %.3f\n", label, reporter.Best(name) / raw);
        }
    }
    xercesc::XMLPlatformUtils::Terminate();
    return 0;
}
