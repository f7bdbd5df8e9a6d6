#include "workbench/desktop/peers/TextPeers.h"

#include "workbench/desktop/peers/ContainerPeer.h"
#include "workbench/desktop/peers/Names.h"
#include "workbench/desktop/peers/Texts.h"

#include <QSignalBlocker>

#include <algorithm>

namespace qor::desktop {

namespace {

/// Width of \p characters of average width.
int textWidth(const QWidget& control, int characters) {
    return control.fontMetrics().averageCharWidth() * characters;
}

} // namespace

LabelPeer::LabelPeer(QorDialog& widget)
    : PeerOf(widget, new QLabel(ContainerPeer::parentFor(widget))) {
    box().setTextFormat(Qt::PlainText);
}

void LabelPeer::draw(QorAspects aspects) {
    if ((aspects & QorAspectTitle) != 0)
        box().setText(toQt(widget().GetTitle()));
    if ((aspects & QorAspectLayout) != 0)
        box().setMinimumWidth(textWidth(box(), my().GetVisibleTextWidth()));
}

void LabelPeer::neighboursChanged() {
    WidgetPeer::neighboursChanged();
    const WidgetPeer* beside = of(labelled(widget()));
    box().setBuddy(beside != nullptr ? beside->control() : nullptr);
}

SeparatorPeer::SeparatorPeer(QorDialog& widget)
    : PeerOf(widget, new QFrame(ContainerPeer::parentFor(widget))) {
    const bool vertical = (widget.GetStyle() & QorDlgVertical) != 0;
    box().setFrameStyle((vertical ? QFrame::VLine : QFrame::HLine) | QFrame::Plain);
}

bool SeparatorPeer::wantsWidth() const {
    return (widget().GetStyle() & QorDlgVertical) == 0;
}

EditorPeer::EditorPeer(QorDialog& widget)
    : PeerOf(widget, new QLineEdit(ContainerPeer::parentFor(widget))) {
    QObject::connect(&box(), &QLineEdit::editingFinished, context(), [this] {
        const QorUnicodeString text = fromQt(box().text());
        report([&] { return my().UserSetText(text); }, QorAspectValue);
    });
}

void EditorPeer::draw(QorAspects aspects) {
    constexpr int margins = 20;
    if ((aspects & QorAspectValue) != 0 && box().text() != toQt(my().GetText())) {
        box().setText(toQt(my().GetText()));
        box().setCursorPosition(0); // the beginning of a long text says more than its end
    }
    if ((aspects & QorAspectLayout) == 0)
        return;
    const int characters = my().GetVisibleTextWidth();
    if (characters > 0)
        box().setFixedWidth(textWidth(box(), characters) + margins);
}

ComboPeer::ComboPeer(QorDialog& widget)
    : PeerOf(widget, new QComboBox(ContainerPeer::parentFor(widget))) {
    box().setSizeAdjustPolicy(QComboBox::AdjustToContents);
    QObject::connect(&box(), &QComboBox::activated, context(), [this](int index) {
        report([&] { return my().UserSelect(index); }, QorAspectSelection);
    });
}

void ComboPeer::draw(QorAspects aspects) {
    const QSignalBlocker quiet(box());
    if ((aspects & QorAspectLines) != 0) {
        box().clear();
        for (const QorUnicodeString& line : my().GetLines())
            box().addItem(toQt(line));
    }
    if ((aspects & (QorAspectLines | QorAspectSelection)) != 0)
        box().setCurrentIndex(my().GetSelect());
    if ((aspects & QorAspectLayout) != 0)
        box().setMinimumContentsLength(my().GetVisibleTextWidth());
}

SpinnerPeer::SpinnerPeer(QorDialog& widget)
    : PeerOf(widget, new SpinControl(ContainerPeer::parentFor(widget))) {
    box().onStep = whileAlive([this](int steps) { step(steps); });
    QObject::connect(&box(), &QAbstractSpinBox::editingFinished, context(),
                     [this] { enterTyped(); });
}

bool SpinnerPeer::enterTyped() {
    if (!box().isEdited())
        return true;
    const QorUnicodeString text = fromQt(box().typed());
    return report([&] { return my().UserSetText(text); }, QorAspectValue);
}

void SpinnerPeer::step(int steps) {
    if (enterTyped())
        report([&] { return my().UserStep(steps); }, QorAspectValue);
}

void SpinnerPeer::draw(QorAspects aspects) {
    if ((aspects & (QorAspectValue | QorAspectRange)) != 0) {
        box().possibleSteps = (my().GetValue() > my().GetMin() ? QAbstractSpinBox::StepDownEnabled
                                                               : QAbstractSpinBox::StepNone) |
                              (my().GetValue() < my().GetMax() ? QAbstractSpinBox::StepUpEnabled
                                                               : QAbstractSpinBox::StepNone);
        box().show(toQt(my().GetShownText()));
        box().update();
    }
    if ((aspects & QorAspectLayout) != 0)
        box().setTextWidth(my().GetVisibleTextWidth());
}

ProgressPeer::ProgressPeer(QorDialog& widget)
    : PeerOf(widget, new QProgressBar(ContainerPeer::parentFor(widget))) {
    box().setTextVisible(false);
}

void ProgressPeer::draw(QorAspects aspects) {
    if ((aspects & (QorAspectRange | QorAspectValue)) == 0)
        return;
    const int low = my().GetMin();
    const int high = std::max(low, my().GetMax());
    box().setRange(low, high);
    box().setValue(std::clamp(my().GetPos(), low, high));
}

} // namespace qor::desktop
