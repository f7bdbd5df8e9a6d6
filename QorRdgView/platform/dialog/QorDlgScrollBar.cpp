#include "platform/dialog/QorDlgScrollBar.h"

#include <algorithm>
#include <utility>

QorImplementClass(QorDlgScrollBar, QorDialog)

QorDlgScrollBar::QorDlgScrollBar(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {}

QorOrientation QorDlgScrollBar::GetOrientation() const {
    return (GetStyle() & QorDlgVertical) != 0 ? QorOrientation::Vertical
                                              : QorOrientation::Horizontal;
}

void QorDlgScrollBar::SetScrollRange(int iMin, int iMax) {
    if (iMax < iMin)
        return;
    min = iMin;
    max = iMax;
    position = std::clamp(position, min, max);
    settled = std::clamp(settled, min, max);
    Changed(QorAspectRange | QorAspectValue);
}

void QorDlgScrollBar::GetScrollRange(int& oMin, int& oMax) const {
    oMin = min;
    oMax = max;
}

void QorDlgScrollBar::SetScrollBoxSize(int iSize) {
    boxSize = std::max(iSize, 0);
    Changed(QorAspectRange);
}

bool QorDlgScrollBar::Move(int iPosition) {
    const int wanted = std::clamp(iPosition, min, max);
    if (wanted == position)
        return false;
    position = wanted;
    Changed(QorAspectValue);
    return true;
}

void QorDlgScrollBar::Drag(int iPosition) {
    if (!Move(iPosition))
        return;
    const bool outer = std::exchange(dragging, true);
    Notify(drag.Get());
    dragging = outer;
}

void QorDlgScrollBar::SetScrollPos(int iPosition) {
    Move(iPosition);
    if (!dragging) // a position set while a person drags is still theirs to modify
        settled = position;
}

QorUserResult QorDlgScrollBar::UserDrag(int iPosition) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    const QorVar<QorDialog> alive(this);
    Drag(iPosition);
    return QorUserResult::Done;
}

QorUserResult QorDlgScrollBar::UserSetPosition(int iPosition) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    const QorVar<QorDialog> alive(this);
    Drag(iPosition);
    if (position != settled) {
        settled = position;
        Notify(modify.Get());
    }
    return QorUserResult::Done;
}
