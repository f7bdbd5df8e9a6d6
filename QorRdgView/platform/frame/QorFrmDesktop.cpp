#include "platform/frame/QorFrmDesktop.h"

namespace {

QorFrmDesktop* installed = nullptr;

} // namespace

QorFrmDesktop* QorFrmDesktop::GetInstalled() {
    return installed;
}

void QorFrmDesktop::Install(QorFrmDesktop* iDesktop) {
    installed = iDesktop;
}
