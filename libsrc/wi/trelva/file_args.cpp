// The arguments of the functions that read data files.
#include "file_args.h"

#include "zuvsys/basicstr.h"
#include "zuvsys/cstrings.h"
#include "zuvsys/numparse.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace norva {

namespace {

constexpr std::size_t longest_argument = 200;

struct word_code {
    const char* word;
    int code;
};

constexpr word_code file_types[] = {
    {"IQ", SP_FILE_IQ}, {"REA", SP_FILE_REA}, {"PKS", SP_FILE_PKS}, {"SPL", SP_FILE_SPL},
    {"V3", SP_FILE_V3}, {"IMG", SP_FILE_IMG}, {"GAT", SP_FILE_GAT}, {"ANY", SP_FILE_ANY},
};

// What stands behind the "~" may be left off.
constexpr word_code data_types[] = {
    {"TIME", SP_DT_TIME},
    {"ALLTIME", SP_DT_ALLTIME},
    {"AMP~LITUDE", SP_DT_AMP},
    {"PH~ASE", SP_DT_PHASE},
    {"I", SP_DT_I},
    {"Q", SP_DT_Q},
    {"R~ANGE", SP_DT_RANGE},
    {"EL~EVATION", SP_DT_ELEVATION},
    {"AZ~IMUTH", SP_DT_AZIMUTH},
    {"RATE", SP_DT_RATE},
    {"ACC~ELERATION", SP_DT_ACC},
    {"LOC~ATION", SP_DT_LOC},
    {"XPOS~ITION", SP_DT_XPOS},
    {"YPOS~ITION", SP_DT_YPOS},
    {"ZPOS~ITION", SP_DT_ZPOS},
    {"XVEL~OCITY", SP_DT_XVEL},
    {"YVEL~OCITY", SP_DT_YVEL},
    {"ZVEL~OCITY", SP_DT_ZVEL},
    {"XACC~ELERATION", SP_DT_XACC},
    {"YACC~ELERATION", SP_DT_YACC},
    {"ZACC~ELERATION", SP_DT_ZACC},
    {"YAW", SP_DT_YAW},
    {"PITCH", SP_DT_PITCH},
    {"ROLL", SP_DT_ROLL},
    {"AUTO~TRACK", SP_DT_AUTO},
    {"FUNC~TION", SP_DT_FUNC},
    {"HEAD~ER", SP_DT_HEADER},
    {"PRF", SP_DT_PRF},
    {"XLAM", SP_DT_XLAM},
    {"WAVELEN~GTH", SP_DT_XLAM},
    {"T0", SP_DT_T0},
    {"T1", SP_DT_T1},
    {"NSAMP~LES", SP_DT_NSAMP},
    {"NFFT~SIZE", SP_DT_NFFT},
    {"LAG~SIZE", SP_DT_LAG},
    {"WINDOW~SIZE", SP_DT_WINDOW},
    {"PKSTYPE", SP_DT_PKSTYPE},
    {"NPKS", SP_DT_NPKS},
    {"WEIGHT~ING", SP_DT_WEIGHT},
    {"XUNITS", SP_DT_XUNITS},
    {"YUNITS", SP_DT_YUNITS},
    {"SPLTYPE", SP_DT_SPLTYPE},
    {"NCOE", SP_DT_NCOE},
    {"NGAT", SP_DT_NGAT},
    {"NREC", SP_DT_NREC},
    {"VALID~BIT", SP_DT_VALID},
    {"DATA", SP_DT_DATA},
};

int file_type(const char* word) {
    for (const word_code& w : file_types)
        if (c_iseqx(w.word, word)) return w.code;
    return 0;
}

int data_type(const char* word) {
    for (const word_code& w : data_types)
        if (c_isabbrx(w.word, word, '~')) return w.code;
    return SP_DT_NONE;
}

int yes_no(const char* word) {
    return c_isabbrx("Y~ES", word, '~') || c_isabbrx("T~RUE", word, '~');
}

struct keyword {
    const char* name;
    void (*apply)(fileparams& parms, const char* value);
};

constexpr keyword keywords[] = {
    {"FILENAME", [](fileparams& p, const char* v) { p.fname = v; }},
    {"FILETYPE", [](fileparams& p, const char* v) { p.filetype = file_type(v); }},
    {"DATATYPE", [](fileparams& p, const char* v) { p.datatype = data_type(v); }},
    {"T0", [](fileparams& p, const char* v) { p.t0 = to_double(v); }},
    {"T1", [](fileparams& p, const char* v) { p.t1 = to_double(v); }},
    {"MAX~ELEMENTS", [](fileparams& p, const char* v) { p.mxelms = to_int(v); }},
    {"NAVG", [](fileparams& p, const char* v) { p.navg = to_int(v); }},
    {"WTAUTO", [](fileparams& p, const char* v) { p.wtauto = yes_no(v); }},
    {"FITALL", [](fileparams& p, const char* v) { p.fitall = yes_no(v); }},
    {"ISLOT", [](fileparams& p, const char* v) { p.islot = to_int(v); }},
    {"IDER~IVATIVE", [](fileparams& p, const char* v) { p.iderv = to_int(v); }},
    {"USETIMES", [](fileparams&, const char*) {}}, // accepted, without effect
    {"POINTS~PERINTERVAL", [](fileparams& p, const char* v) { p.nptsbrk = to_int(v); }},
};

// What an argument without "=" stands for, by its place among those.
constexpr std::array positions = {"FILENAME", "DATATYPE", "T0", "T1", "MAX"};

bool get_parm(fileparams& parms, const char* name, const char* value) {
    for (const keyword& k : keywords) {
        if (!c_isabbrx(k.name, name, '~')) continue;
        k.apply(parms, value);
        return true;
    }
    return false;
}

std::string without_edge_blanks(std::string text) {
    return c_ridedgews(text.data());
}

} // namespace

std::string sp_data_word(int datatype, bool whole) {
    std::string name;
    const auto at = std::ranges::find(data_types, datatype, &word_code::code);
    if (at == std::end(data_types)) return name;
    for (const char* c = at->word; *c && (whole || *c != '~'); c++)
        if (*c != '~') name += static_cast<char>(tolowerx(static_cast<unsigned char>(*c)));
    return name;
}

std::string sp_read_file_args(fileparams& parms, sp_args args) {
    std::size_t position = 0;
    for (const sp_value& arg : args) {
        const std::string text = sp_text(arg).substr(0, longest_argument);
        const char* equals = c_strchrq(text.c_str(), '=');
        if (!equals && position == positions.size()) return "Too many arguments in file reading function.";
        const std::size_t at = equals ? static_cast<std::size_t>(equals - text.c_str()) : 0;
        const std::string name = equals ? without_edge_blanks(text.substr(0, at)) : positions[position++];
        const std::string value = without_edge_blanks(equals ? text.substr(at + 1) : text);
        if (!get_parm(parms, name.c_str(), value.c_str()))
            return "Unknown keyword in file reading function: " + name;
    }
    return "";
}

} // namespace norva
