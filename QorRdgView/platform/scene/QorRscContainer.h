#pragma once

#include "platform/component/QorExtension.h"
#include "platform/frame/QorDocument.h"
#include "platform/scene/QorIModelEvents.h"
#include "platform/scene/QorIRscPersistentCamera.h"
#include "platform/scene/QorIRscPersistentEnvironment.h"
#include "platform/scene/QorIRscPersistentLight.h"
#include "platform/scene/QorIRscPersistentMaterial.h"
#include "platform/scene/QorIRscPersistentShooting.h"
#include "platform/scene/QorRscObject.h"

#include <functional>

using QorRscObjects = QorListOf<QorRscObject>;

/// All objects of a document: an extension of every QorDocument, reached through its interfaces or
/// Of. As QorIModelEvents it publishes the events of all its objects, with the document as
/// publisher.
class QorRscContainer
    : public QorImplements<QorExtension,
                           QorIRscPersistentShooting,
                           QorIRscPersistentLight,
                           QorIRscPersistentEnvironment,
                           QorIRscPersistentCamera,
                           QorIRscPersistentMaterial,
                           QorIModelEvents> {
    QorDeclareClass(QorRscContainer)

    explicit QorRscContainer(QorBaseUnknown* iDocument);

    /// The container of \p iDocument; null for null. No reference added: it lives as long as the
    /// document.
    [[nodiscard]] static QorRscContainer* Of(QorDocument* iDocument);

    /// Makes documents answer the interfaces above; done by Of, and by programs at their start.
    static void Register();

    /// The objects of one kind, in the order of creation, counted from 1.
    [[nodiscard]] QorRscObjects ListObjects(const QorString& iKind) const;
    /// The objects of the kind that are called so; several where names are not unique.
    [[nodiscard]] QorRscObjects FindObjects(const QorString& iKind,
                                            const QorUnicodeString& iAlias) const;
    /// A new object with default values, called \p iAlias as SetAlias would, or by a name made up
    /// when that is empty. Dispatches QorCreate. Null for a kind that is unknown.
    [[nodiscard]] QorRscObject_var CreateObject(const QorString& iKind,
                                                const QorUnicodeString& iAlias = {});
    /// Takes over an object made elsewhere, as CreateObject does; its values are kept. E_FAIL when
    /// it is null or in a document already.
    QorResult AddObject(QorRscObject* iObject);
    /// Takes it out; references to it become null, selections lose it; dispatches QorRemove. E_FAIL
    /// when it is not in the document.
    QorResult RemoveObject(QorRscObject* iObject);
    /// Empties the document without a word: no events, no cascades.
    void Clear();

    /// Called after every change of an object, of its name, and of what is in the container; null
    /// for nobody.
    void SetChangeListener(std::function<void()> iListener) { listener = std::move(iListener); }

    [[nodiscard]] QorDocument* GetDocument() const;

    QorListOf<QorIRscShooting> ListShootings(const QorString& iClass = QorIRscShooting::ClassName(),
                                             int iDepth = 1) override;
    QorIRscShooting_var CreateShooting() override;
    QorResult RemoveShooting(QorIRscShooting* iShooting) override;
    QorListOf<QorIRscLight> ListLights(int iDepth = 0) override;
    QorIRscLight_var CreateLight() override;
    QorResult RemoveLight(QorIRscLight* iLight) override;
    QorListOf<QorIRscEnvironment> ListEnvironments(int iDepth = 0) override;
    QorIRscEnvironment_var CreateEnvironment() override;
    QorResult RemoveEnvironment(QorIRscEnvironment* iEnvironment) override;
    QorListOf<QorIRscCamera> ListCameras(int iDepth = 0) override;
    QorIRscCamera_var CreateCamera() override;
    QorResult RemoveCamera(QorIRscCamera* iCamera) override;
    QorListOf<QorIRscMaterial> ListMaterials(int iDepth = 0) override;
    QorIRscMaterial_var CreateMaterial() override;
    QorResult RemoveMaterial(QorIRscMaterial* iMaterial) override;

    QorCallbackManager* GetConnexion() override { return &callbacks; }

    void Dispatch(QorNotification* iNotification) override;

protected:
    ~QorRscContainer() override;

private:
    friend class QorRscObject;

    /// \p iWanted, or with a number behind it when another object of the kind is called so.
    [[nodiscard]] QorUnicodeString MakeUnique(const QorRscObject& iObject,
                                              const QorUnicodeString& iWanted) const;
    [[nodiscard]] QorUnicodeString MakeUp(const QorRscKind& iKind) const;
    void ForgetReferencesTo(const QorRscObject& iObject);
    void Changed() const;

    QorRscObjects objects; ///< of all kinds
    QorCallbackManager callbacks;
    std::function<void()> listener;
};
