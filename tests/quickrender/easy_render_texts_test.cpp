// The catalogs of the quick render, in every language that there is.
#include "platform/text/QorMsgCatalog.h"
#include "platform/vis/QorRdgPictureFormats.h"
#include "tests/quickrender/EasyRenderTest.h"
#include "tests/support/CatalogTexts.h"

#include <filesystem>
#include <set>

namespace {

using EasyRenderTexts = EasyRenderTest;
using QorCatalogTexts::ExpectTexts;

constexpr const char* catalogs[] = {"QorRdgEasyRenderDialog", "QorRdgPictureProgress",
                                    "QorRdgShootingPictureFrame", "QorFMNotify",
                                    "QorFMAppFrameMsg"};

TEST_F(EasyRenderTexts, EveryWidgetHasATitleATooltipAndAHelpInEveryLanguage) {
    for (const char* tongue : {"en", "fr", "de"}) {
        SCOPED_TRACE(tongue);
        const QorScopedVariable region("LC_ALL", "en_US.UTF-8");
        const QorScopedVariable spoken("LANGUAGE", tongue);
        ExpectTexts(*Open());
        const auto work = std::make_shared<QorRdgPictureProgress::Work>();
        auto* box = new QorRdgPictureProgress(Dialog(), "saveProgress", work);
        ExpectTexts(*box);
        Person::Close("renderToolbar");
        loop.RunPosted();
    }
}

TEST_F(EasyRenderTexts, EveryButtonHasAnIconThatThereIs) {
    Open();
    std::set<std::string> icons;
    for (const char* name :
         {"sceneButton", "optionsButton", "areaCheck", "renderCheck", "saveButton"}) {
        const std::string icon = Find(name)->GetIconName().Str();
        EXPECT_TRUE(std::filesystem::exists(QOR_RESOURCES "/icons/" + icon + ".svg")) << name;
        EXPECT_TRUE(icons.insert(icon).second) << name << " looks like another";
    }
}

TEST_F(EasyRenderTexts, TranslationsHaveTheSameKeysAndTheirOwnWords) {
    for (const char* catalog : catalogs)
        QorCatalogTexts::ExpectTranslated(catalog, {"Help", "Title"}, {"-", "Options"});
}

TEST_F(EasyRenderTexts, MessagesNameWhatTheyAreAbout) {
    for (const char* tongue : {"en", "fr", "de"}) {
        const QorScopedVariable region("LC_ALL", "en_US.UTF-8");
        const QorScopedVariable spoken("LANGUAGE", tongue);
        const auto text = [](const char* iKey, const QorMsgParameters& iWith) {
            return QorMsgCatalog::BuildMessage("QorRdgEasyRenderDialog", iKey, iWith).Str();
        };
        EXPECT_TRUE(text("ImageSize", {"640", "480"}).starts_with("640 × 480 ")) << tongue;
        EXPECT_NE(text("ImageOverwriteWarning", {"/a/b.png"}).find("/a/b.png"), std::string::npos);
        EXPECT_NE(text("ImageSaveError", {"/a", "why"}).find("why"), std::string::npos);
        for (const QorRdgPictureFormat& format : QorRdgPictureFormats::GetAll())
            EXPECT_NE(QorMsgCatalog::BuildMessage("QorRdgShootingPictureFrame", format.labelKey)
                          .Str()
                          .find(format.pattern),
                      std::string::npos)
                << tongue << " " << format.labelKey;
    }
}

} // namespace
