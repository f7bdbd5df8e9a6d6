#include "workbench/desktop/peers/Controls.h"

#include <QLineEdit>
#include <QStyleOptionSpinBox>

namespace qor::desktop {

void PushControl::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QPushButton::keyPressEvent(event);
}

void RadioControl::keyPressEvent(QKeyEvent* event) {
    const auto arrow = onArrow;
    switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_Right:
        arrow(1);
        break;
    case Qt::Key_Up:
    case Qt::Key_Left:
        arrow(-1);
        break;
    default:
        QRadioButton::keyPressEvent(event);
    }
}

SpinControl::SpinControl(QWidget* parent) : QAbstractSpinBox(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
}

void SpinControl::show(const QString& text) {
    shown_ = text;
    if (lineEdit()->text() != text)
        lineEdit()->setText(text);
}

bool SpinControl::isEdited() const {
    return lineEdit()->text() != shown_;
}

QString SpinControl::typed() const {
    return lineEdit()->text();
}

void SpinControl::setTextWidth(int characters) {
    textWidth_ = characters;
    updateGeometry();
}

void SpinControl::stepBy(int steps) {
    const auto step = onStep;
    step(steps);
}

QSize SpinControl::sizeHint() const {
    constexpr int naturalCharacters = 7;
    constexpr int cursor = 4;
    ensurePolished();
    const int characters = textWidth_ > 0 ? textWidth_ : naturalCharacters;
    const QFontMetrics metrics = fontMetrics();
    const int width = metrics.horizontalAdvance(QLatin1Char('0')) * (characters + 1) + cursor;
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_SpinBox, &option,
                                     QSize(width, lineEdit()->sizeHint().height()), this);
}

QSize SpinControl::minimumSizeHint() const {
    return sizeHint();
}

} // namespace qor::desktop
