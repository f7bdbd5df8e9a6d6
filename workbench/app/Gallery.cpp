#include "workbench/app/Gallery.h"

#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/text/QorMsgCatalog.h"
#include "workbench/app/GalleryRows.h"
#include "workbench/app/GalleryWindows.h"

namespace qor::app {

namespace {

constexpr int captionColumn = 0;
constexpr int enabledColumn = 1;
constexpr int disabledColumn = 2;

constexpr QorDlgStyle plainFrame = QorDlgFraNoTitle | QorDlgFraNoFrame;

/// Captions are of one width, so that the columns of all sections lie below each other.
constexpr int captionCharacters = 17;

QorDialog* addLabel(QorDialog& father, const QorString& name, int row, int column) {
    auto* label = new QorDlgLabel(&father, name);
    label->SetGridConstraints(row, column, 1, 1, QorHoldLeft);
    return label;
}

/// A widget and its disabled twin, with one caption.
void addRow(QorDialog& section, const GalleryRow& row, int place) {
    const QorString name = row.name;
    addLabel(section, name + "Caption", place, captionColumn)
        ->SetVisibleTextWidth(captionCharacters);
    QorDialog* enabled = row.make(section, name);
    enabled->SetGridConstraints(place, enabledColumn, 1, 1, row.justification);
    QorDialog* disabled = row.make(section, name + "Disabled");
    disabled->SetTitle(enabled->GetTitle());
    disabled->SetShortHelp(enabled->GetShortHelp());
    disabled->SetGridConstraints(place, disabledColumn, 1, 1, row.justification);
    disabled->SetSensitivity(QorDlgDISABLE);
}

void addSection(QorDialog& column, const GallerySection& section) {
    auto* frame = new QorDlgFrame(&column, section.name, QorDlgGridLayout);
    frame->SetAttachment(QorSideLeft | QorSideRight | QorSideTop);
    frame->SetGridColumnResizable(enabledColumn, true);
    frame->SetGridColumnResizable(disabledColumn, true);
    if (section.build != nullptr) {
        section.build(*frame);
        return;
    }
    addLabel(*frame, QorString(section.name) + "Enabled", 0, enabledColumn);
    addLabel(*frame, QorString(section.name) + "Disabled", 0, disabledColumn);
    int place = 1;
    for (const GalleryRow& row : section.rows)
        addRow(*frame, row, place++);
}

} // namespace

GalleryDialog::GalleryDialog(QorCommand* owner, const QorString& itsName)
    : QorFrmDialog(owner, itsName, QorDlgWndOKCancel | QorDlgWndAPPLY | QorDlgGridLayout) {
    addColumns();
    addEventLine();
    subscribeAll(*this);
}

void GalleryDialog::addColumns() {
    int place = 0;
    for (const GalleryColumn& column : galleryColumns()) {
        auto* frame = new QorDlgFrame(this, column.name, plainFrame);
        frame->SetGridConstraints(0, place, 1, 1, QorHoldFill);
        SetGridColumnResizable(place++, true);
        for (const GallerySection& section : column.sections)
            addSection(*frame, section);
    }
    SetGridRowResizable(0, true);
}

void GalleryDialog::addEventLine() {
    eventLine_ = new QorDlgLabel(this, "eventLine");
    const int columns = static_cast<int>(galleryColumns().size());
    eventLine_->SetGridConstraints(1, 0, columns, 1, QorHoldFill);
}

void GalleryDialog::subscribeAll(QorDialog& widget) {
    for (const QorNotification* notification : notificationsOf(widget))
        AddAnalyseNotificationCB(this, &widget, notification, &GalleryDialog::eventCB);
    if (opensWindow(widget))
        AddAnalyseNotificationCB(this, &widget, notificationsOf(widget).front(),
                                 &GalleryDialog::windowCB);
    for (QorDialog* child : widget.GetWidgets())
        subscribeAll(*child);
}

void GalleryDialog::eventCB(QorCommand* sender,
                            QorNotification* notification,
                            QorSubscriberData /*data*/) {
    tell(*sender, notification->IsA());
}

void GalleryDialog::windowCB(QorCommand* sender,
                             QorNotification* /*notification*/,
                             QorSubscriberData /*data*/) {
    if (QorDlgDialog* window = openWindow(*this, sender->GetName()))
        watchWindow(*window);
}

void GalleryDialog::watchWindow(QorDlgDialog& window) {
    for (const QorNotification* end : endsOf(window))
        AddAnalyseNotificationCB(this, &window, end, &GalleryDialog::windowEndCB);
    window.SetVisibility(QorDlgSHOW);
}

void GalleryDialog::windowEndCB(QorCommand* sender,
                                QorNotification* notification,
                                QorSubscriberData /*data*/) {
    tell(*sender, notification->IsA());
    sender->RequestDelayedDestruction();
}

void GalleryDialog::tell(const QorCommand& sender, const std::string& what) {
    eventLine_->SetTitle(
        QorMsgCatalog::BuildMessage("GalleryDialog", "Event", {sender.GetName().Str(), what}));
}

QorImplementClass(GalleryDialog, QorFrmDialog)

} // namespace qor::app
