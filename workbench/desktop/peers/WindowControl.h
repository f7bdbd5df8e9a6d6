#pragma once

#include <QCloseEvent>
#include <QDialog>
#include <QResizeEvent>

#include <functional>

namespace qor::desktop {

/// A window of Qt's class \p Base that never closes, answers or deletes itself: OK, Cancel, Escape
/// and the close box only call the hooks.
template <class Base>
class WindowControl : public Base {
public:
    using Base::Base;

    std::function<void()> onOK;
    std::function<void()> onCancel;
    std::function<void()> onClose;

    void accept() override { call(onOK); }

    void reject() override { call(onCancel); }

    void done(int result) override { call(result == QDialog::Accepted ? onOK : onCancel); }

protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        call(onClose ? onClose : onCancel);
    }

    /// The hook may destroy the peer, and with it the hooks.
    static void call(std::function<void()> hook) {
        if (hook)
            hook();
    }
};

} // namespace qor::desktop
