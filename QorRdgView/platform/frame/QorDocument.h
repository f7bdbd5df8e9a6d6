#pragma once

#include "platform/frame/QorPathElement.h"
#include "platform/text/QorString.h"

/// Base of all documents: what an editor edits. What a document holds it offers through interfaces.
class QorDocument : public QorBaseUnknown {
    QorDeclareClass(QorDocument)

    explicit QorDocument(const QorUnicodeString& iName = QorUnicodeString());

    /// What a person calls the document; usually the name of its file.
    [[nodiscard]] const QorUnicodeString& GetName() const { return name; }

    void SetName(const QorUnicodeString& iName) { name = iName; }

    /// The path of \p iObject in the document, from the root down to it. The base knows no
    /// structure: its paths hold the object alone. Null for a null object.
    [[nodiscard]] virtual QorVar<QorPathElement> BuildPathElement(QorBaseUnknown* iObject);

protected:
    ~QorDocument() override;

private:
    QorUnicodeString name;
};

QorDeclareHandle(QorDocument);
