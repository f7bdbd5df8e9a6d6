// The area selector's nine handles: where they lie, how they are found, and what dragging them
// does.
#include "quickrender/QorRdgAreaSelector.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr std::size_t handleCount = 9;

/// What a handle moves, where it lies (0 at the lower corner, 1 at the upper) and how it is found.
struct Handle {
    const char* name;
    bool movesX1, movesY1, movesX2, movesY2;
    double x, y;
    int priority; ///< on small rectangles corners win over edges, edges over the centre
    QorCursor cursor;
};

constexpr std::array<Handle, handleCount> handleTable{{
    {"manipulator1", true, false, false, false, 0.0, 0.5, 1, QorCursor::SizeHorizontal},
    {"manipulator2", false, false, false, true, 0.5, 1.0, 1, QorCursor::SizeVertical},
    {"manipulator3", false, false, true, false, 1.0, 0.5, 1, QorCursor::SizeHorizontal},
    {"manipulator4", false, true, false, false, 0.5, 0.0, 1, QorCursor::SizeVertical},
    {"manipulator5", true, true, true, true, 0.5, 0.5, 0, QorCursor::Move},
    {"manipulator6", true, true, false, false, 0.0, 0.0, 2, QorCursor::SizeRising},
    {"manipulator7", false, true, true, false, 1.0, 0.0, 2, QorCursor::SizeFalling},
    {"manipulator8", false, false, true, true, 1.0, 1.0, 2, QorCursor::SizeRising},
    {"manipulator9", true, false, false, true, 0.0, 1.0, 2, QorCursor::SizeFalling},
}};

/// A handle's number, as it travels with its notifications.
QorSubscriberData AsData(std::size_t iHandle) {
    return reinterpret_cast<QorSubscriberData>(static_cast<std::uintptr_t>(iHandle)); // NOLINT
}

std::size_t AsHandle(QorSubscriberData iData) {
    return static_cast<std::size_t>(reinterpret_cast<std::uintptr_t>(iData)); // NOLINT
}

} // namespace

void QorRdgAreaSelector::MakeHandles() {
    for (std::size_t i = 0; i < handleCount; ++i) {
        auto* handle = new Qor2DManipulator(this, handleTable[i].name, viewer, viewpoint);
        handle->SetPickPriority(handleTable[i].priority);
        handle->SetCursor(handleTable[i].cursor);
        handle->SetPickable(false);
        AddAnalyseNotificationCB(this, handle, handle->GetBeginManipulate(),
                                 &QorRdgAreaSelector::HandleBeginCB, AsData(i));
        AddAnalyseNotificationCB(this, handle, handle->GetManipulate(),
                                 &QorRdgAreaSelector::HandleMoveCB, AsData(i));
        AddAnalyseNotificationCB(this, handle, handle->GetEndManipulate(),
                                 &QorRdgAreaSelector::HandleEndCB, AsData(i));
        AddAnalyseNotificationCB(this, handle, handle->GetEdit(), &QorRdgAreaSelector::HandleEditCB,
                                 AsData(i));
        handles[i] = handle;
    }
}

void QorRdgAreaSelector::PlaceHandles() {
    const auto width = static_cast<double>(area.x2 - area.x1);
    const auto height = static_cast<double>(area.y2 - area.y1);
    for (std::size_t i = 0; i < handleCount; ++i) {
        const Handle& row = handleTable[i];
        handles[i]->SetOrigin({static_cast<double>(area.x1) + row.x * width,
                               static_cast<double>(area.y1) + row.y * height});
        const bool isUpright = row.cursor == QorCursor::SizeHorizontal;
        const bool isLevel = row.cursor == QorCursor::SizeVertical;
        handles[i]->SetReach({isLevel ? 0.5 * width : 0.0, isUpright ? 0.5 * height : 0.0});
    }
}

void QorRdgAreaSelector::SetHandlesPickable(bool iPickable) {
    for (Qor2DManipulator* handle : handles)
        handle->SetPickable(iPickable);
}

bool QorRdgAreaSelector::IsHandleDragged() const {
    return std::any_of(handles.begin(), handles.end(),
                       [](const Qor2DManipulator* iHandle) { return iHandle->IsDragging(); });
}

void QorRdgAreaSelector::ApplyHandle(std::size_t iHandle, const QorMathPoint2D& iMove) {
    const Handle& handle = handleTable[iHandle];
    const auto dx = static_cast<float>(iMove.x);
    const auto dy = static_cast<float>(iMove.y);
    if (handle.movesX1)
        area.x1 += dx;
    if (handle.movesY1)
        area.y1 += dy;
    if (handle.movesX2)
        area.x2 += dx;
    if (handle.movesY2)
        area.y2 += dy;
}

void QorRdgAreaSelector::HandleBeginCB(QorCommand* /*iCommand*/,
                                       QorNotification* /*iNotification*/,
                                       QorSubscriberData iData) {
    if (!IsAttached())
        return;
    rectangle.Hide();
    viewer->Draw();
    last = current = handles[AsHandle(iData)]->GetOrigin();
}

void QorRdgAreaSelector::HandleMoveCB(QorCommand* /*iCommand*/,
                                      QorNotification* /*iNotification*/,
                                      QorSubscriberData iData) {
    if (!IsAttached())
        return;
    const std::size_t handle = AsHandle(iData);
    current = handles[handle]->GetOrigin();
    ApplyHandle(handle, current - last);
    ClampToViewer();
    last = current;
    rectangle.Show(area, GetExtents(), QorRdgAreaMarks::None, GetPixelRatio());
    viewer->Draw();
}

void QorRdgAreaSelector::HandleEndCB(QorCommand* /*iCommand*/,
                                     QorNotification* /*iNotification*/,
                                     QorSubscriberData iData) {
    if (!IsAttached())
        return;
    const std::size_t handle = AsHandle(iData);
    ApplyHandle(handle, handles[handle]->GetOrigin() - last);
    ClampToViewer();
    Order();
    EnforceMinimum();
    Complete();
    Dispatch(QorMake<QorRdgAreaSelectorEND_AREAEvt>());
}

void QorRdgAreaSelector::HandleEditCB(QorCommand* /*iCommand*/,
                                      QorNotification* /*iNotification*/,
                                      QorSubscriberData /*iData*/) {
    ResetToViewer();
}
