#include "platform/component/QorExtension.h"

#include "platform/component/QorExtensionList.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace {

struct Registration {
    const QorInterfaceId* interface;
    QorExtension::Factory factory;
};

using Registrations = std::map<std::string, std::vector<Registration>, std::less<>>;

Registrations& Table() {
    static auto* table = new Registrations;
    return *table;
}

/// Grows with every registration made or taken back, so that objects ask again what nothing
/// answered.
unsigned& CountRegistrations() {
    static unsigned count = 0;
    return count;
}

auto FindIn(std::vector<Registration>& iRegistrations, const QorInterfaceId& iInterface) {
    return std::find_if(iRegistrations.begin(), iRegistrations.end(),
                        [&](const Registration& iOne) { return *iOne.interface == iInterface; });
}

QorExtension::Factory FindFactory(const QorMetaObject& iClass, const QorInterfaceId& iInterface) {
    for (const QorMetaObject* meta = &iClass; meta != nullptr; meta = meta->GetBase()) {
        const auto ofClass = Table().find(std::string_view(meta->GetName()));
        if (ofClass == Table().end())
            continue;
        const auto found = FindIn(ofClass->second, iInterface);
        if (found != ofClass->second.end())
            return found->factory;
    }
    return nullptr;
}

} // namespace

QorImplementClass(QorExtension, QorBaseUnknown)

unsigned QorExtension::AddRef() {
    return owner->AddRef();
}

unsigned QorExtension::Release() {
    return owner->Release();
}

QorResult QorExtension::QueryInterface(const QorInterfaceId& iInterface, void** oInterface) {
    return owner->QueryInterface(iInterface, oInterface);
}

void QorExtension::Register(const char* iClass,
                            const QorInterfaceId& iInterface,
                            Factory iFactory) {
    ++CountRegistrations();
    std::vector<Registration>& ofClass = Table()[iClass];
    const auto found = FindIn(ofClass, iInterface);
    if (found == ofClass.end())
        ofClass.push_back({&iInterface, iFactory});
    else
        found->factory = iFactory;
}

void QorExtension::Unregister(const char* iClass, const QorInterfaceId& iInterface) {
    ++CountRegistrations();
    const auto ofClass = Table().find(std::string_view(iClass));
    if (ofClass == Table().end())
        return;
    const auto found = FindIn(ofClass->second, iInterface);
    if (found != ofClass->second.end())
        ofClass->second.erase(found);
}

void* QorExtensionList::Find(QorBaseUnknown& iOwner, const QorInterfaceId& iInterface) {
    if (registrations != CountRegistrations()) {
        registrations = CountRegistrations();
        std::erase_if(answers, [](const Answer& iAnswer) { return iAnswer.pointer == nullptr; });
    }
    for (const Answer& answer : answers)
        if (*answer.interface == iInterface)
            return answer.pointer;
    void* pointer = Make(iOwner, iInterface);
    answers.push_back({&iInterface, pointer});
    return pointer;
}

void* QorExtensionList::Make(QorBaseUnknown& iOwner, const QorInterfaceId& iInterface) {
    const QorExtension::Factory factory = FindFactory(iOwner.GetMetaObject(), iInterface);
    QorExtension* extension = factory != nullptr ? FindOrMake(iOwner, factory) : nullptr;
    return extension != nullptr ? extension->FindOwnInterface(iInterface) : nullptr;
}

QorExtension* QorExtensionList::FindOrMake(QorBaseUnknown& iOwner, QorExtension::Factory iFactory) {
    for (const Made& made : extensions)
        if (made.factory == iFactory)
            return made.extension;
    QorExtension* extension = iFactory(&iOwner);
    if (extension != nullptr)
        extensions.push_back({iFactory, extension});
    return extension;
}

QorExtensionList::~QorExtensionList() {
    while (!extensions.empty()) {
        QorExtension* last = extensions.back().extension;
        extensions.pop_back();
        delete last;
    }
}
