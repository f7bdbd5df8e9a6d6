#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgCombo.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "tests/desktop/DesktopTest.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

namespace qor::desktop::tests {

namespace {

class Texts : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        label = new QorDlgLabel(window, "label");
        label->SetTitle("&Name:");
        label->SetGridConstraints(0, 0, 1, 1);
        editor = new QorDlgEditor(window, "editor");
        editor->SetGridConstraints(0, 1, 2, 1);
        custom = new QorDlgRadioButton(window, "custom");
        custom->SetTitle("Custom");
        custom->SetGridConstraints(1, 0, 1, 1);
        spinner = new QorDlgSpinner(window, "spinner");
        spinner->SetGridConstraints(1, 1, 1, 1);
        combo = new QorDlgCombo(window, "combo");
        combo->SetGridConstraints(1, 2, 1, 1);
        for (const char* line : {"first", "second", "third"})
            combo->SetLine(line);
        window->Listen(editor, editor->GetEditModifyNotification());
        window->Listen(combo, combo->GetComboSelectNotification());
        show();
    }

    [[nodiscard]] QLineEdit* line() const { return controlFor<QLineEdit>(editor); }

    QorDlgLabel* label = nullptr;
    QorDlgEditor* editor = nullptr;
    QorDlgRadioButton* custom = nullptr;
    QorDlgSpinner* spinner = nullptr;
    QorDlgCombo* combo = nullptr;
};

TEST_F(Texts, AnEditorTellsOnceOnLeaving) {
    line()->setFocus();
    type(line(), "gear");
    EXPECT_EQ(editor->GetText(), QorUnicodeString());
    key(line(), Qt::Key_Tab);
    EXPECT_EQ(editor->GetText(), QorUnicodeString("gear"));
    EXPECT_EQ(window->TakeHeard(), Heard{"editor EditModify"});
}

TEST_F(Texts, EnterTellsOnceAndThenConfirmsTheDialog) {
    window->Listen(window, window->GetDiaOKNotification());
    line()->setFocus();
    type(line(), "gear");
    key(line(), Qt::Key_Return);
    EXPECT_EQ(window->TakeHeard(), (Heard{"editor EditModify", "window DiaOK"}));
    EXPECT_TRUE(line()->isVisible()) << "the dialog closed itself";
}

TEST_F(Texts, LettersBeyondAsciiAndMarkupStayAsTheyAre) {
    const QString text = QString::fromUtf8("Zahnräder <b>µ</b> & Ω");
    line()->setFocus();
    line()->insert(text); // as an input method does
    key(line(), Qt::Key_Tab);
    EXPECT_EQ(editor->GetText(), QorUnicodeString(text.toStdString()));
    label->SetTitle("<b>a</b>");
    EXPECT_EQ(controlFor<QLabel>(label)->textFormat(), Qt::PlainText);
}

TEST_F(Texts, SettingByProgramReplacesWhatIsBeingTypedAndSendsNothing) {
    line()->setFocus();
    type(line(), "half");
    editor->SetText("whole");
    EXPECT_EQ(line()->text(), "whole");
    key(line(), Qt::Key_Tab);
    EXPECT_EQ(window->TakeHeard(), Heard{});
}

TEST_F(Texts, AComboIsChosenFromByKeysAndWheel) {
    auto* box = controlFor<QComboBox>(combo);
    box->setFocus();
    key(box, Qt::Key_Down);
    EXPECT_EQ(combo->GetSelect(), 1);
    EXPECT_EQ(window->TakeHeard(), Heard{"combo ComboSelect"});
    wheel(*box, -1);
    EXPECT_EQ(combo->GetSelect(), 2);
    key(box, Qt::Key_Down);
    EXPECT_EQ(combo->GetSelect(), 2);
    EXPECT_EQ(window->TakeHeard(), Heard{"combo ComboSelect"});
}

TEST_F(Texts, AComboIsChosenFromItsListByTheMouse) {
    auto* box = controlFor<QComboBox>(combo);
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(1); // so long a release still belongs to the opening click
    click(combo);
    QAbstractItemView* list = box->view();
    ASSERT_TRUE(list->isVisible());
    const QRect third = list->visualRect(box->model()->index(2, 0));
    QTest::qWait(2);
    QApplication::setDoubleClickInterval(interval);
    QTest::mouseMove(list->viewport(), third.center());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, third.center());
    settle();
    EXPECT_EQ(combo->GetSelect(), 2);
    EXPECT_EQ(box->currentIndex(), 2);
    EXPECT_EQ(window->TakeHeard(), Heard{"combo ComboSelect"});
}

TEST_F(Texts, LinesOfAComboMayChangeWhileItIsShown) {
    auto* box = controlFor<QComboBox>(combo);
    combo->SetSelect(2);
    combo->SetLine("last", 2);
    EXPECT_EQ(box->currentText(), "last");
    combo->ClearLine();
    EXPECT_EQ(box->count(), 0);
    EXPECT_EQ(window->TakeHeard(), Heard{});
}

TEST_F(Texts, ALabelIsTheBuddyOfTheControlBesideIt) {
    EXPECT_EQ(controlFor<QLabel>(label)->buddy(), line());
    EXPECT_EQ(line()->accessibleName(), "Name");
}

TEST_F(Texts, AControlWithoutTitleIsNamedByTheNearestTitleInItsRow) {
    EXPECT_EQ(controlFor(spinner)->accessibleName(), "Custom");
    EXPECT_EQ(controlFor(combo)->accessibleName(), "Custom");
    combo->SetTitle("Unit");
    EXPECT_EQ(controlFor(combo)->accessibleName(), "Unit");
}

TEST_F(Texts, HelpIsTooltipAndWhatsThis) {
    editor->SetShortHelp("the name");
    editor->SetLongHelp("the name of the part");
    EXPECT_EQ(line()->toolTip(), "the name");
    EXPECT_EQ(line()->whatsThis(), "the name of the part");
    EXPECT_EQ(line()->accessibleDescription(), "the name of the part");
}

TEST_F(Texts, TabFollowsTheOrderOfMakingAndThenTheButtons) {
    auto* frame = new QorDlgFrame(window, "frame");
    auto* inFrame = new QorDlgEditor(frame, "inFrame");
    auto* last = new QorDlgEditor(window, "last");
    settle();
    line()->setFocus();
    QStringList order;
    for (int stop = 0; stop < 8; ++stop) {
        order << QApplication::focusWidget()->objectName();
        key(Qt::Key_Tab);
    }
    const QStringList begin{"editor", "custom", "spinner", "combo", "inFrame", "last"};
    EXPECT_EQ(order.mid(0, begin.size()), begin) << order.join(' ').toStdString();
    EXPECT_EQ(order.size() - begin.size(), 2); // OK and Cancel
    EXPECT_TRUE(line()->hasFocus());
    EXPECT_NE(inFrame, last);
}

} // namespace

} // namespace qor::desktop::tests
