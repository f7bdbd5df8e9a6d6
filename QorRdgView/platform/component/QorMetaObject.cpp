#include "platform/component/QorMetaObject.h"

#include <cstring>
#include <map>
#include <mutex>

namespace {

/// Every meta-object in use.
struct Registry {
    std::mutex mutex;
    std::map<std::string, const QorMetaObject*, std::less<>> classes;
};

Registry& Classes() {
    static auto* registry = new Registry;
    return *registry;
}

} // namespace

QorMetaObject::QorMetaObject(const char* iName, const QorMetaObject* iBase, Creator iCreate)
    : name(iName), eventName(iName), base(iBase), create(iCreate) {
    Registry& registry = Classes();
    const std::scoped_lock lock(registry.mutex);
    registry.classes.emplace(iName, this);
}

bool QorMetaObject::IsAKindOf(const char* iName) const {
    for (const QorMetaObject* meta = this; meta != nullptr; meta = meta->base)
        if (std::strcmp(meta->name, iName) == 0)
            return true;
    return false;
}

bool QorMetaObject::IsAKindOf(const QorMetaObject& iClass) const {
    for (const QorMetaObject* meta = this; meta != nullptr; meta = meta->base)
        if (meta == &iClass)
            return true;
    return false;
}

const QorMetaObject* QorMetaObject::Find(const std::string& iName) {
    Registry& registry = Classes();
    const std::scoped_lock lock(registry.mutex);
    const auto found = registry.classes.find(iName);
    return found == registry.classes.end() ? nullptr : found->second;
}

std::vector<std::pair<std::string, long>> QorMetaObject::LiveObjects() {
    Registry& registry = Classes();
    const std::scoped_lock lock(registry.mutex);
    std::vector<std::pair<std::string, long>> counts;
    for (const auto& [name, meta] : registry.classes)
        if (meta->GetLiveCount() != 0)
            counts.emplace_back(name, meta->GetLiveCount());
    return counts;
}
