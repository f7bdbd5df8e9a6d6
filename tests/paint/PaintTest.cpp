#include "tests/paint/PaintTest.h"

#include <QGuiApplication>
#include <QPainter>

#include <array>
#include <cstdlib>

namespace qor::paint {

void PaintTest::paintOn(QImage& image, const Qor2DViewpoint& viewpoint) {
    QPainter painter(&image);
    paintPlane(painter, viewpoint, surface, pictures);
    painter.end();
    pictures.endFrame();
}

QRect PaintTest::inked(const QImage& image) {
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != black)
                box |= QRect(x, y, 1, 1);
    return box;
}

int PaintTest::count(const QImage& image, QRgb color) {
    int found = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            found += image.pixel(x, y) == color ? 1 : 0;
    return found;
}

QorPixelImage_var makeGradient(int width, int height, int channels, int alpha) {
    auto pixels = std::make_shared<QorPixelImage::Pixels>();
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            pixels->insert(pixels->end(), {static_cast<std::uint8_t>(x),
                                           static_cast<std::uint8_t>(y), std::uint8_t{7}});
            if (channels == 4)
                pixels->push_back(static_cast<std::uint8_t>(alpha));
        }
    return QorMake<QorPixelImage>(width, height, channels, std::move(pixels));
}

} // namespace qor::paint

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    setenv("QT_QPA_PLATFORM", "offscreen", 1); // before any thread
    const QGuiApplication qt(count, arguments);
    return RUN_ALL_TESTS();
}
