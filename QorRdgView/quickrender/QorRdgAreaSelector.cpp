#include "quickrender/QorRdgAreaSelector.h"

#include <algorithm>
#include <cmath>
#include <utility>

QorImplementClass(QorRdgAreaSelectorBEGIN_AREAEvt, QorNotification)
QorImplementClass(QorRdgAreaSelectorEND_AREAEvt, QorNotification)
QorImplementClass(QorRdgAreaSelector, QorCommand)

namespace {

constexpr int overThePicture = 7;
constexpr float leastSide = 10.0F; ///< of a completed rectangle
constexpr float leastShown = 1.0F; ///< sides of this or less show no rectangle

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
    viewer->GetSupport()->GetCallbackManager()->AddCallback(
        this, QorGraphicWindow::GRAPHICWINDOW_RESIZE, &QorRdgAreaSelector::ResizedCB);
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
    if (QorSupport* support = viewer->GetSupport())
        support->GetCallbackManager()->RemoveCallbacks(this,
                                                       QorGraphicWindow::GRAPHICWINDOW_RESIZE);
    viewer->RemoveViewpoint(viewpoint);
    viewer->Draw();
    viewer = nullptr;
    empty = true;
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

float QorRdgAreaSelector::GetPixelRatio() const {
    return viewer->GetSupport()->GetPixelRatio();
}

void QorRdgAreaSelector::ShowRectangle() {
    rectangle.Show(area, GetExtents(), QorRdgAreaMarks::All, GetPixelRatio());
    PlaceHandles();
    SetHandlesPickable(true);
    viewer->Draw();
}

void QorRdgAreaSelector::Complete() {
    chosen = area;
    ShowRectangle();
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
        Complete();
    RemoveIndicator();
}

void QorRdgAreaSelector::ResetToViewer() {
    if (!IsAttached())
        return;
    area = GetExtents();
    empty = false;
    Complete();
    Dispatch(QorMake<QorRdgAreaSelectorEND_AREAEvt>());
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

void QorRdgAreaSelector::Dispatch(const QorVar<QorNotification>& iEvent) {
    const QorVar<QorBaseUnknown> alive(this);
    if (publisher != nullptr)
        publisher->DispatchCallbacks(iEvent->GetEventName(), this, iEvent);
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
    Dispatch(QorMake<QorRdgAreaSelectorBEGIN_AREAEvt>());
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
    rectangle.Show(area, extents, QorRdgAreaMarks::None, GetPixelRatio());
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
    Dispatch(QorMake<QorRdgAreaSelectorEND_AREAEvt>());
}

// ---- another size of the viewer

void QorRdgAreaSelector::ResizedCB(QorEventName /*iEvent*/,
                                   QorBaseUnknown* /*iPublisher*/,
                                   QorNotification* /*iNotification*/,
                                   QorSubscriberData /*iData*/,
                                   QorCallbackId /*iCookie*/) {
    // What is being drawn or dragged finds its place at the next step.
    if (!IsAttached() || empty || indicator != nullptr || IsHandleDragged())
        return;
    const QorRdgAreaCorners before = area;
    area = chosen;
    ClampToViewer();
    Order();
    EnforceMinimum();
    ShowRectangle();
    if (area != before)
        Dispatch(QorMake<QorRdgAreaSelectorEND_AREAEvt>());
}
