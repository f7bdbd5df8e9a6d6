#pragma once

#include "platform/vis/QorMesh.h"

#include <memory>

class QorDlgDialog;
class QorInteractiveApplication;
class QorNavigation3DViewer;

/// The program that all benchmarks of this folder run in: Qt, a desktop, a loop.
class BenchmarkDesktop {
public:
    /// Made by the first call.
    static BenchmarkDesktop& get();
    ~BenchmarkDesktop();

    [[nodiscard]] QorInteractiveApplication& application();

    /// Turns until nothing more happens.
    void settle();

private:
    BenchmarkDesktop();

    struct Parts;
    std::unique_ptr<Parts> parts_;
};

/// A window with a viewer over all of it, shown; goes with its owner.
class BenchmarkWindow {
public:
    BenchmarkWindow(int width, int height);
    ~BenchmarkWindow();
    BenchmarkWindow(const BenchmarkWindow&) = delete;
    BenchmarkWindow& operator=(const BenchmarkWindow&) = delete;

    [[nodiscard]] QorNavigation3DViewer& viewer() { return *viewer_; }

private:
    QorDlgDialog* window_;
    QorNavigation3DViewer* viewer_; ///< belongs to the window
};

/// A hexagonal bolt along z, of 116 triangles, moved by (\p x, \p y) and added to \p data.
void addBolt(QorMesh::Data& data, double x, double y);
