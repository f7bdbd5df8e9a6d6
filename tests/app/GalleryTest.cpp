#include "workbench/app/Gallery.h"

#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgColorEditor.h"
#include "platform/dialog/QorDlgFile.h"
#include "platform/dialog/QorDlgNotify.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "platform/text/QorMsgCatalog.h"
#include "tests/support/QorTestApplication.h"

#include <set>

namespace {

using qor::app::GalleryDialog;

class Gallery : public QorTestApplication {
protected:
    void SetUp() override {
        QorCatalogs::SetProgramDirectory(QOR_RESOURCES);
        dialog = new GalleryDialog(owner.Get(), "galleryDialog");
        dialog->SetVisibility(QorDlgSHOW);
    }

    void TearDown() override {
        owner.Reset();
        QorTestApplication::TearDown();
    }

    template <class Visit>
    static void walk(QorDialog& widget, const Visit& visit) {
        visit(widget);
        for (QorDialog* child : widget.GetWidgets())
            walk(*child, visit);
    }

    template <class Widget>
    Widget* find(const char* name) const {
        Widget* found = nullptr;
        walk(*dialog, [&](QorDialog& one) {
            if (one.GetName() == name)
                found = dynamic_cast<Widget*>(&one);
        });
        return found;
    }

    [[nodiscard]] std::string eventLine() const {
        return find<QorDialog>("eventLine")->GetTitle().Str();
    }

    QorVar<QorCommand> owner = QorMake<QorCommand>(nullptr, "owner");
    GalleryDialog* dialog = nullptr;
};

TEST_F(Gallery, ShowsEveryKindEnabledAndDisabled) {
    std::set<std::string> enabled;
    std::set<std::string> disabled;
    walk(*dialog,
         [&](QorDialog& one) { (one.CanAct() ? enabled : disabled).insert(one.GetKind()); });
    for (const char* kind :
         {"push button", "check button", "radio button", "label", "editor", "combo", "spinner",
          "slider", "scroll bar", "progress bar", "separator", "frame"}) {
        EXPECT_TRUE(enabled.contains(kind)) << kind;
        EXPECT_TRUE(disabled.contains(kind)) << kind;
    }
}

TEST_F(Gallery, EveryLabelAndButtonHasAText) {
    walk(*dialog, [](QorDialog& one) {
        const std::string kind = one.GetKind();
        const bool wantsText = kind == "label" || kind.ends_with("button");
        EXPECT_TRUE(!wantsText || !one.GetTitle().IsNull()) << one.GetName();
    });
}

TEST_F(Gallery, NamesAreUniqueInTheirFrames) {
    walk(*dialog, [](QorDialog& one) {
        std::set<std::string> names;
        for (const QorDialog* child : one.GetWidgets())
            EXPECT_TRUE(names.insert(child->GetName().Str()).second) << child->GetName();
    });
}

TEST_F(Gallery, TellsOfTheLastNotification) {
    EXPECT_EQ(find<QorDlgPushButton>("pushButton")->UserPress(), QorUserResult::Done);
    EXPECT_EQ(eventLine(), "pushButton: QorDlgPushBActivateNotification");
    EXPECT_EQ(find<QorDlgSpinner>("spinnerInteger")->UserStep(1), QorUserResult::Done);
    EXPECT_EQ(eventLine(), "spinnerInteger: QorDlgSpinnerModifyNotification");
}

TEST_F(Gallery, BoxesBlockUntilTheyAreAnswered) {
    int boxes = 0;
    QorDlgNotify::SetOpenedObserver([&](QorDlgNotify& box) {
        ++boxes;
        EXPECT_FALSE(box.GetText().IsNull());
        box.UserAnswer(QorNotifyConfirm);
    });
    for (const char* button :
         {"informationButton", "questionButton", "warningButton", "errorButton", "threeButton"})
        EXPECT_EQ(find<QorDlgPushButton>(button)->UserPress(), QorUserResult::Done) << button;
    QorDlgNotify::SetOpenedObserver({});
    EXPECT_EQ(boxes, 5);
}

TEST_F(Gallery, WindowsEndByEveryWayOut) {
    const auto open = [&](const char* button) {
        EXPECT_EQ(find<QorDlgPushButton>(button)->UserPress(), QorUserResult::Done);
        return QorDlgDialog::GetAll().back();
    };
    auto* file = dynamic_cast<QorDlgFile*>(open("saveButton"));
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(file->IsSave());
    EXPECT_EQ(file->UserAccept("/tmp/picture.png"), QorUserResult::Done);
    EXPECT_EQ(open("openButton")->UserClose(), QorUserResult::Done);
    auto* color = dynamic_cast<QorDlgColorEditor*>(open("colorButton"));
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->UserCancel(), QorUserResult::Done);
    EXPECT_EQ(eventLine(), "galleryColor: QorDlgColorCancelNotification");
    loop.RunPosted();
    EXPECT_EQ(QorDlgDialog::GetAll(), std::vector<QorDlgDialog*>{dialog});
}

} // namespace
