// The catalogs of the quick render, in every language that there is.
#include "platform/text/QorCatalogFile.h"
#include "platform/text/QorMsgCatalog.h"
#include "platform/vis/QorRdgPictureFormats.h"
#include "tests/quickrender/EasyRenderTest.h"

#include <filesystem>
#include <iterator>
#include <set>

namespace {

class EasyRenderTexts : public EasyRenderTest {
protected:
    static QorCatalogEntries Read(const std::string& iFile) {
        std::ifstream file(std::string(QOR_RESOURCES "/messages/") + iFile, std::ios::binary);
        EXPECT_TRUE(file.is_open()) << iFile;
        QorCatalogEntries entries;
        QorReadCatalogText(std::string(std::istreambuf_iterator<char>(file), {}), iFile, entries);
        return entries;
    }

    static void ExpectTexts(const QorDialog& iAround) {
        std::vector<QorDialog*> widgets = iAround.GetWidgets();
        for (const QorDialog* widget : widgets) {
            EXPECT_FALSE(widget->GetTitle().IsNull()) << widget->GetName();
            EXPECT_FALSE(widget->GetShortHelp().IsNull()) << widget->GetName();
            EXPECT_FALSE(widget->GetLongHelp().IsNull()) << widget->GetName();
        }
        EXPECT_FALSE(iAround.GetTitle().IsNull());
        EXPECT_FALSE(iAround.GetShortHelp().IsNull());
        EXPECT_FALSE(iAround.GetLongHelp().IsNull());
    }

    static constexpr const char* catalogs[] = {"QorRdgEasyRenderDialog", "QorRdgPictureProgress",
                                               "QorRdgShootingPictureFrame", "QorFMNotify",
                                               "QorFMAppFrameMsg"};
};

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
    for (const char* catalog : catalogs) {
        const QorCatalogEntries plain = Read(std::string(catalog) + ".QorMsg");
        EXPECT_FALSE(plain.empty()) << catalog;
        for (const char* tongue : {"fr", "de"}) {
            const QorCatalogEntries translated =
                Read(std::string(tongue) + "/" + catalog + ".QorMsg");
            EXPECT_EQ(translated.size(), plain.size()) << tongue << " " << catalog;
            for (const auto& [key, text] : plain) {
                const auto found = translated.find(key);
                ASSERT_NE(found, translated.end()) << tongue << " lacks " << key;
                EXPECT_FALSE(found->second.empty()) << tongue << " " << key;
                if (key.ends_with("Help") || key.ends_with("Title")) {
                    EXPECT_TRUE(found->second != text || text == "-" || text == "Options")
                        << tongue << " " << key << " is not translated";
                }
            }
        }
    }
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
