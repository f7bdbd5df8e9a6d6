#pragma once

#include "platform/frame/QorFrmDialog.h"
#include "platform/vis/QorPixelImage.h"

#include <atomic>
#include <chrono>
#include <memory>

class QorDlgProgress;

/// Writes pictures for a person who waits: all but small ones on a worker. A box tells how far it
/// is and lets the person give it up: at once for a large picture, after a second for another.
/// User-interface thread.
class QorRdgPictureWriter {
public:
    /// Up to here a picture is small, and written before anybody could notice.
    static constexpr long long smallPixels = 200'000;
    /// From here on a picture is large.
    static constexpr long long largePixels = 16'000'000;
    /// What Write answers when the person has given it up. No file is left then, and an old one is
    /// whole.
    static constexpr int givenUp = -2;

    /// 0, givenUp, or what the picture service answers, with the reason in \p oError. The box is a
    /// child of \p iFather; while a worker writes, a nested turn of the loop runs.
    [[nodiscard]] static int Write(QorCommand& iFather,
                                   const QorPixelImage& iImage,
                                   const QorString& iFormat,
                                   const QorUnicodeString& iPath,
                                   QorUnicodeString& oError);
};

/// The box with which a person waits for a picture file. Texts are in the message catalog
/// "QorRdgPictureProgress".
class QorRdgPictureProgress : public QorFrmDialog {
    QorDeclareClass(QorRdgPictureProgress)

    /// What the box and a worker know of each other.
    struct Work {
        std::atomic<int> percent = 0;
        std::atomic<bool> stop = false;
        bool done = false; ///< user-interface thread only, as all below
        int result = 0;
        QorUnicodeString error;
    };

    QorRdgPictureProgress(QorCommand* iFather, const QorString& iName, std::shared_ptr<Work> iWork);

    [[nodiscard]] bool IsBlocking() const override { return true; }

    /// Waits until the work is done or the program ends, and shows the box from \p iHidden on: then
    /// its destruction gives the work up.
    void Wait(std::chrono::milliseconds iHidden);

protected:
    ~QorRdgPictureProgress() override = default;

private:
    void CancelCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void ShowPercent();

    std::shared_ptr<Work> work;
    QorDlgProgress* progress;
};
