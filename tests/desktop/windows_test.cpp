#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgColorEditor.h"
#include "platform/dialog/QorDlgFile.h"
#include "platform/dialog/QorDlgNotify.h"
#include "tests/desktop/DesktopTest.h"
#include "workbench/desktop/peers/WindowParts.h"

#include <QAbstractItemView>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <fstream>

namespace qor::desktop::tests {

namespace {

class Windows : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        window->Listen(window, window->GetDiaOKNotification(), window->GetDiaCANCELNotification(),
                       window->GetWindCloseNotification(), window->GetWindSizeNotification());
    }

    void showQuietly() {
        show();
        (void)window->TakeHeard(); // the window got its first size
    }

    static QPushButton* button(const QorDialog* dialog, QDialogButtonBox::StandardButton which) {
        return controlFor(dialog)->findChild<QDialogButtonBox*>()->button(which);
    }
};

TEST_F(Windows, OKAndCancelOnlyTell) {
    showQuietly();
    QTest::mouseClick(button(window, QDialogButtonBox::Ok), Qt::LeftButton);
    QTest::mouseClick(button(window, QDialogButtonBox::Cancel), Qt::LeftButton);
    settle();
    EXPECT_EQ(window->TakeHeard(), (Heard{"window DiaOK", "window DiaCANCEL"}));
    EXPECT_TRUE(controlFor(window)->isVisible());
}

TEST_F(Windows, EnterEscapeAndCloseBoxOnlyTell) {
    showQuietly();
    key(controlFor(window), Qt::Key_Return);
    key(controlFor(window), Qt::Key_Escape);
    controlFor(window)->close();
    settle();
    EXPECT_EQ(window->TakeHeard(), (Heard{"window DiaOK", "window DiaCANCEL", "window WindClose"}));
    EXPECT_TRUE(controlFor(window)->isVisible());
    EXPECT_EQ(window->GetVisibility(), QorDlgSHOW);
}

TEST_F(Windows, EscapeIsTheCloseBoxWhereThereIsNoCancel) {
    auto* plain = new ListeningDialog(window, "plain", QorDlgDefaultStyle);
    plain->Listen(plain, plain->GetWindCloseNotification());
    show(*plain);
    (void)plain->TakeHeard();
    key(controlFor(plain), Qt::Key_Escape);
    EXPECT_EQ(plain->TakeHeard(), Heard{"plain WindClose"});
    EXPECT_TRUE(controlFor(plain)->isVisible());
}

TEST_F(Windows, AreWideEnoughForTheirTitle) {
    auto* tools = new ListeningDialog(window, "tools", QorDlgWndToolBar);
    tools->SetTitle("A title of some length");
    show(*tools);
    const QFontMetrics metrics(controlFor(tools)->font());
    EXPECT_GT(controlFor(tools)->width(), metrics.horizontalAdvance("A title of some length") + 80);
}

TEST_F(Windows, WhatAFrameOfToolsOpensStandsBesideIt) {
    auto* tools = new ListeningDialog(window, "tools", QorDlgWndToolBar);
    show();
    show(*tools);
    auto* opened = new ListeningDialog(tools, "opened", QorDlgWndOKCancel);
    opened->SetTitle("Opened");
    show(*opened);
    EXPECT_FALSE(
        controlFor(opened)->frameGeometry().intersects(controlFor(tools)->frameGeometry()));
}

TEST(Placement, TakesTheFirstSideWithRoom) {
    const QRect screen(0, 0, 1000, 800);
    const QSize size(300, 400);
    EXPECT_EQ(placeBeside({400, 100, 200, 80}, size, screen), QPoint(92, 100)) << "left";
    EXPECT_EQ(placeBeside({100, 100, 200, 80}, size, screen), QPoint(100, 188)) << "below";
    EXPECT_EQ(placeBeside({100, 350, 200, 80}, size, screen), QPoint(308, 350)) << "right";
    EXPECT_EQ(placeBeside({100, 500, 200, 80}, size, screen), QPoint(308, 400))
        << "no room on any side";
}

TEST_F(Windows, APersonsResizingIsTold) {
    showQuietly();
    controlFor(window)->resize(500, 400);
    QTest::qWait(50);
    settle();
    int width = 0;
    int height = 0;
    window->GetSize(width, height);
    EXPECT_EQ(window->TakeHeard(), Heard{"window WindSize"});
    EXPECT_EQ(width, 500);
    EXPECT_GT(height, 300);
}

TEST_F(Windows, HidingAndShowingByProgramSendsNothing) {
    showQuietly();
    window->SetVisibility(QorDlgHIDE);
    settle();
    EXPECT_FALSE(controlFor(window)->isVisible());
    window->SetVisibility(QorDlgSHOW);
    settle();
    EXPECT_TRUE(controlFor(window)->isVisible());
    EXPECT_EQ(window->TakeHeard(), Heard{});
}

TEST_F(Windows, AFileDialogGivesThePathAsTypedAndStaysOpen) {
    auto* file = new QorDlgFile(window, "file", QorDlgFileSave);
    const QorUnicodeString labels[] = {"TIFF", "PNG (*.png)"};
    const QorString patterns[] = {"*.tif", "*.png"};
    file->SetFilterStrings(labels, patterns, 2);
    file->SetDirectory(directory.GetPath("").c_str());
    window->Listen(file, file->GetFileSelectionOKNotification(),
                   file->GetFileSelectionCancelNotification());
    showQuietly();
    show(*file);
    auto* control = controlFor<QFileDialog>(file);
    auto* name = control->findChild<QLineEdit*>("fileNameEdit");
    std::ofstream(directory.GetPath("there")) << "old";
    for (const char* typed : {"new", "there", "with.dots.gif"}) {
        name->setFocus();
        name->clear();
        type(name, typed);
        key(name, Qt::Key_Return);
        EXPECT_EQ(file->GetSelection(), QorUnicodeString(directory.GetPath(typed)));
        EXPECT_EQ(window->TakeHeard(), Heard{"file FileSelectionOK"});
        EXPECT_TRUE(control->isVisible());
        QList<QWidget*> asking = visibleWindows(); // lists that complete the name do not ask
        asking.removeIf(
            [](const QWidget* one) { return qobject_cast<const QDialog*>(one) == nullptr; });
        EXPECT_EQ(asking.size(), 2) << "something else was asked";
    }
    auto* filters = control->findChild<QComboBox*>("fileTypeCombo");
    EXPECT_EQ(filters->itemText(0), "TIFF (*.tif)");
    EXPECT_EQ(filters->itemText(1), "PNG (*.png)") << "the pattern stands there once";
    filters->setFocus();
    key(filters, Qt::Key_Down);
    EXPECT_EQ(file->GetActiveFilterIndex(), 1);
    EXPECT_EQ(name->text(), "with.dots.gif");
    key(control, Qt::Key_Escape);
    EXPECT_EQ(window->TakeHeard(), Heard{"file FileSelectionCancel"});
    EXPECT_TRUE(control->isVisible());
}

TEST_F(Windows, AFileDialogShowsFiltersThatCanBeRead) {
    auto* file = new QorDlgFile(window, "file");
    const QorUnicodeString labels[] = {"All", "STEP", "Any"};
    const QorString patterns[] = {"*.qor *.stp *.igs *.obj *.ply *.stl",
                                  "*.stp *.step *.STP *.STEP", "*"};
    file->SetFilterStrings(labels, patterns, 3);
    file->SetDirectory(directory.GetPath("").c_str());
    std::ofstream(directory.GetPath("PART.STP")) << "part";
    std::ofstream(directory.GetPath("letter.txt")) << "letter";
    showQuietly();
    show(*file);
    auto* filters = controlFor(file)->findChild<QComboBox*>("fileTypeCombo");
    EXPECT_EQ(filters->itemText(0), "All");
    EXPECT_EQ(filters->itemText(1), "STEP (*.stp *.step)");
    EXPECT_EQ(filters->itemText(2), "Any");
    filters->setFocus();
    key(filters, Qt::Key_Down);
    EXPECT_EQ(file->GetActiveFilterIndex(), 1);
    EXPECT_EQ(filters->currentText(), "STEP (*.stp *.step)");
    const auto* list = controlFor(file)->findChild<QAbstractItemView*>("treeView");
    EXPECT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == 1; }))
        << "of the files, the part alone is one of that filter";
}

TEST_F(Windows, AFileDialogEntersADirectoryInsteadOfGivingIt) {
    auto* file = new QorDlgFile(window, "file");
    file->SetDirectory("/");
    window->Listen(file, file->GetFileSelectionOKNotification());
    showQuietly();
    show(*file);
    auto* name = controlFor(file)->findChild<QLineEdit*>("fileNameEdit");
    type(name, "usr");
    key(name, Qt::Key_Return);
    EXPECT_EQ(file->GetDirectory(), QorUnicodeString("/usr"));
    EXPECT_EQ(window->TakeHeard(), Heard{});
}

TEST_F(Windows, AColorEditorStaysOpenUntilItIsDestroyed) {
    auto* color = new QorDlgColorEditor(window, "color");
    color->SetColor({0.2F, 0.4F, 0.6F});
    window->Listen(color, color->GetColorOKNotification(), color->GetColorCancelNotification());
    showQuietly();
    show(*color);
    auto* control = controlFor<QColorDialog>(color);
    EXPECT_NEAR(control->currentColor().greenF(), 0.4, 0.01);
    control->setCurrentColor(QColor::fromRgbF(1.0F, 0.0F, 0.0F));
    key(control, Qt::Key_Return);
    EXPECT_EQ(window->TakeHeard(), Heard{"color ColorOK"});
    EXPECT_FLOAT_EQ(color->GetColor()[0], 1.0F);
    key(control, Qt::Key_Escape);
    EXPECT_EQ(window->TakeHeard(), Heard{"color ColorCancel"});
    EXPECT_TRUE(control->isVisible());
}

struct BoxCase {
    const char* name;
    QorNotifyButtons buttons;
    std::function<void(QMessageBox&)> act;
    int answer;
};

class Boxes
    : public Windows
    , public testing::WithParamInterface<BoxCase> {};

void press(QMessageBox& box, QMessageBox::StandardButton which) {
    QTest::mouseClick(box.button(which), Qt::LeftButton);
}

const std::vector<BoxCase>& boxCases() {
    using B = QorNotifyButtons;
    static const auto escape = [](QMessageBox& box) {
        QTest::keyClick(&box, Qt::Key_Escape);
    };
    static const auto close = [](QMessageBox& box) {
        box.close();
    };
    static const auto enter = [](QMessageBox& box) {
        QTest::keyClick(&box, Qt::Key_Return);
    };
    static const std::vector<BoxCase> cases = {
        {"OK", B::OK, [](QMessageBox& box) { press(box, QMessageBox::Ok); }, QorNotifyConfirm},
        {"OKEscape", B::OK, escape, QorNotifyConfirm},
        {"OKClose", B::OK, close, QorNotifyConfirm},
        {"CancelEscape", B::OKCancel, escape, QorNotifyCancel},
        {"CancelEnter", B::OKCancel, enter, QorNotifyConfirm},
        {"Yes", B::YesNo, [](QMessageBox& box) { press(box, QMessageBox::Yes); }, QorNotifyConfirm},
        {"No", B::YesNo, [](QMessageBox& box) { press(box, QMessageBox::No); }, QorNotifyNo},
        {"NoClose", B::YesNo, close, QorNotifyNo},
        {"ThreeNo", B::YesNoCancel, [](QMessageBox& box) { press(box, QMessageBox::No); },
         QorNotifyNo},
        {"ThreeEscape", B::YesNoCancel, escape, QorNotifyCancel},
    };
    return cases;
}

INSTANTIATE_TEST_SUITE_P(All, Boxes, testing::ValuesIn(boxCases()), [](const auto& one) {
    return std::string(one.param.name);
});

TEST_P(Boxes, BlockInsideTheLibrarysOwnTurnUntilAnswered) {
    auto* push = new QorDlgPushButton(window, "push");
    window->Listen(push, push->GetPushBActivateNotification());
    showQuietly();
    auto* box = new QorDlgNotify(window, "box", QorNotifyKind::Warning, GetParam().buttons);
    bool timerRan = false;
    loop.StartTimer(
        std::chrono::milliseconds(1), [&] { timerRan = true; }, false);
    loop.StartTimer(
        std::chrono::milliseconds(100),
        [&] {
            EXPECT_EQ(loop.GetDepth(), 1);
            auto* control = controlFor<QMessageBox>(box);
            EXPECT_TRUE(control->isModal());
            QTest::mouseClick(controlFor(push)->window()->windowHandle(), Qt::LeftButton, {},
                              controlFor(push)->mapTo(controlFor(window), QPoint(5, 5)));
            GetParam().act(*control);
        },
        false);
    EXPECT_EQ(box->DisplayBlocked("Really?", "Question"), GetParam().answer);
    EXPECT_TRUE(timerRan);
    EXPECT_FALSE(controlFor(box)->isVisible());
    settle();
    EXPECT_EQ(window->TakeHeard(), Heard{}) << "a click went through the box";
}

} // namespace

} // namespace qor::desktop::tests
