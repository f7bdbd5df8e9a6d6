#pragma once

#include "scenes/QorRdgScene.h"

/// A scene in the form of the catalog of predefined scenes, for their authors: to be pasted there
/// once the key prefix `Scene` has got its number. Lights that the scene does not use are left out.
[[nodiscard]] std::string QorPrintScene(const QorRdgScene& iScene);
