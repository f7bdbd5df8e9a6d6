#include "platform/frame/QorIContextualMenu.h"

QorExtIContextualMenu::QorExtIContextualMenu(QorBaseUnknown* iOwner)
    : QorImplements(iOwner), menu(QorMake<QorCmdContainer>(nullptr, "contextualMenu")) {}

QorExtIContextualMenu::~QorExtIContextualMenu() = default;

QorImplementClass(QorExtIContextualMenu, QorExtension)
