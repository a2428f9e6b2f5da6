// Parsing a generated document of about 20 MB: ParseXMLDoc from a location, with and without a line
// table, against a plain XercesDOMParser on a LocalFileInputSource with the same settings. The last
// lines give "ratio <case> <value>", the best processor time of this library over the best raw one.
#include "TavoXMLUtils/parsing/ValidatingXMLParser.hpp"
#include "bench/BenchReporter.hpp"

#include <benchmark/benchmark.h>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <map>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

std::filesystem::path gDocumentPath;

// Sections of entries with attributes, text with references, comments and nesting: the mix of a
// large settings or data file.
void WriteDocument(std::filesystem::path const& path, std::size_t targetBytes) {
    std::ofstream out(path, std::ios::binary);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<catalog version=\"3\">\n";
    std::size_t written = 0;
    for (int section = 0; written < targetBytes; ++section) {
        std::string block = "  <!-- section " + std::to_string(section) + " -->\n  <section id=\"s" +
                            std::to_string(section) + "\" name=\"Section " + std::to_string(section) +
                            "\">\n";
        for (int entry = 0; entry < 50; ++entry) {
            std::string const n = std::to_string(section * 50 + entry);
            block += "    <entry key=\"k" + n + "\" kind=\"" + (entry % 3 == 0 ? "alpha" : "beta") + "\">\n";
            block += "      <name>Entry &amp; item " + n + "</name>\n";
            block += "      <value unit=\"mm\">" + std::to_string(entry * 1.25 + section) + "</value>\n";
            block += "      <note>A longer piece of text for entry " + n +
                     " that spans a few words, as descriptions do.</note>\n    </entry>\n";
        }
        block += "  </section>\n";
        out << block;
        written += block.size();
    }
    out << "</catalog>\n";
}

void RawXerces(benchmark::State& state) {
    XMLCh* const path = xercesc::XMLString::transcode(gDocumentPath.c_str());
    for (auto _ : state) {
        xercesc::XercesDOMParser parser;
        xercesc::HandlerBase handler;
        parser.setValidationScheme(xercesc::AbstractDOMParser::Val_Auto);
        parser.setDoNamespaces(false);
        parser.setCreateEntityReferenceNodes(true);
        parser.setErrorHandler(&handler);
        xercesc::LocalFileInputSource source(path);
        parser.parse(source);
        xercesc::DOMDocument* const document = parser.adoptDocument();
        benchmark::DoNotOptimize(document);
        document->release();
    }
    xercesc::XMLString::release(const_cast<XMLCh**>(&path));
}

void ParseFromLocation(benchmark::State& state, bool withLines) {
    Vesk::Location const location(gDocumentPath.c_str());
    for (auto _ : state) {
        NodeLocations table;
        xercesc::DOMDocument* const document =
            ParseXMLDoc(location, xercesc::AbstractDOMParser::Val_Auto, true, withLines ? &table : nullptr);
        if (document == nullptr) {
            state.SkipWithError("parse failed");
            break;
        }
        document->release();
    }
}

void Library(benchmark::State& state) {
    ParseFromLocation(state, false);
}
void LibraryWithLines(benchmark::State& state) {
    ParseFromLocation(state, true);
}

BENCHMARK(RawXerces)->Unit(benchmark::kMillisecond)->Repetitions(7);
BENCHMARK(Library)->Unit(benchmark::kMillisecond)->Repetitions(7);
BENCHMARK(LibraryWithLines)->Unit(benchmark::kMillisecond)->Repetitions(7);

} // namespace

int main(int argc, char** argv) {
    xercesc::XMLPlatformUtils::Initialize();
    gDocumentPath =
        std::filesystem::temp_directory_path() / ("bench_parse_" + std::to_string(getpid()) + ".xml");
    WriteDocument(gDocumentPath, 20u << 20);
    std::printf("document %s, %ju bytes\n", gDocumentPath.c_str(),
                static_cast<std::uintmax_t>(std::filesystem::file_size(gDocumentPath)));

    bench::InitializeInterleaved(argc, argv);
    bench::BestTimeReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    std::filesystem::remove(gDocumentPath);

    double const raw = reporter.Best("RawXerces");
    for (auto const& [name, label] :
         {std::pair<char const*, char const*>{"Library", "location"},
          std::pair<char const*, char const*>{"LibraryWithLines", "location_lines"}}) {
        if (raw > 0 && reporter.Best(name) > 0) {
            std::printf("ratio %s %.3f\n", label, reporter.Best(name) / raw);
        }
    }
    xercesc::XMLPlatformUtils::Terminate();
    return 0;
}
