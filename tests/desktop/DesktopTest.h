#pragma once

#include "tests/platform/dialog/DialogTest.h"
#include "workbench/desktop/Desktop.h"
#include "workbench/desktop/QtToolkit.h"
#include "workbench/desktop/loop/QtEventLoop.h"

#include <QApplication>
#include <QTest>

namespace qor::desktop::tests {

/// A program with windows: the loop on Qt, the desktop, and a window that is shown and listens.
class DesktopTest : public QorTestApplicationOn<QtEventLoop> {
protected:
    void SetUp() override {
        desktop = std::make_unique<Desktop>(ThemeChoice::Light);
        window = new ListeningDialog(nullptr, "window", QorDlgWndOKCancel);
        window->SetTitle("Window");
    }

    void TearDown() override {
        if (window != nullptr)
            std::exchange(window, nullptr)->RequestDelayedDestruction();
        settle();
        desktop.reset();
        settle();
        EXPECT_TRUE(visibleWindows().empty());
        QorTestApplicationOn<QtEventLoop>::TearDown();
    }

    /// Turns until everything that was begun has happened.
    void settle() {
        for (int quiet = 0; quiet < 3;)
            quiet = loop.RunOneTurn() || loop.CountPosted() != 0 ? 0 : quiet + 1;
    }

    /// Shows \p dialog and waits until the display has given it the keyboard.
    void show(QorDlgDialog& dialog) {
        dialog.SetVisibility(QorDlgSHOW);
        QWidget* shown = controlOf(&dialog);
        ASSERT_NE(shown, nullptr);
        shown->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(shown));
        settle();
    }

    void show() { show(*window); }

    /// The control of \p widget in its Qt class.
    template <class Control = QWidget>
    static Control* controlFor(const QorDialog* widget) {
        auto* control = dynamic_cast<Control*>(controlOf(widget));
        EXPECT_NE(control, nullptr) << widget->GetName().Str();
        return control;
    }

    void click(const QorDialog* widget, const QPoint& at = QPoint()) {
        QTest::mouseClick(controlOf(widget), Qt::LeftButton, {}, at);
        settle();
    }

    void key(QWidget* target, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(target, key, modifiers);
        settle();
    }

    /// A key where the keyboard is.
    void key(Qt::Key pressed, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* target = QApplication::focusWidget();
        ASSERT_NE(target, nullptr);
        key(target, pressed, modifiers);
    }

    void type(QWidget* target, const QString& text) {
        QTest::keyClicks(target, text);
        settle();
    }

    static QList<QWidget*> visibleWindows() {
        QList<QWidget*> windows = QApplication::topLevelWidgets();
        windows.removeIf([](const QWidget* one) { return !one->isVisible(); });
        return windows;
    }

    std::unique_ptr<Desktop> desktop;
    ListeningDialog* window = nullptr; ///< null it when a test lets it die
};

/// One step of the mouse wheel over \p control.
inline void wheel(QWidget& control, int steps) {
    constexpr int unit = 120;
    const QPointF at = QRectF(control.rect()).center();
    QWheelEvent event(at, control.mapToGlobal(at), QPoint(), QPoint(0, steps * unit), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&control, &event);
}

} // namespace qor::desktop::tests
