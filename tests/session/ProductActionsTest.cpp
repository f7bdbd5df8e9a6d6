#include "workbench/session/ProductActions.h"

#include "tests/session/SessionTest.h"

namespace qor::session::tests {

namespace {

class Actions : public SessionTest {
protected:
    [[nodiscard]] ProductActions actions() const { return ProductActions(editor); }
};

TEST_F(Actions, SelectAllTakesThePartsThatAreShown) {
    select({vice});
    actions().hideSelected();
    actions().selectAll();
    EXPECT_EQ(selected(), (std::vector<int>{frame, bolt1, bolt2}));
}

TEST_F(Actions, SelectSameFindsAllInstances) {
    select({bolt2, jaw});
    actions().selectSame();
    EXPECT_EQ(selected(), (std::vector<int>{bolt1, bolt2, jaw, bolt3}));
}

TEST_F(Actions, HideAndShowAreAboutTheSelection) {
    select({vice, bolt1});
    actions().hideSelected();
    EXPECT_EQ(shown(), (std::vector<int>{frame, bolt2}));
    EXPECT_TRUE(node(jaw)->isVisible()) << "its own switch stays";
    select({jaw});
    actions().showSelected();
    EXPECT_EQ(shown(), (std::vector<int>{frame, bolt2, jaw, bolt3}))
        << "its assembly comes with it";
}

TEST_F(Actions, IsolateShowsTheSelectionAlone) {
    select({bolt1, vice});
    actions().isolateSelected();
    EXPECT_EQ(shown(), (std::vector<int>{bolt1, jaw, bolt3}));
    actions().showAll();
    EXPECT_EQ(shown(), (std::vector<int>{frame, bolt1, bolt2, jaw, bolt3}));
}

TEST_F(Actions, InvertShowsWhatWasHidden) {
    select({vice, bolt1});
    actions().hideSelected();
    actions().invertVisibility();
    EXPECT_EQ(shown(), (std::vector<int>{bolt1, jaw, bolt3}));
    actions().invertVisibility();
    EXPECT_EQ(shown(), (std::vector<int>{frame, bolt2}));
}

TEST_F(Actions, InvertOfAllShownHidesAll) {
    actions().invertVisibility();
    EXPECT_EQ(shown(), std::vector<int>{});
    actions().invertVisibility();
    EXPECT_EQ(shown(), (std::vector<int>{frame, bolt1, bolt2, jaw, bolt3}));
}

TEST_F(Actions, TheSelectionsBoxIsThatOfWhatIsShown) {
    select({frame, jaw});
    EXPECT_EQ(actions().selectionBox().low, (QorMathPoint{100, 0, 0}));
    EXPECT_EQ(actions().selectionBox().high, (QorMathPoint{910, 10, 0}))
        << "400 of vice, 500 of jaw";
    document->setVisible(*node(vice), false);
    EXPECT_EQ(actions().selectionBox().high, (QorMathPoint{110, 10, 0}));
    select({});
    EXPECT_TRUE(actions().selectionBox().IsEmpty());
}

TEST_F(Actions, WithoutADocumentNothingHappens) {
    const ProductActions none(nullptr);
    EXPECT_FALSE(none.hasProduct());
    EXPECT_FALSE(none.hasSelection());
    for (const auto action : {&ProductActions::selectAll, &ProductActions::selectNothing,
                              &ProductActions::selectSame, &ProductActions::hideSelected,
                              &ProductActions::showSelected, &ProductActions::isolateSelected,
                              &ProductActions::showAll, &ProductActions::invertVisibility})
        (none.*action)();
    EXPECT_TRUE(none.selectionBox().IsEmpty());
}

TEST_F(Actions, WithoutASelectionVisibilityStays) {
    for (const auto action : {&ProductActions::hideSelected, &ProductActions::showSelected,
                              &ProductActions::isolateSelected, &ProductActions::selectSame})
        (actions().*action)();
    EXPECT_FALSE(document->isModified());
    EXPECT_EQ(shown().size(), 5U);
}

} // namespace

} // namespace qor::session::tests
