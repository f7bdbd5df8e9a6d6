#include "platform/frame/QorCommandSelector.h"

QorCommandSelector* QorCommandSelector::GetDefaultCommandSelectorInstance() {
    static QorCommandSelector selector;
    return &selector;
}

QorCommand* QorCommandSelector::GetActivatedCommand() const {
    return commands.empty() ? nullptr : commands.back();
}

void QorCommandSelector::Activate(QorCommand* iCommand) {
    if (iCommand == nullptr)
        return;
    Deactivate(iCommand);
    commands.push_back(iCommand);
}

void QorCommandSelector::Deactivate(QorCommand* iCommand) {
    std::erase(commands, iCommand);
}
