#pragma once

#include "platform/scene/QorIRscLight.h"
#include "platform/scene/QorRscValues.h"

/// A light of a document.
class QorRscLight : public QorImplements<QorRscObject, QorIRscLight> {
    QorDeclareClass(QorRscLight)
    QorRscLightAttributes(QorDefinePair)

        QorRscLight() = default;

    [[nodiscard]] const QorRscKind& GetKind() const override { return Kind(); }

    [[nodiscard]] static const QorRscKind& Kind();

    [[nodiscard]] bool IsActive() const override { return active; }

    QorResult SetActive(bool iActive) override { return Put("Active", active, iActive); }

protected:
    ~QorRscLight() override = default;

private:
    bool active = true;
};
