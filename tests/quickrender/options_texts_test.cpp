// The catalogs of the options dialog, in every language that there is.
#include "tests/quickrender/OptionsDialogTest.h"
#include "tests/support/CatalogTexts.h"

namespace {

using OptionsTexts = OptionsDialogTest;

TEST_F(OptionsTexts, EveryWidgetHasATitleATooltipAndAHelp) {
    opener->Open();
    QorCatalogTexts::ExpectTexts(*opener->options);
}

TEST_F(OptionsTexts, LinesComeFromTheCatalog) {
    opener->Open();
    EXPECT_EQ(Quality()->GetLines(), (std::vector<QorUnicodeString>{"Draft", "Standard", "High"}));
    EXPECT_EQ(Unit()->GetLines(), (std::vector<QorUnicodeString>{"pixels/inch", "pixels/cm"}));
}

TEST_F(OptionsTexts, TranslationsHaveTheSameKeysAndTheirOwnWords) {
    QorCatalogTexts::ExpectTranslated("QorRdgOptionsDialog");
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
