#include "workbench/desktop/StandardTexts.h"

#include "platform/text/QorMsgCatalog.h"

namespace qor::desktop {

namespace {

constexpr const char* catalog = "QorStandardTexts";

/// A text of Qt's, as Qt asks for it, and its key in the catalog.
struct Row {
    const char* context;
    const char* source;
    const char* key;
};

constexpr Row rows[] = {
    {"QPlatformTheme", "OK", "Button.OK"},
    {"QPlatformTheme", "Cancel", "Button.Cancel"},
    {"QPlatformTheme", "&Yes", "Button.Yes"},
    {"QPlatformTheme", "&No", "Button.No"},
    {"QPlatformTheme", "Yes to &All", "Button.YesToAll"},
    {"QPlatformTheme", "N&o to All", "Button.NoToAll"},
    {"QPlatformTheme", "Save", "Button.Save"},
    {"QPlatformTheme", "Save All", "Button.SaveAll"},
    {"QPlatformTheme", "Open", "Button.Open"},
    {"QPlatformTheme", "Close", "Button.Close"},
    {"QPlatformTheme", "Apply", "Button.Apply"},
    {"QPlatformTheme", "Reset", "Button.Reset"},
    {"QPlatformTheme", "Help", "Button.Help"},
    {"QPlatformTheme", "Discard", "Button.Discard"},
    {"QPlatformTheme", "Abort", "Button.Abort"},
    {"QPlatformTheme", "Retry", "Button.Retry"},
    {"QPlatformTheme", "Ignore", "Button.Ignore"},
    {"QPlatformTheme", "Restore Defaults", "Button.RestoreDefaults"},
    {"QMessageBox", "Show Details...", "Button.ShowDetails"},
    {"QMessageBox", "Hide Details...", "Button.HideDetails"},
    {"QFileDialog", "&Open", "FileDialog.Open"},
    {"QFileDialog", "&Save", "FileDialog.Save"},
    {"QFileDialog", "&Choose", "FileDialog.Choose"},
    {"QFileDialog", "Open", "FileDialog.OpenTitle"},
    {"QFileDialog", "Save As", "FileDialog.SaveAs"},
    {"QFileDialog", "Look in:", "FileDialog.LookIn"},
    {"QFileDialog", "File &name:", "FileDialog.FileName"},
    {"QFileDialog", "Directory:", "FileDialog.Directory"},
    {"QFileDialog", "Files of type:", "FileDialog.FilesOfType"},
    {"QFileDialog", "Files", "FileDialog.Files"},
    {"QFileDialog", "All Files (*)", "FileDialog.AllFiles"},
    {"QFileDialog", "Sidebar", "FileDialog.Sidebar"},
    {"QFileDialog", "List of places and bookmarks", "FileDialog.Places"},
    {"QFileDialog", "Recent Places", "FileDialog.RecentPlaces"},
    {"QFileDialog", "Back", "FileDialog.Back"},
    {"QFileDialog", "Go back", "FileDialog.GoBack"},
    {"QFileDialog", "Forward", "FileDialog.Forward"},
    {"QFileDialog", "Go forward", "FileDialog.GoForward"},
    {"QFileDialog", "Parent Directory", "FileDialog.Parent"},
    {"QFileDialog", "Go to the parent directory", "FileDialog.GoToParent"},
    {"QFileDialog", "Create New Folder", "FileDialog.CreateFolder"},
    {"QFileDialog", "Create a New Folder", "FileDialog.CreateAFolder"},
    {"QFileDialog", "List View", "FileDialog.List"},
    {"QFileDialog", "Change to list view mode", "FileDialog.ChangeToList"},
    {"QFileDialog", "Detail View", "FileDialog.Details"},
    {"QFileDialog", "Change to detail view mode", "FileDialog.ChangeToDetails"},
    {"QFileDialog", "&New Folder", "FileDialog.NewFolder"},
    {"QFileDialog", "New Folder", "FileDialog.NewFolderName"},
    {"QFileDialog", "&Rename", "FileDialog.Rename"},
    {"QFileDialog", "&Delete", "FileDialog.Delete"},
    {"QFileDialog", "Delete", "FileDialog.DeleteTitle"},
    {"QFileDialog", "Show &hidden files", "FileDialog.ShowHidden"},
    {"QFileDialog", "Remove", "FileDialog.Remove"},
    {"QFileDialog", "Show ", "FileDialog.Show"},
    {"QFileDialog", "Are you sure you want to delete '%1'?", "FileDialog.AskDelete"},
    {"QFileDialog", "'%1' is write protected.\nDo you want to delete it anyway?",
     "FileDialog.AskDeleteProtected"},
    {"QFileDialog", "Could not delete directory.", "FileDialog.NotDeleted"},
    {"QFileSystemModel", "Computer", "FileDialog.Computer"},
    {"QFileSystemModel", "Name", "FileDialog.Name"},
    {"QFileSystemModel", "Size", "FileDialog.Size"},
    {"QFileSystemModel", "Type", "FileDialog.Type"},
    {"QFileSystemModel", "Date Modified", "FileDialog.DateModified"},
    {"QFileSystemModel", "Invalid filename", "FileDialog.InvalidName"},
    {"QFileSystemModel",
     "<b>The name \"%1\" cannot be used.</b><p>Try using another name, with fewer characters or no "
     "punctuation marks.",
     "FileDialog.NameRefused"},
    {"QAbstractFileIconProvider", "Drive", "FileDialog.Drive"},
    {"QAbstractFileIconProvider", "Folder", "FileDialog.Folder"},
    {"QAbstractFileIconProvider", "File", "FileDialog.File"},
    {"QAbstractFileIconProvider", "Unknown", "FileDialog.Unknown"},
    {"QColorDialog", "Select Color", "ColorDialog.Title"},
    {"QColorDialog", "&Basic colors", "ColorDialog.Basic"},
    {"QColorDialog", "&Custom colors", "ColorDialog.Custom"},
    {"QColorDialog", "&Add to Custom Colors", "ColorDialog.AddToCustom"},
    {"QColorDialog", "&Pick Screen Color", "ColorDialog.PickScreen"},
    {"QColorDialog", "Hu&e:", "ColorDialog.Hue"},
    {"QColorDialog", "&Sat:", "ColorDialog.Saturation"},
    {"QColorDialog", "&Val:", "ColorDialog.Value"},
    {"QColorDialog", "&Red:", "ColorDialog.Red"},
    {"QColorDialog", "&Green:", "ColorDialog.Green"},
    {"QColorDialog", "Bl&ue:", "ColorDialog.Blue"},
    {"QColorDialog", "A&lpha channel:", "ColorDialog.Alpha"},
    {"QColorDialog", "&HTML:", "ColorDialog.Html"},
    {"QColorDialog", "Cursor at %1, %2\nPress ESC to cancel", "ColorDialog.Picking"},
    {"QLineEdit", "&Undo", "Editor.Undo"},
    {"QLineEdit", "&Redo", "Editor.Redo"},
    {"QLineEdit", "Cu&t", "Editor.Cut"},
    {"QLineEdit", "&Copy", "Editor.Copy"},
    {"QLineEdit", "&Paste", "Editor.Paste"},
    {"QLineEdit", "Delete", "Editor.Delete"},
    {"QLineEdit", "Select All", "Editor.SelectAll"},
    {"QWidgetTextControl", "&Undo", "Editor.Undo"},
    {"QWidgetTextControl", "&Redo", "Editor.Redo"},
    {"QWidgetTextControl", "Cu&t", "Editor.Cut"},
    {"QWidgetTextControl", "&Copy", "Editor.Copy"},
    {"QWidgetTextControl", "&Paste", "Editor.Paste"},
    {"QWidgetTextControl", "Delete", "Editor.Delete"},
    {"QWidgetTextControl", "Select All", "Editor.SelectAll"},
    {"QWidgetTextControl", "Copy &Link Location", "Editor.CopyLink"},
    {"QAbstractSpinBox", "&Select All", "Editor.SelectAllLetter"},
    {"QAbstractSpinBox", "&Step up", "Editor.StepUp"},
    {"QAbstractSpinBox", "Step &down", "Editor.StepDown"},
    {"QScrollBar", "Scroll here", "ScrollBar.Here"},
    {"QScrollBar", "Top", "ScrollBar.Top"},
    {"QScrollBar", "Bottom", "ScrollBar.Bottom"},
    {"QScrollBar", "Page up", "ScrollBar.PageUp"},
    {"QScrollBar", "Page down", "ScrollBar.PageDown"},
    {"QScrollBar", "Scroll up", "ScrollBar.Up"},
    {"QScrollBar", "Scroll down", "ScrollBar.Down"},
    {"QScrollBar", "Left edge", "ScrollBar.LeftEdge"},
    {"QScrollBar", "Right edge", "ScrollBar.RightEdge"},
    {"QScrollBar", "Page left", "ScrollBar.PageLeft"},
    {"QScrollBar", "Page right", "ScrollBar.PageRight"},
    {"QScrollBar", "Scroll left", "ScrollBar.Left"},
    {"QScrollBar", "Scroll right", "ScrollBar.Right"},
    {"QTabBar", "Scroll Left", "Tab.Left"},
    {"QTabBar", "Scroll Right", "Tab.Right"},
    {"CloseButton", "Close Tab", "Tab.Close"},
    {"QComboBox", "Open the combo box selection popup", "Action.OpenList"},
    {"QAccessibleActionInterface", "Press", "Action.Press"},
    {"QAccessibleActionInterface", "SetFocus", "Action.SetFocus"},
    {"QAccessibleActionInterface", "Sets the focus", "Action.SetsFocus"},
    {"QAccessibleActionInterface", "ShowMenu", "Action.ShowMenu"},
    {"QAccessibleActionInterface", "Toggle", "Action.Toggle"},
    {"QAccessibleActionInterface", "Toggles the state", "Action.Toggles"},
    {"QAccessibleActionInterface", "Triggers the action", "Action.Triggers"},
    {"QAccessibleActionInterface", "Increase", "Action.Increase"},
    {"QAccessibleActionInterface", "Decrease", "Action.Decrease"},
    {"QShortcut", "Ctrl", "Key.Ctrl"},
    {"QShortcut", "Shift", "Key.Shift"},
    {"QShortcut", "Alt", "Key.Alt"},
    {"QShortcut", "Meta", "Key.Meta"},
    {"QShortcut", "Del", "Key.Del"},
    {"QShortcut", "Ins", "Key.Ins"},
    {"QShortcut", "Home", "Key.Home"},
    {"QShortcut", "End", "Key.End"},
    {"QShortcut", "Left", "Key.Left"},
    {"QShortcut", "Right", "Key.Right"},
    {"QShortcut", "Up", "Key.Up"},
    {"QShortcut", "Down", "Key.Down"},
    {"QShortcut", "Space", "Key.Space"},
    {"QShortcut", "Return", "Key.Return"},
    {"QShortcut", "Enter", "Key.Enter"},
    {"QShortcut", "Esc", "Key.Esc"},
    {"QShortcut", "Tab", "Key.Tab"},
    {"QShortcut", "Backspace", "Key.Backspace"},
    {"QShortcut", "PgUp", "Key.PageUp"},
    {"QShortcut", "PgDown", "Key.PageDown"},
};

QByteArray nameOf(const char* context, const char* source) {
    return QByteArray(context) + '\0' + source;
}

} // namespace

StandardTexts::StandardTexts() {
    for (const Row& row : rows)
        if (const std::string* text = QorMsgCatalog::FindMessage(catalog, row.key))
            texts_.insert(nameOf(row.context, row.source), QString::fromStdString(*text));
}

QString StandardTexts::translate(const char* context,
                                 const char* sourceText,
                                 const char* /*disambiguation*/,
                                 int /*n*/) const {
    return texts_.value(nameOf(context, sourceText)); // none: Qt's own, in English
}

std::vector<std::string> StandardTexts::keys() {
    std::vector<std::string> all;
    for (const Row& row : rows)
        all.emplace_back(row.key);
    return all;
}

} // namespace qor::desktop
