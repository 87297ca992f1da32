// Any bytes as a data file that a formula reads: the functions for files of its type, with items of every
// kind.
#include "memory_file.h"
#include "trelva/eval.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

struct reader {
    unsigned char filetype;
    const char* function;
};
constexpr reader readers[] = {
    {101, "IQFILE"},  {102, "PKSFILE"}, {103, "REAFILE"}, {105, "IQFILE"},  {106, "SPLFILE"},
    {109, "GATFILE"}, {109, "IQFILE"},  {109, "REAFILE"}, {110, "IMGFILE"},
};

const char* const items[] = {
    "TIME",
    "ALLTIME",
    "AMP,\"ISLOT=2\"",
    "PHASE",
    "I,0,12",
    "Q",
    "RANGE",
    "EL",
    "AZ",
    "RATE",
    "ACC,\"NAVG=4\"",
    "LOC",
    "VALID,\"ISLOT=3\"",
    "DATA,0,12",
    "FUNC",
    "YAW",
    "HEADER",
    "PRF",
    "XLAM",
    "T0",
    "T1",
    "NSAMP",
    "NFFT",
    "PKSTYPE",
    "XUNITS",
    "SPLTYPE",
    "NCOE",
    "NGAT",
    "NREC",
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static norva::memory_file file;
    static norva::sp_language context;
    file.hold({reinterpret_cast<const char*>(bytes), size});
    const std::string quoted = '"' + file.name() + '"';
    auto evaluate = [&](const std::string& call) {
        const norva::sp_value val = norva::sp_eval_formula(context, call);
        if (val.npts() < 1000) norva::sp_show(val);
    };
    for (const reader& r : readers) {
        if (size < 3 || bytes[2] != r.filetype) continue;
        for (const char* item : items)
            evaluate(std::string(r.function) + "(" + quoted + "," + item + ",\"MAX=50\",\"POINTS=3\")");
    }
    for (const char* rest : {"0", "SEQ(1e400,11,-5),1", "1e400-1e400,2"})
        evaluate("ESPL(" + quoted + "," + rest + ")");
    evaluate("SPLBRKS(" + quoted + ")");
    for (const char* keyword : {"prf", "text", "T0", "NREC", "x"})
        evaluate("GETKW(" + quoted + ",\"" + keyword + "\")");
    return 0;
}
