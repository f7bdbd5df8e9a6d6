#pragma once

#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgNotifications.h"
#include "platform/vis/QorManipulator.h"
#include "scenes/QorRdgThumbnails.h"

class Qor2DViewer;
class QorDlgScrollBar;

/// A grid of thumbnails with a title each, which a person selects by a click and activates by a
/// double click. Both are sent to the father, as a list does. Drawn in a 2D viewer whose units are
/// device-independent pixels. Thumbnails are made by workers and appear when they are ready.
class QorRdgIconList : public QorDlgFrame {
    QorDeclareClass(QorRdgIconList)

    /// Width and height of the viewer at first, in pixels.
    QorRdgIconList(QorCommand* iFather,
                   const QorString& iName,
                   float iWidth,
                   float iHeight,
                   QorDlgStyle iStyle = QorDlgDefaultStyle);

    /// In AddIcon: replaces the icon at the position.
    static constexpr int replaceMode = 128;
    /// In SetIcons: adds at the end.
    static constexpr int appendMode = 64;

    /// Adds icons. Returns how many calls of AddIcon gave something else than 0, so that a refused
    /// one counts and one inserted at position 0 does not; -1 without icons. Both arrays hold \p
    /// iCount entries.
    int SetIcons(const QorUnicodeString* iTitles,
                 const QorUnicodeString* iImages,
                 int iCount,
                 int iPosition,
                 int iMode);
    /// Position -1, or the number of icons, appends and returns the new number; a smaller one
    /// inserts, or replaces in replaceMode, and returns the position; others return -1. An empty
    /// image gives an empty box.
    int AddIcon(const QorUnicodeString& iTitle,
                const QorUnicodeString& iImage,
                int iPosition,
                int iMode);
    /// 1 when \p i is an icon. Otherwise 0: the highlight goes and the selection stays as it was.
    /// With \p iNotify the select notification follows in both cases, and the list may be gone.
    int Select(int i, QorDlgNotifyFlag iNotify);
    /// 1 and the selected icon, or 0.
    int GetSelection(int& oI) const;

    [[nodiscard]] int GetColumnCount() const { return columns; }

    /// Puts a row to the top; 1 when done, 0 for row 0 and rows beyond the last.
    int ScrollToRow(int iRow);

    [[nodiscard]] QorNotification* GetSelectNotification() const {
        return selectNotification.Get();
    }

    [[nodiscard]] QorNotification* GetActivateNotification() const {
        return activateNotification.Get();
    }

protected:
    ~QorRdgIconList() override;

private:
    void BuildViewer(float iWidth, float iHeight);
    void BuildScrollBar(float iHeight);
    void Subscribe();
    void CleanUp();

    [[nodiscard]] QorVar<Qor2DBagRep> BuildIconRep(const QorUnicodeString& iImage,
                                                   const QorUnicodeString& iTitle);
    void ThumbnailReady(int iRequest, const QorPixelImage_var& iThumbnail);
    void PlaceIcons(std::size_t iFirst);
    void RaiseHighlight();
    void RemoveHighlight();
    void Relayout();
    void UpdateColumns(double iWidth);
    void UpdateScrollBar(double iHeight);
    void SetTop(double iTop, bool iInternal);
    void GetViewSize(double& oWidth, double& oHeight) const;
    bool SelectPicked(const QorNotification* iNotification);

    [[nodiscard]] int IconCount() const { return static_cast<int>(titles.size()); }

    void ActivateCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void EditCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void ScrollCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void ViewerDestroyedCB(QorEventName iEvent,
                           QorBaseUnknown* iPublisher,
                           QorNotification* iNotification,
                           QorSubscriberData iData,
                           QorCallbackId iCookie);
    void ViewpointModifiedCB(QorEventName iEvent,
                             QorBaseUnknown* iPublisher,
                             QorNotification* iNotification,
                             QorSubscriberData iData,
                             QorCallbackId iCookie);
    void ResizeCB(QorEventName iEvent,
                  QorBaseUnknown* iPublisher,
                  QorNotification* iNotification,
                  QorSubscriberData iData,
                  QorCallbackId iCookie);

    QorOwnNotification<QorDlgListSelectNotification> selectNotification;
    QorOwnNotification<QorDlgListActivateNotification> activateNotification;
    Qor2DViewer* viewer = nullptr;
    QorDlgScrollBar* scrollbar = nullptr;
    std::vector<QorUnicodeString> titles;
    int columns = 2;
    QorVar<Qor2DBagRep> root; ///< the icons in order, over them the highlight
    Qor2DManipulator* manipulator = nullptr;
    QorVar<Qor2DBagRep> highlight;
    int selected = -1;
    bool internalUpdate = false; ///< the list itself moves the viewpoint
    bool bulkUpdate = false;     ///< SetIcons adds icons
    double top = 0.0;            ///< of the visible window
    QorRdgThumbnails thumbnails;
    /// Icons that wait for their thumbnail, by request.
    std::vector<QorVar<Qor2DBagRep>> waiting;
    QorCallbackId destroyedId = 0;
    QorCallbackId modifiedId = 0;
    QorCallbackId resizeId = 0;
    QorCallbackId activateId = 0;
    QorCallbackId editId = 0;
};
