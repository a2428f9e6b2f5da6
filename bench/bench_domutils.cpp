// Builds a tree of 1,000,000 typed elements (integers, reals, quoted strings in CDATA sections) with
// the NewTag family and reads every value back with GetSLongTag, GetDoubleTag and GetStringTag; beside
// it builds the same tree, layout text nodes included, with plain Xerces-C++ calls and reads it with
// getTextContent and strtol/strtod. Ends with "ratio domutils_write <value>" and
// "ratio domutils_read <value>": the utilities' time over the plain DOM's time.
#include "TavoXMLUtils/domutils/TagReaders.hpp"
#include "TavoXMLUtils/domutils/TagWriters.hpp"
#include "bench/BenchReporter.hpp"

#include <benchmark/benchmark.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;
using xercesc::DOMNode;

constexpr int kGroups = 1000;
constexpr int kValuesPerGroup = 1000; // 1,000,000 typed elements in all

// String values in the default character code; none holds a double quote, so both sides quote alike.
std::array<char const*, 4> const gTexts{"alpha", "A somewhat longer text value with spaces",
                                        "Z\xFCrich \x96 \xC6r\xF8", "x < y & z"};

int IntValue(int n) {
    return n * 7 - 3000000;
}
// Moderate magnitudes, so that "%.12g" writes no exponent and the plain side needs no widening.
double RealValue(int n) {
    return n * 0.37 - 12345.5;
}

// What a read gives, compared between the two sides before anything is timed.
struct Totals {
    long long integers = 0;
    double reals = 0;
    std::size_t textBytes = 0;
    bool operator==(Totals const&) const = default;
};

DOMDocument* NewDocument() {
    return xercesc::DOMImplementation::getImplementation()->createDocument(
        nullptr, u"Bench", nullptr, xercesc::XMLPlatformUtils::fgMemoryManager);
}

struct DocumentRelease {
    void operator()(DOMDocument* document) const { document->release(); }
};
using DocumentOwner = std::unique_ptr<DOMDocument, DocumentRelease>;

DocumentOwner BuildWithUtilities(int groups) {
    DocumentOwner document(NewDocument());
    DOMElement* root = document->getDocumentElement();
    TavoXMLUtils::NewLine(root);
    for (int g = 0; g < groups; ++g) {
        DOMElement* group = TavoXMLUtils::NewTag(root, "Group", nullptr, 1, false, nullptr);
        TavoXMLUtils::NewLine(group);
        for (int i = 0; i < kValuesPerGroup; ++i) {
            int const n = g * kValuesPerGroup + i;
            switch (i % 3) {
                case 0:
                    TavoXMLUtils::NewSLongTag(group, "Int", IntValue(n), 2);
                    break;
                case 1:
                    TavoXMLUtils::NewDoubleTag(group, "Real", RealValue(n), 2);
                    break;
                default:
                    TavoXMLUtils::NewStringTag(group, "Text", gTexts[static_cast<std::size_t>(n) % 4], 2);
                    break;
            }
        }
        TavoXMLUtils::Tabs(group, 1);
    }
    return document;
}

// The plain side: the same nodes by hand.
class PlainBuilder {
public:
    explicit PlainBuilder(DOMDocument* document) : document(document) {}

    void Text(DOMElement* parent, char16_t const* text) {
        parent->appendChild(document->createTextNode(text));
    }
    DOMElement* Element(DOMElement* parent, char16_t const* name) {
        Text(parent, tabs[level]);
        DOMElement* element = document->createElement(name);
        parent->appendChild(element);
        Text(parent, u"\n");
        return element;
    }
    void Value(DOMElement* parent, char16_t const* name, char const* text, bool cdata) {
        char16_t wide[128];
        std::size_t length = 0;
        if (cdata) {
            wide[length++] = u'"';
        }
        for (char const* c = text; *c != 0 && length < 125; ++c) {
            wide[length++] = Windows1252(static_cast<unsigned char>(*c));
        }
        if (cdata) {
            wide[length++] = u'"';
        }
        wide[length] = 0;
        DOMElement* element = Element(parent, name);
        element->appendChild(cdata ? static_cast<DOMNode*>(document->createCDATASection(wide))
                                   : static_cast<DOMNode*>(document->createTextNode(wide)));
    }
    int level = 1;

private:
    // The texts hold two characters of the 0x80-0x9F row; the rest of the code is Latin-1.
    static char16_t Windows1252(unsigned char c) {
        return c == 0x96 ? u'\u2013' : c == 0x80 ? u'\u20AC' : static_cast<char16_t>(c);
    }
    static constexpr char16_t const* tabs[] = {u"", u"\t", u"\t\t"};
    DOMDocument* document;
};

DocumentOwner BuildWithPlainDOM(int groups) {
    DocumentOwner document(NewDocument());
    DOMElement* root = document->getDocumentElement();
    PlainBuilder builder(document.get());
    builder.Text(root, u"\n");
    char number[32];
    for (int g = 0; g < groups; ++g) {
        builder.level = 1;
        DOMElement* group = builder.Element(root, u"Group");
        builder.Text(group, u"\n");
        builder.level = 2;
        for (int i = 0; i < kValuesPerGroup; ++i) {
            int const n = g * kValuesPerGroup + i;
            switch (i % 3) {
                case 0:
                    std::snprintf(number, sizeof number, "%ld", static_cast<long>(IntValue(n)));
                    builder.Value(group, u"Int", number, false);
                    break;
                case 1:
                    std::snprintf(number, sizeof number, "%.12g", RealValue(n));
                    builder.Value(group, u"Real", number, false);
                    break;
                default:
                    builder.Value(group, u"Text", gTexts[static_cast<std::size_t>(n) % 4], true);
                    break;
            }
        }
        builder.Text(group, u"\t");
    }
    return document;
}

// Both readers walk the tree alike; they differ in how a value comes out of its element.
template <class ReadValue>
Totals Walk(DOMDocument* document, ReadValue readValue) {
    Totals totals;
    for (DOMNode* group = document->getDocumentElement()->getFirstChild(); group != nullptr;
         group = group->getNextSibling()) {
        if (group->getNodeType() != DOMNode::ELEMENT_NODE) {
            continue;
        }
        int i = 0;
        for (DOMNode* value = group->getFirstChild(); value != nullptr; value = value->getNextSibling()) {
            if (value->getNodeType() == DOMNode::ELEMENT_NODE) {
                readValue(static_cast<DOMElement*>(value), i++ % 3, totals);
            }
        }
    }
    return totals;
}

Totals ReadWithUtilities(DOMDocument* document) {
    return Walk(document, [](DOMElement* element, int kind, Totals& totals) {
        switch (kind) {
            case 0:
                totals.integers += TavoXMLUtils::GetSLongTag(element);
                break;
            case 1:
                totals.reals += TavoXMLUtils::GetDoubleTag(element);
                break;
            default: {
                std::unique_ptr<char[]> const text(TavoXMLUtils::GetStringTag(element, nullptr));
                totals.textBytes += std::strlen(text.get());
                break;
            }
        }
    });
}

Totals ReadWithPlainDOM(DOMDocument* document) {
    return Walk(document, [](DOMElement* element, int kind, Totals& totals) {
        XMLCh const* content = element->getTextContent();
        char narrow[128];
        std::size_t length = 0;
        for (; content[length] != 0 && length < sizeof narrow - 1; ++length) {
            narrow[length] = static_cast<char>(content[length]);
        }
        narrow[length] = 0;
        switch (kind) {
            case 0:
                totals.integers += std::strtol(narrow, nullptr, 10);
                break;
            case 1:
                totals.reals += std::strtod(narrow, nullptr);
                break;
            default: {
                // Unquoted into a fresh array, as the utilities give it.
                std::size_t const inner = length >= 2 ? length - 2 : 0;
                std::unique_ptr<char[]> const text(new char[inner + 1]);
                std::memcpy(text.get(), narrow + 1, inner);
                text[inner] = 0;
                totals.textBytes += std::strlen(text.get());
                break;
            }
        }
    });
}

std::string Serialise(DOMDocument* document) {
    xercesc::DOMLSSerializer* serializer =
        xercesc::DOMImplementation::getImplementation()->createLSSerializer();
    XMLCh* text = serializer->writeToString(document);
    std::string result;
    for (XMLCh const* c = text; *c != 0; ++c) {
        result += std::to_string(static_cast<unsigned int>(*c)) + ' ';
    }
    xercesc::XMLString::release(&text);
    serializer->release();
    return result;
}

void BM_Utilities_Write(benchmark::State& state) {
    for (auto _ : state) {
        DocumentOwner document = BuildWithUtilities(kGroups);
        benchmark::DoNotOptimize(document.get());
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
}

void BM_PlainDOM_Write(benchmark::State& state) {
    for (auto _ : state) {
        DocumentOwner document = BuildWithPlainDOM(kGroups);
        benchmark::DoNotOptimize(document.get());
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
}

// Each read gets a document of its own, built before the clock runs: getTextContent leaves its
// results in the document until the document ends.
void BM_Utilities_Read(benchmark::State& state) {
    DocumentOwner document = BuildWithUtilities(kGroups);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ReadWithUtilities(document.get()));
    }
}

void BM_PlainDOM_Read(benchmark::State& state) {
    DocumentOwner document = BuildWithUtilities(kGroups);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ReadWithPlainDOM(document.get()));
    }
}

} // namespace

int main(int argc, char** argv) {
    bench::InitializeInterleaved(argc, argv);
    // The comparison means something only if both sides build the same tree and read the same values.
    DocumentOwner const utilities = BuildWithUtilities(3);
    DocumentOwner const plain = BuildWithPlainDOM(3);
    if (Serialise(utilities.get()) != Serialise(plain.get())) {
        std::fprintf(stderr, "The two trees differ\n");
        return 1;
    }
    if (!(ReadWithUtilities(utilities.get()) == ReadWithPlainDOM(plain.get()))) {
        std::fprintf(stderr, "The two readers give different values\n");
        return 1;
    }
    int const repetitions = 5;
    using Case = std::pair<char const*, void (*)(benchmark::State&)>;
    for (Case const& c :
         {Case{"BM_PlainDOM_Write", BM_PlainDOM_Write}, Case{"BM_Utilities_Write", BM_Utilities_Write},
          Case{"BM_PlainDOM_Read", BM_PlainDOM_Read}, Case{"BM_Utilities_Read", BM_Utilities_Read}}) {
        benchmark::RegisterBenchmark(c.first, c.second)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1)
            ->Repetitions(repetitions);
    }
    bench::BestTimeReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    double const write = reporter.Best("BM_Utilities_Write");
    double const plainWrite = reporter.Best("BM_PlainDOM_Write");
    double const read = reporter.Best("BM_Utilities_Read");
    double const plainRead = reporter.Best("BM_PlainDOM_Read");
    std::printf("best CPU time: utilities write %.1f ms, plain write %.1f ms, utilities read %.1f ms, "
                "plain read %.1f ms\n",
                write * 1e3, plainWrite * 1e3, read * 1e3, plainRead * 1e3);
    if (write > 0.0 && plainWrite > 0.0) {
        std::printf("ratio domutils_write %.3f\n", write / plainWrite);
    }
    if (read > 0.0 && plainRead > 0.0) {
        std::printf("ratio domutils_read %.3f\n", read / plainRead);
    }
    benchmark::Shutdown();
    return 0;
}
