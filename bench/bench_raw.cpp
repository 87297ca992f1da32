// The raw window of a gate file beside one read of the same bytes.
#include "anchors.h"
#include "app/gpf.h"
#include "fileio/gat.h"
#include "pair.h"
#include "state/run.h"
#include "state/user.h"

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace norva::bench {
namespace {

constexpr int samples = 1024, records = 65536; // 512 MB

// A gate file of noise for the life of one benchmark.
class gate_file {
public:
    explicit gate_file(bool with_ranges)
        : path_(std::filesystem::temp_directory_path() /
                ("norva_bench_" + std::to_string(::getpid()) + ".gat")) {
        const gatfile_ptr file = opengat_opt(path_.string(), samples, GAT_FLOAT, with_ranges);
        const std::vector<float> row = noise(2UL * samples);
        for (int j = 0; file && j < records; j++) {
            if (putgat(file.get(), 0, row) != ZUV_OK) return;
        }
        whole_ = file != nullptr;
    }
    ~gate_file() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    gate_file(const gate_file&) = delete;
    gate_file& operator=(const gate_file&) = delete;
    bool whole() const { return whole_; }
    std::string name() const { return path_.string(); }

private:
    std::filesystem::path path_;
    bool whole_ = false;
};

// The file is in the system's memory, and both go to the same block. First argument 1: each record of the
// file starts with its range.
void raw_window(benchmark::State& state) {
    const bool with_ranges = state.range(0) == 1;
    const std::string title =
        std::string("raw window of 512 MB") + (with_ranges ? ", rows with a range" : "");
    const gate_file file(with_ranges);
    if (!file.whole()) return skip(state, title); // no room for such a file
    const int handle = ::open(file.name().c_str(), O_RDONLY | O_CLOEXEC);
    reset_run_state();
    user.rdfile = file.name();
    data_type = raw_kind::gate;
    gp.nf = user.nf = samples;
    gp.nrec = user.nt = records;
    user.nf0 = user.nt0 = 1;
    get_gpf_data(0, 0, 0, 0);
    const std::size_t bytes = 2UL * samples * records * sizeof(float);
    contest c;
    c.work = title;
    c.anchor = [&] { benchmark::DoNotOptimize(::pread(handle, user.pfdata.data(), bytes, 512)); };
    c.product = [&] { get_gpf_data(0, 0, 0, 0); };
    c.threads = static_cast<int>(state.range(1));
    c.goal = c.threads == 1 ? 1.0 : 0.7;
    measure(state, c);
    ::close(handle);
    if (user.pfdata.size() * sizeof(float) != bytes) skip(state, title);
    reset_run_state();
}
BENCHMARK(raw_window)->UseManualTime()->Iterations(9)->ArgsProduct({{0, 1}, {1, 2}});

} // namespace
} // namespace norva::bench
