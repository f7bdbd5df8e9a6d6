#include "workbench/app/ActionHeader.h"

namespace qor::app {

ActionHeader::ActionHeader(QorCommand* owner, const ActionRow& row, const CommandContext& context)
    : QorCommandHeader(owner, row.name), row_(row), context_(context) {
    refresh();
}

QorResult ActionHeader::StartCommand() {
    if (!IsAvailable())
        return E_FAIL;
    const QorVar<ActionHeader> alive(this);
    row_.run(context_);
    if (!IsDying())
        refresh();
    return S_OK;
}

void ActionHeader::refresh() {
    const bool possible = row_.isPossible == nullptr || row_.isPossible(context_);
    if (row_.isOn != nullptr)
        ChangeCheckState(row_.isOn(context_) ? QorDlgCheck : QorDlgUncheck);
    if (possible)
        BecomeAvailable();
    else
        BecomeUnavailable();
}

QorImplementClass(ActionHeader, QorCommandHeader)

} // namespace qor::app
