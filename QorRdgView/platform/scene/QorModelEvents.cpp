#include "platform/scene/QorIModelEvents.h"

QorImplementClass(QorModelNotification, QorNotification)
QorImplementClass(QorCreate, QorModelNotification)
QorImplementClass(QorModify, QorModelNotification)
QorImplementClass(QorRemove, QorModelNotification)

QorModelNotification::QorModelNotification(QorBaseUnknown* iObject, const char* iClass, int iFlag)
    : object(iObject), concerned(iClass), flag(iFlag) {}

QorModelNotification::~QorModelNotification() = default;
