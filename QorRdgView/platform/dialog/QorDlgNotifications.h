#pragma once

#include "platform/component/QorNotification.h"

/// What widgets send. Each widget owns its notification objects; their class is the event.
QorDeclareNotification(QorDlgDiaOKNotification);
QorDeclareNotification(QorDlgDiaCANCELNotification);
QorDeclareNotification(QorDlgDiaAPPLYNotification);
QorDeclareNotification(QorDlgWindCloseNotification);
QorDeclareNotification(QorDlgWindSizeNotification);
QorDeclareNotification(QorDlgPushBActivateNotification);
QorDeclareNotification(QorDlgChkBModifyNotification);
QorDeclareNotification(QorDlgChkBDoubleClickNotification);
QorDeclareNotification(QorDlgRadBModifyNotification);
QorDeclareNotification(QorDlgEditModifyNotification);
QorDeclareNotification(QorDlgComboSelectNotification);
QorDeclareNotification(QorDlgComboModifyNotification); ///< text typed into an editable combo
QorDeclareNotification(QorDlgSpinnerModifyNotification);
QorDeclareNotification(QorDlgSliderModifyNotification);
QorDeclareNotification(QorDlgSliderDragNotification);
QorDeclareNotification(QorDlgScrollBarModifyNotification);
QorDeclareNotification(QorDlgScrollBarDragNotification);
QorDeclareNotification(QorDlgListSelectNotification);
QorDeclareNotification(QorDlgListActivateNotification);
QorDeclareNotification(QorDlgFileSelectionOKNotification);
QorDeclareNotification(QorDlgFileSelectionCancelNotification);
QorDeclareNotification(QorDlgColorOKNotification);
QorDeclareNotification(QorDlgColorCancelNotification);

/// A notification that lives inside the widget that sends it; counted, but destroyed with the
/// widget.
template <class Notification>
class QorOwnNotification {
public:
    QorOwnNotification() : notification(new Notification) {}

    ~QorOwnNotification() { notification->Release(); }

    QorOwnNotification(const QorOwnNotification&) = delete;
    QorOwnNotification& operator=(const QorOwnNotification&) = delete;

    [[nodiscard]] Notification* Get() const { return notification; }

private:
    Notification* notification;
};
