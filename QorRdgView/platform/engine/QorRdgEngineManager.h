#pragma once

#include "platform/component/QorCallbackManager.h"
#include "platform/engine/QorRdgEngine.h"
#include "platform/system/QorEventLoop.h"

#include <deque>

/// The library's one door to rendering. One render runs at a time: a start while another runs
/// aborts that one, and its RENDER_DONE is dispatched before the new one begins. RENDER_DONE is
/// always posted, once for every start, refused ones included. User-interface thread only.
class QorRdgEngineManager
    : public QorBaseUnknown
    , public QorEventSubscriber {
    QorDeclareClass(QorRdgEngineManager)

    static const QorEventName RENDER_DONE;

    /// The manager, or null while the program has no engine.
    [[nodiscard]] static QorRdgEngineManager* GetManager();
    /// Gives the program an engine, or takes it away (null). The manager goes with it.
    static void SetEngine(std::unique_ptr<QorRdgEngine> iEngine);

    [[nodiscard]] QorCallbackManager* GetCallbackManager() { return &callbacks; }

    /// Whether the renders to come are drawn while they are refined, or only when they are done.
    void SetRenderSwitchA(bool iOn) { showRefinement = iOn; }

    /// Clients set it beside the other; no render of ours depends on it.
    void SetRenderSwitchB(bool /*iOn*/) {}

    /// Starts a render of \p iWidth × \p iHeight pixels, or of \p iRegion of them; x from the left,
    /// y from the bottom, clipped to the output. \p iInteractive: a coarse picture at once. \p
    /// iTrace asks the engine for its log, \p iUpdateDisplay lets the manager tell the display of
    /// progress. E_FAIL when it is refused: the reason goes to the display's SetMessage and to
    /// GetMessage, and RENDER_DONE follows all the same.
    QorResult StartRender(QorIRdgWorld* iWorld,
                          QorIRdgDisplay* iDisplay,
                          QorIRdgOptions* iOptions,
                          bool iInteractive,
                          int iWidth,
                          int iHeight,
                          const QorRdgWindow* iRegion,
                          bool iTrace,
                          bool iUpdateDisplay);
    /// Aborts the running render, if any.
    void StopRender();

    /// The picture of the render that ended last, with a reference for the caller, and the region
    /// to cut out of it. After an abort it succeeds if a whole picture exists, after a refusal it
    /// fails.
    QorResult GetLastRender(QorPixelImage*& oImage, QorRdgWindow& oRegion);

    /// Around a repaint that the display does: meanwhile the manager calls no display.
    void BeginDisplayUpdate() { ++displayUpdates; }

    void EndDisplayUpdate() { --displayUpdates; }

    enum class Status { None, Running, Done, Aborted, Refused };

    /// The last start and what became of it.
    struct Record {
        unsigned long id = 0; ///< grows with every start
        Status status = Status::None;
        double seconds = 0.0;
        int width = 0;
        int height = 0;
        std::optional<QorRdgWindow> region;
        QorUnicodeString message; ///< the reason of a refusal or failure
    };

    [[nodiscard]] const Record& GetRecord() const { return record; }

    /// The record's id of the latest start, which may still be waiting; 0 before the first.
    [[nodiscard]] unsigned long GetLastStart() const { return lastId; }

    /// Told how each start ended, after RENDER_DONE was dispatched. Unlike a subscription it keeps
    /// no render going: for whoever only reports. An empty function takes it away.
    using EndListener = std::function<void(const Record& iRecord)>;

    void SetEndListener(EndListener iListener) { endListener = std::move(iListener); }

    [[nodiscard]] const QorUnicodeString& GetMessage() const { return record.message; }

    /// How many pages the engine adds to the dialog of a shooting.
    QorResult GetCustomFrameCount(int& oCount);
    /// Builds one of them, counted from 0, as a child of \p iPage. E_FAIL, with a null frame and an
    /// empty title, when the engine has no such page or cannot build it.
    QorResult CreateCustomFrame(int iIndex,
                                QorDialog* iPage,
                                QorRdgCustomFrame*& oFrame,
                                QorUnicodeString& oTitle);

protected:
    ~QorRdgEngineManager() override;

private:
    /// One start, from StartRender to its RENDER_DONE.
    struct Job {
        Record record;
        QorIRdgDisplay_var display;
        std::unique_ptr<QorRdgRender> render; ///< null for a refused start
        QorPixelImage_var picture;            ///< the newest one drawn
        QorRdgWindow region;                  ///< of that picture
        QorEventLoop::Clock::time_point started;
        bool tellDisplay = true;
        bool showRefinement = true;
        bool due = false; ///< its RENDER_DONE may be dispatched
    };

    explicit QorRdgEngineManager(std::unique_ptr<QorRdgEngine> iEngine);
    [[nodiscard]] static QorUnicodeString CheckSize(int iWidth, int iHeight);
    /// Ends the running job: its render is detached now, its RENDER_DONE is dispatched at a later
    /// turn.
    void End(Status iStatus);
    void EndNow(std::unique_ptr<Job> iJob);
    /// Dispatches the ends that are due, in the order of their starts; one whose picture is still
    /// being made holds up those behind it, not the thread.
    void DispatchEnds();
    static void TakePicture(Job& ioJob);
    void DispatchEnd(Job& ioJob);
    void BeginNext();
    void StartPump();
    void Pump();
    void Tell(Job& ioJob, const QorRdgProgress& iProgress);
    /// Whether nobody wants the picture any more, or somebody asked for an abort.
    [[nodiscard]] bool IsUnwanted(const Job& iJob) const;

    std::unique_ptr<QorRdgEngine> engine;
    QorCallbackManager callbacks;
    EndListener endListener;
    std::unique_ptr<Job> running;
    std::unique_ptr<Job>
        waiting; ///< started, but the end of the one before has not been dispatched yet
    std::deque<std::shared_ptr<Job>> ended; ///< their RENDER_DONE has not been dispatched yet
    unsigned long lastId = 0;
    int endsToTell = 0; ///< those, and those whose dispatch is under way
    Record record;
    QorPixelImage_var lastPicture;
    QorRdgWindow lastRegion;
    QorTimerId pump = 0;
    QorTimerId settling = 0; ///< looks whether the picture of the first end is there
    int displayUpdates = 0;
    bool showRefinement = true;
};
