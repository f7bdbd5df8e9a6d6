#include "workbench/desktop/theme/Icon.h"

#include "workbench/desktop/theme/Theme.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace qor::desktop {

namespace {

QString pathOf(const QString& name) {
    return QStringLiteral(":/qor/icons/%1.svg").arg(name);
}

QByteArray drawing(const QString& name) {
    QFile file(pathOf(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray recolored(QByteArray svg, const QColor& ink) {
    const Colors& colors = Theme::colors();
    const bool off = ink == colors.disabled; // then without colours of its own
    const auto put = [&](const char* from, const QColor& to) {
        svg.replace(from, (off ? ink : to).name(QColor::HexRgb).toLatin1());
    };
    put("#0000ff", colors.accent);
    put("#00ff00", colors.field);
    put("#ff0000", colors.danger);
    put("#ffff00", colors.warning);
    put("#000000", ink);
    return svg;
}

/// Draws an icon each time anew for the theme, the state and the resolution asked for.
class ThemeIconEngine : public QIconEngine {
public:
    explicit ThemeIconEngine(QString name) : name_(std::move(name)) {}

    void
    paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal ratio = painter->device()->devicePixelRatioF();
        const QPixmap pixmap = draw(rect.size() * ratio, mode, state);
        painter->drawPixmap(rect, pixmap);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return draw(size, mode, state);
    }

    QPixmap scaledPixmap(const QSize& size,
                         QIcon::Mode mode,
                         QIcon::State state,
                         qreal /*scale*/) override {
        return draw(size, mode, state);
    }

    [[nodiscard]] QIconEngine* clone() const override { return new ThemeIconEngine(name_); }

private:
    [[nodiscard]] QPixmap draw(const QSize& size, QIcon::Mode mode, QIcon::State state) const {
        const Colors& colors = Theme::colors();
        QColor ink = colors.text;
        if (mode == QIcon::Disabled)
            ink = colors.disabled;
        else if (mode == QIcon::Selected)
            ink = colors.accentText;
        else if (state == QIcon::On)
            ink = colors.accent;
        QPixmap pixmap = iconPixmap(name_, size.width(), 1.0, ink);
        return pixmap;
    }

    QString name_;
};

} // namespace

QPixmap iconPixmap(const QString& name, int size, qreal pixelRatio, const QColor& ink) {
    const int pixels = qRound(size * pixelRatio);
    const QString key = QStringLiteral("qor/%1/%2/%3/%4")
                            .arg(name)
                            .arg(pixels)
                            .arg(ink.rgba(), 0, 16)
                            .arg(int(Theme::colors().dark));
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QPixmap(pixels, pixels);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        QSvgRenderer renderer(recolored(drawing(name), ink));
        if (renderer.isValid())
            renderer.render(&painter);
        painter.end();
        QPixmapCache::insert(key, pixmap);
    }
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

QIcon icon(const QString& name) {
    if (name.isEmpty() || !QFile::exists(pathOf(name)))
        return {};
    return QIcon(new ThemeIconEngine(name));
}

} // namespace qor::desktop
