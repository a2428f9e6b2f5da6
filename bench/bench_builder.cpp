// Writes 1,000,000 values (elements with numbers and strings, attributes, nesting four deep) through a
// DOMBuilder and exports the document as UTF-8 in memory; beside it builds the same document, layout
// text nodes included, with plain Xerces-C++ DOM calls and serialises it with DOMLSSerializer.
// Ends with "ratio <case> <value>": the channel's time over the plain DOM's time.
#include "TavoXMLUtils/TavoXMLUtils.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"
#include "bench/BenchDocument.hpp"
#include "bench/BenchReporter.hpp"

#include <benchmark/benchmark.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace {

using bench::gFullShape;
using bench::Shape;
using bench::Texts;

// Each writer returns the size of the text; `text`, if given, receives the text itself.
std::size_t WriteWithChannel(Shape shape, std::string* text = nullptr) {
    TavoXML::DOMBuilder channel("Bench", true);
    bench::WriteBenchDocument(channel, shape);
    std::size_t size = 0;
    channel.Export(
        [&](char const* data, unsigned int length) {
            size = length;
            if (text != nullptr) {
                text->assign(data, length);
            }
        },
        true);
    return size;
}

// The same document by hand: whitespace nodes, elements, texts and attributes as the channel makes them.
class PlainDocument {
public:
    PlainDocument() {
        document = xercesc::DOMImplementation::getImplementation()->createDocument(
            nullptr, u"Bench", nullptr, xercesc::XMLPlatformUtils::fgMemoryManager);
        document->insertBefore(document->createTextNode(u"\n"), document->getDocumentElement());
        current = document->getDocumentElement();
    }
    ~PlainDocument() { document->release(); }

    void Indent(int depth) {
        char16_t text[64];
        text[0] = u'\n';
        std::fill(text + 1, text + depth + 1, u'\t');
        text[depth + 1] = 0;
        current->appendChild(document->createTextNode(text));
    }
    void Open(char16_t const* name) {
        Indent(depth++);
        xercesc::DOMElement* element = document->createElement(name);
        current->appendChild(element);
        current = element;
        justOpened = true;
    }
    void Close() {
        --depth;
        if (!justOpened) {
            Indent(depth);
        }
        justOpened = false;
        current = current->getParentNode();
    }
    void Value(char16_t const* name, char16_t const* text) {
        justOpened = false;
        Indent(depth);
        xercesc::DOMElement* element = document->createElement(name);
        current->appendChild(element);
        element->appendChild(document->createTextNode(text));
    }
    template <class T>
    void Number(char16_t const* name, T value) {
        unsigned short text[32];
        Tavo::valuetostr(value, text, 32);
        Value(name, TavoXML::AsXMLCh(text));
    }
    template <class T>
    void NumberAttribute(char16_t const* name, T value) {
        unsigned short text[32];
        Tavo::valuetostr(value, text, 32);
        static_cast<xercesc::DOMElement*>(current)->setAttribute(name, TavoXML::AsXMLCh(text));
    }
    void Attribute(char16_t const* name, char16_t const* value) {
        static_cast<xercesc::DOMElement*>(current)->setAttribute(name, value);
    }
    void End() {
        document->appendChild(document->createTextNode(u"\n"));
        current->appendChild(document->createTextNode(u"\n"));
    }

    std::size_t Serialise(std::string* text) {
        using namespace xercesc;
        DOMImplementation* implementation = DOMImplementation::getImplementation();
        MemBufFormatTarget target(1023);
        DOMLSOutput* output = implementation->createLSOutput();
        output->setEncoding(XMLUni::fgUTF8EncodingString);
        output->setByteStream(&target);
        DOMLSSerializer* serializer = implementation->createLSSerializer();
        serializer->getDomConfig()->setParameter(XMLUni::fgDOMXMLDeclaration, true);
        serializer->write(document, output);
        std::size_t const size = target.getLen();
        if (text != nullptr) {
            text->assign(reinterpret_cast<char const*>(target.getRawBuffer()), size);
        }
        output->release();
        serializer->release();
        return size;
    }

private:
    xercesc::DOMDocument* document;
    xercesc::DOMNode* current;
    int depth = 1;
    bool justOpened = true;
};

std::size_t WriteWithPlainDOM(Shape shape, std::string* text = nullptr) {
    auto const& texts = Texts();
    PlainDocument doc;
    for (int g = 0; g < shape.groups; ++g) {
        doc.Open(u"Group");
        doc.NumberAttribute(u"id", g);
        for (int s = 0; s < shape.sections; ++s) {
            doc.Open(u"Section");
            doc.Attribute(u"name", texts[s % 4].GetU16Str());
            for (int r = 0; r < shape.records; ++r) {
                int const n = (g * shape.sections + s) * shape.records + r;
                doc.Open(u"Record");
                doc.NumberAttribute(u"index", n);
                doc.Number(u"Count", n);
                doc.Number(u"Total", static_cast<long long>(n) * 1000003);
                doc.Number(u"Flags", static_cast<unsigned int>(n ^ 0x5A5A));
                doc.Number(u"Small", static_cast<short>(n % 30000));
                doc.Value(u"Name", texts[r % 4].GetU16Str());
                doc.Value(u"Label", texts[(r + 1) % 4].GetU16Str());
                doc.Value(u"Note", texts[(r + 2) % 4].GetU16Str());
                doc.Value(u"Code", texts[(r + 3) % 4].GetU16Str());
                doc.Number(u"Last", n - 1);
                doc.Close();
            }
            doc.Close();
        }
        doc.Close();
    }
    doc.End();
    return doc.Serialise(text);
}

// A smaller shape for profiling runs: TAVO_BENCH_SMALL=1 selects 1/10 of the records.
Shape SelectedShape() {
    char const* small = std::getenv("TAVO_BENCH_SMALL");
    return small != nullptr && *small == '1' ? Shape{1, 100, 100} : gFullShape;
}

void BM_Channel_WriteExport(benchmark::State& state) {
    Shape const shape = SelectedShape();
    for (auto _ : state) {
        benchmark::DoNotOptimize(WriteWithChannel(shape));
    }
}

void BM_PlainDOM_WriteExport(benchmark::State& state) {
    Shape const shape = SelectedShape();
    for (auto _ : state) {
        benchmark::DoNotOptimize(WriteWithPlainDOM(shape));
    }
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    // The comparison means something only if both build the same document.
    std::string channelText;
    std::string plainText;
    WriteWithChannel(Shape{1, 4, 8}, &channelText);
    WriteWithPlainDOM(Shape{1, 4, 8}, &plainText);
    if (channelText != plainText) {
        std::fprintf(stderr, "The two documents differ:\n%s\n----\n%s\n", channelText.c_str(),
                     plainText.c_str());
        return 1;
    }
    // Alternating runs of the two, so that a change in the machine's load hits both alike.
    for (int round = 0; round < 5; ++round) {
        benchmark::RegisterBenchmark("BM_PlainDOM_WriteExport", BM_PlainDOM_WriteExport)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1);
        benchmark::RegisterBenchmark("BM_Channel_WriteExport", BM_Channel_WriteExport)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1);
    }
    bench::BestTimeReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    double const channel = reporter.Best("BM_Channel_WriteExport");
    double const plain = reporter.Best("BM_PlainDOM_WriteExport");
    if (channel > 0.0 && plain > 0.0) {
        std::printf("best CPU time: channel write+export %.1f ms, plain DOM write+serialise %.1f ms\n",
                    channel * 1e3, plain * 1e3);
        std::printf("ratio write_export_1M_values %.3f\n", channel / plain);
    }
    benchmark::Shutdown();
    return 0;
}
