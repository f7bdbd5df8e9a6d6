#pragma once

#include "platform/component/QorNotification.h"

/// A new rectangle is being drawn.
QorDeclareNotification(QorRdgAreaSelectorBEGIN_AREAEvt);
/// The rectangle has changed.
QorDeclareNotification(QorRdgAreaSelectorEND_AREAEvt);
