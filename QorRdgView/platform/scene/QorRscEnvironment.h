#pragma once

#include "platform/scene/QorIRscEnvironment.h"
#include "platform/scene/QorRscValues.h"

/// The surroundings in a document.
class QorRscEnvironment : public QorImplements<QorRscObject, QorIRscEnvironment> {
    QorDeclareClass(QorRscEnvironment)
    QorRscEnvironmentAttributes(QorDefinePair)

        QorRscEnvironment() = default;

    [[nodiscard]] const QorRscKind& GetKind() const override { return Kind(); }

    [[nodiscard]] static const QorRscKind& Kind();

    [[nodiscard]] bool IsActive() const override { return active; }

    QorResult SetActive(bool iActive) override { return Put("Active", active, iActive); }

protected:
    ~QorRscEnvironment() override = default;

private:
    bool active = true;
};
