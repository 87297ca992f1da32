// The functions that read data files, and the readers behind them.
#include "file_args.h"
#include "file_read.h"
#include "functions_int.h"
#include "zuvsys/cstrings.h"

#include <algorithm>

namespace norva {

namespace {

sp_value not_implemented(const fileparams&) {
    return sp_mkerror("This function not implemented yet.");
}

struct reader {
    int filetype;
    sp_value (*read)(const fileparams& parms);
};
constexpr reader readers[] = {
    {SP_FILE_IQ, read_iq},   {SP_FILE_REA, read_rea},        {SP_FILE_PKS, read_pks},
    {SP_FILE_SPL, read_spl}, {SP_FILE_V3, not_implemented},  {SP_FILE_IMG, read_img},
    {SP_FILE_GAT, read_gat}, {SP_FILE_ANY, not_implemented},
};

struct file_function {
    const char* name;
    int filetype;
};
constexpr file_function functions[] = {
    {"IQFILE", SP_FILE_IQ},   {"REAFILE", SP_FILE_REA}, {"PKSFILE", SP_FILE_PKS}, {"GATFILE", SP_FILE_GAT},
    {"IMGFILE", SP_FILE_IMG}, {"SPLFILE", SP_FILE_SPL}, {"V3FILE", SP_FILE_V3},   {"ANYFILE", SP_FILE_ANY},
};

sp_value read_file(fileparams parms) {
    if (!(parms.t0 < parms.t1)) return sp_mkerror("Times do not overlap in for file reading function.");
    if (parms.datatype == SP_DT_ALLTIME) { // whatever the window
        parms.t0 = fileparams{}.t0;
        parms.t1 = fileparams{}.t1;
    }
    auto kind = std::ranges::find(readers, parms.filetype, &reader::filetype);
    return kind == std::end(readers) ? sp_mkerror("Unknown file type.") : kind->read(parms);
}

} // namespace

std::optional<sp_value> sp_func_files(const std::string& name, sp_args args) {
    auto function = std::ranges::find_if(functions, [&](auto& f) { return c_iseqx(f.name, name.c_str()); });
    if (function == std::end(functions)) return std::nullopt;
    fileparams parms;
    parms.filetype = function->filetype;
    std::string wrong = sp_read_file_args(parms, args);
    return wrong.empty() ? read_file(parms) : sp_mkerror(std::move(wrong));
}

} // namespace norva
