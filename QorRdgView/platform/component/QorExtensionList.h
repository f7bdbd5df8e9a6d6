#pragma once

#include "platform/component/QorExtension.h"

#include <vector>

/// The extensions that one object has made so far, and the interfaces that they have answered.
class QorExtensionList {
public:
    QorExtensionList() = default;
    ~QorExtensionList();
    QorExtensionList(const QorExtensionList&) = delete;
    QorExtensionList& operator=(const QorExtensionList&) = delete;

    /// The interface pointer, made on first demand from what is registered for the owner's class;
    /// else null.
    [[nodiscard]] void* Find(QorBaseUnknown& iOwner, const QorInterfaceId& iInterface);

private:
    struct Answer {
        const QorInterfaceId* interface;
        void* pointer; ///< null: nothing is registered that answers it
    };

    struct Made {
        QorExtension::Factory factory;
        QorExtension* extension;
    };

    [[nodiscard]] void* Make(QorBaseUnknown& iOwner, const QorInterfaceId& iInterface);
    [[nodiscard]] QorExtension* FindOrMake(QorBaseUnknown& iOwner, QorExtension::Factory iFactory);

    std::vector<Answer> answers;
    unsigned registrations = 0; ///< how many had been made or taken back when the answers were
    std::vector<Made> extensions;
};
