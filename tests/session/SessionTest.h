#pragma once

#include "platform/frame/QorFrmLayout.h"
#include "tests/support/QorTestApplication.h"
#include "workbench/session/ProductActions.h"
#include "workbench/session/SelectionHighlight.h"

namespace qor::session::tests {

/// A document with an assembly that is open: bench { frame, bolt.1, bolt.2, vice { jaw, bolt.3 } }.
/// Every part is a triangle of 10 mm, the n-th node 100 * n mm along x.
class SessionTest : public QorTestApplication {
protected:
    enum Number { bench, frame, bolt1, bolt2, vice, jaw, bolt3 };

    void SetUp() override {
        QorTestApplication::SetUp();
        document = QorMake<document::Document>(
            document::LoadedDocument{document::ProductReps(makeProduct()), std::nullopt, {}});
        layout = new QorFrmLayout(nullptr, "layout");
        editor = new QorFrmEditor(layout, "editor", document.Get());
    }

    void TearDown() override {
        layout->CloseEditor(editor);
        layout->RequestDelayedDestruction();
        document.Reset();
        QorTestApplication::TearDown();
    }

    [[nodiscard]] document::ProductNode* node(Number number) const {
        return document->product().nodes()[number].Get();
    }

    [[nodiscard]] QorCSO& selection() const { return *editor->GetCSO(); }

    void select(const std::vector<Number>& numbers) const {
        Nodes nodes;
        for (const Number number : numbers)
            nodes.push_back(node(number));
        selectNodes(selection(), *document, nodes);
    }

    [[nodiscard]] std::vector<int> selected() const {
        std::vector<int> numbers;
        for (const document::ProductNode* one : selectedNodes(selection()))
            numbers.push_back(one->id());
        return numbers;
    }

    /// The parts that are shown, all above them included.
    [[nodiscard]] std::vector<int> shown() const {
        std::vector<int> numbers;
        for (const document::ProductNode_var& one : document->product().nodes())
            if (one->children().empty() && one->isShown())
                numbers.push_back(one->id());
        return numbers;
    }

    [[nodiscard]] std::vector<int> highlighted() const {
        std::vector<int> numbers;
        for (const document::ProductNode_var& one : document->product().nodes())
            if (one->bag()->IsHighlighted())
                numbers.push_back(one->id());
        return numbers;
    }

    document::Document_var document;
    QorFrmLayout* layout = nullptr;
    QorFrmEditor* editor = nullptr;

private:
    static document::Product makeProduct() {
        using document::none;
        document::Product product;
        document::Mesh mesh;
        mesh.positions = {0, 0, 0, 10, 0, 0, 0, 10, 0};
        mesh.indices = {0, 1, 2};
        mesh.groups = {{0, 3, none}};
        product.meshes = {mesh};
        for (const char* name : {"frame", "bolt", "jaw"})
            product.parts.push_back({name, 0, none});
        const auto add = [&](const char* name, std::int32_t parent, std::int32_t part) {
            document::Node node;
            node.name = name;
            node.parent = parent;
            node.part = part;
            node.transform[3] =
                parent == none ? 0.0 : 100.0 * static_cast<double>(product.nodes.size());
            product.nodes.push_back(node);
        };
        add("bench", none, none);
        add("frame", bench, 0);
        add("bolt.1", bench, 1);
        add("bolt.2", bench, 1);
        add("vice", bench, none);
        add("jaw", vice, 2);
        add("bolt.3", vice, 1);
        return product;
    }
};

} // namespace qor::session::tests
