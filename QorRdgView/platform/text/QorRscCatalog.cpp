#include "platform/text/QorRscCatalog.h"

#include "platform/text/QorCatalogStore.h"

namespace {

template <class Text>
int BuildValue(const QorString& iCatalog, const QorString& iKey, Text& oValue) {
    const std::string* value = QorGetResourceStore().Find(iCatalog.Str(), iKey.Str());
    if (value == nullptr)
        return 0;
    oValue = Text(*value);
    return 1;
}

} // namespace

int QorRscCatalog::BuildResource(const QorString& iCatalog,
                                 const QorString& iKey,
                                 QorString& oValue) {
    return BuildValue(iCatalog, iKey, oValue);
}

int QorRscCatalog::BuildResource(const QorString& iCatalog,
                                 const QorString& iKey,
                                 QorUnicodeString& oValue) {
    return BuildValue(iCatalog, iKey, oValue);
}
