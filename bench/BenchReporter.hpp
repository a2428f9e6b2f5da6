// What the benchmark programs share about running and reporting: repetitions of all cases interleaved
// at random, and a reporter that keeps the smallest processor time per iteration of every case (on a
// shared machine the minimum is the run least disturbed by the rest).
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

class BestTimeReporter : public benchmark::ConsoleReporter {
public:
    // Without colours, so that the ratio lines after the table start clean.
    BestTimeReporter() : benchmark::ConsoleReporter(OO_None) {}

    void ReportRuns(std::vector<Run> const& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (Run const& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.iterations == 0 || run.error_occurred) {
                continue;
            }
            double const perIteration = run.cpu_accumulated_time / static_cast<double>(run.iterations);
            auto const [slot, inserted] = best.try_emplace(run.run_name.function_name, perIteration);
            if (!inserted && perIteration < slot->second) {
                slot->second = perIteration;
            }
        }
    }
    // Seconds per iteration; 0 for a case that did not run.
    double Best(std::string const& name) const {
        auto const found = best.find(name);
        return found == best.end() ? 0.0 : found->second;
    }

private:
    std::map<std::string, double> best;
};

// benchmark::Initialize with random interleaving of the repetitions switched on, so that a change of
// the machine's load falls on all cases alike; a flag on the command line comes later and wins.
inline void InitializeInterleaved(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    static std::string interleave = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, interleave.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
}

} // namespace bench
