#pragma once

#include "platform/dialog/QorDialog.h"
#include "platform/dialog/QorDlgNotifications.h"

/// A scroll bar over a range of integers; the box covers GetScrollBoxSize of them from the position
/// on.
class QorDlgScrollBar : public QorDialog {
    QorDeclareClass(QorDlgScrollBar)

        QorDlgScrollBar(QorCommand* iFather,
                        const QorString& iName,
                        QorDlgStyle iStyle = QorDlgVertical);

    [[nodiscard]] const char* GetKind() const override { return "scroll bar"; }

    [[nodiscard]] QorOrientation GetOrientation() const;

    [[nodiscard]] QorNotification* GetScrollBarModifyNotification() const { return modify.Get(); }

    [[nodiscard]] QorNotification* GetScrollBarDragNotification() const { return drag.Get(); }

    void SetScrollRange(int iMin, int iMax);
    void GetScrollRange(int& oMin, int& oMax) const;
    void SetScrollBoxSize(int iSize);

    [[nodiscard]] int GetScrollBoxSize() const { return boxSize; }

    /// Kept inside the range (not cut by the box: that is its user's business).
    void SetScrollPos(int iPosition);

    [[nodiscard]] int GetScrollPos() const { return position; }

    /// A person drags the box: drag, when it is a change.
    QorUserResult UserDrag(int iPosition);
    /// A person has moved it: drag when it is a change, then modify.
    QorUserResult UserSetPosition(int iPosition);

protected:
    ~QorDlgScrollBar() override = default;

private:
    int min = 0;
    int max = 0;
    int boxSize = 0;
    int position = 0;
    int settled = 0;
    QorOwnNotification<QorDlgScrollBarModifyNotification> modify;
    QorOwnNotification<QorDlgScrollBarDragNotification> drag;
};
