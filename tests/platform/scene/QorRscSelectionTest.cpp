#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmLayout.h"
#include "tests/platform/scene/QorSceneTest.h"

namespace {

/// Two editors, the first on the test's document.
class RscSelection : public QorSceneTest {
protected:
    void TearDown() override {
        layout.Reset();
        QorSceneTest::TearDown();
    }

    QorVar<QorFrmLayout> layout = QorMake<QorFrmLayout>(nullptr, "layout");
    QorFrmEditor* editor = new QorFrmEditor(layout.Get(), "editor", document.Get());
};

TEST_F(RscSelection, LosesWhatLeavesTheDocument) {
    const auto first = Objects().CreateObject("light");
    const auto second = Objects().CreateObject("light");
    QorCSO* selection = editor->GetCSO();
    selection->AddElement(document->BuildPathElement(first.Get()).Get());
    selection->AddElement(document->BuildPathElement(second.Get()).Get());
    selection->AddElement(first.Get());
    Objects().RemoveObject(first.Get());
    ASSERT_EQ(selection->GetSize(), 1);
    EXPECT_EQ(dynamic_cast<QorPathElement*>(selection->GetElement(1))->GetLeaf(), second.Get());
}

TEST_F(RscSelection, FindsTheInterfaceOnAPath) {
    const auto shooting = Create<QorIRscShooting>("shooting");
    const auto path = document->BuildPathElement(QorRscObject::From(shooting.Get()));
    EXPECT_EQ(path->FindInterface<QorIRscShooting>(), shooting);
    EXPECT_FALSE(path->FindInterface<QorIRscLight>());
}

} // namespace
