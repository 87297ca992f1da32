#pragma once
// CDF pattern files: measured patterns as text. One file holds one or more polarizations over a scan of
// angles and a sweep of frequencies.
//
//   @D PATTERN FILE                            the first two characters make it one
//     NUMBER OF FREQUENCY STEPS    64
//     POLARIZATION                 HH VV       in the order of the data
//     BASE FREQUENCY               9000        MHz; values of 1e6 and more are Hz
//     DELTA FREQUENCY              4           likewise
//     START SCAN                   -1          degrees
//     STOP SCAN                    1
//     DELTA SCAN                   0.1
//   @E                                         or just the first line of numbers
//   -3.1  12.5   -3.0  13.1 ...                amplitude in dB and phase in degrees, by polarization,
//                                              scan position, frequency; line ends count as blanks
//
// Header items are told by their words, in any case and with any blanks; the value stands behind the last
// "=",
// ":" or run of two or more blanks. Other items are left alone. The data end at the end of the file or at a
// line that starts with "@".

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace norva {

struct cdf_header {
    int nfreq = 0, nscan = 0;
    double f0 = 0, df = 0;          // first frequency, step: Hz
    double scan0 = 0, dscan = 0;    // first position, step: degrees
    std::vector<std::string> poles; // polarizations in the order of the data, as "HH"
};

// The polarizations there are.
extern const char* const cdf_poles[8];

// The file opens as text and starts with "@D".
bool is_cdf(const std::string& name);

// Reads the header. Returns an empty text, or what is wrong: a sentence that names the item or the line, but
// not the file. The size of the file has been held against the counts then, the data have not been read.
std::string read_cdf_header(const std::string& name, cdf_header& header);

// The samples nfreq0 .. nfreq0 + nfreq - 1 of the scan positions nscan0 .. nscan0 + nscan - 1, from 1, of one
// polarization, as interleaved float pairs, position after position: amplitude and phase turned into I and Q.
// All data of the file are read and counted. Returns as read_cdf_header; `out`, 2 nscan nfreq floats, holds
// no sample that can be used after a fault. `progress` is called with (positions done, positions in the
// file).
struct cdf_window {
    int nscan0 = 1, nscan = 0, nfreq0 = 1, nfreq = 0;
};
std::string read_cdf_data(const std::string& name, const std::string& pole, const cdf_window& window,
                          std::span<float> out, const std::function<void(int, int)>& progress = {});

} // namespace norva
