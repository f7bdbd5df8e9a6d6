#include "workbench/desktop/WindowSystem.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QWidget>

#ifdef QOR_WITH_XCB
#include <xcb/xcb.h>
#endif

namespace qor::desktop {

void paintNow(QWidget& window) {
    if (!window.isVisible())
        return;
    QEvent update(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &update);
    // What asked for this paint has asked for one at a later turn too; that would show the same.
    QCoreApplication::removePostedEvents(&window, QEvent::UpdateRequest);
}

void sendToScreen() {
#ifdef QOR_WITH_XCB
    if (const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
        xcb_flush(x11->connection());
#endif
}

} // namespace qor::desktop
