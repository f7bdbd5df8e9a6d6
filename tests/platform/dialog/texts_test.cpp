// Where the texts of widgets come from.
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "tests/platform/dialog/DialogTest.h"

namespace {

/// A dialog of a class hierarchy with catalogs, as an application derives them.
class CatalogDialog : public QorDlgDialog {
public:
    CatalogDialog(QorCommand* iFather, const QorString& iName, std::vector<QorString> iCatalogs)
        : QorDlgDialog(iFather, iName), catalogs(std::move(iCatalogs)) {}

    [[nodiscard]] QorString GetResourceFilename(int iLevel) const override {
        const auto level = static_cast<std::size_t>(iLevel);
        return level < catalogs.size() ? catalogs[level] : QorString();
    }

protected:
    ~CatalogDialog() override = default;

private:
    std::vector<QorString> catalogs;
};

class Texts : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        directory.Write("messages/Own.QorMsg",
                        "Title=\"Own title\";\nShortHelp=\"Own help\";\n"
                        "label.Title=\"A label\";\nlabel.Icon=\"I_Label\";\n");
        directory.Write("messages/Base.QorMsg",
                        "LongHelp=\"From the base class\";\nlabel.Title=\"Never seen\";\n"
                        "label.LongHelp=\"Long\";\nframe.Title=\"A frame\";\n");
        directory.Write("messages/Outer.QorMsg",
                        "child.Title=\"Named by the outer one\";\nlabel.ShortHelp=\"Never seen\";\n"
                        "silent.Title=\"A silent child\";\n");
    }

    QorScopedVariable path{"QorStartupPath", directory.GetPath()};
};

QorInstantiateDialogTests(Texts);

TEST_P(Texts, ComeFromTheNearestClassAroundThatHasThem) {
    auto* outer = new CatalogDialog(dialog, "outer", {"Outer"});
    auto* child = new CatalogDialog(outer, "child", {"Own", "Base"});
    auto* silent = new CatalogDialog(outer, "silent", {"NoSuchCatalog"});
    auto* frame = new QorDlgFrame(child, "frame");
    auto* label = new QorDlgLabel(frame, "label");

    struct Row {
        const char* sentence;
        std::string text;
        std::string expected;
    };

    const std::vector<Row> rows = {
        {"a dialog's own title before what its father calls it", child->GetTitle().Str(),
         "Own title"},
        {"a dialog's own help", child->GetShortHelp().Str(), "Own help"},
        {"a base class's text", child->GetLongHelp().Str(), "From the base class"},
        {"a dialog without texts is named by its father's class", silent->GetTitle().Str(),
         "A silent child"},
        {"a widget in a frame", label->GetTitle().Str(), "A label"},
        {"a widget's text of the base class", label->GetLongHelp().Str(), "Long"},
        {"a frame in a dialog", frame->GetTitle().Str(), "A frame"},
        {"an icon", label->GetIconName().Str(), "I_Label"},
        {"not from beyond the window", label->GetShortHelp().Str(), ""},
        {"a missing text is empty", frame->GetLongHelp().Str(), ""},
        {"a missing icon is empty", frame->GetIconName().Str(), ""},
        {"a missing title is not the name", outer->GetTitle().Str(), ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.text, row.expected) << row.sentence;
}

TEST_P(Texts, ThatAreSetStay) {
    auto* child = new CatalogDialog(dialog, "child", {"Own", "Base"});
    child->SetTitle("1000 x 500");
    child->SetShortHelp("short");
    child->SetLongHelp("long");
    child->SetIconName("I_Other");
    EXPECT_EQ(child->GetTitle(), "1000 x 500");
    EXPECT_EQ(child->GetShortHelp(), "short");
    EXPECT_EQ(child->GetLongHelp(), "long");
    EXPECT_EQ(child->GetIconName(), "I_Other");
    child->SetTitle("");
    EXPECT_EQ(child->GetTitle(), "") << "an empty title is a title";
}

TEST_P(Texts, CatalogsAreThoseOfTheClassAndItsBases) {
    EXPECT_EQ(dialog->GetResourceFilename(), "QorDlgDialog");
    EXPECT_TRUE(dialog->GetResourceFilename(1).IsNull());
    EXPECT_TRUE(dialog->GetResourceFilename(99).IsNull());
    auto* file = new QorDlgStdFile(dialog, "file", QorDlgFileSave);
    EXPECT_EQ(file->GetResourceFilename(0), "QorDlgStdFile");
    EXPECT_EQ(file->GetResourceFilename(1), "QorDlgFile");
    EXPECT_EQ(file->GetResourceFilename(2), "QorDlgDialog");
    EXPECT_TRUE(file->GetResourceFilename(3).IsNull());
}

TEST_P(Texts, KindsAreWordsForPeople) {
    const std::vector<std::pair<QorDialog*, const char*>> rows = {
        {dialog, "dialog"},
        {new QorDlgFrame(dialog, "w"), "frame"},
        {new QorDlgLabel(dialog, "w"), "label"},
        {new QorDlgSeparator(dialog, "w"), "separator"},
        {new QorDlgPushButton(dialog, "w"), "push button"},
        {new QorDlgCheckButton(dialog, "w"), "check button"},
        {new QorDlgRadioButton(dialog, "w"), "radio button"},
        {new QorDlgEditor(dialog, "w"), "editor"},
        {new QorDlgCombo(dialog, "w"), "combo"},
        {new QorDlgSpinner(dialog, "w"), "spinner"},
        {new QorDlgSlider(dialog, "w"), "slider"},
        {new QorDlgScrollBar(dialog, "w"), "scroll bar"},
        {new QorDlgProgress(dialog, "w"), "progress bar"},
        {new QorDlgStdFile(dialog, "w", QorDlgFileSave), "file dialog"},
        {new QorDlgColorEditor(dialog, "w"), "color editor"},
        {new QorDlgNotify(dialog, "w"), "notification"},
    };
    for (const auto& [widget, kind] : rows)
        EXPECT_STREQ(widget->GetKind(), kind) << widget->IsA();
}

} // namespace
