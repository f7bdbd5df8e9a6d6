// How a widget is named.
#include "platform/dialog/QorDlgDialog.h"
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/frame/QorApplicationFrame.h"
#include "tests/support/QorTestApplication.h"
#include "workbench/automation/Address.h"
#include "workbench/automation/Error.h"

namespace qor::automation {

namespace {

/// Two dialogs, the second a child of the first:
///
///     outer     left/   value  deep/ value  only
///               right/  value
///               value
///     inner     value  twin  twin
class Address : public QorTestApplication {
protected:
    void SetUp() override {
        outer = new QorDlgDialog(nullptr, "outer");
        auto* left = new QorDlgFrame(outer, "left");
        leftValue = new QorDlgLabel(left, "value");
        deep = new QorDlgFrame(left, "deep");
        deepValue = new QorDlgLabel(deep, "value");
        only = new QorDlgLabel(deep, "only");
        auto* right = new QorDlgFrame(outer, "right");
        rightValue = new QorDlgLabel(right, "value");
        directValue = new QorDlgLabel(outer, "value");
        inner = new QorDlgDialog(left, "inner");
        innerValue = new QorDlgLabel(inner, "value");
        new QorDlgLabel(inner, "twin");
        new QorDlgLabel(inner, "twin");
    }

    void TearDown() override {
        outer->RequestDelayedDestruction();
        QorTestApplication::TearDown();
    }

    /// The error of an address, or noError.
    static int errorOf(const std::string& address) {
        try {
            (void)findWidget(address);
        } catch (const Error& error) {
            return static_cast<int>(error.code());
        }
        return 0;
    }

    QorDlgDialog* outer = nullptr;
    QorDlgDialog* inner = nullptr;
    QorDialog* deep = nullptr;
    QorDialog* leftValue = nullptr;
    QorDialog* deepValue = nullptr;
    QorDialog* rightValue = nullptr;
    QorDialog* directValue = nullptr;
    QorDialog* innerValue = nullptr;
    QorDialog* only = nullptr;
};

TEST_F(Address, LeadsToTheWidget) {
    const std::vector<std::pair<std::string, QorDialog*>> rows = {
        {"outer", outer},
        {"outer/left/deep/only", only},
        {"outer/left/only", only},
        {"outer/deep/only", only},
        {"outer/only", only},
        {"outer/deep", deep},
        {"outer/right/value", rightValue},
        {"outer/deep/value", deepValue},
        {"inner", inner},
        {"inner/value", innerValue},
        {"outer/inner", inner},
        {"outer/left/inner/value", innerValue},
        // What leaves out nothing wins over what leaves out something.
        {"outer/value", directValue},
        {"outer/left/value", leftValue},
        {"outer/left/deep/value", deepValue},
    };
    for (const auto& [address, widget] : rows)
        EXPECT_EQ(&findWidget(address), widget) << address;
}

TEST_F(Address, IsRefusedWhenNothingHasThatName) {
    for (const char* address : {"", "/", "none", "value", "outer/", "/outer", "outer/none",
                                "outer/only/value", "outer/inner/only", "inner/only", "outer/twin",
                                "right/value", "outer//only", "Outer", "outer/outer"})
        EXPECT_EQ(errorOf(address), -32001) << address;
}

TEST_F(Address, IsRefusedWhenSeveralHaveThatName) {
    EXPECT_EQ(errorOf("inner/twin"), -32002);
    new QorDlgLabel(deep, "only2");
    new QorDlgLabel(new QorDlgFrame(outer, "third"), "only2");
    EXPECT_EQ(errorOf("outer/only2"), -32002);
    EXPECT_EQ(errorOf("outer/third/only2"), 0);
}

TEST_F(Address, OfADialogThatStandsTwiceNeedsMoreOfItsPath) {
    auto* other = new QorDlgDialog(nullptr, "other");
    auto* second = new QorDlgDialog(other, "inner");
    auto* secondOnly = new QorDlgLabel(second, "secondOnly");
    EXPECT_EQ(errorOf("inner"), -32002);
    EXPECT_EQ(errorOf("inner/value"), 0);
    EXPECT_EQ(&findWidget("other/inner"), second);
    EXPECT_EQ(&findWidget("outer/inner"), inner);
    EXPECT_EQ(&findWidget("inner/secondOnly"), secondOnly);
    other->RequestDelayedDestruction();
    EXPECT_EQ(&findWidget("inner"), inner) << "the other one is dying";
}

TEST_F(Address, CountsHiddenWidgetsAndNoDyingOnes) {
    only->SetVisibility(QorDlgHIDE);
    EXPECT_EQ(&findWidget("outer/only"), only);
    only->RequestDelayedDestruction();
    EXPECT_EQ(errorOf("outer/only"), -32001);
    inner->RequestDelayedDestruction();
    EXPECT_EQ(errorOf("inner"), -32001);
    EXPECT_EQ(errorOf("inner/value"), -32001);
}

TEST_F(Address, OfADialogIsNoWidgets) {
    EXPECT_EQ(&findDialog("inner"), inner);
    EXPECT_THROW((void)findDialog("outer/only"), Error);
    EXPECT_THROW((void)findDialog("none"), Error);
}

TEST_F(Address, DoesNotKnowTheApplicationFrame) {
    auto* frame = new QorApplicationFrame("frame");
    auto* child = new QorDlgDialog(frame, "child");
    EXPECT_EQ(errorOf("frame"), -32001);
    EXPECT_EQ(&findWidget("child"), child);
    EXPECT_EQ(listDialogs(), std::vector<QorDlgDialog*>({outer, inner, child}));
    frame->RequestDelayedDestruction();
}

} // namespace

} // namespace qor::automation
