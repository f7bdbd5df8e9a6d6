#pragma once

#include "platform/dialog/QorDlgStyle.h"
#include "platform/dialog/QorLayout.h"
#include "platform/dialog/QorPeer.h"
#include "platform/system/QorCommand.h"

#include <memory>
#include <optional>

/// Base of all widgets: state below, pixels in a peer above. A widget is right without any window.
/// Its texts come, unless set, from the message catalog of the nearest class around it that has
/// them, under NAME.Title, NAME.ShortHelp (tooltip) and NAME.LongHelp; a dialog's own under Title,
/// ShortHelp, LongHelp. Setting by program sends no notification unless a flag asks for it; `User…`
/// operations are a person's.
class QorDialog : public QorCommand {
    QorDeclareClass(QorDialog)

        /// \p iFather may be null for windows.
        QorDialog(QorCommand* iFather,
                  const QorString& iName,
                  QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] QorDlgStyle GetStyle() const { return style; }

    /// What the widget is, in words: "push button". The same for derived classes.
    [[nodiscard]] virtual const char* GetKind() const { return "widget"; }

    /// The father when it is a widget, else null.
    [[nodiscard]] QorDialog* GetFatherDialog() const { return fatherDialog; }

    /// The children that are widgets and not windows of their own, in the order of their making.
    [[nodiscard]] std::vector<QorDialog*> GetWidgets() const;

    /// Whether it is a window of its own.
    [[nodiscard]] virtual bool IsWindow() const { return false; }

    /// The window that it is in, or is; null outside any.
    [[nodiscard]] QorDialog* GetWindow();

    /// Catalog name at \p iLevel: 0 is the class itself, higher levels its base classes; empty at
    /// the end.
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

    /// Makes the peers of this widget and of those in it, when there is a toolkit and the father
    /// has its peer.
    void Realize();
    /// Takes them away again.
    void Unrealize();

protected:
    ~QorDialog() override;

    /// Tells the peer, if there is one, that something changed.
    void Changed(QorAspects iAspects);

    /// Sends a notification of this widget to itself and its fathers, as an action of a person
    /// does.
    bool Notify(QorNotification* iNotification) { return SendNotification(this, iNotification); }

    void ChildAdded(QorCommand& iChild) override;
    void ChildRemoved(QorCommand& iChild) override;
    void Dying() override;

private:
    /// A text of the widget: set by program, or looked up once in the catalogs.
    struct CatalogText {
        mutable std::optional<QorUnicodeString> text;
    };

    [[nodiscard]] const QorUnicodeString& Resolve(const CatalogText& iText, const char* iKey) const;
    void RealizeChildrenLater();

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
    bool realizing = false;
    std::unique_ptr<QorPeer> peer;
};
