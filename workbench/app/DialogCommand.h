#pragma once

#include "platform/dialog/QorDlgDialog.h"
#include "platform/frame/QorFrmCommand.h"

namespace qor::app {

/// A command that consists of one dialog: it opens it and ends on its OK, Cancel or close box.
class DialogCommand : public QorFrmCommand {
    QorDeclareClass(DialogCommand)

    /// Makes the dialog as a child of \p father, hidden.
    using Maker = QorDlgDialog* (*)(QorCommand* father);

    DialogCommand(QorCommand* owner, const QorString& itsName, Maker make);

    [[nodiscard]] QorDlgDialog* dialog() const { return dialog_; }

    /// Brings the dialog to the front.
    void raise();

protected:
    ~DialogCommand() override = default;

private:
    void endCB(QorCommand* sender, QorNotification* notification, QorSubscriberData data);

    QorDlgDialog* dialog_; ///< a child
};

/// A header that opens a dialog. It stays available meanwhile: starting it again brings the open
/// dialog to the front.
class DialogHeader : public QorCommandHeader {
    QorDeclareClass(DialogHeader)

    DialogHeader(QorCommand* owner, const QorString& itsName, DialogCommand::Maker make);

    QorResult StartCommand() override;

protected:
    ~DialogHeader() override = default;
};

} // namespace qor::app
