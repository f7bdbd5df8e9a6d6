#pragma once

#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "tests/support/QorTestApplication.h"

#include <functional>
#include <string>
#include <vector>

/// Writes down, as "EVENT publisher", what a layout dispatches, and runs what a test wants to
/// happen inside a callback.
class QorLayoutRecorder : public QorEventSubscriber {
public:
    explicit QorLayoutRecorder(QorFrmLayout& iLayout) {
        for (const QorEventName& event :
             {QorFrmEditor::EDITOR_ACTIVATED, QorFrmEditor::EDITOR_DEACTIVATED,
              QorFrmEditor::EDITOR_CLOSE_ENDED, QorFrmWindow::WINDOW_DELETED,
              QorFrmWindow::VIEWER_ACTIVATED})
            iLayout.GetCallbackManager()->AddCallback(this, event, &QorLayoutRecorder::EventCB);
    }

    [[nodiscard]] std::vector<std::string> Take() { return std::exchange(lines, {}); }

    std::function<void(QorEventName iEvent, QorBaseUnknown* iPublisher, QorNotification*)> inside;

private:
    void EventCB(QorEventName iEvent,
                 QorBaseUnknown* iPublisher,
                 QorNotification* iNotification,
                 QorSubscriberData /*iData*/,
                 QorCallbackId /*iCookie*/) {
        const auto* command = dynamic_cast<QorCommand*>(iPublisher);
        lines.push_back(iEvent.GetText() + " " + (command ? command->GetName().Str() : "?"));
        if (inside)
            inside(iEvent, iPublisher, iNotification);
    }

    std::vector<std::string> lines;
};

/// A layout, and documents opened in it.
class QorFrameTest : public QorTestApplication {
protected:
    void TearDown() override {
        recorder.inside = {};
        layout.Reset();
        frame.Reset();
        QorTestApplication::TearDown();
    }

    QorFrmEditor* Open(const char* iName) {
        return new QorFrmEditor(layout.Get(), iName, QorMake<QorDocument>(iName).Get());
    }

    QorFrmWindow* AddWindow(QorFrmEditor* iEditor, const char* iName) {
        return new QorFrmWindow(frame.Get(), iName, iEditor);
    }

    /// The frame knows of viewers only that they are there, so any address stands for one.
    static QorViewer* SomeViewer(const void* iAddress) {
        return static_cast<QorViewer*>(const_cast<void*>(iAddress));
    }

    QorFrmLayout_var layout = QorMake<QorFrmLayout>(nullptr, "layout");
    QorVar<QorDialog> frame = QorMake<QorDialog>(nullptr, "frame");
    QorLayoutRecorder recorder{*layout};
};

using Lines = std::vector<std::string>;
