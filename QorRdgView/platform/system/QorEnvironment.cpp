#include "platform/system/QorEnvironment.h"

#include "platform/text/QorCatalogs.h"

#include <cstdlib>

std::optional<QorUnicodeString> QorGetEnv(const QorString& iName) {
    const char* value = std::getenv(iName.CastToCharPtr());
    if (value == nullptr)
        return std::nullopt;
    return QorUnicodeString(value);
}

bool QorSetEnv(const QorString& iName, const std::optional<QorUnicodeString>& iValue) {
    const int failed = iValue ? setenv(iName.CastToCharPtr(), iValue->CastToCharPtr(), 1)
                              : unsetenv(iName.CastToCharPtr());
    QorCatalogs::Refresh();
    return failed == 0;
}
