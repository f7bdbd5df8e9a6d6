#include "workbench/desktop/viewer/ViewerPeer.h"

#include "platform/vis/QorNavigation3DViewer.h"
#include "workbench/desktop/peers/ContainerPeer.h"
#include "workbench/desktop/viewer/ViewerInput.h"

#include <cmath>
#include <utility>

namespace qor::desktop {

namespace {

QSize sizeOf(const QorViewer& viewer) {
    float width = 0.0F;
    float height = 0.0F;
    viewer.GetGraphicSize(width, height);
    return {static_cast<int>(std::lround(width)), static_cast<int>(std::lround(height))};
}

} // namespace

ViewerPeer::ViewerPeer(QorDialog& widget) : WidgetPeer(widget) {
    auto* box = new ViewerControl(ContainerPeer::parentFor(widget));
    setControl(box);
    box->setNaturalSize(sizeOf(viewer()));
    if (dynamic_cast<QorNavigation3DViewer*>(&widget) == nullptr)
        box->setFocusPolicy(Qt::NoFocus); // it knows no keys
    box->onGeometry = whileAlive([this] { followControl(); });
    const QPointer<QObject> alive(context());
    box->onMouse = [this, alive](const QorMouseEvent& event) {
        return alive && mouse(event);
    };
    box->onKey = [this, alive](const QKeyEvent& event) {
        return alive && key(event);
    };
}

ViewerPeer* ViewerPeer::of(const QorViewer& viewer) {
    return dynamic_cast<ViewerPeer*>(viewer.GetPeer());
}

void ViewerPeer::draw(QorAspects aspects) {
    if ((aspects & QorAspectValue) == 0)
        return;
    followViewer();
    drawLater();
}

bool ViewerPeer::mouse(const QorMouseEvent& event) {
    bool used = false;
    const auto tell = [&] {
        used = viewer().HandleMouse(event);
        return QorUserResult::Done;
    };
    const QorMathPoint2D pixel = event.pixel;
    if (viewer().CanAct() && report(tell, 0))
        showCursor(pixel);
    return used;
}

bool ViewerPeer::key(const QKeyEvent& event) {
    const std::optional<ViewKey> wish = viewKeyOf(event);
    auto* navigation = dynamic_cast<QorNavigation3DViewer*>(&viewer());
    if (!wish || navigation == nullptr || !viewer().CanAct())
        return false;
    report(
        [&] {
            if (wish->view)
                navigation->ShowStandardView(*wish->view);
            else
                navigation->FitAll();
            return QorUserResult::Done;
        },
        0);
    return true;
}

void ViewerPeer::showCursor(const QorMathPoint2D& pixel) {
    const Qt::CursorShape shape = shapeOf(viewer().GetCursor(pixel));
    if (control() != nullptr && control()->cursor().shape() != shape)
        control()->setCursor(shape);
}

void ViewerPeer::followControl() {
    if (control() == nullptr || !control()->isVisible())
        return;
    viewer().GetSupport()->SetPixelRatio(static_cast<float>(control()->devicePixelRatioF()));
    told_ = box().deviceSize();
    if (sizeOf(viewer()) == told_)
        return;
    const QSize size = told_;
    report(
        [&] {
            viewer().UserResizeViewer(static_cast<float>(size.width()),
                                      static_cast<float>(size.height()));
            return QorUserResult::Done;
        },
        0);
}

void ViewerPeer::followViewer() {
    if (control() == nullptr || !control()->isVisible() || sizeOf(viewer()) == told_ ||
        told_.isEmpty())
        return;
    told_ = sizeOf(viewer());
    const QSizeF wish = QSizeF(told_ - box().deviceSize()) / control()->devicePixelRatioF();
    QWidget* window = control()->window();
    window->resize(window->size() + wish.toSize());
    followControl(); // where the window could not follow, the viewer goes back
}

void ViewerPeer::swapped() {
    if (std::exchange(swapWaits_, true))
        return;
    QMetaObject::invokeMethod(
        context(),
        [this] {
            swapWaits_ = false;
            const QorVar<QorViewer> kept(&viewer());
            if (QorSupport* support = kept->GetSupport())
                support->Swapped();
        },
        Qt::QueuedConnection);
}

} // namespace qor::desktop
