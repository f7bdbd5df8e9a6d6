#pragma once

#include "platform/engine/QorIRdgDisplay.h"
#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/vis/QorViewer.h"
#include "quickrender/QorRdgViewerAdapters.h"
#include "tests/support/QorTestApplication.h"

/// A document window with a 3D viewer of 400 by 300 pixels that answers the rendering interfaces.
class ViewerAdapterTest
    : public QorTestApplication
    , public QorEventSubscriber {
public:
    void EventCB(
        QorEventName iEvent, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
        events.push_back(iEvent.GetText());
    }

protected:
    static constexpr float width = 400.0F;
    static constexpr float height = 300.0F;

    ViewerAdapterTest() {
        QorRegisterViewerAdapters();
        layout = new QorFrmLayout(nullptr, "layout");
        editor = new QorFrmEditor(layout, "editor", nullptr);
        window = new QorFrmWindow(layout, "window", editor);
        viewer = new Qor3DViewer(window, "viewer", QorDlgDefaultStyle, width, height);
        viewer->GetMain3DViewpoint()->SetView({0, -10, 0}, {0, 0, 0}, {0, 0, 1});
        window->SetViewer(viewer);
        layout->SetCurrentWindow(window);
    }

    void TearDown() override {
        if (layout != nullptr)
            layout->RequestDelayedDestruction();
        QorTestApplication::TearDown();
    }

    static QorMouseEvent Mouse(QorMouseEvent::Action iAction, double iX, double iY) {
        QorMouseEvent event;
        event.action = iAction;
        event.button = QorMouseEvent::Button::Left;
        event.pixel = {iX, iY};
        return event;
    }

    /// Pixels from the top left.
    void Drag(double iX1, double iY1, double iX2, double iY2) {
        viewer->HandleMouse(Mouse(QorMouseEvent::Action::Press, iX1, iY1));
        viewer->HandleMouse(
            Mouse(QorMouseEvent::Action::Move, 0.5 * (iX1 + iX2), 0.5 * (iY1 + iY2)));
        viewer->HandleMouse(Mouse(QorMouseEvent::Action::Move, iX2, iY2));
        viewer->HandleMouse(Mouse(QorMouseEvent::Action::Release, iX2, iY2));
        loop.RunPosted();
    }

    void AddBox(const QorMathPoint& iLow, const QorMathPoint& iHigh) {
        QorMesh::Data data;
        for (const double x : {iLow.x, iHigh.x})
            for (const double y : {iLow.y, iHigh.y})
                for (const double z : {iLow.z, iHigh.z})
                    data.positions.insert(
                        data.positions.end(),
                        {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)});
        data.indices = {0, 1, 2, 1, 3, 2, 4, 5, 6, 5, 7, 6};
        const QorMesh_var mesh = QorMake<QorMesh>(data);
        viewer->AddRep(QorMake<Qor3DMeshRep>(mesh.Get(), nullptr));
    }

    QorFrmLayout* layout;
    QorFrmEditor* editor;
    QorFrmWindow* window;
    Qor3DViewer* viewer;
    std::vector<std::string> events;
};

/// A grey picture.
inline QorPixelImage_var MakeGrey(int iWidth, int iHeight) {
    const auto size = static_cast<std::size_t>(iWidth) * static_cast<std::size_t>(iHeight) * 3;
    return QorMake<QorPixelImage>(
        iWidth, iHeight, 3, std::make_shared<const QorPixelImage::Pixels>(size, std::uint8_t(99)));
}
