// Document windows: tabs, the start page and the product tree.
#include "platform/frame/QorApplicationFrame.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/vis/QorNavigation3DViewer.h"
#include "tests/desktop/DesktopTest.h"
#include "workbench/desktop/frame/ProductTreePanel.h"
#include "workbench/desktop/frame/ProductTreeView.h"
#include "workbench/session/NodeSelection.h"

#include <QLineEdit>
#include <QTabBar>

namespace qor::desktop::tests {

namespace {

using document::Document;
using document::Document_var;
using document::none;

/// An assembly "bench" of \p count parts "part 0", "part 1", …
Document_var makeDocument(int count) {
    document::Product product;
    document::Mesh mesh;
    mesh.positions = {0, 0, 0, 10, 0, 0, 0, 10, 0};
    mesh.indices = {0, 1, 2};
    mesh.groups = {{0, 3, none}};
    product.meshes = {mesh};
    product.parts = {{"part", 0, none}};
    const auto add = [&](const std::string& name, std::int32_t parent, std::int32_t part) {
        document::Node node;
        node.name = name;
        node.parent = parent;
        node.part = part;
        product.nodes.push_back(node);
    };
    add("bench", none, none);
    for (int i = 0; i < count; ++i)
        add("part " + std::to_string(i), 0, 0);
    return QorMake<Document>(
        document::LoadedDocument{document::ProductReps(std::move(product)), std::nullopt, {}});
}

class DocumentWindows : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        frame = new QorApplicationFrame("frame");
        layout = new QorFrmLayout(frame, "layout");
        show(*frame);
    }

    void TearDown() override {
        document.Reset();
        frame->RequestDelayedDestruction();
        DesktopTest::TearDown();
    }

    void open(int parts) {
        document = makeDocument(parts);
        editor = new QorFrmEditor(layout, "editor", document.Get());
        openWindow();
    }

    void openWindow() {
        auto* shown = new QorFrmWindow(frame, "documentWindow", editor);
        auto* viewer = new QorNavigation3DViewer(shown, "viewer", QorDlgDefaultStyle, 400, 300);
        shown->Attach4Sides(viewer);
        viewer->AddRep(document->root());
        shown->SetViewer(viewer);
        viewer->SetTreeDisplay(true);
        layout->SetCurrentWindow(shown);
        settle();
    }

    [[nodiscard]] QWidget* main() const { return controlOf(frame); }

    [[nodiscard]] QWidget* part(const char* called) const {
        return main()->findChild<QWidget*>(called);
    }

    [[nodiscard]] ProductTreeView* tree() const {
        auto* panel = dynamic_cast<ProductTreePanel*>(part("productTree"));
        return panel != nullptr ? &panel->view() : nullptr;
    }

    [[nodiscard]] QorNavigation3DViewer* viewer() const {
        return dynamic_cast<QorNavigation3DViewer*>(layout->GetCurrentWindow()->GetViewer());
    }

    [[nodiscard]] std::vector<int> selected() const {
        std::vector<int> ids;
        for (const auto* node : session::selectedNodes(*editor->GetCSO()))
            ids.push_back(node->id());
        return ids;
    }

    /// The row of a part below the open root.
    [[nodiscard]] QModelIndex row(int part, int column = 0) const {
        const QAbstractItemModel* model = tree()->model();
        return model->index(part, column, model->index(0, 0));
    }

    void clickOn(const QModelIndex& index, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, modifiers,
                          tree()->visualRect(index).center());
        settle();
    }

    QorApplicationFrame* frame = nullptr;
    QorFrmLayout* layout = nullptr;
    QorFrmEditor* editor = nullptr;
    Document_var document;
};

TEST_F(DocumentWindows, AnEmptyProgramShowsHowToBegin) {
    EXPECT_TRUE(part("startPage")->isVisible());
    open(3);
    EXPECT_FALSE(part("startPage")->isVisible());
    layout->CloseEditor(editor);
    settle();
    EXPECT_TRUE(part("startPage")->isVisible());
}

TEST_F(DocumentWindows, SeveralHaveTabs) {
    open(3);
    auto* tabs = main()->findChild<QTabBar*>("documentTabs");
    EXPECT_FALSE(tabs->isVisible());
    openWindow();
    ASSERT_TRUE(tabs->isVisible());
    EXPECT_EQ(tabs->currentIndex(), 1);
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
    settle();
    EXPECT_EQ(layout->GetCurrentWindow(), layout->GetWindows().front());
    layout->CloseWindow(layout->GetWindows().back());
    settle();
    EXPECT_FALSE(tabs->isVisible());
}

TEST_F(DocumentWindows, TheTreeShowsWhatTheViewerSays) {
    open(3);
    ASSERT_NE(tree(), nullptr);
    EXPECT_TRUE(tree()->isVisible());
    EXPECT_EQ(row(2).data().toString(), "part 2");
    viewer()->SetTreeDisplay(false);
    EXPECT_FALSE(tree()->isVisible());
    viewer()->SetTreeDisplay(true);
    EXPECT_TRUE(tree()->isVisible());
}

TEST_F(DocumentWindows, TheTreesSelectionIsTheEditors) {
    open(3);
    clickOn(row(1));
    EXPECT_EQ(selected(), std::vector<int>{2});
    clickOn(row(2), Qt::ControlModifier);
    EXPECT_EQ(selected(), (std::vector<int>{2, 3}));
    session::selectNodes(*editor->GetCSO(), *document, {document->product().nodes()[1].Get()});
    EXPECT_TRUE(tree()->selectionModel()->isSelected(row(0)));
    EXPECT_FALSE(tree()->selectionModel()->isSelected(row(1)));
}

TEST_F(DocumentWindows, TheEyeHidesAPartOrAllThatIsSelected) {
    open(3);
    const auto isVisible = [&](std::size_t id) {
        return document->product().nodes()[id]->isVisible();
    };
    clickOn(row(0, 1));
    EXPECT_FALSE(isVisible(1));
    EXPECT_EQ(selected(), std::vector<int>{}) << "a click on the eye selects nothing";
    clickOn(row(1));
    clickOn(row(2), Qt::ControlModifier);
    clickOn(row(1, 1));
    EXPECT_FALSE(isVisible(2));
    EXPECT_FALSE(isVisible(3));
    key(tree(), Qt::Key_Space);
    EXPECT_TRUE(isVisible(3)) << "the blank key does the same";
}

TEST_F(DocumentWindows, TheSearchLeavesTheRowsOfThatName) {
    open(12);
    auto* field = part("productTree")->findChild<QLineEdit*>();
    clickOn(row(3));
    type(field, "PART 1");
    ASSERT_EQ(tree()->model()->rowCount(tree()->model()->index(0, 0)), 3) << "1, 10 and 11";
    EXPECT_EQ(selected(), std::vector<int>{4}) << "what is not found stays selected";
    field->clear();
    settle();
    EXPECT_EQ(tree()->model()->rowCount(tree()->model()->index(0, 0)), 12);
    EXPECT_TRUE(tree()->selectionModel()->isSelected(row(3)));
}

TEST_F(DocumentWindows, TenThousandPartsKeepTheTreeQuick) {
    open(10000);
    session::Nodes all;
    for (const auto& node : document->product().nodes())
        all.push_back(node.Get());
    const auto begin = std::chrono::steady_clock::now();
    session::selectNodes(*editor->GetCSO(), *document, all);
    session::selectNodes(*editor->GetCSO(), *document, {all.back()});
    settle();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    EXPECT_TRUE(tree()->visualRect(row(9999)).isValid()) << "it was scrolled to";
    EXPECT_LT(took.count(), 2.0);
    RecordProperty("seconds", std::to_string(took.count()));
    std::cout << "ten thousand parts selected and let go in " << took.count() << " s\n";
}

} // namespace

} // namespace qor::desktop::tests
