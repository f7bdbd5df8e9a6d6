#pragma once

#include "platform/dialog/QorDlgDialog.h"
#include "platform/vis/QorViewer.h"
#include "tests/support/QorTestApplication.h"

#include <cmath>

/// A viewer in a dialog, and a way to use the mouse in it.
class VisTest : public QorTestApplication {
protected:
    static constexpr float width = 400.0F;
    static constexpr float height = 300.0F;

    VisTest() : dialog(new QorDlgDialog(nullptr, "dialog")) { dialog->SetVisibility(QorDlgSHOW); }

    void TearDown() override {
        dialog->RequestDelayedDestruction();
        QorTestApplication::TearDown();
    }

    static void Mouse(QorViewer& ioViewer, QorMouseEvent::Action iAction, double iX, double iY) {
        QorMouseEvent event;
        event.action = iAction;
        event.button = QorMouseEvent::Button::Left;
        event.pixel = {iX, iY};
        ioViewer.HandleMouse(event);
    }

    static void Press(QorViewer& ioViewer, double iX, double iY) {
        Mouse(ioViewer, QorMouseEvent::Action::Press, iX, iY);
    }

    static void Move(QorViewer& ioViewer, double iX, double iY) {
        Mouse(ioViewer, QorMouseEvent::Action::Move, iX, iY);
    }

    static void Release(QorViewer& ioViewer, double iX, double iY) {
        Mouse(ioViewer, QorMouseEvent::Action::Release, iX, iY);
    }

    QorDlgDialog* dialog;
};

/// Two triangles that make the square from -1 to 1 in the plane z = 0.
inline QorMesh_var MakeSquare() {
    QorMesh::Data data;
    data.positions = {-1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0};
    data.indices = {0, 1, 2, 0, 2, 3};
    return QorMake<QorMesh>(data);
}
