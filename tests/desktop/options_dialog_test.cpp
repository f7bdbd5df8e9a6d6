// The options of a quick render in a window, by real clicks and keys.
#include "platform/system/QorSettingRepository.h"
#include "quickrender/QorRdgOptionsDialog.h"
#include "tests/desktop/DesktopTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace qor::desktop::tests {

namespace {

class OptionsWindow : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        QorCatalogs::SetProgramDirectory(QOR_TEST_RESOURCES);
        openDialog();
    }

    void openDialog() {
        options = new QorRdgOptionsDialog(window, "optionsDialog");
        window->Listen(options, options->GetDiaOKNotification(),
                       options->GetDiaCANCELNotification(), options->GetWindCloseNotification());
        window->reaction = [this](QorCommand&) {
            std::exchange(options, nullptr)->RequestDelayedDestruction();
        };
        show(*options);
    }

    /// The control of that name in the dialog's window.
    template <class Control>
    [[nodiscard]] Control* find(const char* name) const {
        auto* control = controlOf(options)->findChild<Control*>(name);
        EXPECT_NE(control, nullptr) << name;
        return control;
    }

    void clickMark(QAbstractButton* button) {
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
        settle();
    }

    void press(QDialogButtonBox::StandardButton which) {
        auto* buttons = controlOf(options)->findChild<QDialogButtonBox*>();
        QTest::mouseClick(buttons->button(which), Qt::LeftButton);
        settle();
    }

    static int setting(const char* name, int absent = -1) {
        int value = absent;
        const auto settings = QorSettingRepository::GetRepository("RenderingOptionsSettings");
        return settings->ReadSetting(name, &value) ? value : absent;
    }

    QorRdgOptionsDialog* options = nullptr;
};

TEST_F(OptionsWindow, ShowsTheDefaultsWithTextsThatCanBeRead) {
    EXPECT_EQ(find<QComboBox>("qualityCombo")->currentIndex(), 1);
    EXPECT_TRUE(find<QCheckBox>("finalGatherCheck")->isChecked());
    EXPECT_TRUE(find<QRadioButton>("screenRadio")->isChecked());
    EXPECT_FALSE(find<QWidget>("customSpinner")->isEnabled());
    EXPECT_FALSE(find<QWidget>("unitCombo")->isEnabled());
    EXPECT_EQ(find<QWidget>("customSpinner")->findChild<QLineEdit*>()->text(), "300");
    for (const QWidget* control : controlOf(options)->findChildren<QWidget*>()) {
        const bool named =
            control->objectName().endsWith("Combo") || control->objectName().endsWith("Spinner");
        EXPECT_TRUE(!named || !control->accessibleName().isEmpty())
            << control->objectName().toStdString();
        const auto* text = qobject_cast<const QLabel*>(control);
        EXPECT_TRUE(text == nullptr || text->width() >= text->sizeHint().width())
            << control->objectName().toStdString();
    }
}

TEST_F(OptionsWindow, OKKeepsWhatClicksAndKeysHaveSet) {
    key(find<QComboBox>("qualityCombo"), Qt::Key_Down);
    clickMark(find<QCheckBox>("finalGatherCheck"));
    clickMark(find<QRadioButton>("customRadio"));
    EXPECT_FALSE(find<QRadioButton>("screenRadio")->isChecked());
    ASSERT_TRUE(find<QWidget>("customSpinner")->isEnabled());
    auto* text = find<QWidget>("customSpinner")->findChild<QLineEdit*>();
    text->setFocus();
    text->selectAll();
    type(text, "299.7");
    key(text, Qt::Key_Tab);
    EXPECT_EQ(text->text(), "300");
    key(find<QComboBox>("unitCombo"), Qt::Key_Down);
    press(QDialogButtonBox::Ok);
    EXPECT_EQ(window->TakeHeard(), Heard{"optionsDialog DiaOK"});
    EXPECT_EQ(options, nullptr);
    EXPECT_TRUE(visibleWindows().empty());
    EXPECT_EQ(setting("Quality"), 2);
    EXPECT_EQ(setting("FinalGather"), 0);
    EXPECT_EQ(setting("ScreenResolution"), 0);
    EXPECT_EQ(setting("CustomResolution"), 299);
    EXPECT_EQ(setting("CustomUnit"), 1);
    QorSettingRepository::ForgetAll(); // as a new start of the program
    openDialog();
    EXPECT_EQ(find<QComboBox>("qualityCombo")->currentIndex(), 2);
    EXPECT_FALSE(find<QCheckBox>("finalGatherCheck")->isChecked());
    EXPECT_TRUE(find<QRadioButton>("customRadio")->isChecked());
    EXPECT_TRUE(find<QWidget>("unitCombo")->isEnabled());
}

TEST_F(OptionsWindow, EscapeAndCloseBoxWriteNothing) {
    for (const bool byKey : {true, false}) {
        if (options == nullptr)
            openDialog();
        clickMark(find<QCheckBox>("finalGatherCheck"));
        if (byKey)
            key(controlOf(options), Qt::Key_Escape);
        else
            controlOf(options)->close();
        settle();
        EXPECT_EQ(options, nullptr);
        EXPECT_EQ(setting("FinalGather"), -1);
    }
    EXPECT_EQ(window->TakeHeard(), (Heard{"optionsDialog DiaCANCEL", "optionsDialog WindClose"}));
}

TEST_F(OptionsWindow, TheKeyboardAloneDoesIt) {
    find<QComboBox>("qualityCombo")->setFocus();
    key(Qt::Key_Up);
    key(Qt::Key_Tab);
    key(Qt::Key_Space);
    key(Qt::Key_Tab);
    EXPECT_TRUE(find<QRadioButton>("screenRadio")->hasFocus());
    key(Qt::Key_Down);
    EXPECT_TRUE(find<QRadioButton>("customRadio")->isChecked());
    key(Qt::Key_Tab);
    key(Qt::Key_Up);
    key(Qt::Key_Return);
    EXPECT_EQ(window->TakeHeard(), Heard{"optionsDialog DiaOK"});
    EXPECT_EQ(setting("Quality"), 0);
    EXPECT_EQ(setting("FinalGather"), 0);
    EXPECT_EQ(setting("ScreenResolution"), 0);
    EXPECT_EQ(setting("CustomResolution"), 301);
}

} // namespace

} // namespace qor::desktop::tests
