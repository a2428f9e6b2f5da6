// The cost of the node line table. On 3 million entries (the size of a large document): appending,
// the first lookup (a scan), and 10,000 lookups (which build the index on the way); the index's memory is
// printed too. Against raw Xerces-C++ doing the same work, on 200,000 real nodes: recording a line per
// node and looking 10,000 of them up, with setUserData/getUserData. The last lines give
// "ratio <case> <value>", the best processor time of this library over the best raw one.
#include "bench/BenchReporter.hpp"

#include "TavoXMLUtils/parsing/NodeLocations.hpp"

#include <benchmark/benchmark.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMImplementation.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <malloc.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr std::size_t gLargeTable = 3'000'000;
constexpr std::size_t gRealNodes = 200'000;
constexpr std::size_t gLookups = 10'000;

// Keys only: the table never reads through them, so addresses spaced like DOM nodes will do.
xercesc::DOMNode const* FakeNode(std::size_t i) {
    return reinterpret_cast<xercesc::DOMNode const*>(std::uintptr_t(0x10000000) + i * 96);
}

std::unique_ptr<NodeLocations> LargeTable() {
    auto table = std::make_unique<NodeLocations>();
    for (std::size_t i = 0; i < gLargeTable; ++i) {
        table->AddNew(FakeNode(i), static_cast<unsigned int>(i + 1));
    }
    return table;
}

std::vector<std::size_t> RandomPicks(std::size_t count, std::size_t range) {
    std::mt19937 random(42);
    std::uniform_int_distribution<std::size_t> pick(0, range - 1);
    std::vector<std::size_t> picks(count);
    for (std::size_t& p : picks) {
        p = pick(random);
    }
    return picks;
}

void AddNew3M(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(LargeTable().get());
    }
}

void FirstFind3M(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<NodeLocations> table = LargeTable();
        state.ResumeTiming();
        benchmark::DoNotOptimize(table->Find(FakeNode(gLargeTable - 1)));
        state.PauseTiming();
        table.reset();
        state.ResumeTiming();
    }
}

void Finds3M(benchmark::State& state) {
    std::vector<std::size_t> const picks = RandomPicks(gLookups, gLargeTable);
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<NodeLocations> table = LargeTable();
        state.ResumeTiming();
        for (std::size_t const p : picks) {
            benchmark::DoNotOptimize(table->Find(FakeNode(p)));
        }
        state.PauseTiming();
        table.reset();
        state.ResumeTiming();
    }
}

// A document with gRealNodes elements under its root.
struct RealNodes {
    xercesc::DOMDocument* document =
        xercesc::DOMImplementation::getImplementation()->createDocument(nullptr, u"root", nullptr);
    std::vector<xercesc::DOMElement*> nodes;
    RealNodes() {
        for (std::size_t i = 0; i < gRealNodes; ++i) {
            nodes.push_back(document->createElement(u"e"));
            document->getDocumentElement()->appendChild(nodes.back());
        }
    }
    ~RealNodes() { document->release(); }
};

void RawXercesUserData(benchmark::State& state) {
    RealNodes real;
    std::vector<std::size_t> const picks = RandomPicks(gLookups, gRealNodes);
    std::vector<NodeLocationInfo> lines(gRealNodes);
    for (auto _ : state) {
        for (std::size_t i = 0; i < gRealNodes; ++i) {
            lines[i].lineNumber = static_cast<std::uint32_t>(i + 1);
            real.nodes[i]->setUserData(u"line", &lines[i], nullptr);
        }
        for (std::size_t const p : picks) {
            benchmark::DoNotOptimize(real.nodes[p]->getUserData(u"line"));
        }
    }
}

void LibraryLines(benchmark::State& state) {
    RealNodes real;
    std::vector<std::size_t> const picks = RandomPicks(gLookups, gRealNodes);
    for (auto _ : state) {
        NodeLocations table;
        for (std::size_t i = 0; i < gRealNodes; ++i) {
            table.AddNew(real.nodes[i], static_cast<unsigned int>(i + 1));
        }
        for (std::size_t const p : picks) {
            benchmark::DoNotOptimize(table.Find(real.nodes[p]));
        }
    }
}

BENCHMARK(AddNew3M)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(FirstFind3M)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(Finds3M)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(RawXercesUserData)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(LibraryLines)->Unit(benchmark::kMillisecond)->Repetitions(5);

// Bytes allocated from the heap, the large blocks that malloc maps of their own included.
std::size_t HeapInUse() {
    struct mallinfo2 const info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// Heap taken by the index of a 3-million-entry table: measured around the lookups that build it.
void PrintIndexMemory() {
    std::unique_ptr<NodeLocations> table = LargeTable();
    std::size_t const before = HeapInUse();
    for (std::size_t const p : RandomPicks(gLookups, gLargeTable)) {
        benchmark::DoNotOptimize(table->Find(FakeNode(p)));
    }
    std::size_t const after = HeapInUse();
    std::printf("index memory for %zu entries: %.1f MB\n", gLargeTable, double(after - before) / 1e6);
}

} // namespace

int main(int argc, char** argv) {
    xercesc::XMLPlatformUtils::Initialize();
    bench::InitializeInterleaved(argc, argv);
    bench::BestTimeReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    PrintIndexMemory();
    double const raw = reporter.Best("RawXercesUserData");
    if (raw > 0 && reporter.Best("LibraryLines") > 0) {
        std::printf("ratio lines_vs_userdata %.3f\n", reporter.Best("LibraryLines") / raw);
    }
    xercesc::XMLPlatformUtils::Terminate();
    return 0;
}
