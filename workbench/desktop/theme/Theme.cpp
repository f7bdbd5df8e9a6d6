#include "workbench/desktop/theme/Theme.h"

#include "workbench/desktop/theme/WorkbenchStyle.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QPixmapCache>

#include <utility>

namespace qor::desktop {

namespace {

const Colors* theColors = nullptr;

/// The system's palette says what its theme is: light text on something darker is a dark one.
bool isDark(const QPalette& palette) {
    return palette.color(QPalette::WindowText).lightness() >
           palette.color(QPalette::Window).lightness();
}

QFont programFont() {
    constexpr qreal leastPointSize = 10.0;
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    if (font.pointSizeF() > 0.0 && font.pointSizeF() < leastPointSize)
        font.setPointSizeF(leastPointSize);
    return font;
}

} // namespace

std::optional<ThemeChoice> themeNamed(const QString& name) {
    if (name == QLatin1String("system"))
        return ThemeChoice::System;
    if (name == QLatin1String("light"))
        return ThemeChoice::Light;
    if (name == QLatin1String("dark"))
        return ThemeChoice::Dark;
    return std::nullopt;
}

/// Hears when the desktop around the program changes its theme.
class Theme::SystemWatcher : public QObject {
public:
    explicit SystemWatcher(Theme& theme) : theme_(theme) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::ThemeChange && !std::exchange(looking_, true)) {
            QApplication::setPalette(QPalette()); // gives the system's own back
            theme_.systemIsDark_ = isDark(QApplication::palette());
            theme_.apply();
            looking_ = false;
        }
        return QObject::eventFilter(object, event);
    }

private:
    Theme& theme_;
    bool looking_ = false;
};

Theme::Theme(ThemeChoice choice)
    : choice_(choice)
    , systemIsDark_(isDark(QApplication::palette()))
    , watcher_(std::make_unique<SystemWatcher>(*this)) {
    QApplication::setStyle(new WorkbenchStyle);
    QApplication::setFont(programFont());
    apply();
}

Theme::~Theme() {
    theColors = nullptr;
}

void Theme::choose(ThemeChoice choice) {
    choice_ = choice;
    apply();
}

void Theme::apply() {
    const bool dark =
        choice_ == ThemeChoice::Dark || (choice_ == ThemeChoice::System && systemIsDark_);
    theColors = dark ? &Colors::darkOnes() : &Colors::light();
    QPixmapCache::clear();
    QApplication::setPalette(theColors->palette());
}

const Colors& Theme::colors() {
    return theColors != nullptr ? *theColors : Colors::light();
}

} // namespace qor::desktop
