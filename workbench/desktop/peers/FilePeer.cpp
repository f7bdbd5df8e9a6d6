#include "workbench/desktop/peers/FilePeer.h"

#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/peers/WindowParts.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QTreeView>

#include <utility>

namespace qor::desktop {

namespace {

/// What a person reads of a filter: "STEP (*.stp *.step)", each ending once however it is written,
/// and the label alone where there are too many or it tells them itself.
QString shownFilter(const QString& label, const QString& pattern) {
    constexpr int most = 4;
    QStringList endings = pattern.toLower().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    endings.removeDuplicates();
    if (endings.size() > most || pattern == QLatin1String("*"))
        return label;
    const QString told = QStringLiteral("(%1)").arg(endings.join(QLatin1Char(' ')));
    return label.endsWith(told) ? label : label + QLatin1Char(' ') + told;
}

/// Size, kind and date as wide as what is seen of them, the name has the rest.
void fitColumns(QHeaderView& header) {
    header.setStretchLastSection(false);
    header.setResizeContentsPrecision(0); // the rows that are seen; folders may have thousands
    for (int column = 0; column < header.count(); ++column)
        header.setSectionResizeMode(column, column == 0 ? QHeaderView::Stretch
                                                        : QHeaderView::ResizeToContents);
}

} // namespace

FileControl::FileControl(QWidget* parent) : WindowControl(parent) {
    constexpr QSize startSize(800, 520);
    // The details of filters are ours to show: Qt would show all of a long list.
    setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite |
               QFileDialog::DontResolveSymlinks | QFileDialog::HideNameFilterDetails);
    // Also for saving: in its saving mode Qt's dialog changes the typed suffix with the filter.
    setAcceptMode(QFileDialog::AcceptOpen);
    setFileMode(QFileDialog::AnyFile);
    resize(startSize);
    setSizeGripEnabled(false);
    if (const auto* details = findChild<QTreeView*>(QStringLiteral("treeView")))
        fitColumns(*details->header());
}

QLineEdit* FileControl::nameEditor() const {
    return findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
}

QComboBox* FileControl::filterCombo() const {
    return findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
}

QString FileControl::chosen() const {
    const QLineEdit* editor = nameEditor();
    if (editor != nullptr && !editor->text().isEmpty())
        return editor->text();
    const QStringList selected = selectedFiles();
    return selected.isEmpty() ? QString() : selected.front();
}

void FileControl::accept() {
    const QString path = chosen();
    if (path.isEmpty())
        return;
    const QString absolute = QDir(directory()).absoluteFilePath(path);
    if (QFileInfo(absolute).isDir()) {
        setDirectory(absolute);
        if (QLineEdit* editor = nameEditor())
            editor->clear();
        Q_EMIT directoryEntered(absolute);
        return;
    }
    const auto accepted = onAccept;
    accepted(path);
}

FilePeer::FilePeer(QorDialog& widget) : PeerOf(widget, new FileControl(ownerFor(widget))) {
    applyWindowStyle(box(), widget);
    if (my().IsSave())
        box().setLabelText(QFileDialog::Accept, QFileDialog::tr("&Save"));
    connectHooks();
}

void FilePeer::connectHooks() {
    box().onAccept = whileAlive(
        [this](const QString& path) { report([&] { return my().UserAccept(fromQt(path)); }, 0); });
    box().onCancel = whileAlive([this] { report([this] { return my().UserCancel(); }, 0); });
    const auto reportQuietly = [this](const std::function<QorUserResult()>& up) {
        reporting_ = true;
        if (report(up, 0))
            reporting_ = false;
    };
    QObject::connect(&box(), &QFileDialog::directoryEntered, context(),
                     [this, reportQuietly](const QString& directory) {
                         reportQuietly([&] { return my().UserSetDirectory(fromQt(directory)); });
                     });
    if (QComboBox* filters = box().filterCombo())
        QObject::connect(filters, &QComboBox::activated, context(),
                         [this, reportQuietly](int index) {
                             reportQuietly([&] { return my().UserSetFilter(index); });
                         });
}

void FilePeer::draw(QorAspects aspects) {
    if ((aspects & QorAspectTitle) != 0)
        box().setWindowTitle(toQt(my().GetTitle()));
    if (reporting_)
        return;
    if ((aspects & (QorAspectLines | QorAspectSelection)) != 0)
        drawFilters();
    if ((aspects & QorAspectValue) != 0)
        drawPlace();
}

void FilePeer::drawFilters() {
    QStringList names;
    for (const QorDlgFile::Filter& filter : my().GetFilters())
        names << QStringLiteral("%1 (%2)").arg(
            shownFilter(toQt(filter.label), toQt(filter.pattern)), toQt(filter.pattern));
    if (names != box().nameFilters())
        box().setNameFilters(names);
    const int active = my().GetActiveFilterIndex();
    if (active < names.size())
        box().selectNameFilter(names.at(active));
}

void FilePeer::drawPlace() {
    const QString directory = toQt(my().GetDirectory());
    if (directory != box().directory().absolutePath())
        box().setDirectory(directory);
    const QString selection = toQt(my().GetSelection());
    if (!selection.isEmpty() &&
        selection != box().directory().absoluteFilePath(box().nameEditor()->text()))
        box().selectFile(selection);
}

void FilePeer::drawVisibility() {
    const bool visible = my().GetVisibility() == QorDlgSHOW;
    if (visible != box().isVisible())
        showWindow(box(), visible);
}

void FilePeer::Raise() {
    if (control() != nullptr)
        showWindow(box(), true);
}

} // namespace qor::desktop
