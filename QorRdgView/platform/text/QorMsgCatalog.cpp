#include "platform/text/QorMsgCatalog.h"

#include "platform/text/QorCatalogStore.h"

namespace {

/// The text with its parameters in place.
QorUnicodeString Substitute(std::string_view iText, const QorMsgParameters& iParameters) {
    std::string result;
    for (std::size_t i = 0; i < iText.size(); ++i) {
        const auto isMark = [&](std::size_t iAt) {
            return iAt + 2 < iText.size() && iText[iAt] == '/' && iText[iAt + 1] == 'P' &&
                   iText[iAt + 2] >= '1' && iText[iAt + 2] <= '9';
        };
        const bool escaped = iText[i] == '/' && isMark(i + 1);
        if (escaped) {
            result += iText.substr(i + 1, 3);
            i += 3;
        } else if (isMark(i)) {
            const auto number = static_cast<std::size_t>(iText[i + 2] - '1');
            if (number < iParameters.size())
                result += iParameters[number].Str();
            i += 2;
        } else {
            result += iText[i];
        }
    }
    return QorUnicodeString(std::move(result));
}

/// What can be said without a text.
QorUnicodeString Bare(const QorString& iKey, const QorMsgParameters& iParameters) {
    std::string result(iKey.Str());
    for (const QorUnicodeString& parameter : iParameters)
        result += (&parameter == &iParameters.front() ? ": " : ", ") + parameter.Str();
    return QorUnicodeString(std::move(result));
}

} // namespace

const std::string* QorMsgCatalog::FindMessage(std::string_view iCatalog, std::string_view iKey) {
    return QorGetMessageStore().Find(iCatalog, iKey);
}

QorUnicodeString QorMsgCatalog::BuildMessage(const QorString& iCatalog,
                                             const QorString& iKey,
                                             const QorMsgParameters& iParameters) {
    const std::string* text = FindMessage(iCatalog.Str(), iKey.Str());
    return text != nullptr ? Substitute(*text, iParameters) : Bare(iKey, iParameters);
}

QorUnicodeString QorMsgCatalog::BuildMessage(const QorString& iCatalog,
                                             const QorString& iKey,
                                             const QorMsgParameters& iParameters,
                                             const QorUnicodeString& iDefault) {
    const std::string* text = FindMessage(iCatalog.Str(), iKey.Str());
    return Substitute(text != nullptr ? *text : iDefault.Str(), iParameters);
}
