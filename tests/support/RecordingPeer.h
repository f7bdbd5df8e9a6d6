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

/// Prints what a peer would draw: for each class of widgets a function, of which those apply that
/// the widget is of.
class Depicter {
public:
    explicit Depicter(const QorDialog& iWidget) : widget_(iWidget) {}

    /// Prints by \p iPrint if the widget is a \p Widget.
    template <class Widget, class Print>
    Depicter& As(Print iPrint) {
        if (const auto* widget = dynamic_cast<const Widget*>(&widget_))
            iPrint(out_, *widget);
        return *this;
    }

    [[nodiscard]] std::string GetText() const { return out_.str(); }

private:
    const QorDialog& widget_;
    std::ostringstream out_;
};

inline std::string DepictLayout(const QorDialog& iWidget) {
    std::ostringstream out;
    if (const auto& cell = iWidget.GetPlacement().cell)
        out << cell->row << ' ' << cell->column << ' ' << cell->width << ' ' << cell->height << ' '
            << cell->justification;
    const QorContainerLayout& layout = iWidget.GetLayout();
    out << '/' << iWidget.GetPlacement().sides << '/' << iWidget.GetVisibleTextWidth() << '/'
        << static_cast<int>(layout.stack) << '/' << layout.stretchedRows.size() << '/'
        << layout.stretchedColumns.size();
    return out.str();
}

inline std::string DepictChecked(const QorDialog& iWidget) {
    const auto print = [](std::ostream& ioOut, const auto& iOne) {
        ioOut << iOne.GetState();
    };
    return Depicter(iWidget).As<QorDlgCheckButton>(print).As<QorDlgRadioButton>(print).GetText();
}

inline std::string DepictValue(const QorDialog& iWidget) {
    return Depicter(iWidget)
        .As<QorDlgSpinner>(
            [](auto& ioOut, auto& iOne) { ioOut << iOne.GetShownText() << '=' << iOne.GetValue(); })
        .As<QorDlgSlider>([](auto& ioOut, auto& iOne) { ioOut << iOne.GetValue(); })
        .As<QorDlgScrollBar>([](auto& ioOut, auto& iOne) { ioOut << iOne.GetScrollPos(); })
        .As<QorDlgProgress>([](auto& ioOut, auto& iOne) { ioOut << iOne.GetPos(); })
        .As<QorDlgEditor>([](auto& ioOut, auto& iOne) { ioOut << iOne.GetText(); })
        .As<QorDlgFile>([](auto& ioOut, auto& iOne) {
            ioOut << iOne.GetDirectory() << ':' << iOne.GetSelection();
        })
        .As<QorDlgNotify>([](auto& ioOut, auto& iOne) { ioOut << iOne.GetText(); })
        .As<QorDlgColorEditor>([](auto& ioOut, auto& iOne) {
            for (const float part : iOne.GetColor())
                ioOut << part << ' ';
        })
        .GetText();
}

inline std::string DepictRange(const QorDialog& iWidget) {
    return Depicter(iWidget)
        .As<QorDlgSpinner>([](auto& ioOut, auto& iOne) {
            ioOut << iOne.GetMin() << ' ' << iOne.GetMax() << ' ' << iOne.GetStep() << ' '
                  << iOne.GetFormat();
        })
        .As<QorDlgSlider>([](auto& ioOut, auto& iOne) {
            ioOut << iOne.GetMin() << ' ' << iOne.GetMax() << ' ' << iOne.GetStep();
        })
        .As<QorDlgProgress>(
            [](auto& ioOut, auto& iOne) { ioOut << iOne.GetMin() << ' ' << iOne.GetMax(); })
        .As<QorDlgScrollBar>([](auto& ioOut, auto& iOne) {
            int min = 0;
            int max = 0;
            iOne.GetScrollRange(min, max);
            ioOut << min << ' ' << max << ' ' << iOne.GetScrollBoxSize();
        })
        .GetText();
}

inline std::string DepictLines(const QorDialog& iWidget) {
    return Depicter(iWidget)
        .As<QorDlgCombo>([](auto& ioOut, auto& iOne) {
            for (const auto& line : iOne.GetLines())
                ioOut << line << ';';
        })
        .As<QorDlgFile>([](auto& ioOut, auto& iOne) {
            for (const auto& filter : iOne.GetFilters())
                ioOut << filter.label << '(' << filter.pattern << ')';
        })
        .GetText();
}

inline std::string DepictSelection(const QorDialog& iWidget) {
    return Depicter(iWidget)
        .As<QorDlgCombo>([](auto& ioOut, auto& iOne) { ioOut << iOne.GetSelect(); })
        .As<QorDlgFile>([](auto& ioOut, auto& iOne) { ioOut << iOne.GetActiveFilterIndex(); })
        .GetText();
}

inline std::string DepictChildren(const QorDialog& iWidget) {
    std::string names;
    for (const QorDialog* child : iWidget.GetWidgets())
        names += child->GetName().Str() + " ";
    return names;
}

/// An aspect of widgets: its name in logs, and what a peer would draw for it, as a text.
struct DrawnAspect {
    QorAspects bit;
    const char* name;
    std::string (*depict)(const QorDialog& iWidget);
};

inline const std::vector<DrawnAspect>& DrawnAspects() {
    using Widget = const QorDialog&;
    static const std::vector<DrawnAspect> aspects = {
        {QorAspectTitle, "title",
         [](Widget iOne) {
             return iOne.GetTitle().Str();
         }},
        {QorAspectVisibility, "visibility",
         [](Widget iOne) {
             return std::to_string(iOne.GetVisibility());
         }},
        {QorAspectSensitivity, "sensitivity",
         [](Widget iOne) {
             return std::to_string(iOne.GetSensitivity());
         }},
        {QorAspectLayout, "layout", &DepictLayout},
        {QorAspectHelp, "help",
         [](Widget iOne) {
             return iOne.GetShortHelp().Str() + "/" + iOne.GetLongHelp().Str();
         }},
        {QorAspectIcon, "icon",
         [](Widget iOne) {
             return iOne.GetIconName().Str();
         }},
        {QorAspectChecked, "checked", &DepictChecked},
        {QorAspectValue, "value", &DepictValue},
        {QorAspectRange, "range", &DepictRange},
        {QorAspectLines, "lines", &DepictLines},
        {QorAspectSelection, "selection", &DepictSelection},
        {QorAspectChildren, "children", &DepictChildren},
    };
    return aspects;
}

/// "value|range"; "everything" for all.
inline std::string NameAspects(QorAspects iAspects) {
    if (iAspects == QorAspectEverything)
        return "everything";
    std::string names;
    for (const DrawnAspect& aspect : DrawnAspects())
        if ((iAspects & aspect.bit) != 0)
            names += (names.empty() ? "" : "|") + std::string(aspect.name);
    return names;
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
        for (const DrawnAspect& aspect : DrawnAspects())
            if ((iAspects & aspect.bit) != 0)
                drawn_[aspect.bit] = aspect.depict(widget_);
    }

    void TakeFocus() override { log_.push_back("focus " + name_); }

    void Raise() override { log_.push_back("raise " + name_); }

    /// Aspects whose picture is not that of the widget's state, by name; empty when all is right.
    [[nodiscard]] std::string FindStale() const {
        QorAspects stale = 0;
        for (const DrawnAspect& aspect : DrawnAspects()) {
            const auto found = drawn_.find(aspect.bit);
            if (found == drawn_.end() || found->second != aspect.depict(widget_))
                stale |= aspect.bit;
        }
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
