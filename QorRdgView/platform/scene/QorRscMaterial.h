#pragma once

#include "platform/scene/QorIRscMaterial.h"
#include "platform/scene/QorRscValues.h"

/// A material of a document. Its values are those of the graphic material, whose content id
/// changes with them.
class QorRscMaterial : public QorImplements<QorRscObject, QorIRscMaterial> {
    QorDeclareClass(QorRscMaterial)
    QorRscMaterialAttributes(QorOverridePair)

        /// Around a graphic material of its own, with default values.
        QorRscMaterial();
    /// Around \p iMaterial, which is not null; holds a reference. Takes its name as the alias.
    explicit QorRscMaterial(QorGraphicMaterial* iMaterial);

    [[nodiscard]] const QorRscKind& GetKind() const override { return Kind(); }

    [[nodiscard]] static const QorRscKind& Kind();

    [[nodiscard]] QorGraphicMaterial* GetGraphicMaterial() const override { return material.Get(); }

protected:
    ~QorRscMaterial() override = default;

    void Renamed() override { material->name = GetAlias().Str(); }

private:
    /// Stores a value in the graphic material when the rule takes it.
    template <class T>
    QorResult PutInMaterial(const char* iName, T& ioMember, const T& iValue);
    QorResult PutColor(const char* iName, float* ioColor, const QorRscColor& iValue);

    QorVar<QorGraphicMaterial> material;
};
