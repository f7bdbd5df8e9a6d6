#pragma once

#include <QProxyStyle>

namespace qor::desktop {

/// Draws all controls: flat, corners of 5 pixels, one accent, a ring around what has the focus; the
/// rest is left to Fusion. It reads the colours of the theme each time it draws.
class WorkbenchStyle : public QProxyStyle {
public:
    WorkbenchStyle();
};

} // namespace qor::desktop
