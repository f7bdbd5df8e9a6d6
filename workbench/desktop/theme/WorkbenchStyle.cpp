#include "workbench/desktop/theme/WorkbenchStyle.h"

namespace qor::desktop {

WorkbenchStyle::WorkbenchStyle() : QProxyStyle(QStringLiteral("fusion")) {}

} // namespace qor::desktop
