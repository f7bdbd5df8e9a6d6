#pragma once

#include "platform/engine/QorRdgCustomFrame.h"
#include "platform/engine/QorRdgEngineManager.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

/// A picture of one colour.
inline QorPixelImage_var MakePicture(int iWidth, int iHeight) {
    const auto size = static_cast<std::size_t>(iWidth) * static_cast<std::size_t>(iHeight) * 4;
    return QorMake<QorPixelImage>(
        iWidth, iHeight, 4, std::make_shared<const QorPixelImage::Pixels>(size, std::uint8_t(128)));
}

/// What a test lets the renders of a FakeEngine answer, and what they were asked.
struct FakeScript {
    std::deque<QorRdgProgress> progress;
    QorPixelImage_var picture;
    QorUnicodeString refusal;
    std::vector<QorRdgRequest> requests;
    int detached = 0;
    bool settled = true;            ///< the picture of a render that has ended is there
    std::vector<std::string> pages; ///< that the engine adds; one without a title fails
};

/// A page that writes down what it is told.
class FakeFrame : public QorRdgCustomFrame {
public:
    using QorRdgCustomFrame::QorRdgCustomFrame;

    void SetRenderOptions(QorIRdgOptions* iOptions) override { told.push_back(iOptions); }

    std::vector<QorIRdgOptions*> told;

protected:
    ~FakeFrame() override = default;
};

class FakeRender : public QorRdgRender {
public:
    explicit FakeRender(FakeScript& iScript) : script(iScript) {}

    ~FakeRender() override { ++script.detached; }

    QorRdgProgress Poll() override {
        if (script.progress.empty())
            return {};
        QorRdgProgress next = script.progress.front();
        script.progress.pop_front();
        if (next.picture)
            script.picture = next.picture;
        return next;
    }

    [[nodiscard]] bool IsSettled() const override { return script.settled; }

    QorPixelImage_var GetPicture() override { return script.settled ? script.picture : nullptr; }

private:
    FakeScript& script;
};

class FakeEngine : public QorRdgEngine {
public:
    explicit FakeEngine(FakeScript& iScript) : script(iScript) {}

    std::unique_ptr<QorRdgRender> Start(const QorRdgRequest& iRequest,
                                        QorUnicodeString& oReason) override {
        script.requests.push_back(iRequest);
        oReason = script.refusal;
        return script.refusal.IsNull() ? std::make_unique<FakeRender>(script) : nullptr;
    }

    [[nodiscard]] int CountCustomFrames() const override {
        return static_cast<int>(script.pages.size());
    }

    QorRdgCustomFrame*
    CreateCustomFrame(int iIndex, QorDialog* iPage, QorUnicodeString& oTitle) override {
        oTitle = QorUnicodeString(script.pages[static_cast<std::size_t>(iIndex)]);
        return oTitle.IsNull() ? nullptr : new FakeFrame(iPage, "customFrame");
    }

private:
    FakeScript& script;
};

/// A world of nothing, and a display that writes down what it is told.
class FakeWorld : public QorImplements<QorBaseUnknown, QorIRdgWorld> {
public:
    QorResult Collect(QorRdgSnapshot& /*oSnapshot*/) override { return S_OK; }
};

class FakeDisplay : public QorImplements<QorBaseUnknown, QorIRdgDisplay> {
public:
    QorResult Draw(QorPixelImage* iImage) override {
        log.push_back("draw " + std::to_string(iImage->GetWidth()));
        if (const auto act = onDraw)
            act();
        return S_OK;
    }

    QorResult Clear() override { return S_OK; }

    QorResult CheckAbort(unsigned char& ioAbort) override {
        if (ioAbort != 0)
            abort = true;
        ioAbort = abort ? 1 : 0;
        return S_OK;
    }

    QorResult SetProgress(int& iPercent) override {
        log.push_back(std::to_string(iPercent));
        return S_OK;
    }

    QorResult SetMessage(QorUnicodeString& iText) override {
        log.push_back(iText.Str());
        if (const auto act = onMessage)
            act();
        return E_FAIL;
    }

    std::vector<std::string> log;
    std::function<void()> onDraw;
    std::function<void()> onMessage;
    bool abort = false;
};
