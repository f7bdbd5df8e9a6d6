// The catalogs of the scene dialog, in every language that there is.
#include "platform/text/QorCatalogFile.h"
#include "tests/scenes/SceneDialogTest.h"

#include <fstream>
#include <iterator>

namespace {

class SceneTexts : public SceneDialogTest {
protected:
    static QorCatalogEntries Read(const std::string& iFile) {
        std::ifstream file(std::string(QOR_RESOURCES "/messages/") + iFile, std::ios::binary);
        EXPECT_TRUE(file.is_open()) << iFile;
        QorCatalogEntries entries;
        QorReadCatalogText(std::string(std::istreambuf_iterator<char>(file), {}), iFile, entries);
        return entries;
    }

    static void ExpectTexts(const QorDialog& iWidget) {
        EXPECT_FALSE(iWidget.GetTitle().IsNull()) << iWidget.GetName();
        EXPECT_FALSE(iWidget.GetShortHelp().IsNull()) << iWidget.GetName();
        EXPECT_FALSE(iWidget.GetLongHelp().IsNull()) << iWidget.GetName();
        for (const QorDialog* inner : iWidget.GetWidgets())
            ExpectTexts(*inner);
    }
};

TEST_F(SceneTexts, EveryWidgetHasATitleATooltipAndAHelp) {
    opener->Open();
    ExpectTexts(*opener->scenes);
    Person::Check("sceneDialog/customRadio");
    loop.RunPosted();
    ExpectTexts(*opener->scenes);
    Person::Press("sceneDialog/backgroundButton");
    EXPECT_EQ(Person::Find("fileBox")->GetTitle(), "Choose Background Picture");
}

TEST_F(SceneTexts, TranslationsHaveTheSameKeysAndTheirOwnWords) {
    for (const std::string name :
         {"QorRdgSceneDialog", "QorRdgScenePredefinedFrame", "QorRdgSceneCustomFrame",
          "QorRdgIconList", "QorRscScene", "QorRdgScenes"}) {
        const QorCatalogEntries plain = Read(name + ".QorMsg");
        EXPECT_FALSE(plain.empty()) << name;
        for (const std::string tongue : {"fr/", "de/"}) {
            SCOPED_TRACE(tongue + name);
            const QorCatalogEntries translated = Read(tongue + name + ".QorMsg");
            EXPECT_EQ(translated.size(), plain.size());
            for (const auto& [key, text] : plain) {
                const auto found = translated.find(key);
                ASSERT_NE(found, translated.end()) << key;
                EXPECT_FALSE(found->second.empty()) << key;
                if (key.ends_with("Help")) {
                    EXPECT_NE(found->second, text) << key << " is not translated";
                }
            }
        }
    }
}

} // namespace
