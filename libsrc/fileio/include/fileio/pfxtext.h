#pragma once
// The text form of raw data, as the "WRITE" button makes it and any other program can:
//
//   any lines
//   BEGIN_KW
//   NREC=24                    NAME=value, one a line; needed: NREC, NFREQ, T0, STEP_FREQ, FIRST_FREQ, and
//   ...                        WFRI or WAVEFORM_REP_INT
//   END_KW
//   BEGIN_DATA
//   1.000000<tab>0.500000      one sample a line: I and Q, apart by blanks, tabs or a comma; NFREQ samples of
//   ...                        the first record, then those of the second, ... NREC records
//   END_DATA
//
// Blank lines are skipped. Numbers have a point as decimal separator and may have an exponent.

#include <string>

namespace norva {

struct pfx_text_result {
    std::string
        fault; // empty when the file is written; otherwise what is wrong, "line N: ..." where it has one
    int nrec = 0, nfreq = 0;
};

// Reads the text file `text` ("-": standard input) and writes the gate file `gate` (floats, with ranges of
// 0), which is there at the end or not at all; a file of that name stays as it was after a fault. Keywords
// keep their order; the header's t0 and prf are those of the keywords. An interval that "%f" has cut to six
// decimals is taken from PRF where that has more of it.
pfx_text_result pfx_from_text(const std::string& text, const std::string& gate);

} // namespace norva
