#include "platform/frame/QorDocument.h"

QorDocument::QorDocument(const QorUnicodeString& iName) : name(iName) {}

QorDocument::~QorDocument() = default;

QorPathElement_var QorDocument::BuildPathElement(QorBaseUnknown* iObject) {
    if (iObject == nullptr)
        return nullptr;
    auto path = QorMake<QorPathElement>();
    path->AddChildElement(iObject);
    return path;
}

QorImplementClass(QorDocument, QorBaseUnknown)
