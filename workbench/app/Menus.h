#pragma once

#include "platform/frame/QorApplicationFrame.h"

namespace qor::app {

/// Fills the menu bar and the tool bars of \p frame with starters of the commands that are there:
/// a row whose command does not exist is left out, and so is a menu without rows. To be called
/// after the commands were made and before the frame is shown.
void addMenus(QorApplicationFrame& frame);

} // namespace qor::app
