// The host of the full program: Qt, with windows or, headless, with its loop and what paints
// pictures in memory.
#include "platform/system/QorApplication.h"
#include "workbench/app/Host.h"
#include "workbench/app/Services.h"
#include "workbench/desktop/Desktop.h"
#include "workbench/desktop/loop/QtEventLoop.h"
#include "workbench/desktop/loop/SlowTurn.h"
#include "workbench/engine/adapter/ViewPicture.h"
#include "workbench/paint/HeadlessPictures.h"
#include "workbench/session/Settings.h"

#include <QApplication>
#include <QGuiApplication>
#include <QThread>

#include <array>
#include <cstdlib>
#include <iostream>

namespace qor::app {

namespace {

using Serve = std::function<int(const HostLoop& host)>;

/// Arguments for Qt: it sees the program's name alone, for the options are the program's own.
struct QtArguments {
    std::array<char, 13> name{"qorworkbench"};
    std::array<char*, 2> list{name.data(), nullptr};
    int count = 1;
};

/// The same for a program that shows no window: Qt's offscreen platform, which has fonts and needs
/// no display, whatever the environment asks for.
struct OffscreenArguments {
    std::array<char, 13> name{"qorworkbench"};
    std::array<char, 10> option{"-platform"};
    std::array<char, 10> platform{"offscreen"};
    std::array<char*, 4> list{name.data(), option.data(), platform.data(), nullptr};
    int count = 3;
};

/// Tells the trace of events that keep a person waiting.
class WatchedApplication : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        if (QThread::currentThread() != thread())
            return QApplication::notify(receiver, event);
        const desktop::SlowTurn turn(*receiver, *event);
        return QApplication::notify(receiver, event);
    }
};

/// Qt's way to say that it cannot reach the display is to abort; ours is an exit code.
void report(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    std::cerr << "qorworkbench: " << text.toStdString() << std::endl;
    if (type == QtFatalMsg)
        std::_Exit(exitFailed);
}

/// Qt warns of a poor environment that matters to programs with windows only.
void reportFailures(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type == QtCriticalMsg || type == QtFatalMsg)
        report(type, context, text);
}

int runHeadless(const Serve& serve) {
    qInstallMessageHandler(&reportFailures);
    OffscreenArguments arguments;
    const QGuiApplication qt(arguments.count, arguments.list.data());
    desktop::QtEventLoop loop;
    const QorInteractiveApplication application(loop);
    Services services;
    const paint::HeadlessPictures pictures(adapter::viewCaster(services.engine().cache()));
    return serve({loop, [&] { loop.run(); }, services});
}

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

/// Without a display Qt would end the program in a crash; this says what to do instead.
bool hasDisplay() {
    return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM");
}

desktop::ThemeChoice themeOf(const std::string& name) {
    return desktop::themeNamed(QString::fromStdString(name)).value_or(desktop::ThemeChoice::System);
}

int runDesktop(const Options& options, const Serve& serve) {
    if (!hasDisplay()) {
        std::cerr << "qorworkbench: there is no display (neither DISPLAY nor WAYLAND_DISPLAY is "
                     "set); --headless runs without one\n";
        return exitFailed;
    }
    qInstallMessageHandler(&report);
    desktop::Desktop::prepareApplication();
    QtArguments arguments;
    const WatchedApplication qt(arguments.count, arguments.list.data());
    desktop::QtEventLoop loop;
    QorInteractiveApplication application(loop);
    Services services;
    desktop::Desktop desktop(
        themeOf(options.theme.empty() ? session::setting("Theme") : options.theme));
    application.SetDisplayUpdater(desktop::Desktop::displayUpdater());
    return serve({loop, [&] { loop.run(); }, services,
                  [&](const std::string& theme) {
                      desktop.theme().choose(themeOf(theme));
                  }});
}

} // namespace

int withHost(const Options& options, const Serve& serve) {
    return options.isHeadless ? runHeadless(serve) : runDesktop(options, serve);
}

} // namespace qor::app
