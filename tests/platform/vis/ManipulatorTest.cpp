#include "tests/platform/vis/VisTest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

/// Somebody who owns manipulators and writes down what they send.
class Owner : public QorCommand {
public:
    using QorCommand::QorCommand;

    void Watch(QorManipulator* iManipulator) {
        for (QorNotification* notification :
             {iManipulator->GetBeginManipulate(), iManipulator->GetManipulate(),
              iManipulator->GetEndManipulate(), iManipulator->GetActivate(),
              iManipulator->GetEdit()})
            AddAnalyseNotificationCB(this, iManipulator, notification, &Owner::SentCB);
    }

    void SentCB(QorCommand*, QorNotification* iNotification, QorSubscriberData) {
        const auto* sent = dynamic_cast<QorManipulatorNotification*>(iNotification);
        pathSize = sent->GetPickPath().size();
        const std::string sentName = iNotification->IsA();
        log.push_back(sentName.substr(sizeof("QorManipulator") - 1,
                                      sentName.size() - sizeof("QorManipulatorNotification") + 1));
    }

    std::vector<std::string> log;
    std::size_t pathSize = 0;
};

class Manipulators : public VisTest {
protected:
    Manipulators()
        : viewer(new Qor2DViewer(dialog, "viewer", QorDlgDefaultStyle, width, height))
        , owner(new Owner(dialog, "owner")) {}

    Qor2DManipulator* Add(const QorMathPoint2D& iOrigin) {
        auto* manipulator =
            new Qor2DManipulator(owner, "manipulator", viewer, viewer->GetMain2DViewpoint());
        manipulator->SetOrigin(iOrigin);
        owner->Watch(manipulator);
        return manipulator;
    }

    Qor2DViewer* viewer;
    Owner* owner;
};

TEST_F(Manipulators, ADragBeginsWithTheFirstMoveAndEndsWithTheRelease) {
    const Qor2DManipulator* handle = Add({0, 0}); // in the middle of the viewer
    Press(*viewer, 203, 150);
    EXPECT_TRUE(owner->log.empty());
    Move(*viewer, 213, 140);
    EXPECT_NEAR(handle->GetOrigin().x, 10.0, 1.0e-4);
    EXPECT_NEAR(handle->GetOrigin().y, 10.0, 1.0e-4);
    Move(*viewer, 500, 140); // beyond the viewer while the button is held
    Release(*viewer, 223, 150);
    EXPECT_NEAR(handle->GetOrigin().x, 20.0, 1.0e-4);
    EXPECT_THAT(owner->log, ElementsAre("Begin", "Manipulate", "Manipulate", "End"));
    Move(*viewer, 100, 100);
    EXPECT_EQ(owner->log.size(), 4U);
}

TEST_F(Manipulators, AClickActivatesAndADoubleClickEdits) {
    Add({0, 0});
    Press(*viewer, 200, 150);
    Release(*viewer, 200, 150);
    Mouse(*viewer, QorMouseEvent::Action::DoubleClick, 200, 150);
    Release(*viewer, 200, 150);
    EXPECT_THAT(owner->log, ElementsAre("Activate", "Edit"));
}

TEST_F(Manipulators, TheSquareAroundTheOriginIsHitAndNothingBeside) {
    Add({0, 0});
    Press(*viewer, 208, 150);
    Release(*viewer, 208, 150);
    EXPECT_TRUE(owner->log.empty());
    Press(*viewer, 206.9, 156.9);
    Release(*viewer, 206.9, 156.9);
    EXPECT_THAT(owner->log, ElementsAre("Activate"));
}

TEST_F(Manipulators, ThePriorityWinsThenTheNearest) {
    Qor2DManipulator* left = Add({-5, 0});
    Qor2DManipulator* right = Add({5, 0});
    const auto picked = [&](double iX) {
        left->SetOrigin({-5, 0});
        right->SetOrigin({5, 0});
        Press(*viewer, iX, 150);
        Move(*viewer, iX + 20, 150);
        Release(*viewer, iX + 20, 150);
        return left->GetOrigin().x > 0.0 ? "left" : "right";
    };
    EXPECT_STREQ(picked(199), "left");
    EXPECT_STREQ(picked(201), "right");
    right->SetPickPriority(1);
    EXPECT_STREQ(picked(199), "right");
}

TEST_F(Manipulators, OneOnABagIsHitThroughItsChildrenAndMayTakeTheRest) {
    const QorVar<Qor2DBagRep> root = QorMake<Qor2DBagRep>();
    const QorVar<Qor2DBagRep> icon = QorMake<Qor2DBagRep>();
    const QorVar<Qor2DCustomRep> box = QorMake<Qor2DCustomRep>();
    box->AddPrimitive(Qor2DRectangleGP{{0, 0}, {50, 50}});
    icon->AddChild(box);
    root->AddChild(icon);
    viewer->AddRep(root);
    Qor2DManipulator* manipulator = Add({0, 0});
    manipulator->SetRep(root);
    Press(*viewer, 220, 120);
    Release(*viewer, 220, 120);
    EXPECT_EQ(owner->pathSize, 3U);
    Press(*viewer, 20, 20);
    Release(*viewer, 20, 20);
    EXPECT_THAT(owner->log, ElementsAre("Activate"));
    manipulator->SetTakesRest(true);
    Press(*viewer, 20, 20);
    Release(*viewer, 20, 20);
    EXPECT_THAT(owner->log, ElementsAre("Activate", "Activate"));
    EXPECT_EQ(owner->pathSize, 0U);
}

TEST_F(Manipulators, AnIndicatorBeginsWithThePressWhereNoHandleIs) {
    Add({0, 0});
    auto* indicator = new Qor2DIndicator(owner, "indicator", viewer, viewer->GetMain2DViewpoint());
    owner->Watch(indicator);
    viewer->SetForegroundIndicator(indicator);
    Press(*viewer, 200, 150);
    Release(*viewer, 200, 150);
    EXPECT_THAT(owner->log, ElementsAre("Activate"));
    owner->log.clear();
    Press(*viewer, 100, 50);
    EXPECT_NEAR(indicator->GetCurrentPoint().x, -100.0, 1.0e-4);
    EXPECT_NEAR(indicator->GetCurrentPoint().y, 100.0, 1.0e-4);
    Release(*viewer, 100, 50);
    EXPECT_THAT(owner->log, ElementsAre("Begin", "End"));
}

TEST_F(Manipulators, OneThatGoesDuringADragIsHeardNoMore) {
    Qor2DManipulator* handle = Add({0, 0});
    Press(*viewer, 200, 150);
    Move(*viewer, 210, 150);
    handle->RequestDelayedDestruction();
    loop.RunPosted();
    Move(*viewer, 220, 150);
    Release(*viewer, 220, 150);
    EXPECT_THAT(owner->log, ElementsAre("Begin", "Manipulate"));
}

class SpaceManipulators : public VisTest {
protected:
    SpaceManipulators()
        : viewer(new Qor3DViewer(dialog, "viewer", QorDlgDefaultStyle, width, height))
        , owner(new Owner(dialog, "owner")) {
        Qor3DViewpoint* view = viewer->GetMain3DViewpoint();
        view->SetView({0, 0, 6}, {0, 0, 0}, {0, 1, 0});
        const QorMesh_var square = MakeSquare();
        rep = QorMake<Qor3DMeshRep>(square.Get(), nullptr);
        viewer->AddRep(rep);
    }

    Qor3DManipulator* Add(Qor3DManipulator::Mode iMode) {
        auto* manipulator = new Qor3DManipulator(owner, "manipulator", viewer, rep, QorMathAxis());
        manipulator->SetMode(iMode);
        owner->Watch(manipulator);
        return manipulator;
    }

    QorMathPoint2D PixelOf(const QorMathPoint& iPoint) const {
        QorMathPoint2D pixel;
        viewer->GetMain3DViewpoint()->Project(iPoint, width, height, pixel);
        return pixel;
    }

    void DragBetween(const QorMathPoint& iFrom, const QorMathPoint& iTo) {
        const QorMathPoint2D from = PixelOf(iFrom);
        const QorMathPoint2D to = PixelOf(iTo);
        Press(*viewer, from.x, from.y);
        Move(*viewer, to.x, to.y);
        Release(*viewer, to.x, to.y);
    }

    Qor3DViewer* viewer;
    Owner* owner;
    Qor3DRep_var rep;

    void TearDown() override {
        rep.Reset();
        VisTest::TearDown();
    }
};

TEST_F(SpaceManipulators, TranslationFollowsThePointer) {
    const Qor3DManipulator* manipulator = Add(Qor3DManipulator::Mode::Translation);
    DragBetween({0.5, 0.5, 0}, {0.8, -0.1, 0});
    EXPECT_NEAR(manipulator->GetPosition().GetOrigin().x, 0.3, 1.0e-9);
    EXPECT_NEAR(manipulator->GetPosition().GetOrigin().y, -0.6, 1.0e-9);
    EXPECT_THAT(owner->log, ElementsAre("Begin", "Manipulate", "End"));
}

TEST_F(SpaceManipulators, RotationAboutTheOriginTurnsTheAxesAndKeepsThemRight) {
    const Qor3DManipulator* manipulator = Add(Qor3DManipulator::Mode::OriginRotation);
    DragBetween({0, 0, 0}, {0.5, 0, 0});
    const QorMathAxis& axis = manipulator->GetPosition();
    EXPECT_GT(axis.GetThirdDirection().x, 0.1);
    EXPECT_NEAR(axis.GetThirdDirection().y, 0.0, 1.0e-9);
    EXPECT_NEAR(axis.GetFrame().Determinant(), 1.0, 1.0e-9);
    EXPECT_EQ(axis.GetOrigin(), QorMathPoint());
}

TEST_F(SpaceManipulators, AxisRotationKeepsTheThirdDirection) {
    const Qor3DManipulator* manipulator = Add(Qor3DManipulator::Mode::AxisRotation);
    DragBetween({0.8, 0, 0}, {0, 0.8, 0});
    const QorMathAxis& axis = manipulator->GetPosition();
    EXPECT_NEAR(axis.GetThirdDirection().z, 1.0, 1.0e-9);
    EXPECT_NEAR(axis.GetFirstDirection().y, 1.0, 1.0e-9);
}

TEST_F(SpaceManipulators, TurningByProgramNotifiesOnce) {
    Qor3DManipulator* manipulator = Add(Qor3DManipulator::Mode::OriginRotation);
    manipulator->TurnThirdTo({0, 0, -2});
    EXPECT_NEAR(manipulator->GetPosition().GetThirdDirection().z, -1.0, 1.0e-12);
    EXPECT_NEAR(manipulator->GetPosition().GetFrame().Determinant(), 1.0, 1.0e-9);
    EXPECT_THAT(owner->log, ElementsAre("Manipulate"));
}

TEST_F(SpaceManipulators, WhatStandsBeforeItHidesIt) {
    Add(Qor3DManipulator::Mode::Translation);
    const QorVar<Qor3DBagRep> screen = QorMake<Qor3DBagRep>();
    screen->SetMatrix(QorMathTransformation::Translation({0, 0, 1}));
    const QorMesh_var square = MakeSquare();
    screen->AddChild(QorMake<Qor3DMeshRep>(square.Get(), nullptr));
    viewer->AddRep(screen);
    DragBetween({0, 0, 0}, {0.2, 0, 0});
    EXPECT_TRUE(owner->log.empty());
}

} // namespace
