#pragma once

#include "platform/dialog/QorToolkit.h"
#include "tests/support/RecordingPeer.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <set>
#include <stdexcept>
#include <utility>

/// A host without pixels: peers that remember what they drew, a log of every call down, and
/// notification boxes that are answered from a queue. Installed as long as it lives; widgets shown
/// through it must be gone before it.
class RecordingHost : public QorToolkit {
public:
    struct Box {
        std::string name;
        QorNotifyKind kind;
        std::string title;
        std::string text;

        bool operator==(const Box&) const = default;
    };

    using Answer = std::function<void(QorDlgNotify&)>;

    RecordingHost() {
        Install(this);
        QorDlgNotify::SetOpenedObserver([this](QorDlgNotify& iBox) { BoxOpened(iBox); });
    }

    ~RecordingHost() override {
        QorDlgNotify::SetOpenedObserver({});
        Install(nullptr);
        EXPECT_TRUE(answers_.empty()) << answers_.size() << " answers were never asked for";
    }

    RecordingHost(const RecordingHost&) = delete;
    RecordingHost& operator=(const RecordingHost&) = delete;

    [[nodiscard]] std::unique_ptr<QorPeer> CreatePeer(QorDialog& iWidget) override {
        if (notDrawn_.contains(iWidget.GetKind()))
            return nullptr;
        return std::make_unique<RecordingPeer>(iWidget, log_);
    }

    /// Widgets of that kind get no peer.
    void DoNotDraw(const std::string& iKind) { notDrawn_.insert(iKind); }

    /// Calls since the last take: "create NAME", "update NAME title|help", "raise NAME", "destroy
    /// NAME".
    [[nodiscard]] std::vector<std::string> TakeLog() { return std::exchange(log_, {}); }

    /// Answers the next box that opens and is not foreseen yet.
    void AnswerNext(QorNotifyAnswer iAnswer) {
        AnswerNext([iAnswer](QorDlgNotify& iBox) {
            EXPECT_EQ(iBox.UserAnswer(iAnswer), QorUserResult::Done) << iBox.GetText();
        });
    }

    /// The same by whatever a test wants to happen while the box is open.
    void AnswerNext(Answer iAnswer) { answers_.push_back(std::move(iAnswer)); }

    /// Boxes that have opened since the last take.
    [[nodiscard]] std::vector<Box> TakeBoxes() { return std::exchange(boxes_, {}); }

    /// Fails for every widget in \p iWindow whose peer shows something else than its state.
    static void ExpectDrawn(const QorDialog& iWindow) {
        if (const auto* peer = dynamic_cast<const RecordingPeer*>(iWindow.GetPeer()))
            EXPECT_EQ(peer->FindStale(), "") << "peer of " << iWindow.GetName();
        else
            ADD_FAILURE() << iWindow.GetName() << " has no peer";
        for (const QorDialog* widget : iWindow.GetWidgets())
            ExpectDrawn(*widget);
    }

private:
    void BoxOpened(QorDlgNotify& iBox) {
        boxes_.push_back({iBox.GetName().Str(), iBox.GetNotifyKind(), iBox.GetTitle().Str(),
                          iBox.GetText().Str()});
        if (answers_.empty()) {
            ADD_FAILURE() << "a box that the test did not expect: " << iBox.GetText();
            iBox.UserCancel();
            return;
        }
        const Answer answer = std::move(answers_.front());
        answers_.pop_front();
        answer(iBox);
    }

    std::vector<std::string> log_;
    std::set<std::string> notDrawn_;
    std::deque<Answer> answers_;
    std::vector<Box> boxes_;
};

/// A person before the screen: does what the controls on it offer, by the same operations that real
/// peers call. Widgets are named "dialog/widget"; folders in between may be left out.
class Person {
public:
    /// The widget, which a test fails without.
    template <class Widget = QorDialog>
    static Widget* Find(const std::string& iPath) {
        auto* found = dynamic_cast<Widget*>(Look(iPath));
        if (found == nullptr)
            throw std::invalid_argument("no such widget on the screen: " + iPath);
        return found;
    }

    static QorUserResult Press(const std::string& iPath) {
        return Find<QorDlgPushButton>(iPath)->UserPress();
    }

    static QorUserResult Check(const std::string& iPath, bool iChecked = true) {
        if (auto* radio = dynamic_cast<QorDlgRadioButton*>(Find(iPath)))
            return radio->UserCheck(iChecked);
        return Find<QorDlgCheckButton>(iPath)->UserCheck(iChecked);
    }

    static QorUserResult Choose(const std::string& iPath, int iLine) {
        return Find<QorDlgCombo>(iPath)->UserSelect(iLine);
    }

    static QorUserResult Type(const std::string& iPath, const char* iText) {
        if (auto* spinner = dynamic_cast<QorDlgSpinner*>(Find(iPath)))
            return spinner->UserSetText(iText);
        return Find<QorDlgEditor>(iPath)->UserSetText(iText);
    }

    static QorUserResult Slide(const std::string& iPath, double iValue) {
        return Find<QorDlgSlider>(iPath)->UserSetValue(iValue);
    }

    static QorUserResult Step(const std::string& iPath, int iSteps) {
        return Find<QorDlgSpinner>(iPath)->UserStep(iSteps);
    }

    static QorUserResult OK(const std::string& iDialog) {
        return Find<QorDlgDialog>(iDialog)->UserOK();
    }

    static QorUserResult Cancel(const std::string& iDialog) {
        return Find<QorDlgDialog>(iDialog)->UserCancel();
    }

    static QorUserResult Close(const std::string& iDialog) {
        return Find<QorDlgDialog>(iDialog)->UserClose();
    }

private:
    static QorDialog* Look(const std::string& iPath) {
        const std::size_t slash = iPath.find('/');
        for (QorDlgDialog* dialog : QorDlgDialog::GetAll())
            if (dialog->GetName().Str() == iPath.substr(0, slash))
                return slash == std::string::npos
                           ? dialog
                           : LookIn(*dialog, iPath.substr(iPath.rfind('/') + 1));
        return nullptr;
    }

    static QorDialog* LookIn(const QorDialog& iAround, const std::string& iName) {
        for (QorDialog* widget : iAround.GetWidgets()) {
            if (widget->GetName().Str() == iName)
                return widget;
            if (QorDialog* deeper = LookIn(*widget, iName))
                return deeper;
        }
        return nullptr;
    }
};
