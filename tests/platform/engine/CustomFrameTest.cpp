#include "platform/engine/QorRdgOptionsDefaults.h"
#include "tests/platform/engine/EngineManagerTest.h"

using testing::ElementsAre;

namespace {

TEST_F(EngineManager, BuildsThePagesThatTheEngineAdds) {
    script.pages = {"Optics", "", "Film"};
    int count = -1;
    EXPECT_EQ(Manager().GetCustomFrameCount(count), S_OK);
    EXPECT_EQ(count, 3);
    auto* page = new QorDlgFrame(nullptr, "customTabPage0");
    const auto options = QorMake<QorRdgPreviewOptionsDefaults>();
    for (const auto& [index, title] :
         {std::pair{-1, ""}, {0, "Optics"}, {1, ""}, {2, "Film"}, {3, ""}}) {
        QorRdgCustomFrame* frame = nullptr;
        QorUnicodeString told("before");
        const QorResult result = Manager().CreateCustomFrame(index, page, frame, told);
        EXPECT_EQ(told.Str(), title) << index;
        EXPECT_EQ(result, *title != 0 ? S_OK : E_FAIL) << index;
        ASSERT_EQ(frame != nullptr, *title != 0) << index;
        if (frame == nullptr)
            continue;
        EXPECT_EQ(frame->GetFather(), page);
        frame->SetRenderOptions(options);
        EXPECT_THAT(dynamic_cast<FakeFrame&>(*frame).told, ElementsAre(options.Get()));
    }
    page->RequestDelayedDestruction();
    loop.RunPosted();
}

TEST_F(EngineManager, AnEngineWithoutPagesHasNone) {
    int count = -1;
    EXPECT_EQ(Manager().GetCustomFrameCount(count), S_OK);
    EXPECT_EQ(count, 0);
    const auto page = QorMake<QorDlgFrame>(nullptr, "page");
    QorRdgCustomFrame* frame = nullptr;
    QorUnicodeString title;
    EXPECT_EQ(Manager().CreateCustomFrame(0, page, frame, title), E_FAIL);
    EXPECT_EQ(Manager().CreateCustomFrame(0, nullptr, frame, title), E_FAIL);
}

} // namespace
