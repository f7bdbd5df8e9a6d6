#pragma once

#include "platform/system/QorEnvironment.h"

#include <utility>

/// Sets an environment variable, or unsets it, and gives it its former value back at the end.
class QorScopedVariable {
public:
    QorScopedVariable(QorString iName, const std::optional<QorUnicodeString>& iValue)
        : name(std::move(iName)), before(QorGetEnv(name)) {
        QorSetEnv(name, iValue);
    }

    ~QorScopedVariable() { QorSetEnv(name, before); }

    QorScopedVariable(const QorScopedVariable&) = delete;
    QorScopedVariable& operator=(const QorScopedVariable&) = delete;

private:
    QorString name;
    std::optional<QorUnicodeString> before;
};
