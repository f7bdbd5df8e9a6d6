#include "QorVersion.h"

const char* QorVersion() {
    return QOR_VERSION;
}
