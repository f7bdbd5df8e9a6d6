#include "workbench/session/NodeSelection.h"

#include "platform/frame/QorPathElement.h"
#include "tests/session/SessionTest.h"

namespace qor::session::tests {

namespace {

/// Counts the changes of a selection.
class Counter : public QorEventSubscriber {
public:
    explicit Counter(QorCSO& selection) {
        selection.GetCallbackManager()->AddCallback(this, QorCSO::CSO_MODIFIED, &Counter::count);
    }

    int changes = 0;

private:
    void count(QorEventName /*event*/,
               QorBaseUnknown* /*publisher*/,
               QorNotification* /*notification*/,
               QorSubscriberData /*data*/,
               QorCallbackId /*cookie*/) {
        ++changes;
    }
};

class NodeSelection : public SessionTest {};

TEST_F(NodeSelection, HoldsPathsFromTheRootDown) {
    select({jaw});
    ASSERT_EQ(selection().GetSize(), 1);
    const auto* path = dynamic_cast<QorPathElement*>(selection().GetElement(1));
    ASSERT_NE(path, nullptr);
    ASSERT_EQ(path->GetSize(), 3);
    EXPECT_EQ(path->GetElement(0), node(bench));
    EXPECT_EQ(path->GetElement(1), node(vice));
    EXPECT_EQ(path->GetLeaf(), node(jaw));
}

TEST_F(NodeSelection, ChangesOnceForManyNodes) {
    Counter counter(selection());
    select({frame, bolt1, bolt2, jaw});
    EXPECT_EQ(counter.changes, 1);
    EXPECT_EQ(selected(), (std::vector<int>{frame, bolt1, bolt2, jaw}));
    select({});
    EXPECT_EQ(counter.changes, 2);
    select({});
    EXPECT_EQ(counter.changes, 2) << "nothing has changed";
}

TEST_F(NodeSelection, LeavesOutWhatIsNoPart) {
    select({jaw});
    selection().AddElement(QorMake<QorPathElement>());
    EXPECT_EQ(selected(), std::vector<int>{jaw});
}

TEST_F(NodeSelection, TogglesOneNode) {
    toggleNode(selection(), *document, *node(jaw));
    toggleNode(selection(), *document, *node(frame));
    EXPECT_EQ(selected(), (std::vector<int>{jaw, frame}));
    toggleNode(selection(), *document, *node(jaw));
    EXPECT_EQ(selected(), std::vector<int>{frame});
}

TEST_F(NodeSelection, KnowsTheOutermost) {
    EXPECT_EQ(outermost({node(jaw), node(bench), node(vice)}), Nodes{node(bench)});
    EXPECT_EQ(outermost({node(jaw), node(frame)}), (Nodes{node(jaw), node(frame)}));
}

TEST_F(NodeSelection, WhatIsSelectedStandsOut) {
    {
        const SelectionHighlight highlight(*editor);
        select({jaw, frame});
        EXPECT_EQ(highlighted(), (std::vector<int>{frame, jaw}));
        select({frame, vice});
        EXPECT_EQ(highlighted(), (std::vector<int>{frame, vice}));
        select({});
        EXPECT_EQ(highlighted(), std::vector<int>{});
        select({bolt1});
    }
    EXPECT_EQ(highlighted(), std::vector<int>{}) << "nobody keeps it any more";
}

TEST_F(NodeSelection, WhatStaysSelectedIsNotTouched) {
    const SelectionHighlight highlight(*editor);
    select({jaw});
    const auto revision = node(jaw)->bag()->GetRevision();
    select({jaw, frame});
    EXPECT_EQ(node(jaw)->bag()->GetRevision(), revision);
}

} // namespace

} // namespace qor::session::tests
