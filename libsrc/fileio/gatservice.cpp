// The gate type's answers to the calling surface of ufile.h, and its header values as keywords.
#include "gat_int.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace norva {

namespace {

struct header_word {
    const char* name;
    std::int32_t _gatheader::*whole;
    double _gatheader::*real;
};
constexpr std::array header_words = {
    header_word{"ngat", &_gatheader::ngat, nullptr},
    header_word{"dattype", &_gatheader::dattype, nullptr},
    header_word{"incrng", &_gatheader::incrng, nullptr},
    header_word{"t0", nullptr, &_gatheader::t0},
    header_word{"prf", nullptr, &_gatheader::prf},
};
constexpr int n_words = static_cast<int>(header_words.size());

const header_word* find_word(const std::string& name) {
    auto at = std::ranges::find_if(header_words, [&](const header_word& w) { return name == w.name; });
    return at == header_words.end() ? nullptr : &*at;
}

double time_of(const _gatfile& p, std::int64_t element) {
    return static_cast<double>(element) / p.hd.prf + p.hd.t0;
}

// The first element at or past t, held to 0..nelements. A time that is an element's own up to rounding is
// that element's.
std::int64_t element_at(const _gatfile& p, double t) {
    double x = (t - p.hd.t0) * p.hd.prf;
    double nearest = std::round(x);
    if (std::fabs(x - nearest) > 1e-9 * std::max(1.0, std::fabs(x))) nearest = std::ceil(x);
    auto most = static_cast<double>(p.nelements);
    return nearest > 0.0 ? static_cast<std::int64_t>(std::min(nearest, most)) : 0;
}

int put_word(_gatfile& p, const header_word& word, int opcode, const kwarg& arg) {
    _gatheader head = p.hd;
    if (opcode == KWOP_PUT_INT && word.whole)
        head.*word.whole = arg.i;
    else if (opcode == KWOP_PUT_DBL && word.real)
        head.*word.real = arg.d;
    else
        return -1; // of another type, or a delete
    return putgathead(&p, head);
}

int get_word(const _gatfile& p, const header_word& word, int opcode, kwarg& arg) {
    arg = {};
    if (opcode == KWOP_GET_INT && word.whole)
        arg.i = p.hd.*word.whole;
    else if (opcode == KWOP_GET_DBL && word.real)
        arg.d = p.hd.*word.real;
    else
        return -1;
    return 1;
}

int call_word(_gatfile& p, const header_word& word, int opcode, kwarg& arg) {
    switch (opcode) {
    case KWOP_GET_INT:
    case KWOP_GET_DBL:
    case KWOP_GET_STR: return get_word(p, word, opcode, arg);
    case KWOP_EXIST: arg.i = 1; return 1;
    default: return put_word(p, word, opcode, arg);
    }
}

// Header words count ahead of the list.
int count(_zuvfile* file, std::string& name, kwarg& arg) {
    int status = zuvkwdef(file, KWOP_COUNT, name, arg);
    arg.i += n_words;
    return status;
}

int item(_zuvfile* file, int indx, std::string& name, kwarg& arg) {
    if (indx < 0) return -1;
    if (indx >= n_words) {
        kwarg select{.i = indx - n_words};
        zuvkwdef(file, KWOP_SELECT, name, select);
        return zuvkwdef(file, KWOP_ITEM, name, arg);
    }
    const header_word& word = header_words[static_cast<std::size_t>(indx)];
    name = word.name;
    arg.i = word.whole ? KW_INT : KW_DOUBLE;
    return 1;
}

int put_header(_gatfile& p, std::span<const std::byte> data) {
    if (data.size() < sizeof(_gatheader)) return ZUV_BAD_ARGUMENT;
    _gatheader head;
    std::memcpy(&head, data.data(), sizeof head);
    return putgathead(&p, head);
}

int get_header(const _gatfile& p, std::span<std::byte> data) {
    if (data.size() < sizeof(_gatheader)) return ZUV_BAD_ARGUMENT;
    std::memcpy(data.data(), &p.hd, sizeof p.hd);
    return ZUV_OK;
}

int answer(std::int64_t& to, std::int64_t value) {
    to = value;
    return ZUV_OK;
}

int answer(double& to, double value) {
    to = value;
    return ZUV_OK;
}

} // namespace

int gat_service(_zuvfile* file, int opcode, uarg& arg) {
    if (!file) return ZUV_NULL_FILE;
    auto& p = static_cast<_gatfile&>(*file);
    switch (opcode) {
    case UOP_FIRSTTIME: return answer(arg.t, p.hd.t0);
    case UOP_LASTTIME: return answer(arg.t, time_of(p, std::max<std::int64_t>(p.nelements - 1, 0)));
    case UOP_NELEM: return answer(arg.n, p.nelements);
    case UOP_CANWRITE: return answer(arg.n, !p.rdonly);
    case UOP_NEXTTIME: return answer(arg.t, time_of(p, p.nextelem));
    case UOP_NEXTELEM: return answer(arg.n, p.nextelem);
    case UOP_TIMEMOVE: return zuvfileseek(&p, element_at(p, arg.t));
    case UOP_ELEMMOVE: return zuvfileseek(&p, arg.n);
    case UOP_GETELEM: return zuvfilereadblock(&p, arg.data, 1);
    case UOP_GETNELEM: return zuvfilereadblock(&p, arg.data, arg.n);
    case UOP_PUTELEM: return zuvfilewriteblock(&p, arg.data, 1);
    case UOP_GETHEAD: return get_header(p, arg.data);
    case UOP_PUTHEAD: return put_header(p, arg.data);
    case UOP_ELEMSIZE: return answer(arg.n, p.elemsize);
    case UOP_HEADSIZE: return answer(arg.n, p.hdsize);
    case UOP_NITEMS: return answer(arg.n, p.hd.ngat);
    case UOP_TYPE: arg.s = p.fname; return answer(arg.n, FILETYPE_GAT);
    case UOP_CLOSE: return ZUV_OK; // nothing of its own
    default: return -1;
    }
}

int gat_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg) {
    static int savedindx = 0;
    if (!file) return ZUV_NULL_FILE;
    switch (opcode) {
    case KWOP_COUNT: return count(file, name, arg);
    case KWOP_SELECT: savedindx = arg.i; return 1;
    case KWOP_ITEM: return item(file, savedindx, name, arg);
    default: break;
    }
    const header_word* word = find_word(name);
    return word ? call_word(static_cast<_gatfile&>(*file), *word, opcode, arg)
                : zuvkwdef(file, opcode, name, arg);
}

} // namespace norva
