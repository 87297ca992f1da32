#include "elements.h"

#include "cu/dop.h"
#include "cu/img.h"
#include "cu/iq.h"
#include "cu/pks.h"
#include "cu/rea.h"
#include "cu/spl.h"
#include "cu/vec.h"
#include "fileio/gat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace norva {

namespace {

template <class T> std::string shortest(T value) {
    std::array<char, 64> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

std::string timed(double tme) {
    return "time " + number_text(tme);
}

std::string counted(std::string text, std::int64_t shown, std::int64_t all) {
    return shown < all ? text + "  ... of " + std::to_string(all) : text;
}

std::size_t room(std::int64_t items, std::int64_t all) {
    return static_cast<std::size_t>(std::clamp<std::int64_t>(items, 0, all));
}

std::string pairs(const std::vector<float>& values) {
    std::string text;
    for (std::size_t k = 0; k + 1 < values.size(); k += 2)
        text += "  (" + number_text(values[k]) + ", " + number_text(values[k + 1]) + ")";
    return text;
}

template <class T> std::string numbers(const std::vector<T>& values) {
    std::string text;
    for (T value : values) text += "  " + shortest(value);
    return text;
}

std::string gat_text(_zuvfile* file, std::int64_t items, int& status) {
    auto* p = static_cast<_gatfile*>(file);
    double tme = 0, rng = 0;
    std::vector<float> row(2 * room(items, p->hd.ngat));
    status = getgat(p, tme, rng, row);
    const std::string range = p->hd.incrng == 1 ? "  range " + number_text(rng) : "";
    return counted(timed(tme) + range + pairs(row), items, p->hd.ngat);
}

std::string iq_text(_zuvfile* file, std::int64_t, int& status) {
    double tme = 0;
    std::vector<float> sample(2);
    status = getiq(static_cast<_iqfile*>(file), tme, sample[0], sample[1]);
    return timed(tme) + pairs(sample);
}

std::string rea_text(_zuvfile* file, std::int64_t, int& status) {
    double tme = 0, rng = 0;
    float el = 0, az = 0;
    int flag = 0;
    status = getrea(static_cast<_reafile*>(file), tme, rng, el, az, flag);
    return timed(tme) + "  range " + number_text(rng) + "  elevation " + number_text(el) + "  azimuth " +
           number_text(az) + "  flag " + std::to_string(flag);
}

std::string dop_text(_zuvfile* file, std::int64_t items, int& status) {
    auto* p = static_cast<_dopfile*>(file);
    double tme = 0, a = 0, e = 0;
    std::vector<std::int16_t> amps(room(items, p->hd.namp));
    status = getdopae(p, tme, a, e, amps);
    const std::string extra =
        p->hd.version == 2 ? "  doubles " + number_text(a) + " " + number_text(e) + "  amplitudes" : "";
    return counted(timed(tme) + extra + numbers(amps), items, p->hd.namp);
}

std::string pks_text(_zuvfile* file, std::int64_t items, int& status) {
    auto* p = static_cast<_pksfile*>(file);
    double tme = 0;
    const std::size_t n = room(items, p->hd.npks);
    std::vector<float> poss(n), amps(n);
    std::vector<char> flgs(n);
    status = getpks(p, tme, poss, amps, flgs);
    std::string text = timed(tme);
    for (std::size_t k = 0; k < n; k++)
        text += "  (" + number_text(poss[k]) + ", " + number_text(amps[k]) + ", flag " +
                std::to_string(static_cast<int>(flgs[k])) + ")";
    return counted(text, items, p->hd.npks);
}

std::string spl_text(_zuvfile* file, std::int64_t items, int& status) {
    auto* p = static_cast<_splfile*>(file);
    double tme = 0;
    int ncont = 0, flg2 = 0;
    std::vector<double> coe(room(items, p->hd.ncoe));
    status = getspl(p, tme, ncont, flg2, coe);
    return counted("from " + number_text(tme) + "  continuity " + std::to_string(ncont) + "  flag " +
                       std::to_string(flg2) + "  coefficients" + numbers(coe),
                   items, p->hd.ncoe);
}

std::string img_text(_zuvfile* file, std::int64_t items, int& status) {
    auto* p = static_cast<_imgfile*>(file);
    double tme = 0;
    std::vector<float> row(2 * room(items, p->hd.nsamp));
    status = getimg(p, tme, row);
    return counted(timed(tme) + pairs(row), items, p->hd.nsamp);
}

std::string vec_text(_zuvfile* file, std::int64_t items, int& status) {
    auto* p = static_cast<_vecfile*>(file);
    double tme = 0;
    std::vector<double> row(room(items, p->hd.nvec));
    status = getvec(p, tme, row);
    return counted(timed(tme) + numbers(row), items, p->hd.nvec);
}

struct file_type {
    int code;
    const char* name;
    zuvfile_ptr (*open)(const std::string& name);
    int (*error)();
    std::string (*text)(_zuvfile* file, std::int64_t items, int& status);
};

constexpr file_type types[] = {
    {FILETYPE_IQ, "iq", [](const std::string& n) -> zuvfile_ptr { return openiq(n, "Old"); }, getiqerror,
     iq_text},
    {FILETYPE_PKS, "pks", [](const std::string& n) -> zuvfile_ptr { return openpks(n, "Old", 0); },
     getpkserror, pks_text},
    {FILETYPE_REA, "rea", [](const std::string& n) -> zuvfile_ptr { return openrea(n, "Old"); }, getreaerror,
     rea_text},
    {FILETYPE_DOP, "dop", [](const std::string& n) -> zuvfile_ptr { return opendop(n, "Old", 0); },
     getdoperror, dop_text},
    {FILETYPE_SPL, "spl", [](const std::string& n) -> zuvfile_ptr { return openspl(n, "Old", 0); },
     getsplerror, spl_text},
    {FILETYPE_GAT, "gat", [](const std::string& n) -> zuvfile_ptr { return opengat(n, "Old", 0); },
     getgaterror, gat_text},
    {FILETYPE_IMG, "img", [](const std::string& n) -> zuvfile_ptr { return openimg(n, "Old", 0); },
     getimgerror, img_text},
    {FILETYPE_VEC, "vec", [](const std::string& n) -> zuvfile_ptr { return openvec(n, "Old", 0); },
     getvecerror, vec_text},
};

const file_type* type_of(int code) {
    const auto* found = std::ranges::find(types, code, &file_type::code);
    return found == std::end(types) ? nullptr : found;
}

} // namespace

std::string type_name(int filetype) {
    const file_type* type = type_of(filetype);
    return type ? type->name : "";
}

zuvfile_ptr open_typed(const std::string& name, int& status) {
    if (const file_type* type = type_of(zuvfiletype(name))) {
        zuvfile_ptr file = type->open(name);
        status = file ? ZUV_OK : type->error();
        return file;
    }
    int code = 0, headsize = 0, elementsize = 0;
    status = zuvfileopen(name, code, headsize, elementsize) ? ZUV_BAD_TYPE : zuvfileerror();
    return nullptr;
}

std::string element_text(_zuvfile* file, std::int64_t items, int& status) {
    const std::string text = type_of(file->kw.filetype)->text(file, items, status);
    return status == ZUV_OK ? text : "";
}

std::string number_text(double value) {
    return shortest(value);
}

std::string number_text(float value) {
    return shortest(value);
}

} // namespace norva
