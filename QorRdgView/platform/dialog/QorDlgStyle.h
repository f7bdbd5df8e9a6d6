#pragma once

/// Style bits of widgets, added up.
using QorDlgStyle = unsigned long;

enum QorDlgStyleBit : QorDlgStyle {
    QorDlgDefaultStyle = 0,
    // Dialogs: buttons and window.
    QorDlgWndOK = 1,
    QorDlgWndCANCEL = 2,
    QorDlgWndAPPLY = 4,
    QorDlgWndOKCancel = QorDlgWndOK | QorDlgWndCANCEL,
    QorDlgWndModal = 16,
    QorDlgWndNoResize = 32,
    QorDlgGridLayout = 64,  ///< children lie in a grid
    QorDlgWndToolBar = 128, ///< a small frame of tools
    QorDlgWndMinimize = 1024,
    // Frames.
    QorDlgFraNoTitle = 2048,
    QorDlgFraNoFrame = 4096,
    // Orientation of sliders, separators, scroll bars; horizontal without it.
    QorDlgVertical = 8192,
    // File dialogs.
    QorDlgFileSave = 16384,
    QorDlgFileMultiple = 32768,
    // Combos.
    QorDlgCmbEditable = 65536,
};

enum QorDlgCheckState : int { QorDlgUncheck = 0, QorDlgCheck = 1 };

enum QorDlgVisibility : int { QorDlgHIDE = 0, QorDlgSHOW = 1 };

enum QorDlgSensitivity : int { QorDlgDISABLE = 0, QorDlgENABLE = 1 };

enum QorDlgNotifyFlag : int { QorDlgNoNotify = 0, QorDlgDoNotify = 1 };

/// What became of something that a person, a peer or the automation port tried to do.
enum class QorUserResult {
    Done,        ///< done, or nothing to do because the state was so already
    Insensitive, ///< the widget is hidden, disabled or dying
    Impossible,  ///< not an action that a person could do
    OutOfRange,  ///< an index beyond the end
};
