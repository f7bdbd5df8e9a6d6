// How an icon list lays its icons out and scrolls.
#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/system/QorTrace.h"
#include "platform/vis/QorViewer.h"
#include "scenes/QorRdgIconList.h"
#include "scenes/QorRdgIconReps.h"

#include <algorithm>
#include <utility>

namespace {

/// Range of the scroll bar for so many rows. It is meant not to be the height of the rows.
int RangeOf(int iRows) {
    return iRows * 27 + 828;
}

/// Upper edge of the visible window at a position of the scroll bar.
double TopAt(long long iPosition, int iMin, int iMax, int iBox) {
    const long long range = static_cast<long long>(iMax) - iMin;
    return -static_cast<double>(range * iPosition / iBox);
}

} // namespace

void QorRdgIconList::GetViewSize(double& oWidth, double& oHeight) const {
    float width = 0.0F;
    float height = 0.0F;
    viewer->GetGraphicSize(width, height);
    const auto ratio = static_cast<double>(viewer->GetSupport()->GetPixelRatio());
    oWidth = static_cast<double>(width) / ratio;
    oHeight = static_cast<double>(height) / ratio;
}

void QorRdgIconList::SetTop(double iTop, bool iInternal) {
    double width = 0.0;
    double height = 0.0;
    GetViewSize(width, height);
    top = iTop;
    const bool before = std::exchange(internalUpdate, iInternal);
    viewer->SetViewBox(0.0, width, iTop - height, iTop);
    internalUpdate = before;
}

void QorRdgIconList::ResizeCB(QorEventName /*iEvent*/,
                              QorBaseUnknown* /*iPublisher*/,
                              QorNotification* /*iNotification*/,
                              QorSubscriberData /*iData*/,
                              QorCallbackId /*iCookie*/) {
    Relayout();
}

void QorRdgIconList::Relayout() {
    QorTrace(4, "(QorRdgIconList::Relayout) \n");
    if (!root)
        return;
    double width = 0.0;
    double height = 0.0;
    GetViewSize(width, height);
    UpdateColumns(width);
    UpdateScrollBar(height);
    // A viewpoint keeps its centre when the viewer is resized; the list keeps its upper left
    // corner, and the scroll bar follows.
    SetTop(top, top == 0.0);
}

void QorRdgIconList::UpdateColumns(double iWidth) {
    constexpr double gap = 30.0;
    const auto fitting =
        static_cast<int>((iWidth - QorRdgIconReps::margin + gap) / QorRdgIconReps::cellWidth);
    const int wanted = fitting > 0 ? fitting : 1; // a viewer too narrow for one shows one cut
    if (wanted == columns)
        return;
    columns = wanted;
    PlaceIcons(0);
    SetTop(0.0, true);
    if (selected >= 0)
        Select(selected, QorDlgNoNotify);
}

void QorRdgIconList::UpdateScrollBar(double iHeight) {
    const int rows = (IconCount() + columns - 1) / columns;
    if (rows == 0) {
        scrollbar->SetVisibility(QorDlgHIDE);
        return;
    }
    scrollbar->SetScrollRange(0, RangeOf(rows));
    scrollbar->SetScrollBoxSize(static_cast<int>(iHeight));
    scrollbar->SetScrollPos(0);
    scrollbar->SetVisibility(iHeight < RangeOf(rows) ? QorDlgSHOW : QorDlgHIDE);
}

void QorRdgIconList::ScrollCB(QorCommand* /*iSender*/,
                              QorNotification* /*iNotification*/,
                              QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgIconList::ScrollCB) \n");
    const int box = scrollbar->GetScrollBoxSize();
    if (box == 0 || viewer == nullptr)
        return;
    int min = 0;
    int max = 0;
    scrollbar->GetScrollRange(min, max);
    const int position = std::clamp(scrollbar->GetScrollPos(), 0, std::max(max - box, 0));
    scrollbar->SetScrollPos(position);
    SetTop(TopAt(position, min, max, box), true);
}

void QorRdgIconList::ViewpointModifiedCB(QorEventName /*iEvent*/,
                                         QorBaseUnknown* /*iPublisher*/,
                                         QorNotification* /*iNotification*/,
                                         QorSubscriberData /*iData*/,
                                         QorCallbackId /*iCookie*/) {
    QorTrace(5, "(QorRdgIconList::ViewpointModifiedCB) \n");
    if (internalUpdate)
        return;
    double left = 0.0;
    double right = 0.0;
    double bottom = 0.0;
    viewer->GetViewBox(left, right, bottom, top);
    int min = 0;
    int max = 0;
    scrollbar->GetScrollRange(min, max);
    const int box = scrollbar->GetScrollBoxSize();
    if (box == 0 || max <= min)
        return;
    auto position = static_cast<long long>(-(box * top) / (static_cast<double>(max) - min));
    if (position > max - box) {
        position = max - box;
        SetTop(TopAt(position, min, max, box), true);
    }
    if (position < 0) {
        position = 0;
        SetTop(0.0, true);
    }
    scrollbar->SetScrollPos(static_cast<int>(position));
}

int QorRdgIconList::ScrollToRow(int iRow) {
    QorTrace(4, "(QorRdgIconList::ScrollToRow) iRow=%d\n", iRow);
    if (viewer == nullptr || iRow <= 0 || iRow > IconCount() / columns)
        return 0;
    SetTop(-static_cast<double>(iRow) * QorRdgIconReps::cellHeight - QorRdgIconReps::margin, false);
    return 1;
}
