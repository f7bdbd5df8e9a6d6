// The catalogs of the options dialog, in every language that there is.
#include "platform/text/QorCatalogFile.h"
#include "platform/text/QorMsgCatalog.h"
#include "tests/quickrender/OptionsDialogTest.h"

#include <fstream>
#include <iterator>

namespace {

class OptionsTexts : public OptionsDialogTest {
protected:
    static QorCatalogEntries Read(const std::string& iFile) {
        std::ifstream file(std::string(QOR_RESOURCES "/messages/") + iFile, std::ios::binary);
        EXPECT_TRUE(file.is_open()) << iFile;
        QorCatalogEntries entries;
        QorReadCatalogText(std::string(std::istreambuf_iterator<char>(file), {}), iFile, entries);
        return entries;
    }
};

TEST_F(OptionsTexts, EveryWidgetHasATitleATooltipAndAHelp) {
    opener->Open();
    std::vector<QorDialog*> widgets = opener->options->GetWidgets();
    widgets.push_back(opener->options);
    for (const QorDialog* widget : widgets) {
        EXPECT_FALSE(widget->GetTitle().IsNull()) << widget->GetName();
        EXPECT_FALSE(widget->GetShortHelp().IsNull()) << widget->GetName();
        EXPECT_FALSE(widget->GetLongHelp().IsNull()) << widget->GetName();
    }
}

TEST_F(OptionsTexts, LinesComeFromTheCatalog) {
    opener->Open();
    EXPECT_EQ(Quality()->GetLines(), (std::vector<QorUnicodeString>{"Draft", "Standard", "High"}));
    EXPECT_EQ(Unit()->GetLines(), (std::vector<QorUnicodeString>{"pixels/inch", "pixels/cm"}));
}

TEST_F(OptionsTexts, TranslationsHaveTheSameKeysAndTheirOwnWords) {
    const QorCatalogEntries plain = Read("QorRdgOptionsDialog.QorMsg");
    EXPECT_GT(plain.size(), 20U);
    for (const char* tongue : {"fr", "de"}) {
        const QorCatalogEntries translated =
            Read(std::string(tongue) + "/QorRdgOptionsDialog.QorMsg");
        EXPECT_EQ(translated.size(), plain.size()) << tongue;
        for (const auto& [key, text] : plain) {
            const auto found = translated.find(key);
            ASSERT_NE(found, translated.end()) << tongue << " lacks " << key;
            EXPECT_FALSE(found->second.empty()) << tongue << " " << key;
            if (key.ends_with("Help")) {
                EXPECT_NE(found->second, text) << tongue << " " << key << " is not translated";
            }
        }
    }
}

TEST_F(OptionsTexts, FollowTheLanguage) {
    struct Row {
        const char* language;
        const char* title;
        const char* quality;
    };

    for (const Row& row : {Row{"fr", "Options du rendu rapide", "Brouillon"},
                           Row{"de", "Optionen für schnelles Rendern", "Entwurf"},
                           Row{"nl", "Quick Render Options", "Draft"}}) {
        const QorScopedVariable region("LC_ALL", "en_US.UTF-8");
        const QorScopedVariable tongue("LANGUAGE", row.language);
        opener->Open();
        EXPECT_EQ(opener->options->GetTitle(), row.title);
        EXPECT_EQ(Quality()->GetLines().at(0), row.quality);
        Person::Cancel("optionsDialog");
        loop.RunPosted();
    }
}

} // namespace
