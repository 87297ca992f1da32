// The functions that read data files, and the kinds of file they read.
#include "file_args.h"
#include "file_read.h"
#include "fileio/gat.h"
#include "functions_int.h"
#include "zuvsys/cstrings.h"

#include <algorithm>

namespace norva {

namespace {

// --- Gate files

zuvfile_ptr open_gat(const std::string& name) {
    return opengat(name, "Old", 0);
}

sp_value gat_header(_zuvfile* file, int datatype) {
    switch (datatype) {
    case SP_DT_PRF: return sp_keyword_value(file, "prf");
    case SP_DT_XLAM: return sp_keyword_value(file, "xlam");
    case SP_DT_NGAT: return sp_mkscaler(u_nitems(file));
    default: return {};
    }
}

sp_item_source gat_items(_zuvfile* file, const fileparams& parms) {
    auto* gat = static_cast<_gatfile*>(file);
    if (parms.datatype == SP_DT_RANGE)
        return {1, [gat](std::span<double> range) {
                    double time = 0.0;
                    return getgat(gat, time, range[0], {}) == ZUV_OK;
                }};
    return sp_complex_items(static_cast<std::size_t>(u_nitems(file)), parms, [gat](std::span<float> pairs) {
        double time = 0.0, range = 0.0;
        return getgat(gat, time, range, pairs) == ZUV_OK;
    });
}

// --- The tables

constexpr sp_file_kind kinds[] = {
    {SP_FILE_GAT, open_gat, gat_header, gat_items, "Internal problem reading GAT file."},
};

struct file_function {
    const char* name;
    int filetype;
};
constexpr file_function functions[] = {
    {"IQFILE", SP_FILE_IQ},   {"REAFILE", SP_FILE_REA}, {"PKSFILE", SP_FILE_PKS}, {"GATFILE", SP_FILE_GAT},
    {"IMGFILE", SP_FILE_IMG}, {"SPLFILE", SP_FILE_SPL}, {"V3FILE", SP_FILE_V3},   {"ANYFILE", SP_FILE_ANY},
};

sp_value read_file(const fileparams& parms) {
    if (!(parms.t0 < parms.t1)) return sp_mkerror("Times do not overlap in for file reading function.");
    if (parms.filetype == SP_FILE_V3 || parms.filetype == SP_FILE_ANY)
        return sp_mkerror("This function not implemented yet.");
    auto kind = std::ranges::find(kinds, parms.filetype, &sp_file_kind::filetype);
    return kind == std::end(kinds) ? sp_mkerror("Unknown file type.") : sp_read_file(*kind, parms);
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
