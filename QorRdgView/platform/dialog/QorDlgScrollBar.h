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

    /// The position is brought into the range. Ends the wrong way round are ignored.
    void SetScrollRange(int iMin, int iMax);
    void GetScrollRange(int& oMin, int& oMax) const;
    void SetScrollBoxSize(int iSize);

    [[nodiscard]] int GetScrollBoxSize() const { return boxSize; }

    /// Kept inside the range (not cut by the box: that is its user's business). May be called
    /// inside a drag notification too; the modify at the release comes all the same.
    void SetScrollPos(int iPosition);

    [[nodiscard]] int GetScrollPos() const { return position; }

    /// A person drags the box: drag, when it is a change.
    QorUserResult UserDrag(int iPosition);
    /// A person has moved it and let go: drag when it is a change, then modify when the position
    /// differs from the last one that was modified.
    QorUserResult UserSetPosition(int iPosition);

protected:
    ~QorDlgScrollBar() override = default;

private:
    bool Move(int iPosition);
    void Drag(int iPosition);

    int min = 0;
    int max = 0;
    int boxSize = 0;
    int position = 0;
    int settled = 0;       ///< the position of the last modify, or set by program
    bool dragging = false; ///< inside a drag notification
    QorOwnNotification<QorDlgScrollBarModifyNotification> modify;
    QorOwnNotification<QorDlgScrollBarDragNotification> drag;
};
