#include "workbench/desktop/peers/Names.h"

#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "workbench/desktop/peers/Texts.h"

#include <algorithm>

namespace qor::desktop {

namespace {

/// The widgets with the same father that lie in the same line as \p widget, from its start on: a
/// row of the grid, or the stack.
std::vector<QorDialog*> lineOf(const QorDialog& widget) {
    const QorDialog* father = widget.GetFatherDialog();
    if (father == nullptr || widget.IsWindow())
        return {};
    std::vector<QorDialog*> line = father->GetWidgets();
    const auto& cell = widget.GetPlacement().cell;
    std::erase_if(line, [&](const QorDialog* other) {
        const auto& place = other->GetPlacement().cell;
        if (place.has_value() != cell.has_value())
            return true;
        return cell && (place->row > cell->row || place->row + place->height <= cell->row);
    });
    if (cell)
        std::stable_sort(line.begin(), line.end(), [](const QorDialog* a, const QorDialog* b) {
            return a->GetPlacement().cell->column < b->GetPlacement().cell->column;
        });
    return line;
}

/// Titles of frames stand above what is in them and do not name what is beside them.
bool namesNeighbours(const QorDialog& widget) {
    return !widget.IsAKindOf(QorDlgFrame::MetaObject()) && !widget.GetTitle().IsNull();
}

QString nameFromTheLeft(const QorDialog& widget) {
    QString name;
    for (const QorDialog* other : lineOf(widget)) {
        if (other == &widget)
            break;
        if (namesNeighbours(*other))
            name = withoutMarks(toQt(other->GetTitle()));
    }
    return name;
}

} // namespace

QString withoutMarks(QString title) {
    title.remove(QLatin1Char('&'));
    title = title.trimmed();
    if (title.endsWith(QLatin1Char(':')))
        title.chop(1);
    return title;
}

QString spokenName(const QorDialog& widget) {
    if (!widget.GetTitle().IsNull())
        return withoutMarks(toQt(widget.GetTitle()));
    const QString neighbour = nameFromTheLeft(widget);
    if (!neighbour.isEmpty())
        return neighbour;
    return widget.GetShortHelp().IsNull() ? toQt(widget.GetName()) : toQt(widget.GetShortHelp());
}

QorDialog* labelled(const QorDialog& label) {
    const std::vector<QorDialog*> line = lineOf(label);
    auto next = std::find(line.begin(), line.end(), &label);
    if (next == line.end() || ++next == line.end())
        return nullptr;
    const bool deaf = (*next)->IsAKindOf(QorDlgLabel::MetaObject()) ||
                      (*next)->IsAKindOf(QorDlgSeparator::MetaObject()) ||
                      (*next)->IsAKindOf(QorDlgFrame::MetaObject());
    return deaf ? nullptr : *next;
}

} // namespace qor::desktop
