#include "workbench/desktop/peers/SlidePeers.h"

#include "workbench/desktop/peers/ContainerPeer.h"

#include <QSignalBlocker>

#include <algorithm>
#include <cmath>
#include <utility>

namespace qor::desktop {

namespace {

Qt::Orientation orientationOf(QorOrientation orientation) {
    return orientation == QorOrientation::Vertical ? Qt::Vertical : Qt::Horizontal;
}

int stepsOf(const QorDlgSlider& slider) {
    if (!(slider.GetStep() > 0.0))
        return 1;
    const double steps = std::round((slider.GetMax() - slider.GetMin()) / slider.GetStep());
    return static_cast<int>(std::clamp(steps, 1.0, 1.0e6));
}

} // namespace

SliderPeer::SliderPeer(QorDialog& widget)
    : PeerOf(widget, new HeldControl<QSlider>(ContainerPeer::parentFor(widget))) {
    box().setOrientation(orientationOf(my().GetOrientation()));
    box().onRelease = whileAlive([this] { released(); });
    QObject::connect(&box(), &QSlider::valueChanged, context(),
                     [this](int position) { moved(position); });
}

bool SliderPeer::wantsWidth() const {
    return my().GetOrientation() == QorOrientation::Horizontal;
}

bool SliderPeer::wantsHeight() const {
    return my().GetOrientation() == QorOrientation::Vertical;
}

double SliderPeer::valueAt(int position) const {
    const int steps = box().maximum();
    if (position >= steps)
        return my().GetMax();
    return my().GetMin() + (my().GetMax() - my().GetMin()) * position / steps;
}

void SliderPeer::moved(int position) {
    const double value = valueAt(position);
    if (box().isHeld()) {
        slid_ = true;
        report([&] { return my().UserDrag(value); }, QorAspectValue);
    } else {
        report([&] { return my().UserSetValue(value); }, QorAspectValue);
    }
}

/// A click that moved nothing changes nothing: the value need not lie on a step.
void SliderPeer::released() {
    if (!std::exchange(slid_, false))
        return;
    const double value = valueAt(box().sliderPosition());
    report([&] { return my().UserSetValue(value); }, QorAspectValue);
}

void SliderPeer::draw(QorAspects aspects) {
    const QSignalBlocker quiet(box());
    const int steps = stepsOf(my());
    if ((aspects & QorAspectRange) != 0) {
        constexpr int pages = 10;
        box().setRange(0, steps);
        box().setPageStep(std::max(1, steps / pages));
    }
    if ((aspects & (QorAspectValue | QorAspectRange)) != 0) {
        const double range = my().GetMax() - my().GetMin();
        const double part = range > 0.0 ? (my().GetValue() - my().GetMin()) / range : 0.0;
        box().setValue(static_cast<int>(std::lround(part * steps)));
    }
}

ScrollBarPeer::ScrollBarPeer(QorDialog& widget)
    : PeerOf(widget, new HeldControl<QScrollBar>(ContainerPeer::parentFor(widget))) {
    box().setOrientation(orientationOf(my().GetOrientation()));
    box().setFocusPolicy(Qt::TabFocus); // what it scrolls may know no keys
    box().onRelease = whileAlive([this] { released(); });
    QObject::connect(&box(), &QScrollBar::valueChanged, context(),
                     [this](int position) { moved(position); });
}

bool ScrollBarPeer::wantsWidth() const {
    return my().GetOrientation() == QorOrientation::Horizontal;
}

bool ScrollBarPeer::wantsHeight() const {
    return my().GetOrientation() == QorOrientation::Vertical;
}

void ScrollBarPeer::moved(int position) {
    if (box().isHeld()) {
        slid_ = true;
        report([&] { return my().UserDrag(position); }, QorAspectValue);
    } else {
        report([&] { return my().UserSetPosition(position); }, QorAspectValue);
    }
}

void ScrollBarPeer::released() {
    if (!std::exchange(slid_, false))
        return;
    const int position = box().sliderPosition();
    report([&] { return my().UserSetPosition(position); }, QorAspectValue);
}

void ScrollBarPeer::draw(QorAspects aspects) {
    if ((aspects & (QorAspectRange | QorAspectValue)) == 0)
        return;
    const QSignalBlocker quiet(box());
    int low = 0;
    int high = 0;
    my().GetScrollRange(low, high);
    constexpr int linesInBox = 8;
    box().setRange(low, std::max(low, high - my().GetScrollBoxSize()));
    box().setPageStep(std::max(1, my().GetScrollBoxSize()));
    box().setSingleStep(std::max(1, my().GetScrollBoxSize() / linesInBox));
    box().setValue(my().GetScrollPos());
}

} // namespace qor::desktop
