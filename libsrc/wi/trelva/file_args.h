#pragma once
// The arguments of the functions that read data files, as IQFILE("a.iq", AMP, "T0=2").

#include "functions_int.h"

#include <string>

namespace norva {

// Kinds of file, by the words of FILETYPE.
constexpr int SP_FILE_IQ = 1, SP_FILE_REA = 2, SP_FILE_PKS = 3, SP_FILE_SPL = 4, SP_FILE_V3 = 5,
              SP_FILE_IMG = 6, SP_FILE_GAT = 7, SP_FILE_ANY = 9;

// Data types, by the words of DATATYPE. From SP_DT_HEADER on they are words of the file's header, served
// without a pass over the data.
enum sp_datatype {
    SP_DT_NONE = -1,
    SP_DT_TIME = 1,
    SP_DT_AMP = 2,
    SP_DT_PHASE = 3,
    SP_DT_I = 4,
    SP_DT_Q = 5,
    SP_DT_RANGE = 6,
    SP_DT_ELEVATION = 7,
    SP_DT_AZIMUTH = 8,
    SP_DT_RATE = 9,
    SP_DT_ACC = 10,
    SP_DT_LOC = 11,
    SP_DT_XPOS = 12,
    SP_DT_YPOS = 13,
    SP_DT_ZPOS = 14,
    SP_DT_XVEL = 15,
    SP_DT_YVEL = 16,
    SP_DT_ZVEL = 17,
    SP_DT_XACC = 18,
    SP_DT_YACC = 19,
    SP_DT_ZACC = 20,
    SP_DT_YAW = 21,
    SP_DT_PITCH = 22,
    SP_DT_ROLL = 23,
    SP_DT_AUTO = 24,
    SP_DT_FUNC = 25,
    SP_DT_ALLTIME = 26,
    SP_DT_VALID = 27, // ours
    SP_DT_DATA = 28,  // ours
    SP_DT_HEADER = 50,
    SP_DT_PRF = 51,
    SP_DT_XLAM = 52,
    SP_DT_T0 = 53,
    SP_DT_T1 = 54,
    SP_DT_NSAMP = 55,
    SP_DT_NFFT = 56,
    SP_DT_LAG = 57,
    SP_DT_WINDOW = 58,
    SP_DT_PKSTYPE = 59,
    SP_DT_NPKS = 60,
    SP_DT_WEIGHT = 61,
    SP_DT_XUNITS = 62,
    SP_DT_YUNITS = 63,
    SP_DT_SPLTYPE = 64,
    SP_DT_NCOE = 65,
    SP_DT_NGAT = 66,
    SP_DT_NREC = 67,
};

inline bool sp_is_time(int datatype) {
    return datatype == SP_DT_TIME || datatype == SP_DT_ALLTIME;
}

struct fileparams {
    std::string fname;         // file name
    int filetype = 0;          // kind of file, set by the name of the function
    int datatype = SP_DT_NONE; // item to read
    double t0 = -1e30;         // time window, both ends included
    double t1 = 1e30;
    int mxelms = 10000000; // most elements to return
    int navg = 40;         // elements of a local fit
    int wtauto = 1;        // weights of a local fit fall off to its ends
    int fitall = 1;        // a local fit takes all data, or the valid ones only
    int islot = 0;         // peak, gate or sample, from 1; 0 when not given
    int iderv = 0;         // derivative order
    int nptsbrk = 100;     // samples per interval of a spline
};

// The word of a data type in lower case: whole, or without the letters that may be left off.
std::string sp_data_word(int datatype, bool whole);

// Reads the arguments: texts with "=" outside quotes are keywords, others are file name, data type, T0, T1
// and the element limit in turn. Returns the message of what is wrong, empty when nothing is.
std::string sp_read_file_args(fileparams& parms, sp_args args);

} // namespace norva
