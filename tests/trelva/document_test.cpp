// The examples of the language reference, run from the document.
#include "cu/espl.h"
#include "cu/img.h"
#include "cu/iq.h"
#include "cu/pks.h"
#include "cu/rea.h"
#include "fileio/gat.h"
#include "fileio/ufile.h"
#include "show.h"
#include "support/temp_dir.h"
#include "zuvsys/cstrings.h"

#include <array>

namespace norva::test {
namespace {

std::string trimmed(std::string text) {
    return c_ridedgews(text.data());
}

// The files of which the document speaks.
void write_samples() {
    espl_ptr spline = espl_init_old(3, {{0, 1, 0, {0, 0, 1}}, {2, 1, 0, {4, 4, 1}}, {4, 1, 0, {16, 8, 1}}});
    ASSERT_EQ(espl_write(spline.get(), "parabola.spl", "t*t", "Range", "Seconds", "Gates", 0), 1);
    gatfile_ptr gates = opengat("sample.pfx", "New", 3);
    u_kwput_d(gates.get(), "t0", 10.0);
    u_kwput_d(gates.get(), "prf", 2.0);
    for (float n = 1; n <= 4; n++) putgat(gates.get(), 0.0, std::vector<float>{n, 1, n, 2, n, 3});
    ASSERT_EQ(u_close(std::move(gates)), ZUV_OK);
    iqfile_ptr iq = openiq("sample.iq", "New");
    for (float n = 1; n <= 2; n++) putiq(iq.get(), 3 * n, 4 * n);
    imgfile_ptr img = openimg("sample.img", "New", 2);
    for (float n : {0.0F, 4.0F}) putimg(img.get(), std::array{n + 1, n + 2, n + 3, n + 4});
    reafile_ptr rea = openrea("sample.rea", "New");
    for (int n = 0; n < 3; n++) putrea(rea.get(), 0.5 * n, 7000.0 - 10.0 * n, 0.5F, 0.25F, 1);
    pksfile_ptr pks = openpks("sample.pks", "New", 2); // half a metre of wavelength
    u_kwput_d(pks.get(), "xlam", 0.5);
    u_kwput_d(pks.get(), "PITCH", 1.5);
    for (float n : {1.0F, 2.0F})
        putpks(pks.get(), n, std::array{n, -2 * n - 2}, std::array{1.0F, 1.0F}, std::array<char, 2>{1, 1});
}

TEST(trelva_document, examples_give_what_they_say) {
    temp_dir dir;
    current_dir here(dir.path());
    write_samples();
    std::istringstream doc(read_all(TRELVA_DOC));
    sp_language context;
    int lineno = 0, checked = 0;
    bool in_example = false;
    for (std::string line; std::getline(doc, line);) {
        lineno++;
        if (line.starts_with("```")) in_example = line == "```trelva";
        const char* semicolon = c_strchrq(line.c_str(), ';');
        if (!in_example || line.starts_with("```")) continue;
        const std::string code(line, 0, semicolon ? semicolon - line.c_str() : line.size());
        if (c_strchrq(code.c_str(), '=')) {
            run_script(context, line + "\n");
            continue;
        }
        ASSERT_TRUE(semicolon) << "no value in line " << lineno;
        EXPECT_EQ(shown(context, code), trimmed(semicolon + 1)) << "line " << lineno << ": " << code;
        checked++;
    }
    EXPECT_EQ(sp_err_get(context), " ");
    EXPECT_GT(checked, 60);
}

} // namespace
} // namespace norva::test
