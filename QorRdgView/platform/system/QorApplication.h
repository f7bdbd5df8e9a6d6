#pragma once

#include <functional>

class QorEventLoop;

/// The running program: its event loop. There is at most one; while none exists, work that wants a
/// loop is done at once.
class QorApplication {
public:
    /// \p iLoop outlives the application.
    explicit QorApplication(QorEventLoop& iLoop);
    virtual ~QorApplication();
    QorApplication(const QorApplication&) = delete;
    QorApplication& operator=(const QorApplication&) = delete;

    /// The application, or null before it is made and after it is gone.
    [[nodiscard]] static QorApplication* MainApplication();

    [[nodiscard]] QorEventLoop& GetLoop() const { return loop; }

private:
    QorEventLoop& loop;
};

/// A program that shows something.
class QorInteractiveApplication : public QorApplication {
public:
    using QorApplication::QorApplication;

    /// What repaints the host's windows; none without a display.
    void SetDisplayUpdater(std::function<void()> iUpdater) { updater = std::move(iUpdater); }

    /// Repaints what is waiting to be repainted, now, and does nothing else: no input, no posted
    /// work, no destruction.
    void UpdateDisplay() const {
        if (updater)
            updater();
    }

private:
    std::function<void()> updater;
};
