#include "platform/scene/QorRscContainer.h"

#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/scene/QorRscCamera.h"
#include "platform/scene/QorRscEnvironment.h"
#include "platform/scene/QorRscLight.h"
#include "platform/scene/QorRscMaterial.h"
#include "platform/scene/QorRscShooting.h"

#include <algorithm>
#include <set>

QorImplementClass(QorRscContainer, QorExtension)

namespace {

bool RegisterOnce() {
    constexpr auto create = &QorCreateExtension<QorRscContainer>;
    for (const QorInterfaceId* id :
         {&QorIRscPersistentShooting::ClassId(), &QorIRscPersistentLight::ClassId(),
          &QorIRscPersistentEnvironment::ClassId(), &QorIRscPersistentCamera::ClassId(),
          &QorIRscPersistentMaterial::ClassId(), &QorIModelEvents::ClassId()})
        QorExtension::Register(QorDocument::ClassName(), *id, create);
    return true;
}

template <class I>
QorListOf<I> ListAs(const QorRscObjects& iObjects) {
    QorListOf<I> list;
    for (const QorRscObject_var& object : iObjects)
        list.Append(QorQuery<I>(object).Get());
    return list;
}

template <class I>
QorVar<I> CreateAs(QorRscContainer& ioContainer, const QorRscKind& iKind) {
    return QorQuery<I>(ioContainer.CreateObject(iKind.name));
}

bool LeadsThrough(QorBaseUnknown* iElement, const QorRscObject& iObject) {
    const auto* path = dynamic_cast<QorPathElement*>(iElement);
    if (path == nullptr)
        return QorRscObject::From(iElement) == &iObject;
    for (int i = 0; i < path->GetSize(); ++i)
        if (QorRscObject::From(path->GetElement(i)) == &iObject)
            return true;
    return false;
}

/// Takes paths through the object out of the selections of the document's editors.
void Deselect(const QorDocument* iDocument, const QorRscObject& iObject) {
    const QorFrmLayout* layout = QorFrmLayout::GetCurrentLayout();
    if (layout == nullptr)
        return;
    for (const QorFrmEditor* editor : layout->GetEditors())
        for (int i = editor->GetDocument() == iDocument ? editor->GetCSO()->GetSize() : 0; i > 0;
             --i)
            if (LeadsThrough(editor->GetCSO()->GetElement(i), iObject))
                editor->GetCSO()->RemoveElement(editor->GetCSO()->GetElement(i));
}

QorUnicodeString Numbered(const QorUnicodeString& iBase, int iNumber) {
    return iBase + "." + QorUnicodeString(std::to_string(iNumber));
}

} // namespace

QorRscContainer::QorRscContainer(QorBaseUnknown* iDocument) : QorImplements(iDocument) {}

QorRscContainer::~QorRscContainer() {
    Clear();
}

void QorRscContainer::Register() {
    [[maybe_unused]] static const bool registered = RegisterOnce();
}

QorRscContainer* QorRscContainer::Of(QorDocument* iDocument) {
    Register();
    const auto shootings = QorQuery<QorIRscPersistentShooting>(iDocument);
    return shootings ? dynamic_cast<QorRscContainer*>(shootings->GetImplementation()) : nullptr;
}

QorDocument* QorRscContainer::GetDocument() const {
    return static_cast<QorDocument*>(GetOwner());
}

QorRscObjects QorRscContainer::ListObjects(const QorString& iKind) const {
    QorRscObjects list;
    for (const QorRscObject_var& object : objects)
        if (object->GetKind().name == iKind)
            list.Append(object.Get());
    return list;
}

QorRscObjects QorRscContainer::FindObjects(const QorString& iKind,
                                           const QorUnicodeString& iAlias) const {
    QorRscObjects list;
    for (const QorRscObject_var& object : ListObjects(iKind))
        if (object->GetAlias() == iAlias)
            list.Append(object.Get());
    return list;
}

QorRscObject_var QorRscContainer::CreateObject(const QorString& iKind,
                                               const QorUnicodeString& iAlias) {
    const QorRscKind* kind = QorRscKind::Find(iKind);
    if (kind == nullptr)
        return nullptr;
    auto object = QorAdopt(kind->create());
    object->SetAlias(iAlias);
    AddObject(object.Get());
    return object;
}

QorResult QorRscContainer::AddObject(QorRscObject* iObject) {
    if (iObject == nullptr || iObject->container != nullptr)
        return E_FAIL;
    iObject->Rename(iObject->alias.IsNull() ? MakeUp(iObject->GetKind())
                                            : MakeUnique(*iObject, iObject->alias));
    iObject->container = this;
    objects.Append(iObject);
    Changed();
    iObject->Dispatch(QorMake<QorCreate>(iObject).Get());
    return S_OK;
}

QorResult QorRscContainer::RemoveObject(QorRscObject* iObject) {
    if (iObject == nullptr || iObject->container != this)
        return E_FAIL;
    const QorRscObject_var alive(iObject);
    objects.RemovePosition(objects.Locate(iObject));
    ForgetReferencesTo(*iObject);
    Deselect(GetDocument(), *iObject);
    Changed();
    iObject->Dispatch(QorMake<QorRemove>(iObject).Get());
    iObject->container = nullptr;
    return S_OK;
}

void QorRscContainer::Clear() {
    for (const QorRscObject_var& object : objects)
        object->container = nullptr;
    objects.RemoveAll();
}

void QorRscContainer::Dispatch(QorNotification* iNotification) {
    if (iNotification != nullptr)
        callbacks.DispatchCallbacks(iNotification->GetEventName(), GetDocument(), iNotification);
}

QorUnicodeString QorRscContainer::MakeUnique(const QorRscObject& iObject,
                                             const QorUnicodeString& iWanted) const {
    const QorRscKind& kind = iObject.GetKind();
    const auto isTaken = [&](const QorUnicodeString& iName) {
        return std::ranges::any_of(objects, [&](const QorRscObject_var& iOther) {
            return iOther.Get() != &iObject && &iOther->GetKind() == &kind &&
                   iOther->GetAlias() == iName;
        });
    };
    if (!kind.uniqueNames || !isTaken(iWanted))
        return iWanted;
    int number = 2;
    while (isTaken(Numbered(iWanted, number)))
        ++number;
    return Numbered(iWanted, number);
}

QorUnicodeString QorRscContainer::MakeUp(const QorRscKind& iKind) const {
    std::set<QorUnicodeString> taken;
    for (const QorRscObject_var& object : objects)
        if (&object->GetKind() == &iKind)
            taken.insert(object->GetAlias());
    int number = 1;
    while (taken.contains(Numbered(iKind.title, number)))
        ++number;
    return Numbered(iKind.title, number);
}

void QorRscContainer::ForgetReferencesTo(const QorRscObject& iObject) {
    for (const QorRscObject_var& holder : objects)
        holder->ForgetReferencesTo(iObject);
}

void QorRscContainer::Changed() const {
    if (listener)
        listener();
}

QorListOf<QorIRscShooting> QorRscContainer::ListShootings(const QorString& iClass, int /*iDepth*/) {
    const bool isShooting =
        iClass == QorIRscShooting::ClassName() || iClass == QorRscShooting::ClassName();
    return isShooting ? ListAs<QorIRscShooting>(ListObjects(QorRscShooting::Kind().name))
                      : QorListOf<QorIRscShooting>();
}

/// The three operations of one container interface.
#define QorContainerOf(One)                                                                        \
    QorIRsc##One##_var QorRscContainer::Create##One() {                                            \
        return CreateAs<QorIRsc##One>(*this, QorRsc##One::Kind());                                 \
    }                                                                                              \
    QorResult QorRscContainer::Remove##One(QorIRsc##One* i##One) {                                 \
        return RemoveObject(QorRscObject::From(i##One));                                           \
    }

#define QorListContainerOf(One)                                                                    \
    QorListOf<QorIRsc##One> QorRscContainer::List##One##s(int /*iDepth*/) {                        \
        return ListAs<QorIRsc##One>(ListObjects(QorRsc##One::Kind().name));                        \
    }                                                                                              \
    QorContainerOf(One)

QorContainerOf(Shooting) QorListContainerOf(Light) QorListContainerOf(Environment)
    QorListContainerOf(Camera) QorListContainerOf(Material)
