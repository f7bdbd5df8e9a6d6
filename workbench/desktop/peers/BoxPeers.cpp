#include "workbench/desktop/peers/BoxPeers.h"

#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/peers/WindowParts.h"
#include "workbench/desktop/theme/Icon.h"
#include "workbench/desktop/theme/Theme.h"

#include <QAbstractButton>

#include <algorithm>

namespace qor::desktop {

namespace {

struct KindLook {
    QorNotifyKind kind;
    const char* icon;
};

constexpr KindLook kindLooks[] = {
    {QorNotifyKind::Information, "information"},
    {QorNotifyKind::Question, "question"},
    {QorNotifyKind::Warning, "warning"},
    {QorNotifyKind::Error, "error"},
};

struct Buttons {
    QorNotifyButtons offered;
    QMessageBox::StandardButtons buttons;
};

const Buttons buttonRows[] = {
    {QorNotifyButtons::OK, QMessageBox::Ok},
    {QorNotifyButtons::OKCancel, QMessageBox::Ok | QMessageBox::Cancel},
    {QorNotifyButtons::YesNo, QMessageBox::Yes | QMessageBox::No},
    {QorNotifyButtons::YesNoCancel, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel},
};

QMessageBox::StandardButtons buttonsFor(QorNotifyButtons offered) {
    const auto* const row =
        std::find_if(std::begin(buttonRows), std::end(buttonRows),
                     [&](const Buttons& one) { return one.offered == offered; });
    return row != std::end(buttonRows) ? row->buttons : QMessageBox::Ok;
}

QorNotifyAnswer answerOf(QMessageBox::StandardButton button) {
    switch (button) {
    case QMessageBox::No:
        return QorNotifyNo;
    case QMessageBox::Cancel:
        return QorNotifyCancel;
    default:
        return QorNotifyConfirm;
    }
}

const char* iconFor(QorNotifyKind kind) {
    for (const KindLook& look : kindLooks)
        if (look.kind == kind)
            return look.icon;
    return "information";
}

} // namespace

NotifyPeer::NotifyPeer(QorDialog& widget)
    : PeerOf(widget, new WindowControl<QMessageBox>(ownerFor(widget))) {
    applyWindowStyle(box(), widget);
    box().setTextFormat(Qt::PlainText);
    box().setStandardButtons(buttonsFor(my().GetButtons()));
    const QMessageBox::StandardButtons offered = box().standardButtons();
    box().setDefaultButton((offered & QMessageBox::Yes) != 0 ? QMessageBox::Yes : QMessageBox::Ok);
    box().onCancel = whileAlive([this] { report([this] { return my().UserCancel(); }, 0); });
    // Qt ends the box after this signal, which the window takes for Cancel: then it has its answer.
    QObject::connect(&box(), &QMessageBox::buttonClicked, context(),
                     [this](QAbstractButton* button) { pressed(box().standardButton(button)); });
}

void NotifyPeer::pressed(QMessageBox::StandardButton button) {
    report([&] { return my().UserAnswer(answerOf(button)); }, 0);
}

void NotifyPeer::draw(QorAspects aspects) {
    if ((aspects & QorAspectTitle) != 0)
        box().setWindowTitle(toQt(my().GetTitle()));
    if ((aspects & QorAspectValue) == 0)
        return;
    constexpr int iconSize = 32;
    box().setText(toQt(my().GetText()));
    box().setIconPixmap(iconPixmap(QLatin1String(iconFor(my().GetNotifyKind())), iconSize,
                                   box().devicePixelRatioF(), Theme::colors().text));
}

void NotifyPeer::drawVisibility() {
    const bool visible = my().GetVisibility() == QorDlgSHOW;
    if (visible != box().isVisible())
        showWindow(box(), visible);
}

void NotifyPeer::Raise() {
    if (control() != nullptr)
        showWindow(box(), true);
}

ColorPeer::ColorPeer(QorDialog& widget)
    : PeerOf(widget, new WindowControl<QColorDialog>(ownerFor(widget))) {
    applyWindowStyle(box(), widget);
    box().setOptions(QColorDialog::DontUseNativeDialog);
    box().onOK = whileAlive([this] {
        const QColor color = box().currentColor();
        report(
            [&] {
                return my().UserAccept({color.redF(), color.greenF(), color.blueF()});
            },
            QorAspectValue);
    });
    box().onCancel = whileAlive([this] { report([this] { return my().UserCancel(); }, 0); });
}

void ColorPeer::draw(QorAspects aspects) {
    if ((aspects & QorAspectTitle) != 0)
        box().setWindowTitle(toQt(my().GetTitle()));
    if ((aspects & QorAspectValue) == 0)
        return;
    const auto& [red, green, blue] = my().GetColor();
    box().setCurrentColor(QColor::fromRgbF(red, green, blue));
}

void ColorPeer::drawVisibility() {
    const bool visible = my().GetVisibility() == QorDlgSHOW;
    if (visible != box().isVisible())
        showWindow(box(), visible);
}

void ColorPeer::Raise() {
    if (control() != nullptr)
        showWindow(box(), true);
}

} // namespace qor::desktop
