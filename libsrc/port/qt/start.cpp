// Start and end of the port: the application object, the one look it has on every desktop, and measures.
#include "qt_port.h"

#include "page.h"
#include "port_qt/testing.h"
#include "text.h"

#include <QApplication>
#include <QFont>
#include <QFontMetrics>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QScreen>
#include <QStyleFactory>
#include <QTemporaryFile>
#include <QWidget>
#include <QtGlobal>

#include <clocale>
#include <cstdio>
#include <optional>

namespace norva {

std::unique_ptr<QObject> make_event_filter(qt_port& port); // events.cpp

namespace {

// Sets an environment variable for as long as it lives: programs started later must not inherit it.
class scoped_variable {
public:
    scoped_variable(const char* name, const QByteArray& value) : name_(name) {
        if (qEnvironmentVariableIsSet(name)) before_ = qgetenv(name);
        if (value.isNull()) {
            qunsetenv(name);
        } else {
            qputenv(name, value);
        }
    }
    ~scoped_variable() {
        if (before_) {
            qputenv(name_, *before_);
        } else {
            qunsetenv(name_);
        }
    }
    scoped_variable(const scoped_variable&) = delete;
    scoped_variable& operator=(const scoped_variable&) = delete;

private:
    const char* name_;
    std::optional<QByteArray> before_;
};

// One screen of fixed size and density, so that pictures are the same everywhere.
constexpr const char* fixed_screen = R"({"windowFrameMargins": false, "screens": [
  {"name": "fixed", "x": 0, "y": 0, "width": 1024, "height": 768,
   "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";

QPalette light_palette() {
    QPalette p;
    const QColor window(239, 239, 239), text(24, 24, 24), grey(150, 150, 150), accent(48, 104, 176);
    p.setColor(QPalette::Window, window);
    p.setColor(QPalette::WindowText, text);
    p.setColor(QPalette::Base, Qt::white);
    p.setColor(QPalette::AlternateBase, QColor(246, 246, 246));
    p.setColor(QPalette::Text, text);
    p.setColor(QPalette::PlaceholderText, grey);
    p.setColor(QPalette::Button, window);
    p.setColor(QPalette::ButtonText, text);
    p.setColor(QPalette::BrightText, Qt::white);
    p.setColor(QPalette::Light, Qt::white);
    p.setColor(QPalette::Midlight, QColor(202, 202, 202));
    p.setColor(QPalette::Mid, QColor(184, 184, 184));
    p.setColor(QPalette::Dark, QColor(159, 159, 159));
    p.setColor(QPalette::Shadow, QColor(118, 118, 118));
    p.setColor(QPalette::Highlight, accent);
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::Link, accent);
    p.setColor(QPalette::LinkVisited, QColor(120, 70, 150));
    p.setColor(QPalette::ToolTipBase, QColor(255, 255, 220));
    p.setColor(QPalette::ToolTipText, Qt::black);
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, grey);
    p.setColor(QPalette::Disabled, QPalette::Base, QColor(232, 232, 232));
    p.setColor(QPalette::Disabled, QPalette::Highlight, QColor(184, 184, 184));
    return p;
}

// Range rings, a sweep and two echoes.
QIcon window_icon() {
    QPixmap pixmap(64, 64);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(16, 42, 78));
    painter.drawRoundedRect(QRectF(1, 1, 62, 62), 12, 12);
    painter.setBrush(QColor(70, 190, 150, 110));
    painter.drawPie(QRectF(8, 8, 48, 48), 20 * 16, 50 * 16);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(150, 215, 230), 2.5));
    for (double radius : {24.0, 14.0}) painter.drawEllipse(QPointF(32, 32), radius, radius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 205, 80));
    painter.drawEllipse(QPointF(43, 19), 4.5, 4.5);
    painter.drawEllipse(QPointF(24, 38), 3.5, 3.5);
    return QIcon(pixmap);
}

// Qt's remarks on things that do not matter here (no session folder, no window order offscreen) would stand
// between the program's own messages.
void pass_messages(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    for (const char* idle :
         {"QStandardPaths: XDG_RUNTIME_DIR", "This plugin does not support", "Detected locale"})
        if (text.startsWith(QLatin1String(idle))) return;
    const QByteArray line = qFormatLogMessage(type, context, text).toLocal8Bit();
    std::fprintf(stderr, "%s\n", line.constData());
}

} // namespace

std::unique_ptr<port> make_qt_port(const qt_port_options& options) {
    return std::make_unique<qt_port>(options);
}

qt_port::qt_port(const qt_port_options& options) : options_(options) {
    qInstallMessageHandler(pass_messages);
    // All lengths are device pixels: Qt must not scale them. Fonts follow the density of the screen.
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    QApplication::setDesktopSettingsAware(false);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    {
        std::optional<scoped_variable> platform, scale, dpi, theme;
        QTemporaryFile config;
        if (options_.unattended) {
            QByteArray plugin = "offscreen";
            if (config.open() && config.write(fixed_screen) > 0 && config.flush() &&
                !config.fileName().contains(QLatin1Char(':')))
                plugin += ":configfile=" + config.fileName().toLocal8Bit();
            platform.emplace("QT_QPA_PLATFORM", plugin);
            scale.emplace("QT_SCALE_FACTOR", QByteArray());
            dpi.emplace("QT_FONT_DPI", QByteArray());
            theme.emplace("QT_QPA_PLATFORMTHEME", QByteArray());
        } else if (!qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY") &&
                   !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
            platform.emplace("QT_QPA_PLATFORM", "offscreen"); // Qt would abort without a screen
        }
        app_ = std::make_unique<QApplication>(argc_, argv_);
    }
    // QApplication has set the user's locale. Numbers are written and read with a point everywhere.
    std::setlocale(LC_NUMERIC, "C");

    QApplication::setQuitOnLastWindowClosed(false); // a message box may be the last window
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(light_palette());
    QFont font(QStringLiteral("DejaVu Sans"), 9);
    font.setStyleHint(QFont::SansSerif);
    QApplication::setFont(font);
    QApplication::setWindowIcon(window_icon());

    context_ = std::make_unique<QObject>();
    filter_ = make_event_filter(*this);
    app_->installEventFilter(filter_.get());
}

qt_port::~qt_port() {
    events_ = nullptr;
    context_.reset();
    app_->removeEventFilter(filter_.get());
    page_.reset();
    std::vector<QWidget*> tops;
    for (const auto& [win, c] : controls_)
        if (c.kind == port_kind::top) tops.push_back(c.widget);
    controls_.clear();
    by_widget_.clear();
    for (QWidget* top : tops) delete top;
}

port_size qt_port::screen_size() {
    const QSize size = QApplication::primaryScreen()->size();
    return {scaled(size.width(), ratio()), scaled(size.height(), ratio())};
}

port_size qt_port::edge_size() {
    return {2, 2};
}

int qt_port::char_height() {
    const QFontMetrics metrics{QApplication::font()};
    return scaled(metrics.height() + metrics.leading(), ratio());
}

QWidget* port_qt_widget(port& p, port_win win) {
    auto* qt = dynamic_cast<qt_port*>(&p);
    return qt ? qt->widget_of(win) : nullptr;
}

} // namespace norva
