// The texts of a widget: set by program, or from the catalogs of the classes in and around it.
#include "platform/dialog/QorDialog.h"
#include "platform/text/QorMsgCatalog.h"

QorString QorDialog::GetResourceFilename(int iLevel) const {
    const QorMetaObject* aClass = &GetMetaObject();
    for (int level = 0; level < iLevel && aClass != nullptr; ++level)
        aClass = aClass->GetBase();
    if (aClass == nullptr || QorDialog::MetaObject().IsAKindOf(*aClass))
        return {};
    return aClass->GetName();
}

/// Looks in the catalogs of this widget for \p iKey of \p iWidget, which is this widget itself or
/// one in it.
const std::string* QorDialog::FindTextOf(const QorDialog& iWidget, const char* iKey) const {
    const std::string key =
        &iWidget == this ? std::string(iKey) : iWidget.GetName().Str() + "." + iKey;
    for (int level = 0;; ++level) {
        const QorString catalog = GetResourceFilename(level);
        if (catalog.IsNull())
            return nullptr;
        if (const std::string* text = QorMsgCatalog::FindMessage(catalog.Str(), key))
            return text;
    }
}

const std::string* QorDialog::FindText(const char* iKey) const {
    if (const std::string* text = FindTextOf(*this, iKey))
        return text;
    for (const QorDialog* around = GetFatherDialog(); around != nullptr;
         around = around->GetFatherDialog()) {
        if (const std::string* text = around->FindTextOf(*this, iKey))
            return text;
        if (around->IsWindow())
            break;
    }
    return nullptr;
}

const QorUnicodeString& QorDialog::Resolve(const CatalogText& iText, const char* iKey) const {
    if (!iText.text) {
        const std::string* found = FindText(iKey);
        iText.text = found != nullptr ? QorUnicodeString(*found) : QorUnicodeString();
    }
    return *iText.text;
}

const QorUnicodeString& QorDialog::GetTitle() const {
    return Resolve(title, "Title");
}

const QorUnicodeString& QorDialog::GetShortHelp() const {
    return Resolve(shortHelp, "ShortHelp");
}

const QorUnicodeString& QorDialog::GetLongHelp() const {
    return Resolve(longHelp, "LongHelp");
}

const QorString& QorDialog::GetIconName() const {
    if (!icon) {
        const std::string* found = FindText("Icon");
        icon = found != nullptr ? QorString(*found) : QorString();
    }
    return *icon;
}

void QorDialog::SetTitle(const QorUnicodeString& iTitle) {
    title.text = iTitle;
    Changed(QorAspectTitle);
}

void QorDialog::SetShortHelp(const QorUnicodeString& iText) {
    shortHelp.text = iText;
    Changed(QorAspectHelp);
}

void QorDialog::SetLongHelp(const QorUnicodeString& iText) {
    longHelp.text = iText;
    Changed(QorAspectHelp);
}

void QorDialog::SetIconName(const QorString& iIcon) {
    icon = iIcon;
    Changed(QorAspectIcon);
}
