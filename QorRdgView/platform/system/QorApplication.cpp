#include "platform/system/QorApplication.h"

namespace {

QorApplication* theApplication = nullptr;

} // namespace

QorApplication::QorApplication(QorEventLoop& iLoop) : loop(iLoop) {
    theApplication = this;
}

QorApplication::~QorApplication() {
    if (theApplication == this)
        theApplication = nullptr;
}

QorApplication* QorApplication::MainApplication() {
    return theApplication;
}
