// The examples of the language reference, run from the document.
#include "show.h"
#include "support/temp_dir.h"
#include "zuvsys/cstrings.h"

namespace norva::test {
namespace {

std::string trimmed(std::string text) {
    return c_ridedgews(text.data());
}

TEST(trelva_document, examples_give_what_they_say) {
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
