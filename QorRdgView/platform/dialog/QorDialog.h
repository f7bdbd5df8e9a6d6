#pragma once

#include "platform/dialog/QorDlgStyle.h"
#include "platform/dialog/QorLayout.h"
#include "platform/dialog/QorPeer.h"
#include "platform/system/QorCommand.h"

#include <memory>
#include <optional>

/// Base of all widgets: state below, pixels in a peer above. A widget is right without any window.
///
/// Its texts come, unless set, from the message catalogs: first those of its own class and base
/// classes, under Title, ShortHelp (tooltip), LongHelp and Icon; then those of the widgets around
/// it, nearest first and up to the first window, under NAME.Title and so on. They are looked up
/// once, when they are first asked for. A text that no catalog has is empty, so that nobody reads a
/// name that was made for programmers.
///
/// Setting by program sends no notification unless a flag asks for it, and then only when the state
/// changes; `User…` operations are a person's. In every notification the widget, its dialog and its
/// father may be destroyed; a widget that is dying sends nothing more.
class QorDialog : public QorCommand {
    QorDeclareClass(QorDialog)

    /// \p iFather may be null for windows.
    QorDialog(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] QorDlgStyle GetStyle() const { return style; }

    /// What the widget is, in words: "push button". The same for derived classes.
    [[nodiscard]] virtual const char* GetKind() const { return "widget"; }

    /// The father when it is a widget, else null; null too when the father is gone.
    [[nodiscard]] QorDialog* GetFatherDialog() const {
        return GetFather() != nullptr ? fatherDialog : nullptr;
    }

    /// The children that are widgets and not windows of their own, in the order of their making.
    [[nodiscard]] std::vector<QorDialog*> GetWidgets() const;

    /// Whether it is a window of its own.
    [[nodiscard]] virtual bool IsWindow() const { return false; }

    /// The window that it is in, or is; null outside any.
    [[nodiscard]] QorDialog* GetWindow();
    [[nodiscard]] const QorDialog* GetWindow() const;

    /// Catalog name at \p iLevel: 0 is the class itself, higher levels its base classes; empty at
    /// the end, which is before QorDialog.
    [[nodiscard]] virtual QorString GetResourceFilename(int iLevel = 0) const;

    [[nodiscard]] const QorUnicodeString& GetTitle() const;
    void SetTitle(const QorUnicodeString& iTitle);
    [[nodiscard]] const QorUnicodeString& GetShortHelp() const;
    void SetShortHelp(const QorUnicodeString& iText);
    [[nodiscard]] const QorUnicodeString& GetLongHelp() const;
    void SetLongHelp(const QorUnicodeString& iText);
    /// Name of an icon of the host, without suffix; empty for none. From the catalog under
    /// NAME.Icon unless set.
    [[nodiscard]] const QorString& GetIconName() const;
    void SetIconName(const QorString& iIcon);

    [[nodiscard]] QorDlgVisibility GetVisibility() const {
        return visible ? QorDlgSHOW : QorDlgHIDE;
    }

    virtual void SetVisibility(QorDlgVisibility iVisibility);

    [[nodiscard]] QorDlgSensitivity GetSensitivity() const {
        return sensitive ? QorDlgENABLE : QorDlgDISABLE;
    }

    void SetSensitivity(QorDlgSensitivity iSensitivity);
    /// Visible with all that it lies in, up to its window.
    [[nodiscard]] bool IsShown() const;
    /// Shown, sensitive with all that it lies in, and not dying: a person can act on it.
    [[nodiscard]] bool CanAct() const;

    [[nodiscard]] const QorPlacement& GetPlacement() const { return placement; }

    void SetGridConstraints(
        int iRow, int iColumn, int iWidth, int iHeight, unsigned iJustification = QorHoldFill);
    /// Keeps the widget to these sides of its father.
    void SetAttachment(unsigned iSides);
    /// Keeps \p iChild to all four sides of this container.
    void Attach4Sides(QorDialog* iChild) const;

    [[nodiscard]] const QorContainerLayout& GetLayout() const { return layout; }

    void SetStackOrientation(QorOrientation iOrientation);
    void SetGridRowResizable(int iRow, bool iResizable);
    void SetGridColumnResizable(int iColumn, bool iResizable);

    /// Width of the text part in characters, 0 for the natural one.
    [[nodiscard]] int GetVisibleTextWidth() const { return visibleTextWidth; }

    void SetVisibleTextWidth(int iCharacters);

    /// The host's peer, or null while there is none.
    [[nodiscard]] QorPeer* GetPeer() const { return peer.get(); }

    /// Makes the peers that are missing of this widget and of those in it, when there is a toolkit
    /// and the father has its peer; a window needs no father. Peers are made from the outside
    /// inwards and drawn from the inside outwards, so that a window shows itself complete. Widgets
    /// made later in a widget that has its peer get theirs in a posted turn.
    void Realize();
    /// Takes them away again, those of the windows that belong to it too.
    void Unrealize();

protected:
    ~QorDialog() override;

    /// Tells the peer, if there is one, that something changed.
    void Changed(QorAspects iAspects);

    /// Sends a notification of this widget to itself and its fathers, as an action of a person
    /// does. Not when the widget is dying. Whether somebody received it.
    bool Notify(QorNotification* iNotification);

    void ChildAdded(QorCommand& iChild) override;
    void ChildRemoved(QorCommand& iChild) override;
    void Dying() override;

private:
    /// A text of the widget: set by program, or looked up once in the catalogs.
    struct CatalogText {
        mutable std::optional<QorUnicodeString> text;
    };

    [[nodiscard]] const QorUnicodeString& Resolve(const CatalogText& iText, const char* iKey) const;
    [[nodiscard]] const std::string* FindText(const char* iKey) const;
    [[nodiscard]] const std::string* FindTextOf(const QorDialog& iWidget, const char* iKey) const;
    bool MakePeer();
    void RealizeLater();

    QorDlgStyle style;
    QorDialog* fatherDialog;
    CatalogText title;
    CatalogText shortHelp;
    CatalogText longHelp;
    mutable std::optional<QorString> icon;
    QorPlacement placement;
    QorContainerLayout layout;
    int visibleTextWidth = 0;
    bool visible = true;
    bool sensitive = true;
    /// Points back here while a posted turn is to make peers; goes with the widget.
    std::shared_ptr<QorDialog*> realizeLater;
    std::unique_ptr<QorPeer> peer;
};
