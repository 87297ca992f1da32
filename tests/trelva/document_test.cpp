// The examples of the language reference, run from the document.
#include "cu/espl.h"
#include "fileio/gat.h"
#include "fileio/ufile.h"
#include "show.h"
#include "support/temp_dir.h"
#include "zuvsys/cstrings.h"

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
