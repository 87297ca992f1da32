// The readers of iq, image, track and peak files, on elements held in memory behind the unified calls.
#include "file_read.h"
#include "fileio/ufile.h"
#include "local_fit.h"
#include "show.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <numbers>

namespace norva::test {
namespace {

// Bytes of an element, built value by value as they stand in a file.
struct element_bytes {
    std::vector<std::byte> bytes;
    template <class T> element_bytes& add(T value) {
        bytes.resize(bytes.size() + sizeof value);
        std::memcpy(bytes.data() + bytes.size() - sizeof value, &value, sizeof value);
        return *this;
    }
};

// A data file without a disk: times, elements, items of an element, keywords.
struct memory_data {
    std::vector<double> times;
    std::vector<std::vector<std::byte>> elements;
    int nitems = 1;
    std::map<std::string, double> reals;
    std::map<std::string, int> wholes;
    std::map<std::string, std::string> texts;
    std::size_t readable = 1000; // elements beyond fail to be read
};
memory_data data;

int service(_zuvfile* file, int opcode, uarg& arg) {
    const auto n = static_cast<std::size_t>(file->nextelem);
    switch (opcode) {
    case UOP_FIRSTTIME: arg.t = data.times.front(); return ZUV_OK;
    case UOP_LASTTIME: arg.t = data.times.back(); return ZUV_OK;
    case UOP_NELEM: arg.n = static_cast<std::int64_t>(data.times.size()); return ZUV_OK;
    case UOP_NEXTTIME: arg.t = data.times.at(n); return ZUV_OK;
    case UOP_NEXTELEM: arg.n = file->nextelem; return ZUV_OK;
    case UOP_TIMEMOVE:
        file->nextelem = std::ranges::lower_bound(data.times, arg.t) - data.times.begin();
        return ZUV_OK;
    case UOP_ELEMMOVE: file->nextelem = arg.n; return ZUV_OK;
    case UOP_GETELEM:
        if (n >= data.readable || arg.data.size() < data.elements.at(n).size()) return ZUV_SHORT_READ;
        std::ranges::copy(data.elements[n], arg.data.begin());
        file->nextelem++;
        return ZUV_OK;
    case UOP_ELEMSIZE: arg.n = static_cast<std::int64_t>(data.elements.front().size()); return ZUV_OK;
    case UOP_NITEMS: arg.n = data.nitems; return ZUV_OK;
    default: return -1;
    }
}

template <class M, class T> int found(const M& words, const std::string& name, T& to) {
    auto at = words.find(name);
    if (at == words.end()) return -1;
    to = at->second;
    return ZUV_OK;
}

int keywords(_zuvfile*, int opcode, std::string& name, kwarg& arg) {
    switch (opcode) {
    case KWOP_GET_DBL: return found(data.reals, name, arg.d);
    case KWOP_GET_INT: return found(data.wholes, name, arg.i);
    case KWOP_GET_STR: return found(data.texts, name, arg.s);
    default: return -1;
    }
}

zuvfile_ptr open_memory(const std::string&) {
    zuvfile_ptr file(new _zuvfile);
    file->ucall = service;
    file->ukwcall = keywords;
    return file;
}

// What a function of the kind gives for these arguments.
sp_value read_value(sp_file_kind kind, const std::vector<std::string>& arguments) {
    kind.open = open_memory;
    std::vector<sp_value> values = {sp_mkstring("name")};
    for (const std::string& text : arguments) values.push_back(sp_mkstring(text));
    fileparams parms;
    const std::string wrong = sp_read_file_args(parms, values);
    return wrong.empty() ? sp_read_file(kind, parms) : sp_mkerror(wrong);
}

std::string read(const sp_file_kind& kind, const std::vector<std::string>& arguments) {
    return sp_show(read_value(kind, arguments));
}

TEST(trelva_readers, iq_and_images) {
    data = {};
    for (int n = 0; n < 4;
         n++) { // the first sample turns by 0.4 cycles an element, the second stands at 3, 4
        data.times.push_back(n * 0.5);
        const double angle = 2 * std::numbers::pi * 0.4 * n;
        element_bytes row;
        row.add(static_cast<float>(2 * std::cos(angle))).add(static_cast<float>(2 * std::sin(angle)));
        data.elements.push_back(row.add(3.0f).add(4.0f).bytes);
    }
    data.nitems = 2;
    data.reals = {{"prf", 2.0}, {"xlam", 0.03}};
    data.texts = {{"text", " comment  "}};
    EXPECT_EQ(read(sp_iq_kind, {"TIME"}), "[0 0.5 1 1.5]");
    EXPECT_EQ(read(sp_iq_kind, {"AMP", "0.5", "1", "ISLOT=2"}), "[5 5]");
    EXPECT_EQ(read_value(sp_iq_kind, {"AMP"}).npts(), 8u);
    EXPECT_EQ(read(sp_iq_kind, {"Q", "ISLOT=2"}), "[4 4 4 4]");
    const sp_value phase = read_value(sp_iq_kind, {"PHASE", "ISLOT=1"});
    for (std::size_t i = 0; i < 4; i++) EXPECT_NEAR(phase.ary[i], 0.4 * static_cast<double>(i), 1e-6);
    EXPECT_EQ(read(sp_iq_kind, {"PRF"}), "2");
    EXPECT_EQ(read(sp_iq_kind, {"WAVELEN"}), "0.03");
    EXPECT_EQ(read(sp_iq_kind, {"NSAMP"}), "4");
    EXPECT_EQ(read(sp_iq_kind, {"HEAD"}), "\"comment\"");
    EXPECT_EQ(read(sp_iq_kind, {"LOC"}), "error: Bad data type for file type.");
    EXPECT_EQ(read(sp_img_kind, {"I", "T1=0"}), "[2 3]");
    EXPECT_EQ(read(sp_img_kind, {"DATA", "T1=0"}), "[2 0 3 4]");
    EXPECT_EQ(read(sp_img_kind, {"DATA", "ISLOT=2", "MAX=2"}), "[3 4 3 4]");
    EXPECT_EQ(read(sp_img_kind, {"NSAMP"}), "2");
    data.readable = 2;
    EXPECT_EQ(read(sp_iq_kind, {"I"}), "error: Internal problem reading IQ file.");
    EXPECT_EQ(read(sp_img_kind, {"I"}), "error: Internal problem reading IMG file.");
    EXPECT_EQ(read(sp_img_kind, {"I", "ISLOT=2", "MAX=2"}), "[3 3]");
}

TEST(trelva_readers, tracks) {
    data = {};
    for (int n = 0; n < 3; n++) {
        data.times.push_back(n + 10.0);
        element_bytes row;
        row.add(n + 10.0).add(5000.0 + n).add(0.25f).add(n / 4.0f);
        data.elements.push_back(row.add(std::int32_t{n % 2}).add(std::int32_t{0}).bytes);
    }
    EXPECT_EQ(read(sp_rea_kind, {"RANGE"}), "[5000 5001 5002]");
    EXPECT_EQ(read(sp_rea_kind, {"EL"}), "[0.25 0.25 0.25]");
    EXPECT_EQ(read(sp_rea_kind, {"AZIMUTH", "11"}), "[0.25 0.5]");
    EXPECT_EQ(read(sp_rea_kind, {"VALID"}), "[0 1 0]");
    EXPECT_EQ(read(sp_rea_kind, {"PRF"}), "error: Bad data type for file type."); // no such keyword
    EXPECT_EQ(read(sp_rea_kind, {"I"}), "error: Bad data type for file type.");
    data.readable = 0;
    EXPECT_EQ(read(sp_rea_kind, {"RANGE"}), "error: Internal problem reading REA file (2).");
}

TEST(trelva_readers, peaks) {
    data = {};
    data.nitems = 9; // flags from byte 80 on
    for (int n = 0; n < 2; n++) {
        data.times.push_back(n);
        element_bytes row;
        row.add(static_cast<double>(n));
        for (int k = 1; k <= 9; k++) row.add(static_cast<float>(10 * k + n)).add(static_cast<float>(100 * k));
        for (int k = 1; k <= 9; k++) row.add(static_cast<char>(k == 9 && n == 1));
        row.bytes.resize(96);
        data.elements.push_back(row.bytes);
    }
    data.reals = {{"prf", 50.0}, {"xlam", 0.5}};
    data.wholes = {{"type", 0}, {"npks", 9}, {"nfft", 64}, {"lag", 4}, {"wdw", 32}, {"weight", 1}};
    EXPECT_EQ(read(sp_pks_kind, {"LOC"}), "[10 11]");
    EXPECT_EQ(read(sp_pks_kind, {"LOC", "ISLOT=9"}), "[90 91]");
    EXPECT_EQ(read(sp_pks_kind, {"AMP", "ISLOT=2"}), "[200 200]");
    EXPECT_EQ(read(sp_pks_kind, {"VALID", "ISLOT=9"}), "[0 1]");
    EXPECT_EQ(read(sp_pks_kind, {"VALID", "ISLOT=8"}), "[0 0]");
    EXPECT_EQ(read(sp_pks_kind, {"DATA", "ISLOT=9"}), "[90 900 91 900]");
    EXPECT_EQ(read_value(sp_pks_kind, {"DATA"}).npts(), 36u);
    EXPECT_EQ(read(sp_pks_kind, {"RATE"}), "[-2.5 -2.75]"); // -xlam/2 metres a second for each Hz
    EXPECT_EQ(read(sp_pks_kind, {"ACC"}), "error: This peaks file does not contain acceleration data.");
    EXPECT_EQ(read(sp_pks_kind, {"LOC", "ISLOT=10"}),
              "error: This peaks file does not contain enough peaks for ISLOT.");
    EXPECT_EQ(read(sp_pks_kind, {"LOC", "ISLOT=-1"}), "error: Invalid ISLOT.");
    EXPECT_EQ(read(sp_pks_kind, {"I"}), "error: Bad data type for file type.");
    struct {
        const char *word, *shown;
    } words[] = {{"NFFT", "64"},
                 {"LAG", "4"},
                 {"WINDOW", "32"},
                 {"NPKS", "9"},
                 {"WEIGHTING", "1"},
                 {"PKSTYPE", "\"Rate\""},
                 {"XUNITS", "\"Seconds\""},
                 {"YUNITS", "\"Hz\""},
                 {"NSAMPLES", "2"},
                 {"PRF", "50"}};
    for (const auto& w : words) EXPECT_EQ(read(sp_pks_kind, {w.word}), w.shown) << w.word;
    data.wholes["type"] = 1;
    EXPECT_EQ(read(sp_pks_kind, {"ACC"}), "[-2.5 -2.75]");
    EXPECT_EQ(read(sp_pks_kind, {"RATE"}), "error: This peaks file does not contain rate data.");
    EXPECT_EQ(read(sp_pks_kind, {"YUNITS"}), "\"Hz/sec\"");
    EXPECT_EQ(read(sp_pks_kind, {"PKSTYPE"}), "\"Acceleration\"");
    data.readable = 1;
    EXPECT_EQ(read(sp_pks_kind, {"LOC"}), "error: Internal problem reading PKS file.");
}

// A parabola comes back exactly, at the ends too, whatever the weights; masked elements do not count.
TEST(trelva_readers, local_fit) {
    std::vector<double> t, y, mask, out(50);
    for (int i = 0; i < 50; i++) {
        t.push_back(100.0 + 0.1 * i + 0.03 * (i % 3));
        y.push_back(7000.0 - 30.0 * t.back() + 4.0 * t.back() * t.back());
        mask.push_back(i % 5 == 2 ? 0.0 : 1.0);
    }
    std::vector<double> spoiled = y;
    for (std::size_t i = 0; i < 50; i++)
        if (mask[i] == 0.0) spoiled[i] += 1000.0;
    for (bool taper : {false, true})
        for (int navg : {-1, 3, 8, 40, 9999}) {
            sp_local_fit(t, y, {}, navg, taper, 1, out);
            for (std::size_t i = 0; i < 50; i++) EXPECT_NEAR(out[i], 8.0 * t[i] - 30.0, 1e-5) << navg;
            sp_local_fit(t, y, {}, navg, taper, 2, out);
            for (std::size_t i = 0; i < 50; i++) EXPECT_NEAR(out[i], 8.0, 1e-4) << navg;
        }
    sp_local_fit(t, spoiled, mask, 8, true, 1, out);
    for (std::size_t i = 0; i < 50; i++) EXPECT_NEAR(out[i], mask[i] ? 8.0 * t[i] - 30.0 : out[i], 1e-5);
    EXPECT_LT(std::fabs(out[17] - (8.0 * t[17] - 30.0)), 1e-5); // a masked element takes its neighbours' fit
    const double two[] = {1.0, 2.0}, same[] = {5.0, 5.0, 5.0, 5.0};
    sp_local_fit(two, two, {}, 3, false, 1, std::span(out).first(2));
    EXPECT_TRUE(std::isnan(out[0]));
    sp_local_fit(same, y, {}, 4, false, 1, std::span(out).first(4));
    EXPECT_TRUE(std::isnan(out[3]));
}

} // namespace
} // namespace norva::test
