#include "platform/text/QorMsgCatalog.h"
#include "platform/text/QorRscCatalog.h"
#include "tests/support/QorTestApplication.h"

namespace {

/// Two start-up directories and the program's own, each with what a test writes there.
class QorCatalogOrder : public QorTestApplication {
protected:
    QorCatalogOrder() {
        QorSetEnv("QorStartupPath",
                  QorUnicodeString(directory.GetPath("one") + ":" + directory.GetPath("two")));
        QorCatalogs::SetProgramDirectory(directory.GetPath("own"));
    }

    static std::string Message(const char* iKey) {
        return QorMsgCatalog::BuildMessage("Cat", iKey, {}, "none").Str();
    }

    static std::string Resource(const char* iKey) {
        QorString value("none");
        static_cast<void>(QorRscCatalog::BuildResource("Cat", iKey, value));
        return value.Str();
    }
};

} // namespace

TEST_F(QorCatalogOrder, EarlierDirectoriesWinKeyByKey) {
    directory.Write("one/messages/Cat.QorMsg", "A=\"one\";");
    directory.Write("two/messages/Cat.QorMsg", "A=\"two\";\nB=\"two\";");
    directory.Write("own/messages/Cat.QorMsg", "A=\"own\";\nB=\"own\";\nC=\"own\";");
    EXPECT_EQ(Message("A"), "one");
    EXPECT_EQ(Message("B"), "two");
    EXPECT_EQ(Message("C"), "own");
    EXPECT_EQ(Message("D"), "none");
}

TEST_F(QorCatalogOrder, MessagesFallBackToTheProgramsOwnWithoutAnyPath) {
    QorSetEnv("QorStartupPath", std::nullopt);
    directory.Write("own/messages/Cat.QorMsg", "A=\"own\";");
    EXPECT_EQ(Message("A"), "own");
}

TEST_F(QorCatalogOrder, ResourcesDoNotFallBack) {
    directory.Write("own/resources/Cat.QorRsc", "A=\"own\";");
    EXPECT_EQ(Resource("A"), "none");
}

TEST_F(QorCatalogOrder, AResourceCatalogComesFromOneDirectoryAlone) {
    directory.Write("two/resources/Cat.QorRsc", "A=\"two\";\nB=\"two\";");
    EXPECT_EQ(Resource("A"), "two");
    directory.Write("one/resources/Cat.QorRsc", "A=\"one\";");
    loop.RunOneTurn();
    EXPECT_EQ(Resource("A"), "one");
    EXPECT_EQ(Resource("B"), "none"); // or two directories would make up an entry that neither has
}

TEST_F(QorCatalogOrder, TheProgramsOwnTextsAreNotForSomebodyElsesResources) {
    directory.Write("own/messages/Cat.QorMsg", "Scene1.Title=\"Studio\";");
    EXPECT_EQ(Message("Scene1.Title"), "Studio");
    directory.Write("two/resources/Cat.QorRsc", "Count=\"1\";");
    loop.RunOneTurn();
    EXPECT_EQ(Message("Scene1.Title"), "none");
}

TEST_F(QorCatalogOrder, ATranslationWinsInWhateverDirectoryItIs) {
    QorSetEnv("LC_ALL", "fr_FR.UTF-8");
    directory.Write("one/messages/Cat.QorMsg", "A=\"plain\";\nB=\"plain\";");
    directory.Write("two/messages/fr/Cat.QorMsg", "A=\"fr\";");
    EXPECT_EQ(Message("A"), "fr");
    EXPECT_EQ(Message("B"), "plain");
}

TEST_F(QorCatalogOrder, ANearerFormOfTheLanguageWins) {
    QorSetEnv("LC_ALL", "fr_CA.UTF-8");
    directory.Write("one/messages/fr/Cat.QorMsg", "A=\"fr\";\nB=\"fr\";");
    directory.Write("one/messages/fr_CA/Cat.QorMsg", "A=\"fr_CA\";");
    EXPECT_EQ(Message("A"), "fr_CA");
    EXPECT_EQ(Message("B"), "fr");
}

TEST_F(QorCatalogOrder, TheUsersPlainTextWinsOverTheProgramsTranslation) {
    QorSetEnv("LC_ALL", "fr_FR.UTF-8");
    directory.Write("one/messages/Cat.QorMsg", "A=\"plain\";");
    directory.Write("own/messages/fr/Cat.QorMsg", "A=\"own fr\";\nB=\"own fr\";");
    EXPECT_EQ(Message("A"), "plain");
    EXPECT_EQ(Message("B"), "own fr");
}
