#pragma once

#include "platform/frame/QorFrmDialog.h"

namespace qor::app {

/// Name, version, purpose and licence of the program. Texts are in the message catalog
/// "AboutDialog".
class AboutDialog : public QorFrmDialog {
    QorDeclareClass(AboutDialog)

    AboutDialog(QorCommand* owner, const QorString& itsName);

protected:
    ~AboutDialog() override = default;
};

} // namespace qor::app
