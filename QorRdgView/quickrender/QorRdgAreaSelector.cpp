#include "quickrender/QorRdgAreaSelector.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

QorImplementClass(QorRdgAreaSelectorBEGIN_AREAEvt, QorNotification)
QorImplementClass(QorRdgAreaSelectorEND_AREAEvt, QorNotification)
QorImplementClass(QorRdgAreaSelector, QorCommand)

namespace {

constexpr int overThePicture = 7;
constexpr float leastSide = 10.0F; ///< of a completed rectangle
constexpr float leastShown = 1.0F; ///< sides of this or less show no rectangle
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

/// A pixel that the sums of a drag miss by rounding errors counts as met; they stay far below this.
int Truncate(double iPixel) {
    constexpr double hardlyAny = 1.0 / 1024.0;
    const double nearest = std::round(iPixel);
    return static_cast<int>(std::abs(iPixel - nearest) < hardlyAny ? nearest : iPixel);
}

} // namespace

QorRdgAreaSelector::QorRdgAreaSelector(QorViewer* iViewer, QorCallbackManager* iPublisher)
    : QorCommand(nullptr, "areaSelector")
    , publisher(iPublisher)
    , viewer(iViewer)
    , viewpoint(QorMake<Qor2DViewpoint>(
          QorMathPoint2D{}, 1.0 / static_cast<double>(iViewer->GetSupport()->GetMMInSupportUnit())))
    , rectangle(*viewpoint) {
    viewpoint->SetPriority(overThePicture);
    viewer->AddViewpoint(viewpoint);
    MakeHandles();
}

QorRdgAreaSelector::~QorRdgAreaSelector() {
    CleanUp();
}

void QorRdgAreaSelector::CleanUp() {
    if (!IsAttached())
        return;
    RemoveIndicator();
    rectangle.Hide();
    for (Qor2DManipulator*& handle : handles)
        if (Qor2DManipulator* gone = std::exchange(handle, nullptr))
            gone->Detach();
    viewer->RemoveViewpoint(viewpoint);
    viewer->Draw();
    viewer = nullptr;
    empty = true;
}

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

// ---- the rectangle

QorRdgAreaCorners QorRdgAreaSelector::GetExtents() const {
    float width = 0.0F;
    float height = 0.0F;
    viewer->GetGraphicSize(width, height);
    const float unit = viewer->GetSupport()->GetMMInSupportUnit();
    const QorMathPoint2D first = viewpoint->PixelToModel({0.0, 0.0}, width, height, unit);
    const QorMathPoint2D second = viewpoint->PixelToModel(
        {static_cast<double>(width), static_cast<double>(height)}, width, height, unit);
    const auto [left, right] = std::minmax(first.x, second.x);
    const auto [bottom, top] = std::minmax(first.y, second.y);
    return {static_cast<float>(left), static_cast<float>(bottom), static_cast<float>(right),
            static_cast<float>(top)};
}

void QorRdgAreaSelector::ClampToViewer() {
    const QorRdgAreaCorners extents = GetExtents();
    area.x1 = std::clamp(area.x1, extents.x1, extents.x2);
    area.x2 = std::clamp(area.x2, extents.x1, extents.x2);
    area.y1 = std::clamp(area.y1, extents.y1, extents.y2);
    area.y2 = std::clamp(area.y2, extents.y1, extents.y2);
}

void QorRdgAreaSelector::Order() {
    if (area.x1 > area.x2)
        std::swap(area.x1, area.x2);
    if (area.y1 > area.y2)
        std::swap(area.y1, area.y2);
}

/// The upper corner is pushed, never the lower one, and at the viewer's edge beyond it: that is
/// meant.
void QorRdgAreaSelector::EnforceMinimum() {
    if (area.x2 - area.x1 < leastSide)
        area.x2 = area.x1 + leastSide;
    if (area.y2 - area.y1 < leastSide)
        area.y2 = area.y1 + leastSide;
}

void QorRdgAreaSelector::PlaceHandles() {
    for (std::size_t i = 0; i < handleCount; ++i) {
        const auto width = static_cast<double>(area.x2 - area.x1);
        const auto height = static_cast<double>(area.y2 - area.y1);
        handles[i]->SetOrigin({static_cast<double>(area.x1) + handleTable[i].x * width,
                               static_cast<double>(area.y1) + handleTable[i].y * height});
    }
}

void QorRdgAreaSelector::SetHandlesPickable(bool iPickable) {
    for (Qor2DManipulator* handle : handles)
        handle->SetPickable(iPickable);
}

void QorRdgAreaSelector::ShowRectangle() {
    rectangle.Show(area, GetExtents(), true);
    PlaceHandles();
    SetHandlesPickable(true);
    viewer->Draw();
}

void QorRdgAreaSelector::HideRectangle() {
    rectangle.Hide();
    SetHandlesPickable(false);
    viewer->Draw();
}

void QorRdgAreaSelector::Finish() {
    empty = !(area.x2 - area.x1 > leastShown && area.y2 - area.y1 > leastShown);
    if (empty)
        HideRectangle();
    else
        ShowRectangle();
    RemoveIndicator();
}

void QorRdgAreaSelector::ResetToViewer() {
    if (!IsAttached())
        return;
    area = GetExtents();
    empty = false;
    ShowRectangle();
    Dispatch<QorRdgAreaSelectorEND_AREAEvt>();
}

void QorRdgAreaSelector::SetArea(int iX1, int iY1, int iX2, int iY2) {
    if (!IsAttached())
        return;
    float width = 0.0F;
    float height = 0.0F;
    viewer->GetGraphicSize(width, height);
    const float unit = viewer->GetSupport()->GetMMInSupportUnit();
    const auto model = [&](int iX, int iY) {
        const double fromTop = Truncate(static_cast<double>(height) - iY);
        return viewpoint->PixelToModel({static_cast<double>(iX), fromTop}, width, height, unit);
    };
    const QorMathPoint2D first = model(iX1, iY1);
    const QorMathPoint2D second = model(iX2, iY2);
    area = {static_cast<float>(first.x), static_cast<float>(first.y), static_cast<float>(second.x),
            static_cast<float>(second.y)};
    Finish();
}

bool QorRdgAreaSelector::GetArea(int& oX1, int& oY1, int& oX2, int& oY2) const {
    if (!IsAttached() || area == QorRdgAreaCorners{})
        return false;
    float width = 0.0F;
    float height = 0.0F;
    viewer->GetGraphicSize(width, height);
    const float unit = viewer->GetSupport()->GetMMInSupportUnit();
    const auto pixel = [&](float iX, float iY, int& oX, int& oY) {
        const QorMathPoint2D point = viewpoint->ModelToPixel(
            {static_cast<double>(iX), static_cast<double>(iY)}, width, height, unit);
        oX = Truncate(point.x);
        oY = Truncate(static_cast<double>(height) - point.y);
    };
    pixel(area.x1, area.y1, oX1, oY1);
    pixel(area.x2, area.y2, oX2, oY2);
    return true;
}

template <class Event>
void QorRdgAreaSelector::Dispatch() {
    const QorVar<QorBaseUnknown> alive(this);
    if (publisher != nullptr)
        publisher->DispatchCallbacks(Event::ClassName(), this, QorMake<Event>());
}

// ---- drawing a new one

void QorRdgAreaSelector::StartDrawing() {
    if (!IsAttached())
        return;
    if (rectangle.IsShown())
        HideRectangle();
    if (indicator != nullptr)
        return;
    indicator = new Qor2DIndicator(this, "areaSelector", viewer, viewpoint);
    indicator->SetCursor(QorCursor::Cross);
    previousIndicator = viewer->GetForegroundIndicator();
    viewer->SetForegroundIndicator(indicator);
    AddAnalyseNotificationCB(this, indicator, indicator->GetBeginManipulate(),
                             &QorRdgAreaSelector::DrawBeginCB);
    AddAnalyseNotificationCB(this, indicator, indicator->GetManipulate(),
                             &QorRdgAreaSelector::DrawMoveCB);
    AddAnalyseNotificationCB(this, indicator, indicator->GetEndManipulate(),
                             &QorRdgAreaSelector::DrawEndCB);
}

void QorRdgAreaSelector::RemoveIndicator() {
    Qor2DIndicator* gone = std::exchange(indicator, nullptr);
    if (gone == nullptr)
        return;
    for (QorNotification* notification :
         {gone->GetBeginManipulate(), gone->GetManipulate(), gone->GetEndManipulate()})
        gone->GetCallbackManager()->RemoveCallbacks(this, notification->GetEventName());
    viewer->SetForegroundIndicator(std::exchange(previousIndicator, nullptr));
    gone->Detach();
    gone->RequestDelayedDestruction();
}

void QorRdgAreaSelector::DrawBeginCB(QorCommand* /*iCommand*/,
                                     QorNotification* /*iNotification*/,
                                     QorSubscriberData /*iData*/) {
    if (!IsAttached() || indicator == nullptr)
        return;
    Dispatch<QorRdgAreaSelectorBEGIN_AREAEvt>();
    if (!IsAttached() || indicator == nullptr)
        return; // whoever heard of it has ended the drawing
    if (!empty)
        HideRectangle();
    const QorMathPoint2D& point = indicator->GetCurrentPoint();
    area.x1 = area.x2 = static_cast<float>(point.x);
    area.y1 = area.y2 = static_cast<float>(point.y);
    empty = false;
}

void QorRdgAreaSelector::DrawMoveCB(QorCommand* /*iCommand*/,
                                    QorNotification* /*iNotification*/,
                                    QorSubscriberData /*iData*/) {
    if (!IsAttached() || indicator == nullptr)
        return;
    const QorRdgAreaCorners extents = GetExtents();
    const QorMathPoint2D& point = indicator->GetCurrentPoint();
    const float x = std::clamp(static_cast<float>(point.x), extents.x1, extents.x2);
    const float y = std::clamp(static_cast<float>(point.y), extents.y1, extents.y2);
    if (x == area.x2 && y == area.y2)
        return;
    area.x2 = x;
    area.y2 = y;
    rectangle.Show(area, extents, false);
    viewer->Draw();
}

void QorRdgAreaSelector::DrawEndCB(QorCommand* /*iCommand*/,
                                   QorNotification* /*iNotification*/,
                                   QorSubscriberData /*iData*/) {
    if (!IsAttached())
        return;
    rectangle.Hide();
    const QorRdgAreaCorners extents = GetExtents();
    area.x2 = std::clamp(area.x2, extents.x1, extents.x2);
    area.y2 = std::clamp(area.y2, extents.y1, extents.y2);
    Order();
    EnforceMinimum();
    Finish();
    Dispatch<QorRdgAreaSelectorEND_AREAEvt>();
}

// ---- editing with the handles

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
    rectangle.Show(area, GetExtents(), false);
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
    ShowRectangle();
    Dispatch<QorRdgAreaSelectorEND_AREAEvt>();
}

void QorRdgAreaSelector::HandleEditCB(QorCommand* /*iCommand*/,
                                      QorNotification* /*iNotification*/,
                                      QorSubscriberData /*iData*/) {
    ResetToViewer();
}
