// Pages and pictures: what is in the files, and what happens when they cannot be written.
#include "fixture.h"
#include "support/temp_dir.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include <sys/resource.h>

namespace norva::test {

namespace fs = std::filesystem;

class page : public port_test {
protected:
    page() : port_test(true) {}

    port_page_result print(const std::string& file, bool with_image = false) {
        if (p().page_begin({.title = "plot", .file = file}) != port_page_result::ok)
            return port_page_result::cancel;
        caps = p().page_caps();
        const int inch = static_cast<int>(caps.units_per_inch);
        p().pen(port_page, 0x0000ff, 0, 1);
        p().move_to(port_page, {inch, inch});
        const port_point line[] = {{10 * inch, inch}, {10 * inch, 7 * inch}};
        p().polyline_to(port_page, line);
        p().fill(port_page, {2 * inch, 3 * inch, inch, inch}, 0xff0000);
        p().pen(port_page, 0, 1, 3); // a wide dashed line, in many runs
        p().move_to(port_page, {inch, 6 * inch});
        for (int x = inch + 20; x <= 9 * inch; x += 20) {
            const port_point to[] = {{x, 6 * inch}};
            p().polyline_to(port_page, to);
        }
        const std::uint32_t pixels[] = {0x0000ff, 0x00ff00};
        if (with_image) p().image(port_page, {4 * inch, 3 * inch, 2 * inch, inch}, pixels, 2, 1);
        return p().page_end();
    }

    // The page at 50 dots per inch; a null image when there is no renderer.
    QImage render(const std::string& file) {
        const std::string command =
            "pdftoppm -r 50 -png -singlefile '" + file + "' '" + dir.file("out") + "'";
        return std::system(command.c_str()) == 0 ? QImage(QString::fromStdString(dir.file("out.png")))
                                                 : QImage();
    }

    port_page_caps caps;
    temp_dir dir;
};

TEST_F(page, is_a_vector_drawing_on_a_letter_sheet) {
    current_dir here(dir.path());
    ASSERT_EQ(print("plot.pdf"), port_page_result::ok); // relative to the current folder
    EXPECT_EQ(caps.paper, (port_size{6600, 5100}));
    EXPECT_EQ(caps.units_per_inch, 600);
    EXPECT_EQ(caps.printable, (port_rect{0, 0, 6600, 5100}));
    const std::string pdf = read_all("plot.pdf");
    EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
    EXPECT_EQ(pdf.find("/Subtype /Image"), std::string::npos);
    ASSERT_EQ(print("picture.pdf", true), port_page_result::ok);
    const std::string with_image = read_all("picture.pdf");
    EXPECT_NE(with_image.find("/Subtype /Image"), std::string::npos);
    EXPECT_EQ(with_image.find("DCTDecode"), std::string::npos); // no lossy compression

    const QImage image = render("plot.pdf");
    if (image.isNull()) GTEST_SKIP() << "pdftoppm is not installed";
    EXPECT_NEAR(image.width(), 550, 1);
    EXPECT_NEAR(image.height(), 425, 1);
    const auto darkest = [&](int x, int y) { // within a pixel, by the green part
        int least = 255;
        for (int dy = -1; dy <= 1; dy++)
            for (int dx = -1; dx <= 1; dx++) least = std::min(least, qGreen(image.pixel(x + dx, y + dy)));
        return least;
    };
    EXPECT_LT(darkest(300, 50), 200);             // the red line, 6 inches from the left
    EXPECT_LT(darkest(500, 200), 200);            // and its second leg
    EXPECT_EQ(image.pixel(125, 175), 0xff0000ff); // inside the blue rectangle
    EXPECT_EQ(image.pixel(200, 100), 0xffffffff);
    int changes = 0, dark = 0;
    for (int x = 51; x < 449; x++) {
        const bool on = qGreen(image.pixel(x, 300)) < 128;
        changes += on != (qGreen(image.pixel(x - 1, 300)) < 128);
        dark += on;
    }
    EXPECT_GT(changes, 20); // gaps in spite of the short runs
    EXPECT_GT(dark, 150);
    EXPECT_LT(dark, 320);
}

TEST_F(page, says_when_it_could_not_be_written) {
    EXPECT_EQ(print(dir.file("missing/plot.pdf")), port_page_result::error);
    EXPECT_NE(print(""), port_page_result::ok);
    write_all(dir.file("plot.pdf"), "kept");
    // A limit on the size of files acts as a full disk does.
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit full = before;
    full.rlim_cur = 200;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &full);
    const port_page_result result = print(dir.file("plot.pdf"));
    const bool picture = p().picture(top, dir.file("top.png"));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(result, port_page_result::error);
    EXPECT_FALSE(picture);
    EXPECT_EQ(read_all(dir.file("plot.pdf")), "kept");
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator{}), 1); // no halves
    EXPECT_EQ(print(dir.file("plot.pdf")), port_page_result::ok);
    EXPECT_GT(read_all(dir.file("plot.pdf")).size(), 500u);
}

TEST_F(page, one_at_a_time) {
    ASSERT_EQ(p().page_begin({.title = "a", .file = dir.file("a.pdf"), .landscape = false}),
              port_page_result::ok);
    EXPECT_EQ(p().page_caps().paper, (port_size{5100, 6600}));
    EXPECT_EQ(p().page_begin({.title = "b", .file = dir.file("b.pdf")}), port_page_result::error);
    EXPECT_EQ(p().page_end(), port_page_result::ok);
    EXPECT_EQ(p().page_end(), port_page_result::error);
}

TEST_F(page, window_pictures) {
    const port_win area = make(port_kind::draw, {100, 50, 60, 40});
    make(port_kind::label, {5, 5, 80, 20}, "label");
    show_all();
    p().fill(area, {10, 10, 20, 20}, 0x0000ff);
    ASSERT_TRUE(p().picture(top, dir.file("top.png")));
    const QImage image(QString::fromStdString(dir.file("top.png")));
    EXPECT_EQ(image.size(), QSize(400, 300));
    EXPECT_EQ(image.pixel(115, 65), 0xffff0000);
    EXPECT_EQ(image.pixel(102, 52), 0xffffffff);
    EXPECT_FALSE(p().picture(top, dir.file("missing/top.png")));
    EXPECT_FALSE(p().picture(area, dir.file("area.png")));
    EXPECT_FALSE(p().picture(999, dir.file("none.png")));
}

} // namespace norva::test
