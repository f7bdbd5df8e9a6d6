#pragma once

#include "platform/frame/QorFrmLayout.h"

#include <QWidget>

class QStackedWidget;
class QTabBar;

namespace qor::desktop {

class StartPage;

/// The middle of the main window: the document windows, one in front, tabs for them when there are
/// several, and the start page as long as there is nothing to look at.
class DocumentArea
    : public QWidget
    , public QorEventSubscriber {
public:
    explicit DocumentArea(QWidget* parent);

    /// Shows the windows of the current layout as they are now. The controls of new ones become
    /// pages here.
    void refresh();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void listen();
    void changed(QorEventName event,
                 QorBaseUnknown* publisher,
                 QorNotification* notification,
                 QorSubscriberData data,
                 QorCallbackId cookie);
    void addPages(const QorFrmLayout* layout);
    void drawTabs(const QorFrmLayout* layout);
    void placeStartPage();

    QTabBar* tabs_;
    QStackedWidget* pages_;
    StartPage* startPage_;
};

} // namespace qor::desktop
