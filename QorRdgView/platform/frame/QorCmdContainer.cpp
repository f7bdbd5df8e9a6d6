#include "platform/frame/QorCmdContainer.h"

#include "platform/text/QorMsgCatalog.h"

QorCmdAccess::QorCmdAccess(QorCommand* iFather, const QorString& iName)
    : QorCommand(iFather, iName) {}

QorUnicodeString QorCmdAccess::GetTitle() const {
    return QorMsgCatalog::BuildMessage("QorCommandHeaders", GetName() + ".Title", {},
                                       GetName().Str());
}

QorCmdStarter::QorCmdStarter(QorCommand* iFather, const QorString& iName, const QorString& iHeader)
    : QorCmdAccess(iFather, iName), headerName(iHeader) {}

QorUnicodeString QorCmdStarter::GetTitle() const {
    const QorCommandHeader* header = GetHeader();
    return header != nullptr ? header->GetTitle() : QorCmdAccess::GetTitle();
}

QorCmdSeparator::QorCmdSeparator(QorCommand* iFather, const QorString& iName)
    : QorCmdAccess(iFather, iName) {}

QorCmdContainer::QorCmdContainer(QorCommand* iFather, const QorString& iName)
    : QorCmdAccess(iFather, iName) {}

void QorCmdContainer::AddChild(QorCmdAccess* iEntry) {
    if (iEntry != nullptr)
        entries.emplace_back(iEntry);
}

QorImplementClass(QorCmdAccess, QorCommand)
QorImplementClass(QorCmdStarter, QorCmdAccess)
QorImplementClass(QorCmdSeparator, QorCmdAccess)
QorImplementClass(QorCmdContainer, QorCmdAccess)
