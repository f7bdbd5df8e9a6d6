#pragma once

#include <QAbstractSpinBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>

#include <functional>

namespace qor::desktop {

/// A push button that Enter presses too while it has the keyboard.
class PushControl : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// A radio button whose group is decided elsewhere: an arrow key asks for the next or previous one.
class RadioControl : public QRadioButton {
public:
    using QRadioButton::QRadioButton;

    std::function<void(int)> onArrow; ///< +1 or -1

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// A spinner that holds no number: it shows a text and asks for steps.
class SpinControl : public QAbstractSpinBox {
public:
    explicit SpinControl(QWidget* parent);

    /// Shows \p text; what was being typed is given up.
    void show(const QString& text);

    /// Whether there is typed text that nobody was told of.
    [[nodiscard]] bool isEdited() const;

    [[nodiscard]] QString typed() const;

    /// Width of the text part in characters, 0 for the natural one.
    void setTextWidth(int characters);

    using QWidget::show;

    void stepBy(int steps) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    std::function<void(int)> onStep;
    StepEnabled possibleSteps = StepNone;

protected:
    [[nodiscard]] StepEnabled stepEnabled() const override { return possibleSteps; }

private:
    QString shown_;
    int textWidth_ = 0;
};

/// A slider or scroll bar that tells whether its handle is held by the mouse.
template <class Base>
class HeldControl : public Base {
public:
    using Base::Base;

    [[nodiscard]] bool isHeld() const { return held_; }

    std::function<void()> onRelease;

protected:
    void mousePressEvent(QMouseEvent* event) override {
        held_ = held_ || event->button() == Qt::LeftButton;
        Base::mousePressEvent(event);
    }

    void mouseReleaseEvent(QMouseEvent* event) override {
        Base::mouseReleaseEvent(event);
        if (event->button() != Qt::LeftButton || !held_)
            return;
        held_ = false;
        const auto released = onRelease;
        released();
    }

private:
    bool held_ = false;
};

} // namespace qor::desktop
