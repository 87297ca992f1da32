// The pass over the elements of a data file, and header words.
#include "file_read.h"

#include "zuvsys/cstrings.h"

#include <algorithm>

namespace norva {

namespace {

// The time of each element. Reading a time does not move on, so the element is chosen each time.
sp_item_source time_items(_zuvfile* file) {
    return {1, [file, n = u_nextelem(file)](std::span<double> value) mutable {
                value[0] = u_nexttime(file);
                return u_error() == ZUV_OK && u_elemmove(file, ++n) == ZUV_OK;
            }};
}

// The elements first .. last - 1 of the time window, at most mxelms of them.
struct element_run {
    std::int64_t first = 0, last = 0;
};

element_run elements_in_window(_zuvfile* file, const fileparams& parms) {
    const std::int64_t nelem = u_nelem(file);
    element_run run;
    if (u_timemove(file, parms.t0) != ZUV_OK) return {};
    run.first = u_nextelem(file);
    if (u_timemove(file, parms.t1) != ZUV_OK) return {};
    run.last = u_nextelem(file);
    if (run.last < nelem && u_nexttime(file) <= parms.t1) run.last++; // the end of the window is included
    run.last = std::min(run.last, run.first + parms.mxelms);
    return run.last > run.first ? run : element_run{};
}

sp_value values_of(_zuvfile* file, const element_run& run, const sp_item_source& items,
                   const char* read_failed) {
    const auto n = static_cast<std::size_t>(run.last - run.first);
    if (items.width > SP_MAX_ELEMENTS) return sp_mkerror("Array is too large.");
    sp_value result = sp_new_array(n * items.width);
    if (result.type == SP_ERROR) return result;
    if (u_elemmove(file, run.first) != ZUV_OK) return sp_mkerror(read_failed);
    std::span<double> values = result.ary.own();
    for (std::size_t i = 0; i < n; i++)
        if (!items.next(values.subspan(i * items.width, items.width))) return sp_mkerror(read_failed);
    return result;
}

} // namespace

std::string sp_outside(double first, double last, const fileparams& parms) {
    return parms.t0 >= last || parms.t1 < first ? "T0 and T1 overlap, no data found." : "";
}

sp_value sp_read_file(const sp_file_kind& kind, const fileparams& parms) {
    zuvfile_ptr file = kind.open(parms.fname);
    if (!file) return sp_mkerror("Unable to open file.");
    if (parms.datatype >= SP_DT_HEADER) {
        sp_value word = kind.header(file.get(), parms.datatype);
        if (word.type == SP_NULL) word = sp_common_word(file.get(), parms.datatype);
        return word.type == SP_NULL ? sp_mkerror(std::string(SP_BAD_TYPE)) : word;
    }
    sp_item_source items = sp_is_time(parms.datatype) ? sp_item_source{1} : kind.items(file.get(), parms);
    if (items.width == 0) {
        sp_value word =
            items.refused == SP_BAD_TYPE ? sp_common_word(file.get(), parms.datatype) : sp_value{};
        return word.type == SP_NULL ? sp_mkerror(std::string(items.refused)) : word;
    }
    std::string why = sp_outside(u_firsttime(file.get()), u_lasttime(file.get()), parms);
    if (!why.empty()) return sp_mkerror(std::move(why));
    const element_run run = elements_in_window(file.get(), parms);
    if (run.last == run.first) return sp_mkerror("No data found between T0 and T1.");
    if (sp_is_time(parms.datatype)) {
        u_elemmove(file.get(), run.first);
        items = time_items(file.get());
    }
    return values_of(file.get(), run, items, kind.read_failed);
}

sp_item_source sp_no_items(std::string_view refused) {
    sp_item_source none;
    none.refused = refused;
    return none;
}

sp_value sp_keyword_value(_zuvfile* file, const std::string& name) {
    const double d = u_kwget_d(file, name);
    if (u_error() == ZUV_OK) return sp_mkscaler(d);
    const int i = u_kwget_i(file, name);
    if (u_error() == ZUV_OK) return sp_mkscaler(i);
    std::string s = u_kwget_s(file, name);
    if (u_error() == ZUV_OK) return sp_mkstring(std::move(s));
    return {};
}

sp_value sp_common_word(_zuvfile* file, int datatype) {
    switch (datatype) {
    case SP_DT_HEADER: return sp_mkstring(c_ridedgews(u_kwget_s(file, "text").data()));
    case SP_DT_T0: return sp_mkscaler(u_firsttime(file));
    case SP_DT_T1: return sp_mkscaler(u_lasttime(file));
    case SP_DT_NREC: return sp_mkscaler(static_cast<double>(u_nelem(file)));
    default: break;
    }
    for (bool whole : {true, false})
        if (const std::string name = sp_data_word(datatype, whole); !name.empty())
            if (sp_value word = sp_keyword_value(file, name); word.type != SP_NULL) return word;
    return {};
}

} // namespace norva
