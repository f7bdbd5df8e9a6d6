// What Qt's own controls say: in the program's language, whatever Qt itself was installed with.
#include "platform/dialog/QorDlgFile.h"
#include "platform/system/QorEnvironment.h"
#include "platform/text/QorCatalogFile.h"
#include "tests/desktop/DesktopTest.h"
#include "workbench/desktop/StandardTexts.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>

#include <fstream>
#include <iterator>
#include <set>

namespace qor::desktop::tests {

namespace {

QorCatalogEntries readCatalog(const std::string& name) {
    std::ifstream file(std::string(QOR_TEST_RESOURCES "/messages/") + name, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    QorCatalogEntries entries;
    QorReadCatalogText(std::string(std::istreambuf_iterator<char>(file), {}), name, entries);
    return entries;
}

TEST(StandardTextCatalogs, HaveEveryTextInEveryLanguageAndNoOther) {
    const std::vector<std::string> keys = StandardTexts::keys();
    const std::set<std::string> wanted(keys.begin(), keys.end());
    for (const char* folder : {"", "de/", "fr/"}) {
        const QorCatalogEntries texts =
            readCatalog(std::string(folder) + "QorStandardTexts.QorMsg");
        EXPECT_EQ(texts.size(), wanted.size()) << folder;
        for (const std::string& key : wanted)
            EXPECT_NE(texts.find(key), texts.end()) << folder << " lacks " << key;
    }
}

/// A desktop that begins in another language than English.
class StandardTextsIn : public DesktopTest {
protected:
    void SetUp() override {
        QorCatalogs::SetProgramDirectory(QOR_TEST_RESOURCES);
        DesktopTest::SetUp();
    }

    QorScopedVariable region{"LC_ALL", "en_US.UTF-8"};
    QorScopedVariable tongue{"LANGUAGE", "de"};
};

TEST_F(StandardTextsIn, StandardButtonsSpeakTheProgramsLanguage) {
    show();
    const auto* buttons = controlFor(window)->findChild<QDialogButtonBox*>();
    EXPECT_EQ(buttons->button(QDialogButtonBox::Cancel)->text(), "Abbrechen");
}

TEST_F(StandardTextsIn, SoDoesTheFileDialog) {
    auto* file = new QorDlgFile(window, "file");
    show();
    show(*file);
    const auto* label = controlFor(file)->findChild<QLabel*>("lookInLabel");
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), "Suchen in:");
    EXPECT_EQ(controlFor<QFileDialog>(file)->labelText(QFileDialog::Accept),
              QString::fromUtf8("Ö&ffnen"));
}

TEST_F(StandardTextsIn, SoDoTheNamesOfKeys) {
    const QKeySequence keys("Ctrl+Shift+S");
    EXPECT_EQ(keys.toString(QKeySequence::NativeText), "Strg+Umschalt+S");
    EXPECT_EQ(keys.toString(QKeySequence::PortableText), "Ctrl+Shift+S");
}

} // namespace

} // namespace qor::desktop::tests
