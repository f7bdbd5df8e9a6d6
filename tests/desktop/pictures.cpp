// Draws the controls into picture files, for looking at: pictures FOLDER [light|dark].
// QT_SCALE_FACTOR gives the scale.
#include "platform/dialog/QorDlgColorEditor.h"
#include "platform/dialog/QorDlgFile.h"
#include "platform/dialog/QorDlgNotify.h"
#include "platform/system/QorApplication.h"
#include "tests/desktop/GalleryDialog.h"
#include "workbench/desktop/Desktop.h"
#include "workbench/desktop/QtToolkit.h"
#include "workbench/desktop/loop/QtEventLoop.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>

using namespace qor::desktop;

namespace {

class Pictures {
public:
    Pictures(QtEventLoop& loop, QDir folder, QString theme)
        : loop_(loop), folder_(std::move(folder)), theme_(std::move(theme)) {}

    void take(QorDlgDialog& dialog, const QString& name) {
        dialog.SetVisibility(QorDlgSHOW);
        save(controlOf(&dialog), name);
        dialog.SetVisibility(QorDlgHIDE);
    }

    void save(QWidget* window, const QString& name) {
        for (int turn = 0; turn < 20; ++turn)
            loop_.RunOneTurn(std::chrono::milliseconds(10));
        window->grab().save(folder_.filePath(
            QStringLiteral("%1-%2@%3.png").arg(name, theme_).arg(window->devicePixelRatioF())));
    }

private:
    QtEventLoop& loop_;
    QDir folder_;
    QString theme_;
};

/// The windows that come ready.
void takeWindows(Pictures& pictures) {
    const auto box = QorAdopt(
        new QorDlgNotify(nullptr, "box", QorNotifyKind::Warning, QorNotifyButtons::YesNoCancel));
    QorDlgNotify::SetOpenedObserver([&](QorDlgNotify& open) {
        pictures.save(controlOf(&open), QStringLiteral("box"));
        open.UserCancel();
    });
    box->DisplayBlocked("gear.png exists already.\nDo you want to replace it?", "Save Picture");
    QorDlgNotify::SetOpenedObserver({});
    const auto file = QorAdopt(new QorDlgFile(nullptr, "file", QorDlgFileSave));
    file->SetTitle("Save Picture");
    const QorUnicodeString labels[] = {"TIFF", "PNG"};
    const QorString patterns[] = {"*.tif", "*.png"};
    file->SetFilterStrings(labels, patterns, 2);
    pictures.take(*file, QStringLiteral("file"));
    const auto color = QorAdopt(new QorDlgColorEditor(nullptr, "color"));
    color->SetTitle("Light Colour");
    color->SetColor({1.0F, 0.9F, 0.7F});
    pictures.take(*color, QStringLiteral("color"));
}

} // namespace

int main(int argc, char** argv) {
    Desktop::prepareApplication();
    QApplication qt(argc, argv);
    QtEventLoop loop;
    QorInteractiveApplication application(loop);
    const QStringList arguments = QApplication::arguments();
    const QString theme = arguments.value(2, QStringLiteral("light"));
    Desktop desktop(themeNamed(theme).value_or(ThemeChoice::Light));
    Pictures pictures(loop, QDir(arguments.value(1, QStringLiteral("."))), theme);
    {
        const auto gallery = QorAdopt(new tests::GalleryDialog(nullptr));
        pictures.take(*gallery, QStringLiteral("gallery"));
        gallery->SetVisibility(QorDlgSHOW);
        auto* combo = controlOf(gallery.Get())->findChild<QComboBox*>();
        combo->showPopup();
        pictures.save(combo->view()->window(), QStringLiteral("popup"));
        combo->hidePopup();
        const auto tools = QorAdopt(new tests::GalleryTools(nullptr));
        pictures.take(*tools, QStringLiteral("tools"));
        takeWindows(pictures);
    }
    return 0;
}
