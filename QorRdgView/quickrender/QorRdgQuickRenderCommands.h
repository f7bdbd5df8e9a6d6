#pragma once

#include "platform/frame/QorCommandHeader.h"

/// The command "EasyRender": checked while the quick render's tool bar is open. A tool bar that was
/// opened when there was nothing to render is made anew for the first viewer that comes.
class QorRdgEasyRenderHeader : public QorCheckHeader {
    QorDeclareClass(QorRdgEasyRenderHeader)

    /// Follows the current layout, if there is one already.
    explicit QorRdgEasyRenderHeader(QorCommand* iFather, const QorString& iName = "EasyRender");

    /// Opens the tool bar, or closes it. E_FAIL without an application frame.
    QorResult StartCommand() override;
    QorResult EndCommand() override;

protected:
    ~QorRdgEasyRenderHeader() override;

private:
    void ViewerCB(QorEventName iEvent,
                  QorBaseUnknown* iPublisher,
                  QorNotification* iNotification,
                  QorSubscriberData iData,
                  QorCallbackId iCookie);
    void Reopen();
};

/// The command "Ground": shows or hides the ground of the current 3D viewer, and is checked while
/// there is one, whoever has put it there. Unavailable without such a viewer.
class QorRdgGroundHeader : public QorCheckHeader {
    QorDeclareClass(QorRdgGroundHeader)

    explicit QorRdgGroundHeader(QorCommand* iFather, const QorString& iName = "Ground");

    QorResult StartCommand() override;
    QorResult EndCommand() override;

protected:
    ~QorRdgGroundHeader() override;

private:
    void ViewerCB(QorEventName iEvent,
                  QorBaseUnknown* iPublisher,
                  QorNotification* iNotification,
                  QorSubscriberData iData,
                  QorCallbackId iCookie);
    void Follow();
};

/// The command "Lighting": runs while somebody has taken over the lights of the current 3D viewer,
/// the quick render for one. Available while there is such a viewer and nobody has.
class QorRdgLightingHeader : public QorCommandHeader {
    QorDeclareClass(QorRdgLightingHeader)

    explicit QorRdgLightingHeader(QorCommand* iFather, const QorString& iName = "Lighting");

    QorResult StartCommand() override;
    QorResult EndCommand() override;

protected:
    ~QorRdgLightingHeader() override;

private:
    void ViewerCB(QorEventName iEvent,
                  QorBaseUnknown* iPublisher,
                  QorNotification* iNotification,
                  QorSubscriberData iData,
                  QorCallbackId iCookie);
    void Follow();

    bool taken = false;
};

/// Makes the three headers, as children of \p iFather. Call it once there is a layout.
void QorAddQuickRenderCommands(QorCommand* iFather);
