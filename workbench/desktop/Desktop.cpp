#include "workbench/desktop/Desktop.h"

#include "platform/dialog/QorToolkit.h"
#include "platform/frame/QorApplicationFrame.h"
#include "workbench/desktop/QtToolkit.h"
#include "workbench/desktop/StandardTexts.h"
#include "workbench/desktop/WindowSystem.h"
#include "workbench/desktop/theme/Icon.h"
#include "workbench/desktop/viewer/ViewerPictures.h"

#include <QApplication>
#include <QWidget>

/// Icons and shaders lie in a static library, whose resources nobody else asks for. Qt's macro
/// wants the global namespace.
static void loadResources() {
    Q_INIT_RESOURCE(qor_icons);
    Q_INIT_RESOURCE(qor_shaders);
}

namespace qor::desktop {

Desktop::Desktop(ThemeChoice choice)
    : theme_(choice)
    , texts_(std::make_unique<StandardTexts>())
    , toolkit_(std::make_unique<QtToolkit>())
    , pictures_(std::make_unique<ViewerPictures>()) {
    loadResources();
    QCoreApplication::installTranslator(texts_.get());
    QApplication::setWindowIcon(icon(QStringLiteral("application")));
    QApplication::setQuitOnLastWindowClosed(false);
    QorToolkit::Install(toolkit_.get());
}

Desktop::~Desktop() {
    if (QorToolkit::GetInstalled() == toolkit_.get())
        QorToolkit::Install(nullptr);
    // Controls whose widgets are gone wait for the loop to delete them, which may run no more.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QWidget* Desktop::mainWindow() {
    const QorApplicationFrame* frame = QorApplicationFrame::GetFrame();
    return frame != nullptr ? controlOf(frame) : nullptr;
}

std::function<void()> Desktop::displayUpdater() {
    return [] {
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows)
            paintNow(*window);
        sendToScreen();
    };
}

void Desktop::prepareApplication() {
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    // What several windows show lies once in the memory of the graphics card.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QCoreApplication::setApplicationName(QStringLiteral("qorworkbench"));
    QGuiApplication::setDesktopFileName(QStringLiteral("qorworkbench"));
}

} // namespace qor::desktop
