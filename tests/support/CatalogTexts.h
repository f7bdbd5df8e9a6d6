#pragma once

#include "platform/dialog/QorDialog.h"
#include "platform/text/QorCatalogFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// What a person reads, checked against the message catalogs that come with the program.
namespace QorCatalogTexts {

inline QorCatalogEntries Read(const std::string& iFile) {
    std::ifstream file(std::string(QOR_RESOURCES "/messages/") + iFile, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << iFile;
    QorCatalogEntries entries;
    QorReadCatalogText(std::string(std::istreambuf_iterator<char>(file), {}), iFile, entries);
    return entries;
}

/// A widget and all in it have a title, a tooltip and a help.
inline void ExpectTexts(const QorDialog& iWidget) {
    EXPECT_FALSE(iWidget.GetTitle().IsNull()) << iWidget.GetName();
    EXPECT_FALSE(iWidget.GetShortHelp().IsNull()) << iWidget.GetName();
    EXPECT_FALSE(iWidget.GetLongHelp().IsNull()) << iWidget.GetName();
    for (const QorDialog* inner : iWidget.GetWidgets())
        ExpectTexts(*inner);
}

/// French and German have all keys of a catalog, no empty text, and words of their own for those
/// whose key ends with one of \p iOwn; \p iSame are texts that are the same in every language.
inline void ExpectTranslated(const std::string& iCatalog,
                             const std::vector<std::string>& iOwn = {"Help"},
                             const std::vector<std::string>& iSame = {}) {
    const QorCatalogEntries plain = Read(iCatalog + ".QorMsg");
    EXPECT_FALSE(plain.empty()) << iCatalog;
    for (const char* tongue : {"fr/", "de/"}) {
        SCOPED_TRACE(tongue + iCatalog);
        const QorCatalogEntries translated = Read(tongue + iCatalog + ".QorMsg");
        EXPECT_EQ(translated.size(), plain.size());
        for (const auto& [key, text] : plain) {
            const auto found = translated.find(key);
            ASSERT_NE(found, translated.end()) << "lacks " << key;
            EXPECT_FALSE(found->second.empty()) << key;
            const bool own = std::any_of(iOwn.begin(), iOwn.end(), [&, k = key](const auto& end) {
                return k.ends_with(end);
            });
            if (own && std::find(iSame.begin(), iSame.end(), text) == iSame.end()) {
                EXPECT_NE(found->second, text) << key << " is not translated";
            }
        }
    }
}

} // namespace QorCatalogTexts
