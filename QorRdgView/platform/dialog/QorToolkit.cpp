#include "platform/dialog/QorToolkit.h"

namespace {

QorToolkit* theToolkit = nullptr;

} // namespace

QorToolkit* QorToolkit::GetInstalled() {
    return theToolkit;
}

void QorToolkit::Install(QorToolkit* iToolkit) {
    theToolkit = iToolkit;
}
