#pragma once

#include "platform/frame/QorApplicationFrame.h"

#include <QStatusBar>

#include <functional>

class QLabel;
class QProgressBar;
class QToolButton;

namespace qor::desktop {

/// The status bar: what the program says at the left, how far long work is in the middle, facts
/// about what is open at the right.
class StatusArea : public QStatusBar {
public:
    explicit StatusArea(QWidget* parent);

    /// Called when a person gives the work up.
    std::function<void()> onCancel;

    void show(const QorApplicationFrame& frame);

private:
    void show(const std::optional<QorApplicationFrame::Progress>& progress);

    QLabel* status_;
    QLabel* work_;
    QProgressBar* bar_;
    QToolButton* cancel_;
    QLabel* facts_;
};

} // namespace qor::desktop
