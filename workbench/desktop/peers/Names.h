#pragma once

#include <QString>

class QorDialog;

namespace qor::desktop {

/// What a screen reader calls \p widget: its own title; without one that of the nearest widget to
/// its left in the same row, or before it in a stack; else its short help, else its name.
[[nodiscard]] QString spokenName(const QorDialog& widget);

/// The widget that the label \p label belongs to: the next one to its right in the same row, or
/// after it in a stack, which can have the keyboard; null without one.
[[nodiscard]] QorDialog* labelled(const QorDialog& label);

/// A title as it is spoken: without the mark of its mnemonic and without a closing colon.
[[nodiscard]] QString withoutMarks(QString title);

} // namespace qor::desktop
