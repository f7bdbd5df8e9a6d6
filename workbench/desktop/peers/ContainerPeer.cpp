#include "workbench/desktop/peers/ContainerPeer.h"

#include "workbench/desktop/peers/ContainerLayout.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>

namespace qor::desktop {

/// Lays out when Qt is about to use the layout.
class ContainerPeer::RequestFilter : public QObject {
public:
    RequestFilter(ContainerPeer& peer, QObject* parent) : QObject(parent), peer_(peer) {}

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show)
            peer_.layOutNow();
        return QObject::eventFilter(object, event);
    }

private:
    ContainerPeer& peer_;
};

std::vector<WidgetPeer*> peersIn(const QorDialog& father) {
    std::vector<WidgetPeer*> peers;
    for (const QorDialog* child : father.GetWidgets())
        if (WidgetPeer* peer = WidgetPeer::of(child); peer != nullptr && peer->control() != nullptr)
            peers.push_back(peer);
    return peers;
}

bool isInToolBar(const QorDialog& widget) {
    for (const QorDialog* around = widget.GetFatherDialog(); around != nullptr;
         around = around->IsWindow() ? nullptr : around->GetFatherDialog())
        if ((around->GetStyle() & QorDlgWndToolBar) != 0)
            return true;
    return false;
}

QWidget* ContainerPeer::parentFor(const QorDialog& widget) {
    const auto* around = dynamic_cast<ContainerPeer*>(of(widget.GetFatherDialog()));
    return around != nullptr ? around->inside() : nullptr;
}

void ContainerPeer::setInside(QWidget* inside) {
    inside_ = inside;
    inside->installEventFilter(new RequestFilter(*this, context()));
}

void ContainerPeer::draw(QorAspects aspects) {
    if ((aspects & (QorAspectChildren | QorAspectLayout)) != 0)
        layOutLater();
}

void ContainerPeer::layOutLater() {
    if (inside_ == nullptr || waiting_)
        return;
    waiting_ = true;
    QCoreApplication::postEvent(inside_, new QEvent(QEvent::LayoutRequest), Qt::HighEventPriority);
}

void ContainerPeer::layOutNow() {
    if (inside_ == nullptr)
        return;
    for (WidgetPeer* peer : peersIn(widget()))
        if (auto* nested = dynamic_cast<ContainerPeer*>(peer))
            nested->layOutNow();
    if (!waiting_)
        return;
    waiting_ = false;
    arrangeChildren();
    for (WidgetPeer* peer : peersIn(widget()))
        peer->neighboursChanged();
    orderTabs();
}

void ContainerPeer::arrangeChildren() {
    arrange(widget(), *inside_, margin());
}

bool ContainerPeer::wantsHeight() const {
    const auto peers = peersIn(widget());
    return std::any_of(peers.begin(), peers.end(),
                       [](const WidgetPeer* peer) { return peer->wantsHeight(); });
}

void ContainerPeer::addTabStops(std::vector<QWidget*>& stops) const {
    for (const WidgetPeer* peer : peersIn(widget()))
        peer->addTabStops(stops);
}

/// Tab follows the order in which the widgets were made, whenever their controls were.
void ContainerPeer::orderTabs() const {
    const WidgetPeer* window = of(widget().GetWindow());
    if (window == nullptr)
        return;
    std::vector<QWidget*> stops;
    window->addTabStops(stops);
    for (std::size_t i = 1; i < stops.size(); ++i)
        QWidget::setTabOrder(stops[i - 1], stops[i]);
}

} // namespace qor::desktop
