#pragma once

#include "platform/scene/QorIRscShooting.h"
#include "platform/scene/QorRscValues.h"

/// A shooting of a document.
class QorRscShooting : public QorImplements<QorRscObject, QorIRscShooting> {
    QorDeclareClass(QorRscShooting)
    QorRscShootingPictureAttributes(QorDefinePair) QorRscShootingQualityAttributes(QorDefinePair)
        QorRscShootingPhotonsAttributes(QorDefinePair)
            QorRscShootingEffectsAttributes(QorDefinePair)
                QorRscShootingTimeAttributes(QorDefinePair)

                    QorRscShooting() = default;

    [[nodiscard]] const QorRscKind& GetKind() const override { return Kind(); }

    [[nodiscard]] static const QorRscKind& Kind();

    /// Where pictures go at first: the person's home folder, else the present one.
    [[nodiscard]] static QorUnicodeString DefaultDirectory();

    [[nodiscard]] bool IsCurrent() const override { return current; }

    QorResult SetCurrent(bool iCurrent) override;

    [[nodiscard]] const QorListOf<QorIRscLight>* GetLights() const override {
        return lights ? &*lights : nullptr;
    }

    QorResult SetLights(const QorListOf<QorIRscLight>& iLights) override;

    [[nodiscard]] int GetPredefinedQuality() const override { return predefinedQuality; }

    QorResult SetPredefinedQuality(int iQuality) override;

    [[nodiscard]] float GetCartoonThickness() const override { return cartoonThickness; }

    QorResult SetCartoonThickness(const double& iThickness) override;

protected:
    ~QorRscShooting() override = default;

private:
    /// For access by name, which knows no list that is not there.
    [[nodiscard]] QorListOf<QorIRscLight> GetLightsOrNone() const;
    QorResult SetLightsOrNone(const QorListOf<QorIRscLight>& iLights);

    bool current = false;
    std::optional<QorListOf<QorIRscLight>> lights;
    int predefinedQuality = 10;
    float cartoonThickness = 1.0F;
};
