// Reading a CDF pattern file.
#include "app/cdf_input.h"

#include "fileio/cdf.h"
#include "state/calls.h"
#include "state/user.h"

namespace norva {

const raw_texts cdf_texts = {"data source", "target type", "track info", "motion"};
const char* const cdf_signal_text = "stepped";

static bool complain(const std::string& fault) {
    if (!fault.empty()) popmsg("Error in CDF file " + user.rdfile + ": " + fault + "!");
    return fault.empty();
}

bool rd_cdf(header_numbers& numbers) {
    cdf_header header;
    if (!complain(read_cdf_header(user.rdfile, header))) return false;
    numbers = {.nrec = header.nscan,
               .nf = header.nfreq,
               .t0 = header.scan0,
               .wfri = header.dscan,
               .f0 = header.f0,
               .df = header.df};
    return true;
}

bool rd_cdf(const data_window& w) {
    return complain(read_cdf_data(user.rdfile, poles,
                                  {.nscan0 = w.nt0, .nscan = w.nt, .nfreq0 = w.nf0, .nfreq = w.nf},
                                  user.pfdata.span(), [](int done, int all) { rpt_progress(done, all); }));
}

} // namespace norva
