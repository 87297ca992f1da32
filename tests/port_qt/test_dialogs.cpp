// Messages, questions and files, with a user and without; start-up.
#include "fixture.h"
#include "support/temp_dir.h"

#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <clocale>
#include <cstdio>
#include <cstdlib>

namespace norva::test {

class dialogs : public port_test {
protected:
    template <class T> T* open_dialog() {
        spin();
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* dialog = qobject_cast<T*>(w); dialog && dialog->isVisible()) return dialog;
        return nullptr;
    }
};

TEST_F(dialogs, come_one_after_the_other) {
    show_all();
    lines said;
    p().message("Message:", "<b>1 & 2</b>", [&] { said.push_back("read"); });
    p().yes_no("Question:", "Really?", [&](bool yes) { said.push_back(yes ? "yes" : "no"); });
    p().yes_no("Question:", "Sure?", [&](bool yes) { said.push_back(yes ? "yes" : "no"); });
    p().message("Message:", "no one listens", {});
    auto* box = open_dialog<QMessageBox>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "<b>1 & 2</b>");
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(box, &escape);
    EXPECT_EQ(said, lines{}); // answers come from the loop
    box = open_dialog<QMessageBox>();
    EXPECT_EQ(said, lines{"read"});
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "Really?");
    box->button(QMessageBox::Yes)->click();
    box = open_dialog<QMessageBox>();
    ASSERT_NE(box, nullptr);
    QApplication::sendEvent(box, &escape);
    box = open_dialog<QMessageBox>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "no one listens");
    box->button(QMessageBox::Ok)->click();
    EXPECT_EQ(open_dialog<QMessageBox>(), nullptr);
    EXPECT_EQ(said, (lines{"read", "yes", "no"}));
}

TEST_F(dialogs, a_dialog_that_goes_with_its_window_answers) {
    show_all();
    bool answered = false;
    p().yes_no("Question:", "Still there?", [&](bool yes) { answered = !yes; });
    ASSERT_NE(open_dialog<QMessageBox>(), nullptr);
    p().later([&] {
        p().destroy(top);
        p().quit(0);
    });
    p().run();
    p().later([&] { p().quit(0); });
    p().run();
    EXPECT_TRUE(answered);
}

TEST_F(dialogs, file_choice) {
    temp_dir dir;
    write_all(dir.file("a.iq"), "x");
    show_all();
    std::string name = "none";
    const port_file_request request = {.title = "Raw data",
                                       .dir = dir.path().string(),
                                       .filters = {{"Data", {"*.iq", "*.pf*"}}, {"All Files", {"*"}}}};
    p().ask_file(request, [&](const std::string& chosen) { name = chosen; });
    auto* dialog = open_dialog<QFileDialog>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->nameFilters(), (QStringList{"Data (*.iq *.pf*)", "All Files (*)"}));
    auto* line = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_NE(line, nullptr);
    line->setText("a.iq");
    static_cast<QDialog*>(dialog)->accept();
    spin();
    EXPECT_EQ(name, dir.file("a.iq"));
    p().ask_file(request, [&](const std::string& chosen) { name = chosen; });
    dialog = open_dialog<QFileDialog>();
    ASSERT_NE(dialog, nullptr);
    dialog->reject();
    spin();
    EXPECT_EQ(name, "");
}

TEST_F(dialogs, a_fatal_message_waits_for_its_answer) {
    const port_win area = make(port_kind::draw, {5, 5, 100, 100});
    show_all();
    lines meanwhile;
    QTimer::singleShot(0, widget(top), [&] {
        p().request_paint(area);
        click(area);
        QTimer::singleShot(0, widget(top), [&] {
            meanwhile = events.take();
            qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->button(QMessageBox::Ok)->click();
        });
    });
    p().fatal("Error message:", "PE 1");
    EXPECT_EQ(meanwhile, lines{}); // the program stands still
    spin();
    EXPECT_EQ(events.take(), lines{"paint " + std::to_string(area)});
}

class unattended : public port_test {
protected:
    unattended() : port_test(true) {}
};

TEST_F(unattended, everything_is_answered) {
    lines said;
    testing::internal::CaptureStderr();
    p().message("Message:", "hello", [&] { said.push_back("read"); });
    p().yes_no("Question:", "sure?", [&](bool yes) { said.push_back(yes ? "yes" : "no"); });
    p().ask_file({}, [&](const std::string& name) { said.push_back("[" + name + "]"); });
    p().message("Message:", "bye", {});
    p().fatal("Error message:", "PE 1");
    EXPECT_EQ(said, lines{});
    spin();
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(said, (lines{"read", "no", "[]"}));
    for (const char* text : {"Message: hello", "Question: sure?", "Error message: PE 1"})
        EXPECT_NE(err.find(text), std::string::npos) << err;
    EXPECT_EQ(p().screen_size(), (port_size{1024, 768}));
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORM").contains("configfile"), false); // not for programs started later
}

// Qt takes the user's locale over at start; files and fields must not see its decimal comma.
TEST(start, numbers_keep_their_point) {
    temp_dir dir;
    std::string source =
        "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3;3\nEND LC_NUMERIC\n";
    for (const char* rest : {"LC_CTYPE", "LC_COLLATE", "LC_MONETARY", "LC_TIME", "LC_MESSAGES"})
        source += std::string(rest) + "\ncopy \"POSIX\"\nEND " + rest + "\n";
    write_all(dir.file("source"), source);
    const std::string command =
        "localedef -c -f UTF-8 -i '" + dir.file("source") + "' '" + dir.file("de_DE.UTF-8") + "' 2>/dev/null";
    [[maybe_unused]] const int made = std::system(command.c_str());
    setenv("LOCPATH", dir.path().c_str(), 1);
    for (const char* name : {"LC_ALL", "LC_NUMERIC", "LANG"}) setenv(name, "de_DE.UTF-8", 1);
    const bool comma = std::setlocale(LC_ALL, "") && *std::localeconv()->decimal_point == ',';
    std::setlocale(LC_ALL, "C");
    if (!comma) GTEST_SKIP() << "no locale with a decimal comma here";
    const auto p = make_qt_port({.unattended = true});
    char text[16];
    std::snprintf(text, sizeof text, "%.2f", 1.5);
    EXPECT_STREQ(text, "1.50");
    EXPECT_EQ(std::strtod("1.5", nullptr), 1.5);
}

} // namespace norva::test
