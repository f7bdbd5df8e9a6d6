#pragma once

#include "platform/dialog/QorDialog.h"
#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgColorEditor.h"
#include "platform/dialog/QorDlgCombo.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgFile.h"
#include "platform/dialog/QorDlgNotify.h"
#include "platform/dialog/QorDlgProgress.h"
#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"

#include <map>
#include <sstream>
#include <string>
#include <vector>

/// Aspects by name, in the order of their bits.
inline const std::vector<std::pair<QorAspects, const char*>>& AspectNames() {
    static const std::vector<std::pair<QorAspects, const char*>> names = {
        {QorAspectTitle, "title"},
        {QorAspectVisibility, "visibility"},
        {QorAspectSensitivity, "sensitivity"},
        {QorAspectLayout, "layout"},
        {QorAspectHelp, "help"},
        {QorAspectIcon, "icon"},
        {QorAspectChecked, "checked"},
        {QorAspectValue, "value"},
        {QorAspectRange, "range"},
        {QorAspectLines, "lines"},
        {QorAspectSelection, "selection"},
        {QorAspectChildren, "children"},
    };
    return names;
}

/// "value|range"; "everything" for all.
inline std::string NameAspects(QorAspects iAspects) {
    if (iAspects == QorAspectEverything)
        return "everything";
    std::string names;
    for (const auto& [bit, name] : AspectNames())
        if ((iAspects & bit) != 0)
            names += (names.empty() ? "" : "|") + std::string(name);
    return names;
}

/// What a peer would draw for one aspect of a widget, as a text.
inline std::string Depict(const QorDialog& iWidget, QorAspects iAspect) {
    std::ostringstream out;
    const auto& placement = iWidget.GetPlacement();
    const auto as = [&]<class Widget>(auto iPrint) {
        if (const auto* widget = dynamic_cast<const Widget*>(&iWidget))
            iPrint(*widget);
    };
    switch (iAspect) {
    case QorAspectTitle:
        out << iWidget.GetTitle();
        break;
    case QorAspectVisibility:
        out << iWidget.GetVisibility();
        break;
    case QorAspectSensitivity:
        out << iWidget.GetSensitivity();
        break;
    case QorAspectHelp:
        out << iWidget.GetShortHelp() << '/' << iWidget.GetLongHelp();
        break;
    case QorAspectIcon:
        out << iWidget.GetIconName();
        break;
    case QorAspectLayout:
        if (placement.cell)
            out << placement.cell->row << ' ' << placement.cell->column << ' '
                << placement.cell->width << ' ' << placement.cell->height << ' '
                << placement.cell->justification;
        out << '/' << placement.sides << '/' << iWidget.GetVisibleTextWidth() << '/'
            << iWidget.GetLayout().stretchedRows.size() << '/'
            << iWidget.GetLayout().stretchedColumns.size();
        break;
    case QorAspectChecked:
        as.operator()<QorDlgCheckButton>([&](const auto& iOne) { out << iOne.GetState(); });
        as.operator()<QorDlgRadioButton>([&](const auto& iOne) { out << iOne.GetState(); });
        break;
    case QorAspectValue:
        as.operator()<QorDlgSpinner>(
            [&](const auto& iOne) { out << iOne.GetShownText() << '=' << iOne.GetValue(); });
        as.operator()<QorDlgSlider>([&](const auto& iOne) { out << iOne.GetValue(); });
        as.operator()<QorDlgScrollBar>([&](const auto& iOne) { out << iOne.GetScrollPos(); });
        as.operator()<QorDlgProgress>([&](const auto& iOne) { out << iOne.GetPos(); });
        as.operator()<QorDlgEditor>([&](const auto& iOne) { out << iOne.GetText(); });
        as.operator()<QorDlgFile>(
            [&](const auto& iOne) { out << iOne.GetDirectory() << ':' << iOne.GetSelection(); });
        as.operator()<QorDlgNotify>([&](const auto& iOne) { out << iOne.GetText(); });
        as.operator()<QorDlgColorEditor>([&](const auto& iOne) {
            for (const float part : iOne.GetColor())
                out << part << ' ';
        });
        break;
    case QorAspectRange:
        as.operator()<QorDlgSpinner>([&](const auto& iOne) {
            out << iOne.GetMin() << ' ' << iOne.GetMax() << ' ' << iOne.GetStep() << ' '
                << iOne.GetFormat();
        });
        as.operator()<QorDlgSlider>([&](const auto& iOne) {
            out << iOne.GetMin() << ' ' << iOne.GetMax() << ' ' << iOne.GetStep();
        });
        as.operator()<QorDlgProgress>(
            [&](const auto& iOne) { out << iOne.GetMin() << ' ' << iOne.GetMax(); });
        as.operator()<QorDlgScrollBar>([&](const auto& iOne) {
            int min = 0;
            int max = 0;
            iOne.GetScrollRange(min, max);
            out << min << ' ' << max << ' ' << iOne.GetScrollBoxSize();
        });
        break;
    case QorAspectLines:
        as.operator()<QorDlgCombo>([&](const auto& iOne) {
            for (const auto& line : iOne.GetLines())
                out << line << ';';
        });
        as.operator()<QorDlgFile>([&](const auto& iOne) {
            for (const auto& filter : iOne.GetFilters())
                out << filter.label << '(' << filter.pattern << ')';
        });
        break;
    case QorAspectSelection:
        as.operator()<QorDlgCombo>([&](const auto& iOne) { out << iOne.GetSelect(); });
        as.operator()<QorDlgFile>([&](const auto& iOne) { out << iOne.GetActiveFilterIndex(); });
        break;
    case QorAspectChildren:
        for (const QorDialog* child : iWidget.GetWidgets())
            out << child->GetName() << ' ';
        break;
    default:
        break;
    }
    return out.str();
}

/// A peer that draws into memory: it remembers what it drew of every aspect and writes a line for
/// every call, "update NAME value|range".
class RecordingPeer : public QorPeer {
public:
    RecordingPeer(QorDialog& iWidget, std::vector<std::string>& ioLog)
        : widget_(iWidget), log_(ioLog) {
        name_ = widget_.GetName().Str();
        log_.push_back("create " + name_);
    }

    ~RecordingPeer() override { log_.push_back("destroy " + name_); }

    RecordingPeer(const RecordingPeer&) = delete;
    RecordingPeer& operator=(const RecordingPeer&) = delete;

    void Update(QorAspects iAspects) override {
        log_.push_back("update " + name_ + " " + NameAspects(iAspects));
        for (const auto& [bit, name] : AspectNames())
            if ((iAspects & bit) != 0)
                drawn_[bit] = Depict(widget_, bit);
    }

    void TakeFocus() override { log_.push_back("focus " + name_); }

    void Raise() override { log_.push_back("raise " + name_); }

    /// Aspects whose picture is not that of the widget's state, by name; empty when all is right.
    [[nodiscard]] std::string FindStale() const {
        QorAspects stale = 0;
        for (const auto& [bit, name] : AspectNames())
            if (const auto found = drawn_.find(bit);
                found == drawn_.end() || found->second != Depict(widget_, bit))
                stale |= bit;
        return NameAspects(stale);
    }

    /// What it drew of one aspect.
    [[nodiscard]] std::string GetDrawn(QorAspects iAspect) const {
        const auto found = drawn_.find(iAspect);
        return found != drawn_.end() ? found->second : std::string();
    }

private:
    QorDialog& widget_;
    std::vector<std::string>& log_;
    std::string name_;
    std::map<QorAspects, std::string> drawn_;
};
