// Spinners: exact values, ranges, steps, formats and typed texts, by table.
#include "tests/platform/dialog/DialogTest.h"
#include "tests/support/DecimalComma.h"

#include <cmath>
#include <limits>

namespace {

constexpr QorUserResult Done = QorUserResult::Done;
constexpr QorUserResult Impossible = QorUserResult::Impossible;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

class Spinner : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        spinner = new QorDlgSpinner(dialog, "spinner");
        dialog->Listen(spinner, spinner->GetSpinnerModifyNotification());
        spinner->SetRange(10.0, 2000.0, 1990);
        spinner->SetFormat("%4.0f");
        spinner->SetValue(300.0);
    }

    QorDlgSpinner* spinner = nullptr;
};

QorInstantiateDialogTests(Spinner);

const Heard modified{"spinner SpinnerModify"};

TEST_P(Spinner, TakesValuesExactlyAndNotifiesForAPersonsChange) {
    struct Row {
        const char* sentence;
        std::function<QorUserResult(QorDlgSpinner&)> act;
        QorUserResult result;
        double after;
        Heard heard;
    };

    const auto user = [](double iValue) {
        return [=](QorDlgSpinner& iOne) {
            return iOne.UserSetValue(iValue);
        };
    };
    const auto step = [](int iSteps) {
        return [=](QorDlgSpinner& iOne) {
            return iOne.UserStep(iSteps);
        };
    };
    const auto set = [](double iValue, QorDlgNotifyFlag iFlag = QorDlgNoNotify) {
        return [=](QorDlgSpinner& iOne) {
            iOne.SetValue(iValue, iFlag);
            return Done;
        };
    };
    const std::vector<Row> rows = {
        {"a fraction that the format does not show", user(299.7), Done, 299.7, modified},
        {"the value it has", user(300.0), Done, 300.0, {}},
        {"below the range", user(9.0), Done, 10.0, modified},
        {"above the range", user(1e9), Done, 2000.0, modified},
        {"between two steps", user(12.25), Done, 12.25, modified},
        {"no number", user(noNumber), Impossible, 300.0, {}},
        {"infinity is beyond the end", user(infinity), Done, 2000.0, modified},
        {"minus infinity is below the beginning", user(-infinity), Done, 10.0, modified},
        {"a program sets silently", set(42.5), Done, 42.5, {}},
        {"a program asks to notify", set(42.5, QorDlgDoNotify), Done, 42.5, modified},
        {"a program asks to notify of no change", set(300.0, QorDlgDoNotify), Done, 300.0, {}},
        {"a program sets no number", set(noNumber, QorDlgDoNotify), Done, 300.0, {}},
        {"a program sets beyond the end", set(1e300), Done, 2000.0, {}},
        {"up", step(1), Done, 301.0, modified},
        {"down, by the page", step(-10), Done, 290.0, modified},
        {"no step", step(0), Done, 300.0, {}},
        {"far beyond the end", step(std::numeric_limits<int>::max()), Done, 2000.0, modified},
        {"disabled",
         [](QorDlgSpinner& iOne) {
             iOne.SetSensitivity(QorDlgDISABLE);
             return iOne.UserStep(1);
         },
         QorUserResult::Insensitive,
         300.0,
         {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sentence);
        spinner->SetSensitivity(QorDlgENABLE);
        spinner->SetValue(300.0);
        EXPECT_EQ(row.act(*spinner), row.result);
        EXPECT_EQ(spinner->GetValue(), row.after);
        EXPECT_EQ(dialog->TakeHeard(), row.heard);
    }
}

TEST_P(Spinner, ReadsTypedTexts) {
    struct Row {
        const char* sentence;
        const char* format;
        const char* text;
        QorUserResult result;
        double after;
        bool heard;
    };

    const std::vector<Row> rows = {
        {"a whole number", "%4.0f", "42", Done, 42.0, true},
        {"blanks around it", "%4.0f", "  42 ", Done, 42.0, true},
        {"a decimal point", "%4.0f", "42.25", Done, 42.25, true},
        {"a decimal comma", "%4.0f", "42,25", Done, 42.25, true},
        {"a plus sign", "%4.0f", "+42", Done, 42.0, true},
        {"an exponent", "%4.0f", "4.2e2", Done, 420.0, true},
        {"out of range", "%4.0f", "5", Done, 10.0, true},
        {"what is shown already", "%4.0f", "300", Done, 299.7, false},
        {"the exact value in other digits", "%4.0f", "299.70", Done, 299.7, false},
        {"with the unit of the format", "%.1f mm", "42.5 mm", Done, 42.5, true},
        {"without the unit of the format", "%.1f mm", "42.5", Done, 42.5, true},
        {"with what stands before it", "R %.1f", "R 42.5", Done, 42.5, true},
        {"a percent sign", "%.0f%%", "42%", Done, 42.0, true},
        {"a foreign unit", "%.1f mm", "42 cm", Impossible, 299.7, false},
        {"nothing", "%4.0f", "", Impossible, 299.7, false},
        {"only a unit", "%.1f mm", "mm", Impossible, 299.7, false},
        {"a word", "%4.0f", "many", Impossible, 299.7, false},
        {"digits and letters", "%4.0f", "12abc", Impossible, 299.7, false},
        {"two numbers", "%4.0f", "12 13", Impossible, 299.7, false},
        {"two points", "%4.0f", "1,2.3", Impossible, 299.7, false},
        {"two signs", "%4.0f", "+-5", Impossible, 299.7, false},
        {"infinity", "%4.0f", "inf", Impossible, 299.7, false},
        {"no number by name", "%4.0f", "nan", Impossible, 299.7, false},
        {"more than a number can hold", "%4.0f", "1e999", Impossible, 299.7, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sentence);
        spinner->SetFormat(row.format);
        spinner->SetValue(299.7);
        EXPECT_EQ(spinner->UserSetText(row.text), row.result);
        EXPECT_EQ(spinner->GetValue(), row.after);
        EXPECT_EQ(dialog->TakeHeard(), row.heard ? modified : Heard{});
    }
}

TEST_P(Spinner, ATextThatIsNoNumberIsDrawnOverWithTheValue) {
    if (host)
        (void)host->TakeLog();
    loop.RunPosted();
    spinner->UserSetText("many");
    if (!host)
        return;
    const auto log = host->TakeLog();
    ASSERT_FALSE(log.empty());
    EXPECT_EQ(log.back(), "update spinner value");
}

TEST_P(Spinner, RefusesFormatsThatAreNotOfOneDouble) {
    struct Row {
        const char* format;
        bool taken;
        const char* shown; ///< of 299.7
    };

    const std::vector<Row> rows = {
        {"%4.0f", true, "300"},    {"%8.2f", true, "299.70"},  {"%g", true, "299.7"},
        {"%.1e", true, "3.0e+02"}, {"%.0f %%", true, "300 %"}, {"%-9.1f", true, "299.7"},
        {"", false, ""},           {"%", false, ""},           {"%s", false, ""},
        {"%d", false, ""},         {"%n", false, ""},          {"%f %f", false, ""},
        {"%*f", false, ""},        {"number", false, ""},      {"%999f", false, ""},
    };
    spinner->SetValue(299.7);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.format);
        spinner->SetFormat("%.3f");
        spinner->SetFormat(row.format);
        EXPECT_EQ(spinner->GetFormat().Str(), row.taken ? row.format : "%.3f");
        EXPECT_EQ(spinner->GetShownText().Str(), row.taken ? row.shown : "299.700");
    }
}

TEST_P(Spinner, RangesBringTheValueIn) {
    struct Row {
        const char* sentence;
        std::function<void(QorDlgSpinner&)> act;
        double min;
        double max;
        double step;
        double value;
    };

    const std::vector<Row> rows = {
        {"steps", [](QorDlgSpinner& iOne) { iOne.SetRange(0.0, 1.0, 100); }, 0.0, 1.0, 0.01, 1.0},
        {"no steps keep the step", [](QorDlgSpinner& iOne) { iOne.SetRange(0.0, 500.0, 0); }, 0.0,
         500.0, 1.0, 300.0},
        {"a step of its own", [](QorDlgSpinner& iOne) { iOne.SetRangeWithStep(400.0, 500.0, 2.5); },
         400.0, 500.0, 2.5, 400.0},
        {"no step of its own", [](QorDlgSpinner& iOne) { iOne.SetRangeWithStep(0.0, 500.0, -1.0); },
         0.0, 500.0, 1.0, 300.0},
        {"no step that is a number",
         [](QorDlgSpinner& iOne) { iOne.SetRangeWithStep(0.0, 500.0, noNumber); }, 0.0, 500.0, 1.0,
         300.0},
        {"a single value", [](QorDlgSpinner& iOne) { iOne.SetRange(7.0, 7.0, 10); }, 7.0, 7.0, 1.0,
         7.0},
        {"the wrong way round", [](QorDlgSpinner& iOne) { iOne.SetRange(5.0, 1.0, 4); }, 10.0,
         2000.0, 1.0, 300.0},
        {"no number", [](QorDlgSpinner& iOne) { iOne.SetRange(noNumber, 1.0, 4); }, 10.0, 2000.0,
         1.0, 300.0},
        {"without end", [](QorDlgSpinner& iOne) { iOne.SetRange(0.0, infinity, 4); }, 10.0, 2000.0,
         1.0, 300.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sentence);
        spinner->SetRange(10.0, 2000.0, 1990);
        spinner->SetValue(300.0);
        row.act(*spinner);
        EXPECT_EQ(spinner->GetMin(), row.min);
        EXPECT_EQ(spinner->GetMax(), row.max);
        EXPECT_EQ(spinner->GetStep(), row.step);
        EXPECT_EQ(spinner->GetValue(), row.value);
        EXPECT_EQ(dialog->TakeHeard(), Heard{});
    }
}

TEST_P(Spinner, StepsDoNotAddUpErrors) {
    spinner->SetRange(0.0, 1.0, 10);
    spinner->SetValue(0.0);
    for (int i = 1; i <= 10; ++i) {
        spinner->UserStep(1);
        EXPECT_EQ(spinner->GetValue(), i * 0.1);
    }
    spinner->SetValue(0.25);
    spinner->UserStep(1);
    EXPECT_DOUBLE_EQ(spinner->GetValue(), 0.35)
        << "a step from where the value is, not from where a step lies";
}

TEST_P(Spinner, ShowsAndReadsNumbersTheSameUnderADecimalComma) {
    const DecimalComma german;
    spinner->SetFormat("%.2f");
    spinner->SetValue(42.25);
    EXPECT_EQ(spinner->GetShownText(), "42.25");
    EXPECT_EQ(spinner->UserSetText("12.5"), Done);
    EXPECT_EQ(spinner->GetValue(), 12.5);
}

} // namespace
