// Document output and Base64, each beside raw Xerces-C++ doing the same work:
//   format_utf8    FormatXMLDocUTF8 of a parsed document of about 20 MB into a memory channel; beside
//                  it DOMLSSerializer writes the same tree as UTF-8 to a MemBufFormatTarget.
//   stream_write   TavoSAX2Writer writes about 1,000,000 elements into a memory channel; beside it a
//                  raw XMLFormatter on a MemBufFormatTarget writes the same bytes.
//   base64_encode  Base64Converter::Encode of 10 MB beside Base64::encode.
//   base64_decode  Base64Converter::Decode of that text beside Base64::decode.
// Before the timed runs it measures the streaming writer's peak heap while it writes into a channel
// that keeps nothing, for 10,000 and for 1,000,000 elements: the writer's own memory must not grow
// with the document. Ends with "ratio <case> <value>": the library's time over raw Xerces-C++.
#include "bench/BenchReporter.hpp"

#include "TavoXMLUtils/output/FormatXMLDoc.hpp"
#include "TavoXMLUtils/output/TavoSAX2Writer.hpp"
#include "TavoXMLUtils/support/Base64Converter.hpp"

#include "TavoRoot/OChannel.hpp"
#include "TavoRoot/UniString.hpp"

#include <benchmark/benchmark.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLFormatter.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/Base64.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <random>
#include <string>

// Heap accounting for the peak-memory measurement: every allocation of the process passes here.
namespace {
std::atomic<std::size_t> gLiveBytes{0};
std::atomic<std::size_t> gPeakBytes{0};

void* Track(void* block) {
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    std::size_t const live = gLiveBytes.fetch_add(malloc_usable_size(block), std::memory_order_relaxed) +
                             malloc_usable_size(block);
    std::size_t peak = gPeakBytes.load(std::memory_order_relaxed);
    while (live > peak && !gPeakBytes.compare_exchange_weak(peak, live, std::memory_order_relaxed)) {
    }
    return block;
}
void Untrack(void* block) noexcept {
    if (block != nullptr) {
        gLiveBytes.fetch_sub(malloc_usable_size(block), std::memory_order_relaxed);
        std::free(block);
    }
}
} // namespace

void* operator new(std::size_t size) {
    return Track(std::malloc(size == 0 ? 1 : size));
}
void* operator new[](std::size_t size) {
    return Track(std::malloc(size == 0 ? 1 : size));
}
void* operator new(std::size_t size, std::align_val_t align) {
    std::size_t const a = std::max(static_cast<std::size_t>(align), sizeof(void*));
    return Track(std::aligned_alloc(a, (std::max<std::size_t>(size, 1) + a - 1) / a * a));
}
void* operator new[](std::size_t size, std::align_val_t align) {
    return operator new(size, align);
}
void operator delete(void* block) noexcept {
    Untrack(block);
}
void operator delete[](void* block) noexcept {
    Untrack(block);
}
void operator delete(void* block, std::size_t) noexcept {
    Untrack(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    Untrack(block);
}
void operator delete(void* block, std::align_val_t) noexcept {
    Untrack(block);
}
void operator delete[](void* block, std::align_val_t) noexcept {
    Untrack(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    Untrack(block);
}
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept {
    Untrack(block);
}

namespace {

XERCES_CPP_NAMESPACE_USE

// Texts of the values: plain, with markup characters, with non-ASCII letters, longer.
Tavo::UniString const& ValueText(int n) {
    static Tavo::UniString const texts[] = {Tavo::UniString("alpha"), Tavo::UniString("x < y & z"),
                                            Tavo::UniString(u"Z\u00FCrich \u2013 \u00C6r\u00F8"),
                                            Tavo::UniString("A somewhat longer text value with spaces")};
    return texts[n % 4];
}

// ---- format_utf8 ----------------------------------------------------------------------------------

// Sections of records with attributes, texts with markup characters and non-ASCII letters, processing
// instructions and layout text: about 20 MB of UTF-8, written with the streaming writer.
std::string MakeDocumentText() {
    Tavo::MemoryOChannel channel;
    {
        TavoXML::TavoSAX2Writer writer(channel);
        Tavo::UniString const section("Section");
        Tavo::UniString const record("Record");
        Tavo::UniString const name("Name");
        Tavo::UniString const note("Note");
        writer.StartElement(Tavo::UniString("Data"));
        for (int s = 0; channel.GetData().size() < 20u * 1024 * 1024; ++s) {
            TavoXML::TavoSAX2Writer::Attrs sectionAttributes;
            sectionAttributes.Add(Tavo::UniString("index"), Tavo::UniString::PrintfFwd("%d", s));
            sectionAttributes.Add(Tavo::UniString("title"),
                                  Tavo::UniString(u"\"Quoted\" & <odd> \u00E9t\u00E9"));
            writer.StartElement(section, sectionAttributes);
            writer.processingInstruction(u"checkpoint", u"section follows");
            for (int r = 0; r < 100; ++r) {
                TavoXML::TavoSAX2Writer::Attrs recordAttributes;
                recordAttributes.Add(Tavo::UniString("id"), Tavo::UniString::PrintfFwd("%d-%d", s, r));
                writer.StartElement(record, recordAttributes);
                writer.SimpleElement(name, ValueText(r));
                writer.SimpleElement(note, ValueText(r + 1));
                writer.EndElement(record);
            }
            writer.EndElement(section);
        }
        writer.EndElement(Tavo::UniString("Data"));
    }
    return channel.GetData();
}

class ParsedDocument {
public:
    ParsedDocument() {
        std::string const text = MakeDocumentText();
        parser.setDoNamespaces(false);
        parser.setValidationScheme(XercesDOMParser::Val_Never);
        MemBufInputSource source(reinterpret_cast<XMLByte const*>(text.data()), text.size(), "bench");
        parser.parse(source);
        bytes = text.size();
    }
    DOMDocument const* Document() { return parser.getDocument(); }
    std::size_t bytes = 0;

private:
    XercesDOMParser parser;
};

ParsedDocument& Parsed() {
    static ParsedDocument parsed;
    return parsed;
}

std::size_t FormatWithLibrary(std::string* text = nullptr) {
    Tavo::MemoryOChannel channel;
    if (!FormatXMLDocUTF8(Parsed().Document(), &channel)) {
        return 0;
    }
    if (text != nullptr) {
        *text = channel.GetData();
    }
    return channel.GetData().size();
}

std::size_t FormatWithSerializer(std::string* text = nullptr) {
    DOMImplementation* const implementation = DOMImplementation::getImplementation();
    MemBufFormatTarget target(1023);
    DOMLSOutput* const output = implementation->createLSOutput();
    output->setEncoding(XMLUni::fgUTF8EncodingString);
    output->setByteStream(&target);
    DOMLSSerializer* const serializer = implementation->createLSSerializer();
    serializer->write(Parsed().Document(), output);
    serializer->release();
    output->release();
    if (text != nullptr) {
        text->assign(reinterpret_cast<char const*>(target.getRawBuffer()), target.getLen());
    }
    return target.getLen();
}

void BM_Format_Library(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(FormatWithLibrary());
    }
}

void BM_Format_Serializer(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(FormatWithSerializer());
    }
}

// ---- stream_write ---------------------------------------------------------------------------------

// Root > groups > values: 100 groups of 9,999 values, 1,000,101 elements with the root.
struct StreamShape {
    int groups;
    int values;
};
constexpr StreamShape gStreamShape{100, 9999};

// Keeps nothing; counts what it is given.
class CountingChannel : public Tavo::OBinaryChannel {
public:
    std::size_t bytes = 0;
    int WriteBin(char const*, unsigned int count, unsigned int*) override {
        bytes += count;
        return 0;
    }
};

void StreamWithWriter(Tavo::OBinaryChannel& channel, StreamShape shape) {
    Tavo::UniString const root("Root");
    Tavo::UniString const group("Group");
    Tavo::UniString const id("id");
    Tavo::UniString const value("Value");
    TavoXML::TavoSAX2Writer writer(channel);
    writer.StartDocument();
    writer.StartElement(root);
    for (int g = 0; g < shape.groups; ++g) {
        TavoXML::TavoSAX2Writer::Attrs groupAttributes;
        groupAttributes.Add(id, Tavo::UniString::PrintfFwd("%d", g));
        writer.StartElement(group, groupAttributes);
        for (int v = 0; v < shape.values; ++v) {
            writer.SimpleElement(value, ValueText(v));
        }
        writer.EndElement(group);
    }
    writer.EndElement(root);
    writer.EndDocument();
}

// The same bytes by hand, the way a caller of XMLFormatter would write them.
void StreamWithFormatter(XMLFormatTarget& target, StreamShape shape) {
    XMLFormatter formatter(XMLUni::fgUTF8EncodingString, &target, XMLFormatter::NoEscapes,
                           XMLFormatter::UnRep_CharRef);
    formatter << u"<?xml version=\"1.0\" encoding=\"" << formatter.getEncodingName() << u"\"?>\n";
    formatter << u"<Root>";
    for (int g = 0; g < shape.groups; ++g) {
        formatter << XMLFormatter::NoEscapes << (g == 0 ? u"\n  <Group id=\"" : u"  <Group id=\"");
        formatter << XMLFormatter::AttrEscapes << Tavo::UniString::PrintfFwd("%d", g).GetU16Str();
        formatter << XMLFormatter::NoEscapes << u"\">";
        for (int v = 0; v < shape.values; ++v) {
            formatter << XMLFormatter::NoEscapes << (v == 0 ? u"\n    <Value>" : u"    <Value>");
            formatter << XMLFormatter::CharEscapes << ValueText(v).GetU16Str();
            formatter << XMLFormatter::NoEscapes << u"</Value>\n";
        }
        formatter << u"  </Group>\n";
    }
    formatter << u"</Root>\n";
}

void BM_Stream_Writer(benchmark::State& state) {
    for (auto _ : state) {
        Tavo::MemoryOChannel channel;
        StreamWithWriter(channel, gStreamShape);
        benchmark::DoNotOptimize(channel.GetData().size());
    }
}

void BM_Stream_Formatter(benchmark::State& state) {
    for (auto _ : state) {
        MemBufFormatTarget target(1023);
        StreamWithFormatter(target, gStreamShape);
        benchmark::DoNotOptimize(target.getLen());
    }
}

// Peak heap in use while the writer writes `shape` into a channel that keeps nothing, above what was in
// use before.
std::size_t WriterPeakBytes(StreamShape shape, std::size_t& written) {
    std::size_t const before = gLiveBytes.load();
    gPeakBytes.store(before);
    CountingChannel channel;
    StreamWithWriter(channel, shape);
    written = channel.bytes;
    return gPeakBytes.load() - before;
}

// The coder's blocks come from plain operator new.
struct XercesBlockDelete {
    void operator()(XMLByte* block) const noexcept { ::operator delete(block); }
};
using XercesBlock = std::unique_ptr<XMLByte, XercesBlockDelete>;

// ---- base64 ---------------------------------------------------------------------------------------

std::string const& Block() {
    static std::string const block = [] {
        std::mt19937 random(42);
        std::string bytes(10 * 1024 * 1024, '\0');
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random() & 0xFF); });
        return bytes;
    }();
    return block;
}

Tavo::UniString const& BlockText() {
    static Tavo::UniString const text =
        Base64Converter::Encode(Block().data(), static_cast<unsigned int>(Block().size()));
    return text;
}

std::string const& BlockTextBytes() {
    static std::string const bytes = [] {
        std::u16string_view const units = BlockText().View();
        return std::string(units.begin(), units.end());
    }();
    return bytes;
}

void BM_Base64_EncodeConverter(benchmark::State& state) {
    for (auto _ : state) {
        Tavo::UniString const text =
            Base64Converter::Encode(Block().data(), static_cast<unsigned int>(Block().size()));
        benchmark::DoNotOptimize(text.GetLength());
    }
}

void BM_Base64_EncodeXerces(benchmark::State& state) {
    for (auto _ : state) {
        XMLSize_t length = 0;
        XercesBlock const encoded(Base64::encode(reinterpret_cast<XMLByte const*>(Block().data()),
                                                 Block().size(), &length, nullptr));
        benchmark::DoNotOptimize(length);
    }
}

void BM_Base64_DecodeConverter(benchmark::State& state) {
    for (auto _ : state) {
        Tavo::Array<char> const bytes = Base64Converter::Decode(BlockText());
        benchmark::DoNotOptimize(bytes.GetSize());
    }
}

void BM_Base64_DecodeXerces(benchmark::State& state) {
    for (auto _ : state) {
        XMLSize_t length = 0;
        XercesBlock const decoded(
            Base64::decode(reinterpret_cast<XMLByte const*>(BlockTextBytes().c_str()), &length, nullptr));
        benchmark::DoNotOptimize(length);
    }
}

// ---- checks and reporting -------------------------------------------------------------------------

bool SameStreamBytes() {
    StreamShape const small{3, 5};
    Tavo::MemoryOChannel channel;
    StreamWithWriter(channel, small);
    MemBufFormatTarget target;
    StreamWithFormatter(target, small);
    std::string const raw(reinterpret_cast<char const*>(target.getRawBuffer()), target.getLen());
    if (channel.GetData() != raw) {
        std::fprintf(stderr, "The two streams differ:\n%s\n----\n%s\n", channel.GetData().c_str(),
                     raw.c_str());
        return false;
    }
    return true;
}

// Both print the same tree, though each escapes in its own way (the serialiser also escapes ">" in
// text, the formatter only behind "]]"), so the sizes must agree closely and both must end the document.
bool SameFormattedTree() {
    std::string mine;
    std::string theirs;
    FormatWithLibrary(&mine);
    FormatWithSerializer(&theirs);
    double const sizeRatio = static_cast<double>(mine.size()) / static_cast<double>(theirs.size());
    bool const ended =
        mine.find("</Data>") != std::string::npos && theirs.find("</Data>") != std::string::npos;
    if (!ended || sizeRatio < 0.97 || sizeRatio > 1.03) {
        std::fprintf(stderr, "The formatted documents differ: %zu and %zu bytes\n", mine.size(),
                     theirs.size());
        return false;
    }
    return true;
}

bool Base64Agrees() {
    Tavo::Array<char> const back = Base64Converter::Decode(BlockText());
    return BlockTextBytes().size() == BlockText().GetLength() &&
           std::string(back.begin(), back.end()) == Block();
}

void Ratio(bench::BestTimeReporter const& reporter, char const* name, char const* library, char const* raw) {
    double const mine = reporter.Best(library);
    double const theirs = reporter.Best(raw);
    if (mine > 0.0 && theirs > 0.0) {
        std::printf("best CPU time %s: library %.1f ms, raw Xerces-C++ %.1f ms\n", name, mine * 1e3,
                    theirs * 1e3);
        std::printf("ratio %s %.3f\n", name, mine / theirs);
    }
}

} // namespace

int main(int argc, char** argv) {
    bench::InitializeInterleaved(argc, argv);
    if (!SameStreamBytes() || !Base64Agrees() || !SameFormattedTree()) {
        return 1;
    }
    std::size_t smallBytes = 0;
    std::size_t fullBytes = 0;
    std::size_t const smallPeak = WriterPeakBytes(StreamShape{1, 9999}, smallBytes);
    std::size_t const fullPeak = WriterPeakBytes(gStreamShape, fullBytes);

    // The best of several runs; the coder's cases take milliseconds, so they run more often to find it.
    struct Case {
        char const* name;
        void (*function)(benchmark::State&);
        int repetitions;
    };
    Case const cases[] = {{"BM_Format_Library", BM_Format_Library, 5},
                          {"BM_Format_Serializer", BM_Format_Serializer, 5},
                          {"BM_Stream_Writer", BM_Stream_Writer, 5},
                          {"BM_Stream_Formatter", BM_Stream_Formatter, 5},
                          {"BM_Base64_EncodeConverter", BM_Base64_EncodeConverter, 30},
                          {"BM_Base64_EncodeXerces", BM_Base64_EncodeXerces, 30},
                          {"BM_Base64_DecodeConverter", BM_Base64_DecodeConverter, 30},
                          {"BM_Base64_DecodeXerces", BM_Base64_DecodeXerces, 30}};
    for (Case const& c : cases) {
        benchmark::RegisterBenchmark(c.name, c.function)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1)
            ->Repetitions(c.repetitions);
    }
    bench::BestTimeReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    std::printf("peak heap of the streaming writer: %zu bytes for %zu bytes of output, %zu bytes for %zu "
                "bytes of output\n",
                smallPeak, smallBytes, fullPeak, fullBytes);
    std::printf("document of %zu bytes formatted\n", Parsed().bytes);
    Ratio(reporter, "format_utf8", "BM_Format_Library", "BM_Format_Serializer");
    Ratio(reporter, "stream_write", "BM_Stream_Writer", "BM_Stream_Formatter");
    Ratio(reporter, "base64_encode", "BM_Base64_EncodeConverter", "BM_Base64_EncodeXerces");
    Ratio(reporter, "base64_decode", "BM_Base64_DecodeConverter", "BM_Base64_DecodeXerces");
    benchmark::Shutdown();
    return 0;
}
