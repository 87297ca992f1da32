// Any bytes as the text form of raw data: a gate file that tells the same, or a fault and no file.
#include "fileio/gat.h"
#include "fileio/pfxtext.h"
#include "memory_file.h"
#include "zuvsys/safefile.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace norva;
    static memory_file text;
    static const std::string gate = [] {
        safefile_system.fsync = [](int) { return 0; };
        std::string folder = (std::filesystem::exists("/dev/shm") ? std::filesystem::path("/dev/shm")
                                                                  : std::filesystem::temp_directory_path())
                                 .string() +
                             "/norva-fuzz-XXXXXX";
        if (!mkdtemp(folder.data())) std::abort();
        return folder + "/f.pfx";
    }();
    text.hold({reinterpret_cast<const char*>(bytes), size});
    const pfx_text_result result = pfx_from_text(text.name(), gate);
    std::error_code ignored;
    if (result.fault.empty()) {
        const gatfile_ptr file = opengat(gate, "Old", 0);
        if (!file || u_nelem(file.get()) != result.nrec || file->hd.ngat != result.nfreq) std::abort();
        if (u_kwget_i(file.get(), "NREC") != result.nrec || u_kwget_i(file.get(), "NFREQ") != result.nfreq)
            std::abort();
    } else if (std::filesystem::exists(gate, ignored)) {
        std::abort();
    }
    std::filesystem::remove(gate, ignored);
    return 0;
}
