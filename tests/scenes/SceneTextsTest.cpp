// The catalogs of the scene dialog, in every language that there is.
#include "tests/scenes/SceneDialogTest.h"
#include "tests/support/CatalogTexts.h"

namespace {

using SceneTexts = SceneDialogTest;
using QorCatalogTexts::ExpectTexts;

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
          "QorRdgIconList", "QorRscScene", "QorRdgScenes"})
        QorCatalogTexts::ExpectTranslated(name);
}

} // namespace
