#include "fileio/kwtext.h"

#include "fileio/ufile.h"
#include "zuvsys/cstrings.h"
#include "zuvsys/numparse.h"

#include <algorithm>
#include <cmath>

namespace norva {

namespace {

// Names that the program reads, and their types. "t0" and "prf" of a gate file's header are doubles, too.
struct known_type {
    const char* name;
    int type;
};
constexpr known_type known_types[] = {
    {"DATA_SOURCE", KW_STRING},
    {"TARGET_TYPE", KW_STRING},
    {"TRACK_INFO", KW_STRING},
    {"MOT_COMP", KW_STRING},
    {"SIG_TYPE", KW_STRING},
    {"NREC", KW_INT},
    {"NFREQ", KW_INT},
    {"KSX", KW_INT},
    {"DTYPE", KW_INT},
    {"R0", KW_DOUBLE},
    {"T0", KW_DOUBLE},
    {"WFRI", KW_DOUBLE},
    {"PRF", KW_DOUBLE},
    {"STEP_FREQ", KW_DOUBLE},
    {"WAVEFORM_REP_INT", KW_DOUBLE},
    {"FIRST_FREQ", KW_DOUBLE},
    {"XEX", KW_DOUBLE},
    {"PULSE_LENGTH", KW_DOUBLE},
    {"YEX", KW_DOUBLE},
    {"RC", KW_DOUBLE},
    {"DE", KW_DOUBLE},
    {"DA", KW_DOUBLE},
    {"DU", KW_DOUBLE},
    {"SA", KW_DOUBLE},
};

int type_of(const std::string& name, std::string_view value) {
    for (const known_type& known : known_types)
        if (c_iseqx(known.name, name.c_str())) return known.type;
    return whole_int(value) ? KW_INT : whole_double(value) ? KW_DOUBLE : KW_STRING;
}

constexpr std::size_t longest_item = 127; // bytes; a longer one is not found again

} // namespace

std::string put_keyword_text(_zuvfile* file, std::string_view name_text, std::string_view value) {
    const std::string name(name_text);
    const std::string quoted = "\"" + std::string(value.substr(0, 40)) + "\"";
    if (name.empty()) return "a keyword without a name";
    if (name.size() > KW_MAX_NAME)
        return "the name has more than " + std::to_string(KW_MAX_NAME) + " characters";
    if (value.empty()) {
        if (u_kwexist(file, name)) u_kwdelete(file, name);
        return {};
    }
    int status = ZUV_OK;
    switch (type_of(name, value)) {
    case KW_INT: {
        const auto number = whole_double(value); // 24.0 is a whole number, 3e9 is none that fits
        if (!number || *number != std::floor(*number) || std::fabs(*number) > 2147483647.0)
            return name + " takes a whole number, not " + quoted;
        status = u_kwput_i(file, name, static_cast<int>(*number));
        break;
    }
    case KW_DOUBLE: {
        const auto number = whole_double(value);
        if (!number || !std::isfinite(*number)) return name + " takes a number, not " + quoted;
        status = u_kwput_d(file, name, *number);
        break;
    }
    default:
        if (value.find('\0') != std::string_view::npos) return "the value of " + name + " holds a zero byte";
        if (name.size() + value.size() + 5 > longest_item)
            return "the value of " + name + " has more than " +
                   std::to_string(longest_item - 5 - name.size()) + " characters";
        status = u_kwput_s(file, name, value);
    }
    if (status == ZUV_BAD_ARGUMENT) return name + " cannot be " + quoted + " in this file";
    return status == ZUV_OK ? "" : "no room for keyword " + name;
}

std::string zuvstatus_text(int status) {
    switch (status) {
    case ZUV_EOF: return "the end of the file is reached";
    case ZUV_NO_MEMORY: return "there is not enough memory";
    case ZUV_NO_OPEN: return "no regular file of that name can be opened";
    case ZUV_BAD_VERSION: return "it is no data file (the version is not 1)";
    case ZUV_TOO_SHORT: return "it is no data file, or shorter than its head tells";
    case ZUV_WRITE_FAILED: return "a write failed; the disk may be full";
    case ZUV_SHORT_READ: return "a read came out short";
    case ZUV_SEEK_FAILED: return "there is no such element";
    case ZUV_BAD_HEADSIZE: return "the header has the wrong size for its type";
    case ZUV_BAD_TYPE: return "it is of another type, or its element size does not agree with its header";
    case ZUV_BAD_ARGUMENT: return "a value that cannot be";
    case ZUV_NO_CONVERSION: return "it is no data file, or from an unknown machine";
    case ZUV_READ_ONLY: return "it cannot be written";
    case ZUV_BAD_HEADER: return "the pulse rate or the wavelength is not above 0";
    default: return "status " + std::to_string(status);
    }
}

} // namespace norva
