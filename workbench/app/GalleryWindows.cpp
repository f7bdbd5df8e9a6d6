#include "workbench/app/GalleryWindows.h"

#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgColorEditor.h"
#include "platform/frame/QorFrmFile.h"
#include "platform/frame/QorFrmNotify.h"
#include "platform/text/QorMsgCatalog.h"

#include <algorithm>
#include <array>

namespace qor::app {

namespace {

constexpr int buttonsInARow = 2;

QorUnicodeString text(const QorString& key) {
    return QorMsgCatalog::BuildMessage("GalleryDialog", key);
}

struct WindowRow {
    const char* button;
    QorDlgDialog* (*open)(QorDlgDialog& father, const QorString& button);
};

template <QorNotifyKind kind, QorNotifyButtons buttons>
QorDlgDialog* box(QorDlgDialog& father, const QorString& button) {
    auto* notify = new QorFrmNotify(&father, "galleryNotify", kind, buttons);
    notify->DisplayBlocked(text(button + ".Text"), text(button + ".Title"));
    notify->RequestDelayedDestruction();
    return nullptr;
}

template <QorDlgStyle style>
QorDlgDialog* file(QorDlgDialog& father, const QorString& button) {
    auto* dialog = new QorFrmFile(&father, "galleryFile", style);
    dialog->SetTitle(text(button + ".Title"));
    const std::array labels{text("PictureFiles"), text("AllFiles")};
    const std::array<QorString, 2> patterns{"*.png *.jpg *.tif", "*"};
    dialog->SetFilterStrings(labels.data(), patterns.data(), static_cast<int>(labels.size()));
    return dialog;
}

QorDlgDialog* color(QorDlgDialog& father, const QorString& button) {
    constexpr std::array orange{1.0F, 0.5F, 0.1F};
    auto* dialog = new QorDlgColorEditor(&father, "galleryColor");
    dialog->SetTitle(text(button + ".Title"));
    dialog->SetColor(orange);
    return dialog;
}

constexpr WindowRow windowRows[] = {
    {"informationButton", &box<QorNotifyKind::Information, QorNotifyButtons::OK>},
    {"questionButton", &box<QorNotifyKind::Question, QorNotifyButtons::YesNo>},
    {"warningButton", &box<QorNotifyKind::Warning, QorNotifyButtons::OKCancel>},
    {"errorButton", &box<QorNotifyKind::Error, QorNotifyButtons::OK>},
    {"threeButton", &box<QorNotifyKind::Question, QorNotifyButtons::YesNoCancel>},
    {"openButton", &file<QorDlgDefaultStyle>},
    {"saveButton", &file<QorDlgFileSave>},
    {"colorButton", &color},
};

const WindowRow* findRow(const QorString& button) {
    const auto* found = std::find_if(std::begin(windowRows), std::end(windowRows),
                                     [&](const WindowRow& row) { return button == row.button; });
    return found != std::end(windowRows) ? found : nullptr;
}

} // namespace

void buildWindows(QorDialog& section) {
    int place = 0;
    for (const WindowRow& row : windowRows) {
        (new QorDlgPushButton(&section, row.button))
            ->SetGridConstraints(place / buttonsInARow, place % buttonsInARow, 1, 1,
                                 QorHoldLeft | QorHoldRight);
        ++place;
    }
    for (int column = 0; column < buttonsInARow; ++column)
        section.SetGridColumnResizable(column, true);
}

bool opensWindow(const QorDialog& widget) {
    return findRow(widget.GetName()) != nullptr;
}

QorDlgDialog* openWindow(QorDlgDialog& father, const QorString& button) {
    const WindowRow* row = findRow(button);
    return row != nullptr ? row->open(father, button) : nullptr;
}

std::vector<QorNotification*> endsOf(QorDlgDialog& window) {
    std::vector<QorNotification*> ends{window.GetWindCloseNotification()};
    if (auto* files = dynamic_cast<QorDlgFile*>(&window)) {
        ends.push_back(files->GetFileSelectionOKNotification());
        ends.push_back(files->GetFileSelectionCancelNotification());
    }
    if (auto* colors = dynamic_cast<QorDlgColorEditor*>(&window)) {
        ends.push_back(colors->GetColorOKNotification());
        ends.push_back(colors->GetColorCancelNotification());
    }
    return ends;
}

} // namespace qor::app
