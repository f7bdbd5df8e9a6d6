#include "workbench/desktop/QtToolkit.h"

#include "platform/dialog/QorDialog.h"

namespace qor::desktop {

std::unique_ptr<QorPeer> QtToolkit::CreatePeer(QorDialog& /*iWidget*/) {
    return nullptr;
}

QWidget* controlOf(const QorDialog* /*widget*/) {
    return nullptr;
}

} // namespace qor::desktop
