#include "platform/component/QorNotification.h"

QorImplementClass(QorNotification, QorBaseUnknown)
