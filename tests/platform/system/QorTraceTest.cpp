#include "platform/system/QorTrace.h"

#include "tests/support/DecimalComma.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using Lines = std::vector<std::string>;

class QorTraceTest : public testing::Test {
protected:
    void TearDown() override {
        QorTraceChannel::SetStandardErrorLevel(0);
        QorTraceChannel::StopRecording();
        static_cast<void>(QorTraceChannel::TakeRecorded());
    }
};

} // namespace

TEST_F(QorTraceTest, IsSilentUnlessSomebodyListens) {
    int evaluated = 0;
    testing::internal::CaptureStderr();
    QorTrace(1, "%d\n", ++evaluated);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(evaluated, 0);
    EXPECT_FALSE(QorTraceChannel::IsActive(1));
    EXPECT_TRUE(QorTraceChannel::TakeRecorded().empty());
}

TEST_F(QorTraceTest, RecordsALevelAndThoseBelowExactlyAsGiven) {
    QorTraceChannel::StartRecording(4);
    QorTrace(4, "(QorRdgOutputDialog::UpdateDisplay) iForce=%d\n", 1);
    QorTrace(5, "too frequent\n");
    QorTrace(2, "no line end, 100%%");
    QorTrace(1, "\n");
    EXPECT_EQ(QorTraceChannel::TakeRecorded(),
              (Lines{"(QorRdgOutputDialog::UpdateDisplay) iForce=1\n", "no line end, 100%", "\n"}));
    EXPECT_TRUE(QorTraceChannel::TakeRecorded().empty());
}

TEST_F(QorTraceTest, WhatWasRecordedCanStillBeTakenAfterTheStop) {
    QorTraceChannel::StartRecording(4);
    QorTrace(4, "kept\n");
    QorTraceChannel::StopRecording();
    QorTrace(4, "missed\n");
    EXPECT_EQ(QorTraceChannel::TakeRecorded(), Lines{"kept\n"});
    QorTraceChannel::StartRecording(4);
    QorTrace(4, "forgotten by the next start\n");
    QorTraceChannel::StartRecording(2);
    EXPECT_TRUE(QorTraceChannel::TakeRecorded().empty());
}

TEST_F(QorTraceTest, WritesToStandardErrorBesides) {
    QorTraceChannel::SetStandardErrorLevel(2);
    QorTraceChannel::StartRecording(4);
    testing::internal::CaptureStderr();
    QorTrace(2, "both\n");
    QorTrace(4, "recorded\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "both\n");
    EXPECT_EQ(QorTraceChannel::TakeRecorded(), (Lines{"both\n", "recorded\n"}));
    QorTraceChannel::StopRecording();
    EXPECT_TRUE(QorTraceChannel::IsActive(2));
    EXPECT_FALSE(QorTraceChannel::IsActive(3));
}

TEST_F(QorTraceTest, KeepsTheLatest) {
    constexpr int lines = 100'010;
    QorTraceChannel::StartRecording(1);
    for (int i = 0; i < lines; ++i)
        QorTrace(1, "%d", i);
    const Lines taken = QorTraceChannel::TakeRecorded();
    ASSERT_EQ(taken.size(), 100'000U);
    EXPECT_EQ(taken.front(), "10");
    EXPECT_EQ(taken.back(), "100009");
}

TEST_F(QorTraceTest, FormatsNumbersInEveryLocale) {
    const DecimalComma german;
    QorTraceChannel::StartRecording(1);
    QorTrace(1, "%.2f %s\n", 1.5, std::string(5000, 'x').c_str());
    EXPECT_EQ(QorTraceChannel::TakeRecorded(), Lines{"1.50 " + std::string(5000, 'x') + "\n"});
}

TEST_F(QorTraceTest, TakesLinesOfManyThreads) {
    constexpr int lines = 500;
    QorTraceChannel::StartRecording(1);
    const auto work = [] {
        for (int i = 0; i < lines; ++i)
            QorTrace(1, "line %d\n", i);
    };
    std::thread first(work);
    std::thread second(work);
    first.join();
    second.join();
    EXPECT_EQ(QorTraceChannel::TakeRecorded().size(), 2U * lines);
}

TEST_F(QorTraceTest, ShowsObjectsAsNumbers) {
    const int object = 0;
    EXPECT_NE(QorTraceId(&object), 0U);
    EXPECT_EQ(QorTraceId(nullptr), 0U);
}
