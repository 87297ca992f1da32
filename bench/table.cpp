// Prints the measurements as a table that can be pasted into README.md.
#include "anchors.h"
#include "signal/processor.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

namespace norva::bench {
namespace {

class table : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override {
        double load = 0;
        getloadavg(&load, 1);
        std::printf("%u cores, %s, load %.1f at the start.\n", std::thread::hardware_concurrency(),
                    has_avx2() ? "AVX2" : "no AVX2", load);
        if (!fftw::available())
            std::printf("Rows without figures need FFTW in single precision (libfftw3-dev).\n");
        std::printf("\n| Work | Threads | Anchor, us | Product, us | Ratio | Even share | Goal | |\n"
                    "|---|---|---|---|---|---|---|---|\n");
        return true;
    }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (!run.aggregate_name.empty()) continue;
            const std::string work = run.report_label.empty() ? run.benchmark_name() : run.report_label;
            if (run.counters.count("ratio") == 0) {
                std::printf("| %s | | | | | | | skipped |\n", work.c_str());
                continue;
            }
            auto value = [&](const char* counter) { return run.counters.at(counter).value; };
            auto us = [&](const char* counter) {
                char text[32];
                const double t = value(counter);
                std::snprintf(text, sizeof text, "%.*f", t < 1 ? 3 : t < 100 ? 1 : 0, t);
                return std::string(text);
            };
            std::printf("| %s | %.0f | %s | %s | %.3f |", work.c_str(), value("threads"),
                        us("anchor_us").c_str(), us("product_us").c_str(), value("ratio"));
            if (value("threads") == 1)
                std::printf(" |");
            else
                std::printf(" %.3f |", value("shared"));
            std::printf(" %.3g | %s |\n", value("goal"), value("ratio") <= value("goal") ? "" : "short");
        }
        std::fflush(stdout);
    }
};

} // namespace
} // namespace norva::bench

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    norva::bench::table table;
    benchmark::RunSpecifiedBenchmarks(&table);
}
