// The host of the full program: Qt, with windows or, headless, with its loop alone.
#include "platform/system/QorApplication.h"
#include "workbench/app/Host.h"
#include "workbench/desktop/Desktop.h"
#include "workbench/desktop/loop/QtEventLoop.h"

#include <QApplication>

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

int runHeadless(const Serve& serve) {
    QtArguments arguments;
    const QCoreApplication qt(arguments.count, arguments.list.data());
    desktop::QtEventLoop loop;
    const QorInteractiveApplication application(loop);
    return serve({loop, [&] {
                      loop.run();
                  }});
}

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

/// Without a display Qt would end the program in a crash; this says what to do instead.
bool hasDisplay() {
    return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM");
}

/// Qt's way to say that it cannot reach the display is to abort; ours is an exit code.
void report(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    std::cerr << "qorworkbench: " << text.toStdString() << std::endl;
    if (type == QtFatalMsg)
        std::_Exit(exitFailed);
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
    const QApplication qt(arguments.count, arguments.list.data());
    desktop::QtEventLoop loop;
    QorInteractiveApplication application(loop);
    const auto theme = desktop::themeNamed(QString::fromStdString(options.theme));
    const desktop::Desktop desktop(theme.value_or(desktop::ThemeChoice::System));
    application.SetDisplayUpdater(desktop::Desktop::displayUpdater());
    return serve({loop, [&] {
                      loop.run();
                  }});
}

} // namespace

int withHost(const Options& options, const Serve& serve) {
    return options.isHeadless ? runHeadless(serve) : runDesktop(options, serve);
}

} // namespace qor::app
