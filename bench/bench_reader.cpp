// Reads back 1,000,000 values (elements with numbers and strings, attributes, nesting four deep)
// through a DOMReader, parse included: once in the order they were written, once with the fields of
// each record read in reverse order. Beside it, the same parse with a plain XercesDOMParser and a
// hand-written walk that reads the same values from the DOM. The reverse order is also timed on a
// document of a tenth of the size, to show that its cost grows linearly with the number of elements.
// Ends with "ratio <case> <value>": the reader's time over the plain walk's time.
#include "TavoXMLUtils/TavoXMLUtils.hpp"
#include "TavoXMLUtils/builder/TavoXMLDOMBuilder.hpp"
#include "TavoXMLUtils/reader/TavoXMLDOMReader.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"
#include "bench/BenchDocument.hpp"
#include "bench/BenchReporter.hpp"

#include <benchmark/benchmark.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace {

using bench::gFullShape;
using bench::Shape;
constexpr Shape gTenthShape{1, 100, 100};

// The document as UTF-8, written once per shape through the output channel.
std::string const& Document(Shape shape) {
    static std::map<int, std::string> documents;
    std::string& text = documents[shape.groups];
    if (text.empty()) {
        TavoXML::DOMBuilder channel("Bench", true);
        bench::WriteBenchDocument(channel, shape);
        channel.Export([&text](char const* data, unsigned int length) { text.assign(data, length); }, true);
    }
    return text;
}

// What one record holds; both walks fill it, and a checksum keeps the reads from being optimised away.
struct Record {
    int index = 0;
    int count = 0;
    long long total = 0;
    unsigned int flags = 0;
    short small = 0;
    Tavo::UniString name, label, note, code;
    int last = 0;

    long long Sum() const {
        return index + count + total + flags + small + name.GetLength() + label.GetLength() +
               note.GetLength() + code.GetLength() + last;
    }
};

// ----------------------------------------------------------------------------------------------------
// Through the channel

void ReadFieldsInOrder(TavoXML::DOMReader& reader, Record& r) {
    reader.ReadXML("Count", r.count);
    reader.ReadXML("Total", r.total);
    reader.ReadXML("Flags", r.flags);
    reader.ReadXML("Small", r.small);
    reader.ReadXML("Name", r.name);
    reader.ReadXML("Label", r.label);
    reader.ReadXML("Note", r.note);
    reader.ReadXML("Code", r.code);
    reader.ReadXML("Last", r.last);
}

void ReadFieldsReversed(TavoXML::DOMReader& reader, Record& r) {
    reader.ReadXML("Last", r.last);
    reader.ReadXML("Code", r.code);
    reader.ReadXML("Note", r.note);
    reader.ReadXML("Label", r.label);
    reader.ReadXML("Name", r.name);
    reader.ReadXML("Small", r.small);
    reader.ReadXML("Flags", r.flags);
    reader.ReadXML("Total", r.total);
    reader.ReadXML("Count", r.count);
}

long long ReadWithChannel(Shape shape, bool reversed) {
    std::string const& text = Document(shape);
    TavoXML::DOMReader reader(reinterpret_cast<unsigned char const*>(text.data()),
                              static_cast<unsigned int>(text.size()), "Bench");
    long long sum = 0;
    Record record;
    Tavo::UniString sectionName;
    for (int g = 0; g < shape.groups; ++g) {
        int id = 0;
        reader.ReadStartElement("Group");
        reader.ReadXMLAttr("id", id);
        for (int s = 0; s < shape.sections; ++s) {
            reader.ReadStartElement("Section");
            reader.ReadXMLAttr("name", sectionName);
            for (int r = 0; r < shape.records; ++r) {
                reader.ReadStartElement("Record");
                reader.ReadXMLAttr("index", record.index);
                if (reversed) {
                    ReadFieldsReversed(reader, record);
                } else {
                    ReadFieldsInOrder(reader, record);
                }
                reader.ReadEndElement("Record");
                sum += record.Sum();
            }
            reader.ReadEndElement("Section");
            sum += sectionName.GetLength();
        }
        reader.ReadEndElement("Group");
        sum += id;
    }
    return reader.GetNumberOfMessage() == 0 ? sum : -1;
}

// ----------------------------------------------------------------------------------------------------
// Plain parser and a hand-written walk

xercesc::DOMElement* FirstElement(xercesc::DOMNode* node) {
    while (node != nullptr && node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
        node = node->getNextSibling();
    }
    return static_cast<xercesc::DOMElement*>(node);
}

xercesc::DOMElement* NextElement(xercesc::DOMElement* element) {
    return FirstElement(element->getNextSibling());
}

// The text of the element's first child, as the channel reads it.
XMLCh const* TextOf(xercesc::DOMElement* element) {
    xercesc::DOMNode* first = element->getFirstChild();
    return first != nullptr ? first->getNodeValue() : u"";
}

template <class T>
void Number(XMLCh const* text, T& value) {
    Tavo::strtovalue(TavoXML::AsUShort(text), value);
}

// The nine fields of a record: the name and how its text is stored.
struct Field {
    char16_t const* name;
    void (*read)(XMLCh const* text, Record& record);
};
constexpr std::array<Field, 9> gFields{{
    {u"Count", [](XMLCh const* text, Record& r) { Number(text, r.count); }},
    {u"Total", [](XMLCh const* text, Record& r) { Number(text, r.total); }},
    {u"Flags", [](XMLCh const* text, Record& r) { Number(text, r.flags); }},
    {u"Small", [](XMLCh const* text, Record& r) { Number(text, r.small); }},
    {u"Name", [](XMLCh const* text, Record& r) { r.name = Tavo::UniString(text); }},
    {u"Label", [](XMLCh const* text, Record& r) { r.label = Tavo::UniString(text); }},
    {u"Note", [](XMLCh const* text, Record& r) { r.note = Tavo::UniString(text); }},
    {u"Code", [](XMLCh const* text, Record& r) { r.code = Tavo::UniString(text); }},
    {u"Last", [](XMLCh const* text, Record& r) { Number(text, r.last); }},
}};

// The fields of a record, found by name among its element children (as a reader of a record whose
// layout it checks would), then read in order or from the last to the first.
void ReadRecordPlain(xercesc::DOMElement* element, Record& r, bool reversed) {
    std::array<xercesc::DOMElement*, gFields.size()> fields{};
    std::size_t found = 0;
    for (xercesc::DOMElement* child = FirstElement(element->getFirstChild());
         child != nullptr && found < fields.size(); child = NextElement(child)) {
        if (xercesc::XMLString::equals(child->getTagName(), gFields[found].name)) {
            fields[found++] = child;
        }
    }
    if (found < fields.size()) {
        return;
    }
    Number(element->getAttribute(u"index"), r.index);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        std::size_t const field = reversed ? fields.size() - 1 - i : i;
        gFields[field].read(TextOf(fields[field]), r);
    }
}

long long ReadWithPlainDOM(Shape shape, bool reversed) {
    std::string const& text = Document(shape);
    xercesc::XercesDOMParser parser;
    xercesc::MemBufInputSource source(reinterpret_cast<XMLByte const*>(text.data()), text.size(), u"plain");
    parser.parse(source);
    xercesc::DOMDocument* document = parser.getDocument();
    long long sum = 0;
    Record record;
    for (xercesc::DOMElement* group = FirstElement(document->getDocumentElement()->getFirstChild());
         group != nullptr; group = NextElement(group)) {
        int id = 0;
        Number(group->getAttribute(u"id"), id);
        for (xercesc::DOMElement* section = FirstElement(group->getFirstChild()); section != nullptr;
             section = NextElement(section)) {
            Tavo::UniString const sectionName(section->getAttribute(u"name"));
            for (xercesc::DOMElement* element = FirstElement(section->getFirstChild()); element != nullptr;
                 element = NextElement(element)) {
                ReadRecordPlain(element, record, reversed);
                sum += record.Sum();
            }
            sum += sectionName.GetLength();
        }
        sum += id;
    }
    return sum;
}

// ----------------------------------------------------------------------------------------------------
// Benchmarks

void BM_Read(benchmark::State& state, long long (*read)(Shape, bool), Shape shape, bool reversed) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(read(shape, reversed));
    }
}

BENCHMARK_CAPTURE(BM_Read, Plain_WrittenOrder, ReadWithPlainDOM, gFullShape, false)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2)
    ->Repetitions(5);
BENCHMARK_CAPTURE(BM_Read, Reader_WrittenOrder, ReadWithChannel, gFullShape, false)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2)
    ->Repetitions(5);
BENCHMARK_CAPTURE(BM_Read, Plain_ReverseOrder, ReadWithPlainDOM, gFullShape, true)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2)
    ->Repetitions(5);
BENCHMARK_CAPTURE(BM_Read, Reader_ReverseOrder, ReadWithChannel, gFullShape, true)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2)
    ->Repetitions(5);
BENCHMARK_CAPTURE(BM_Read, Plain_ReverseOrderTenth, ReadWithPlainDOM, gTenthShape, true)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10)
    ->Repetitions(5);
BENCHMARK_CAPTURE(BM_Read, Reader_ReverseOrderTenth, ReadWithChannel, gTenthShape, true)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10)
    ->Repetitions(5);

} // namespace

int main(int argc, char** argv) {
    bench::InitializeInterleaved(argc, argv);
    // Both walks must read the same values, or the comparison means nothing. The check on the full
    // document also warms the heap up for the timed runs.
    for (Shape shape : {gTenthShape, gFullShape}) {
        for (bool reversed : {false, true}) {
            if (ReadWithChannel(shape, reversed) != ReadWithPlainDOM(shape, reversed)) {
                std::fprintf(stderr, "the reader and the plain walk read different values\n");
                return 1;
            }
        }
    }
    bench::BestTimeReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    double const written = reporter.Best("BM_Read/Reader_WrittenOrder");
    double const writtenPlain = reporter.Best("BM_Read/Plain_WrittenOrder");
    double const reverse = reporter.Best("BM_Read/Reader_ReverseOrder");
    double const reversePlain = reporter.Best("BM_Read/Plain_ReverseOrder");
    double const reverseTenth = reporter.Best("BM_Read/Reader_ReverseOrderTenth");
    double const reversePlainTenth = reporter.Best("BM_Read/Plain_ReverseOrderTenth");
    if (written > 0 && writtenPlain > 0 && reverse > 0 && reversePlain > 0 && reverseTenth > 0 &&
        reversePlainTenth > 0) {
        std::printf("written order: reader %.1f ms, plain %.1f ms\n", written * 1e3, writtenPlain * 1e3);
        std::printf("reverse order: reader %.1f ms, plain %.1f ms\n", reverse * 1e3, reversePlain * 1e3);
        // Linear growth gives 10; memory effects of the larger tree weigh on both sides alike.
        std::printf("reverse order, 10x the records: reader %.2f times the time, plain %.2f times\n",
                    reverse / reverseTenth, reversePlain / reversePlainTenth);
        std::printf("ratio written_order_1M_values %.3f\n", written / writtenPlain);
        std::printf("ratio reverse_order_1M_values %.3f\n", reverse / reversePlain);
    }
    benchmark::Shutdown();
    return 0;
}
