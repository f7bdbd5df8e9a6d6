#pragma once

#include "platform/scene/QorIRscCamera.h"
#include "platform/scene/QorRscValues.h"

/// A camera of a document.
class QorRscCamera : public QorImplements<QorRscObject, QorIRscCamera> {
    QorDeclareClass(QorRscCamera)
    QorRscCameraAttributes(QorDefinePair)

        QorRscCamera() = default;

    [[nodiscard]] const QorRscKind& GetKind() const override { return Kind(); }

    [[nodiscard]] static const QorRscKind& Kind();

    [[nodiscard]] QorUnicodeString GetName() const override { return GetAlias(); }

    [[nodiscard]] QorView GetView() const override;
    QorResult SetView(const QorView& iView) override;

protected:
    ~QorRscCamera() override = default;
};
