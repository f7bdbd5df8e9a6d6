#pragma once

#include "platform/component/QorInterface.h"
#include "platform/text/QorString.h"

/// The help of a command: which page of help fits what a person does in it now.
class QorIHelp : public QorInterface {
    QorDeclareInterface(QorIHelp)

    /// The page from now on; empty for that of the command itself.
    virtual QorResult SetLongHelpId(const QorString& iId) = 0;
    [[nodiscard]] virtual QorString GetLongHelpId() const = 0;
};
