#pragma once

#include "platform/frame/QorCommandHeader.h"
#include "platform/frame/QorIHelp.h"

/// A command as headers run it: it lives while it runs, is the activated command of the selector
/// meanwhile, and owns the dialogs that it opens as children. Dialogs end by sending it their OK or
/// Cancel.
class QorFrmCommand : public QorImplements<QorCommand, QorIHelp> {
    QorDeclareClass(QorFrmCommand)

    /// \p iFather is the header that runs it, or any other command.
    QorFrmCommand(QorCommand* iFather, const QorString& iName);

    /// Ends the command: through its header, which is then available again, else by its own delayed
    /// destruction.
    void RequestEnd();

    QorResult SetLongHelpId(const QorString& iId) override;

    [[nodiscard]] QorString GetLongHelpId() const override { return longHelpId; }

    /// Makes it the activated command again, as when a person turns to its dialog.
    void Activate();

protected:
    ~QorFrmCommand() override;
    void Dying() override;

private:
    QorString longHelpId;
};
