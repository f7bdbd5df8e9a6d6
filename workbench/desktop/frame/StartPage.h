#pragma once

#include "platform/component/QorCallbackManager.h"

#include <QWidget>

#include <vector>

class QLabel;
class QPushButton;

namespace qor::desktop {

/// What an empty document shows: how to begin, and the files of the last days. Its buttons are the
/// commands "Open" and "RecentFile1" to "RecentFile5", as far as these are there.
class StartPage
    : public QWidget
    , public QorEventSubscriber {
public:
    explicit StartPage(QWidget* parent);

    /// Reads the commands anew.
    void refresh();

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void modified(QorEventName event,
                  QorBaseUnknown* publisher,
                  QorNotification* notification,
                  QorSubscriberData data,
                  QorCallbackId cookie);
    void drawMark();

    QLabel* mark_;
    QLabel* recentTitle_;
    QPushButton* open_;
    std::vector<QPushButton*> recent_;
};

} // namespace qor::desktop
