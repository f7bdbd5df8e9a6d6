#include "workbench/desktop/peers/ButtonPeers.h"

#include "workbench/desktop/peers/ContainerPeer.h"
#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/theme/Icon.h"

#include <QCheckBox>
#include <QSignalBlocker>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace qor::desktop {

namespace {

QAbstractButton* makeToolButton(QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

QAbstractButton* makePush(const QorDialog& widget) {
    QWidget* parent = ContainerPeer::parentFor(widget);
    if (isInToolBar(widget))
        return makeToolButton(parent);
    auto* button = new PushControl(parent);
    button->setAutoDefault(false);
    return button;
}

QAbstractButton* makeCheck(const QorDialog& widget) {
    QWidget* parent = ContainerPeer::parentFor(widget);
    if (!isInToolBar(widget))
        return new QCheckBox(parent);
    QAbstractButton* button = makeToolButton(parent);
    button->setCheckable(true);
    return button;
}

void drawFace(QAbstractButton& button, const QorDialog& widget, QorAspects aspects) {
    if ((aspects & QorAspectTitle) != 0)
        button.setText(toQt(widget.GetTitle()));
    if ((aspects & QorAspectIcon) != 0)
        button.setIcon(icon(toQt(widget.GetIconName())));
    if ((aspects & (QorAspectTitle | QorAspectHelp)) != 0 && widget.GetShortHelp().IsNull() &&
        isInToolBar(widget))
        button.setToolTip(toQt(widget.GetTitle()));
}

void drawChecked(QAbstractButton& button, bool checked) {
    const QSignalBlocker quiet(button);
    button.setChecked(checked);
}

} // namespace

PushPeer::PushPeer(QorDialog& widget) : PeerOf(widget, makePush(widget)) {
    QObject::connect(&box(), &QAbstractButton::clicked, context(),
                     [this] { report([this] { return my().UserPress(); }, 0); });
}

void PushPeer::draw(QorAspects aspects) {
    drawFace(box(), widget(), aspects);
}

/// Notes the second press of a double click.
class CheckPeer::DoubleClickFilter : public QObject {
public:
    explicit DoubleClickFilter(CheckPeer& peer) : QObject(peer.context()), peer_(peer) {
        peer.control()->installEventFilter(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonDblClick &&
            static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
            peer_.secondClick_ = true;
        else if (event->type() == QEvent::MouseButtonPress)
            peer_.secondClick_ = false;
        return QObject::eventFilter(object, event);
    }

private:
    CheckPeer& peer_;
};

CheckPeer::CheckPeer(QorDialog& widget) : PeerOf(widget, makeCheck(widget)) {
    new DoubleClickFilter(*this); // belongs to the context
    QObject::connect(&box(), &QAbstractButton::clicked, context(), [this] { clicked(); });
}

/// The double click follows the second of its two clicks, each of which has changed the state.
void CheckPeer::clicked() {
    const bool twice = std::exchange(secondClick_, false);
    const bool checked = box().isChecked();
    const bool alive =
        report([this, checked] { return my().UserCheck(checked); }, QorAspectChecked);
    if (alive && twice)
        report([this] { return my().UserDoubleClick(); }, QorAspectChecked);
}

void CheckPeer::draw(QorAspects aspects) {
    drawFace(box(), widget(), aspects);
    if ((aspects & QorAspectChecked) != 0)
        drawChecked(box(), my().GetState() == QorDlgCheck);
}

RadioPeer::RadioPeer(QorDialog& widget)
    : PeerOf(widget, new RadioControl(ContainerPeer::parentFor(widget))) {
    box().setAutoExclusive(false);
    box().onArrow = whileAlive([this](int direction) { goTo(direction); });
    QObject::connect(&box(), &QAbstractButton::clicked, context(),
                     [this] { report([this] { return my().UserCheck(true); }, QorAspectChecked); });
}

std::vector<RadioPeer*> RadioPeer::group() const {
    std::vector<RadioPeer*> radios;
    if (const QorDialog* father = widget().GetFatherDialog())
        for (WidgetPeer* peer : peersIn(*father))
            if (auto* radio = dynamic_cast<RadioPeer*>(peer))
                radios.push_back(radio);
    return radios;
}

void RadioPeer::goTo(int direction) {
    std::vector<RadioPeer*> usable = group();
    std::erase_if(usable, [](const RadioPeer* radio) { return !radio->widget().CanAct(); });
    const auto self = std::find(usable.begin(), usable.end(), this);
    if (self == usable.end() || usable.size() < 2)
        return;
    const auto count = static_cast<int>(usable.size());
    const int next = (static_cast<int>(self - usable.begin()) + direction + count) % count;
    RadioPeer* target = usable[static_cast<std::size_t>(next)];
    target->TakeFocus();
    target->report([target] { return target->my().UserCheck(true); }, QorAspectChecked);
}

void RadioPeer::draw(QorAspects aspects) {
    drawFace(box(), widget(), aspects);
    if ((aspects & QorAspectChecked) != 0)
        drawChecked(box(), my().GetState() == QorDlgCheck);
    drawTabStops();
}

/// Without a checked one, Tab reaches each.
void RadioPeer::drawTabStops() const {
    const std::vector<RadioPeer*> radios = group();
    const bool any = std::any_of(radios.begin(), radios.end(), [](const RadioPeer* radio) {
        return radio->my().GetState() == QorDlgCheck;
    });
    for (const RadioPeer* radio : radios)
        radio->control()->setFocusPolicy(
            !any || radio->my().GetState() == QorDlgCheck ? Qt::StrongFocus : Qt::ClickFocus);
}

void RadioPeer::addTabStops(std::vector<QWidget*>& stops) const {
    stops.push_back(control());
}

} // namespace qor::desktop
