// Sliders, scroll bars and progress bars, by table.
#include "platform/dialog/QorDlgProgress.h"
#include "tests/platform/dialog/DialogTest.h"

#include <limits>

namespace {

constexpr QorUserResult Done = QorUserResult::Done;
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
const Heard dragged{"slider SliderDrag"};
const Heard modified{"slider SliderModify"};
const Heard both{"slider SliderDrag", "slider SliderModify"};

class Slider : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        slider = new QorDlgSlider(dialog, "slider");
        dialog->Listen(slider, slider->GetSliderDragNotification(),
                       slider->GetSliderModifyNotification());
        slider->SetRange(0.0, 1.0, 100);
        slider->SetValue(0.5);
    }

    QorDlgSlider* slider = nullptr;
};

QorInstantiateDialogTests(Slider);

TEST_P(Slider, DragsAtEveryStepAndModifiesAtTheRelease) {
    struct Row {
        const char* sentence;
        std::vector<std::function<QorUserResult(QorDlgSlider&)>> acts;
        QorUserResult result; ///< of the last
        double after;
        Heard heard;
    };

    const auto drag = [](double iValue) {
        return [=](QorDlgSlider& iOne) {
            return iOne.UserDrag(iValue);
        };
    };
    const auto release = [](double iValue) {
        return [=](QorDlgSlider& iOne) {
            return iOne.UserSetValue(iValue);
        };
    };
    const auto set = [](double iValue, QorDlgNotifyFlag iFlag = QorDlgNoNotify) {
        return [=](QorDlgSlider& iOne) {
            iOne.SetValue(iValue, iFlag);
            return Done;
        };
    };
    const std::vector<Row> rows = {
        {"a key", {release(0.51)}, Done, 0.51, both},
        {"a drag alone", {drag(0.6)}, Done, 0.6, dragged},
        {"a drag to where it is", {drag(0.5)}, Done, 0.5, {}},
        {"released where it is", {release(0.5)}, Done, 0.5, {}},
        {"dragged, then released there", {drag(0.6), release(0.6)}, Done, 0.6, both},
        {"dragged, then released farther on",
         {drag(0.6), release(0.7)},
         Done,
         0.7,
         {dragged[0], dragged[0], modified[0]}},
        {"dragged away and back",
         {drag(0.6), drag(0.5), release(0.5)},
         Done,
         0.5,
         {dragged[0], dragged[0]}},
        {"not snapped to a step", {release(0.123456)}, Done, 0.123456, both},
        {"below the range", {release(-3.0)}, Done, 0.0, both},
        {"above the range", {drag(infinity)}, Done, 1.0, dragged},
        {"no number", {release(noNumber)}, QorUserResult::Impossible, 0.5, {}},
        {"a drag to no number", {drag(noNumber)}, QorUserResult::Impossible, 0.5, {}},
        {"a program sets silently", {set(0.7)}, Done, 0.7, {}},
        {"a program sets, a person releases there", {set(0.7), release(0.7)}, Done, 0.7, {}},
        {"a program asks to notify", {set(0.7, QorDlgDoNotify)}, Done, 0.7, both},
        {"a program asks to notify of no change", {set(0.5, QorDlgDoNotify)}, Done, 0.5, {}},
        {"a program sets no number", {set(noNumber, QorDlgDoNotify)}, Done, 0.5, {}},
        {"hidden",
         {[](QorDlgSlider& iOne) {
             iOne.SetVisibility(QorDlgHIDE);
             return iOne.UserDrag(0.6);
         }},
         QorUserResult::Insensitive,
         0.5,
         {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sentence);
        slider->SetVisibility(QorDlgSHOW);
        slider->SetValue(0.5);
        QorUserResult result = Done;
        for (const auto& act : row.acts)
            result = act(*slider);
        EXPECT_EQ(result, row.result);
        EXPECT_EQ(slider->GetValue(), row.after);
        EXPECT_EQ(dialog->TakeHeard(), row.heard);
    }
}

TEST_P(Slider, AValueSetInsideADragIsStillModifiedAtTheRelease) {
    dialog->reaction = [&](QorCommand&) {
        slider->SetValue(0.7);
    };
    slider->UserDrag(0.68);
    EXPECT_EQ(slider->GetValue(), 0.7);
    slider->UserSetValue(0.7);
    EXPECT_EQ(dialog->TakeHeard(), both);
}

TEST_P(Slider, RangesBringTheValueInAndRefuseWhatIsNone) {
    slider->SetRange(0.6, 0.8, 0);
    EXPECT_EQ(slider->GetValue(), 0.6);
    EXPECT_DOUBLE_EQ(slider->GetStep(), 0.2) << "at least one step";
    slider->SetRange(1.0, 0.0, 10);
    slider->SetRange(0.0, noNumber, 10);
    slider->SetRange(-infinity, 0.0, 10);
    EXPECT_EQ(slider->GetMin(), 0.6);
    EXPECT_EQ(slider->GetMax(), 0.8);
    EXPECT_EQ(dialog->TakeHeard(), Heard{});
}

TEST_P(Slider, AMirroringSpinnerAndSliderComeToRest) {
    auto* spinner = new QorDlgSpinner(dialog, "spinner");
    spinner->SetRange(0.0, 1.0, 100);
    dialog->Listen(spinner, spinner->GetSpinnerModifyNotification());
    dialog->reaction = [&](QorCommand& iSender) {
        if (&iSender == spinner)
            slider->SetValue(spinner->GetValue(), QorDlgDoNotify);
        else
            spinner->SetValue(slider->GetValue());
    };
    spinner->UserSetText("0.25");
    EXPECT_EQ(slider->GetValue(), 0.25);
    EXPECT_EQ(dialog->TakeHeard(),
              (Heard{"spinner SpinnerModify", "slider SliderDrag", "slider SliderModify"}));
    slider->UserSetValue(0.75);
    EXPECT_EQ(spinner->GetValue(), 0.75);
    EXPECT_EQ(dialog->TakeHeard(), both);
}

TEST_P(Slider, AScrollBarKeepsItsPositionInTheRange) {
    auto* bar = new QorDlgScrollBar(dialog, "bar");
    dialog->Listen(bar, bar->GetScrollBarDragNotification(), bar->GetScrollBarModifyNotification());
    const Heard drag{"bar ScrollBarDrag"};
    const Heard dragAndModify{"bar ScrollBarDrag", "bar ScrollBarModify"};
    EXPECT_EQ(bar->GetOrientation(), QorOrientation::Vertical);
    bar->SetScrollRange(0, 909);
    bar->SetScrollBoxSize(523);
    bar->SetScrollPos(2000);
    EXPECT_EQ(bar->GetScrollPos(), 909) << "the box does not cut the range";
    EXPECT_EQ(dialog->TakeHeard(), Heard{});
    EXPECT_EQ(bar->UserDrag(100), Done);
    EXPECT_EQ(dialog->TakeHeard(), drag);
    EXPECT_EQ(bar->UserSetPosition(100), Done);
    EXPECT_EQ(dialog->TakeHeard(), Heard{"bar ScrollBarModify"});
    EXPECT_EQ(bar->UserSetPosition(-5), Done);
    EXPECT_EQ(bar->GetScrollPos(), 0);
    EXPECT_EQ(dialog->TakeHeard(), dragAndModify);
    EXPECT_EQ(bar->UserSetPosition(0), Done);
    bar->SetScrollRange(10, 20);
    EXPECT_EQ(bar->GetScrollPos(), 10);
    bar->SetScrollRange(20, 10);
    bar->SetScrollBoxSize(-4);
    int min = 0;
    int max = 0;
    bar->GetScrollRange(min, max);
    EXPECT_EQ(min, 10);
    EXPECT_EQ(max, 20);
    EXPECT_EQ(bar->GetScrollBoxSize(), 0);
    EXPECT_EQ(dialog->TakeHeard(), Heard{});
    bar->SetSensitivity(QorDlgDISABLE);
    EXPECT_EQ(bar->UserDrag(15), QorUserResult::Insensitive);
    EXPECT_EQ(bar->UserSetPosition(15), QorUserResult::Insensitive);
}

TEST_P(Slider, APositionClampedInsideADragIsStillModifiedAtTheRelease) {
    auto* bar = new QorDlgScrollBar(dialog, "bar");
    dialog->Listen(bar, bar->GetScrollBarDragNotification(), bar->GetScrollBarModifyNotification());
    bar->SetScrollRange(0, 909);
    dialog->reaction = [&](QorCommand&) {
        if (bar->GetScrollPos() > 386)
            bar->SetScrollPos(386);
    };
    bar->UserDrag(700);
    EXPECT_EQ(bar->GetScrollPos(), 386);
    bar->UserSetPosition(386);
    EXPECT_EQ(dialog->TakeHeard(), (Heard{"bar ScrollBarDrag", "bar ScrollBarModify"}));
}

TEST_P(Slider, AProgressBarKeepsWhatItIsGiven) {
    auto* progress = new QorDlgProgress(dialog, "progress");
    EXPECT_EQ(progress->GetMin(), 0);
    EXPECT_EQ(progress->GetMax(), 100);
    progress->SetRange(5, 50);
    progress->SetRange(50, 5);
    progress->SetPos(70);
    EXPECT_EQ(progress->GetMin(), 5);
    EXPECT_EQ(progress->GetMax(), 50);
    EXPECT_EQ(progress->GetPos(), 70);
}

TEST_P(Slider, OrientationIsAMatterOfStyle) {
    EXPECT_EQ(slider->GetOrientation(), QorOrientation::Horizontal);
    auto* upright = new QorDlgSlider(dialog, "upright", QorDlgVertical);
    EXPECT_EQ(upright->GetOrientation(), QorOrientation::Vertical);
}

} // namespace
