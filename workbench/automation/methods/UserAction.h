#pragma once

#include "platform/dialog/QorDlgStyle.h"
#include "workbench/automation/Json.h"

#include <string>

namespace qor::automation {

/// The answer to something that a person did to the object named \p name: `{}` when it was done.
/// Throws Error otherwise.
Json answerAction(QorUserResult result, const std::string& name);

} // namespace qor::automation
