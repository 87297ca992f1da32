// Messages, questions and the choice of a file. They come one after the other, in the order asked for.
#include "qt_port.h"

#include "text.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QScreen>

#include <cstdio>
#include <utility>

namespace norva {

// The window that a dialog stands over: the active one, or any that is on the screen.
QWidget* qt_port::dialog_parent() {
    if (QWidget* active = QApplication::activeWindow(); active && by_widget_.count(active)) return active;
    for (auto it = controls_.rbegin(); it != controls_.rend(); ++it)
        if (it->second.kind == port_kind::top && it->second.widget->isVisible()) return it->second.widget;
    return nullptr;
}

void qt_port::ask_next() {
    if (asking_ || questions_.empty()) return;
    const std::function<void()> open = std::move(questions_.front());
    questions_.pop_front();
    asking_ = true;
    open();
}

// Runs `answer` once, from the loop, after the dialog was answered or went away with its window.
void qt_port::open_dialog(QDialog* dialog, std::function<void(int)> answer) {
    const auto told = std::make_shared<bool>(false);
    const auto finish = [this, told, answer = std::move(answer)](int result) {
        if (std::exchange(*told, true)) return;
        later([this, answer, result] {
            asking_ = false;
            answer(result);
            ask_next();
        });
    };
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::ApplicationModal);
    QObject::connect(dialog, &QDialog::finished, context_.get(), finish);
    QObject::connect(dialog, &QObject::destroyed, context_.get(), [finish] { finish(QDialog::Rejected); });
    dialog->show();
}

static QMessageBox* make_box(QWidget* parent, QMessageBox::Icon icon, const std::string& title,
                             const std::string& text, QMessageBox::StandardButtons buttons) {
    auto* box = new QMessageBox(icon, to_qt(title), {}, buttons, parent);
    box->setTextFormat(Qt::PlainText);
    box->setText(to_qt(text));
    return box;
}

static void tell_nobody(const std::string& title, const std::string& text) {
    std::fprintf(stderr, "%s %s\n", title.c_str(), text.c_str());
    std::fflush(stderr);
}

void qt_port::message(const std::string& title, const std::string& text, std::function<void()> done) {
    if (options_.unattended) {
        tell_nobody(title, text);
        later(std::move(done));
        return;
    }
    questions_.push_back([this, title, text, done = std::move(done)] {
        open_dialog(make_box(dialog_parent(), QMessageBox::Information, title, text, QMessageBox::Ok),
                    [done](int) {
                        if (done) done();
                    });
    });
    ask_next();
}

void qt_port::yes_no(const std::string& title, const std::string& text, std::function<void(bool)> done) {
    if (options_.unattended) {
        tell_nobody(title, text + " - no");
        if (done) later([done = std::move(done)] { done(false); });
        return;
    }
    questions_.push_back([this, title, text, done = std::move(done)] {
        QMessageBox* box =
            make_box(dialog_parent(), QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No);
        box->setEscapeButton(QMessageBox::No);
        open_dialog(box, [done](int result) {
            if (done) done(result == QMessageBox::Yes);
        });
    });
    ask_next();
}

void qt_port::ask_file(const port_file_request& request, std::function<void(const std::string&)> done) {
    if (options_.unattended) {
        if (done) later([done = std::move(done)] { done({}); });
        return;
    }
    questions_.push_back([this, request, done = std::move(done)] {
        auto* dialog = new QFileDialog(dialog_parent(), to_qt(request.title), to_qt(request.dir));
        dialog->setOption(QFileDialog::DontUseNativeDialog);
        dialog->setFileMode(QFileDialog::AnyFile);
        QStringList filters;
        for (const port_filter& filter : request.filters) {
            QStringList patterns;
            for (const std::string& pattern : filter.patterns) patterns << to_qt(pattern);
            filters << to_qt(filter.name) + QLatin1String(" (") + patterns.join(QLatin1Char(' ')) +
                           QLatin1Char(')');
        }
        if (!filters.isEmpty()) dialog->setNameFilters(filters);
        const QSize room = dialog->screen()->availableGeometry().size() - QSize(20, 60);
        dialog->resize(QSize(720, 460).boundedTo(room));
        const auto chosen = std::make_shared<std::string>();
        QObject::connect(dialog, &QFileDialog::fileSelected, context_.get(),
                         [chosen](const QString& name) { *chosen = from_qt(name); });
        open_dialog(dialog, [done, chosen](int) {
            if (done) done(*chosen);
        });
    });
    ask_next();
}

void qt_port::fatal(const std::string& title, const std::string& text) {
    if (options_.unattended) {
        tell_nobody(title, text);
        return;
    }
    inside inner(*this);
    const std::unique_ptr<QMessageBox> box(
        make_box(dialog_parent(), QMessageBox::Critical, title, text, QMessageBox::Ok));
    box->exec();
}

} // namespace norva
