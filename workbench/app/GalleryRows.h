#pragma once

#include "platform/dialog/QorDialog.h"

#include <span>
#include <vector>

namespace qor::app {

/// A kind of widget in one state. \p make builds it in \p father; the gallery shows it twice,
/// enabled and disabled, under one caption.
struct GalleryRow {
    const char* name;
    QorDialog* (*make)(QorDialog& father, const QorString& name);
    unsigned justification = QorHoldFill;
};

/// A titled group of rows, or one that is built in a way of its own.
struct GallerySection {
    const char* name;
    std::span<const GalleryRow> rows;
    void (*build)(QorDialog& section) = nullptr;
};

/// Sections below each other.
struct GalleryColumn {
    const char* name;
    std::vector<GallerySection> sections;
};

[[nodiscard]] const std::vector<GalleryColumn>& galleryColumns();

/// Builds the section of nested frames, grids and stacks.
void buildLayouts(QorDialog& section);

/// What \p widget sends when a person does something with it; nothing for kinds that send nothing.
[[nodiscard]] std::vector<QorNotification*> notificationsOf(QorDialog& widget);

} // namespace qor::app
