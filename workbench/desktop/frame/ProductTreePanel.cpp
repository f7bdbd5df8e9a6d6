#include "workbench/desktop/frame/ProductTreePanel.h"

#include "platform/frame/QorCommandHeader.h"
#include "platform/text/QorMsgCatalog.h"
#include "workbench/desktop/frame/ProductTreeView.h"
#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/theme/Icon.h"
#include "workbench/session/NodeSelection.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace qor::desktop {

using document::Document;
using document::ProductNode;

namespace {

constexpr int mostExpanded = 2000; ///< rows that a search opens

/// Commands of the context menu; an empty one is a line.
constexpr const char* menuCommands[] = {"FitSelection", "Isolate",         "", "Hide",
                                        "Show",         "ShowAll",         "", "SelectSame",
                                        "SelectAll",    "InvertVisibility"};

QString message(const char* key) {
    return toQt(QorMsgCatalog::BuildMessage("QorDesktop", key));
}

void addCommand(QMenu& menu, const char* command) {
    QorCommandHeader* header = QorCommandHeader::GetHeaderFromList(command);
    if (header == nullptr)
        return;
    QAction* action = menu.addAction(icon(toQt(header->GetIconName())), toQt(header->GetTitle()));
    action->setEnabled(header->IsAvailable());
    QObject::connect(action, &QAction::triggered, action, [command] {
        const QorVar<QorCommandHeader> alive(QorCommandHeader::GetHeaderFromList(command));
        if (alive)
            (void)alive->UserStart();
    });
}

} // namespace

ProductTreePanel::ProductTreePanel(QorFrmEditor& editor, QWidget* parent)
    : QWidget(parent)
    , selection_(editor.GetCSO())
    , document_(dynamic_cast<Document*>(editor.GetDocument()))
    , model_(new ProductTreeModel(*document_, this))
    , found_(new QSortFilterProxyModel(this))
    , field_(new QLineEdit(this))
    , view_(new ProductTreeView(this))
    , nothing_(new QLabel(message("NothingFound"), this)) {
    build();
    setUpView();
    listen();
    expandFirst();
    readSelection();
}

void ProductTreePanel::build() {
    constexpr int margin = 8;
    setObjectName(QStringLiteral("productTree"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    field_->setPlaceholderText(message("SearchTree"));
    field_->setAccessibleName(field_->placeholderText());
    field_->setClearButtonEnabled(true);
    field_->addAction(icon(QStringLiteral("search")), QLineEdit::LeadingPosition);
    nothing_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    nothing_->setForegroundRole(QPalette::PlaceholderText);
    nothing_->hide();
    auto* top = new QVBoxLayout;
    top->setContentsMargins(margin, margin, margin, margin);
    top->addWidget(field_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(top);
    column->addWidget(nothing_);
    column->addWidget(view_, 1);
    QObject::connect(field_, &QLineEdit::textChanged, this,
                     [this](const QString& text) { search(text); });
}

void ProductTreePanel::setUpView() {
    found_->setSourceModel(model_);
    found_->setRecursiveFilteringEnabled(true);
    found_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    view_->setAccessibleName(message("ProductTree"));
    view_->setModel(found_);
    view_->onEye = [this](const QModelIndex& index) {
        toggle(index);
    };
    fitColumns();
    QObject::connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                     [this] { writeSelection(); });
    QObject::connect(view_, &QWidget::customContextMenuRequested, this,
                     [this](const QPoint& at) { showMenu(at); });
    QObject::connect(view_, &QAbstractItemView::doubleClicked, this, [] {
        const QorVar<QorCommandHeader> fit(QorCommandHeader::GetHeaderFromList("FitSelection"));
        if (fit)
            (void)fit->UserStart();
    });
}

void ProductTreePanel::fitColumns() {
    constexpr int eyeWidth = 36;
    QHeaderView* header = view_->header();
    header->setStretchLastSection(false);
    header->setMinimumSectionSize(eyeWidth);
    header->setSectionResizeMode(ProductTreeModel::NameColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(ProductTreeModel::EyeColumn, QHeaderView::Fixed);
    header->resizeSection(ProductTreeModel::EyeColumn, eyeWidth);
}

void ProductTreePanel::listen() {
    selection_->GetCallbackManager()->AddCallback(this, QorCSO::CSO_MODIFIED,
                                                  &ProductTreePanel::selectionModified);
    QorCallbackManager* events = document_->GetCallbackManager();
    events->AddCallback(this, Document::DOCUMENT_TREE_MODIFIED, &ProductTreePanel::treeModified);
    events->AddCallback(this, Document::DOCUMENT_VISIBILITY_MODIFIED,
                        &ProductTreePanel::visibilityModified);
}

void ProductTreePanel::search(const QString& text) {
    const bool was = std::exchange(inStep_, true); // what is filtered out stays selected
    found_->setFilterFixedString(text.trimmed());
    inStep_ = was;
    const bool searching = !text.trimmed().isEmpty();
    nothing_->setVisible(searching && found_->rowCount() == 0);
    if (searching && model_->rowCount() <= mostExpanded)
        view_->expandAll();
    readSelection();
}

/// A tree that begins with few assemblies shows what is in them, and in the only one of those.
void ProductTreePanel::expandFirst() {
    constexpr int few = 3;
    QModelIndex within;
    int rows = found_->rowCount();
    while (rows > 0 && rows <= few) {
        QModelIndex only;
        int assemblies = 0;
        for (int row = 0; row < rows; ++row) {
            const QModelIndex index = found_->index(row, 0, within);
            if (!found_->hasChildren(index))
                continue;
            view_->expand(index);
            only = index;
            ++assemblies;
        }
        within = only;
        rows = assemblies == 1 ? found_->rowCount(within) : 0;
    }
}

void ProductTreePanel::toggle(const QModelIndex& index) {
    ProductNode* node = ProductTreeModel::nodeAt(found_->mapToSource(index));
    if (node == nullptr)
        return;
    // The eye of a row of a selection switches all of it.
    const bool visible = !node->isVisible();
    const bool isSelected = view_->selectionModel()->isSelected(index.siblingAtColumn(0));
    session::Nodes nodes{node};
    if (isSelected)
        nodes = session::selectedNodes(*selection_);
    for (ProductNode* one : nodes)
        document_->setVisible(*one, visible);
}

void ProductTreePanel::showMenu(const QPoint& at) {
    if (!view_->indexAt(at).isValid())
        return;
    auto* menu = new QMenu(view_);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const char* command : menuCommands)
        if (*command == '\0')
            menu->addSeparator();
        else
            addCommand(*menu, command);
    menu->popup(view_->viewport()->mapToGlobal(at));
}

void ProductTreePanel::writeSelection() {
    if (std::exchange(inStep_, true))
        return;
    session::Nodes nodes;
    const QModelIndexList rows = view_->selectionModel()->selectedRows();
    nodes.reserve(static_cast<std::size_t>(rows.size()));
    for (const QModelIndex& row : rows)
        nodes.push_back(ProductTreeModel::nodeAt(found_->mapToSource(row)));
    session::selectNodes(*selection_, *document_, nodes);
    inStep_ = false;
}

void ProductTreePanel::readSelection() {
    if (std::exchange(inStep_, true))
        return;
    QItemSelection rows;
    QModelIndex last;
    for (const ProductNode* node : session::selectedNodes(*selection_)) {
        const QModelIndex row = found_->mapFromSource(model_->indexOf(*node));
        if (!row.isValid())
            continue;
        rows.select(row, row.siblingAtColumn(ProductTreeModel::EyeColumn));
        last = row;
    }
    view_->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    if (last.isValid()) {
        view_->selectionModel()->setCurrentIndex(last, QItemSelectionModel::NoUpdate);
        view_->scrollTo(last);
    }
    inStep_ = false;
}

void ProductTreePanel::selectionModified(QorEventName /*event*/,
                                         QorBaseUnknown* /*publisher*/,
                                         QorNotification* /*notification*/,
                                         QorSubscriberData /*data*/,
                                         QorCallbackId /*cookie*/) {
    readSelection();
}

void ProductTreePanel::treeModified(QorEventName /*event*/,
                                    QorBaseUnknown* /*publisher*/,
                                    QorNotification* /*notification*/,
                                    QorSubscriberData /*data*/,
                                    QorCallbackId /*cookie*/) {
    const bool was = std::exchange(inStep_, true);
    model_->rebuild();
    inStep_ = was;
    expandFirst();
    readSelection();
}

void ProductTreePanel::visibilityModified(QorEventName /*event*/,
                                          QorBaseUnknown* /*publisher*/,
                                          QorNotification* /*notification*/,
                                          QorSubscriberData /*data*/,
                                          QorCallbackId /*cookie*/) {
    view_->viewport()->update();
}

} // namespace qor::desktop
