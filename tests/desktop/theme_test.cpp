#include "tests/desktop/DesktopTest.h"
#include "workbench/desktop/theme/Colors.h"
#include "workbench/desktop/theme/Icon.h"

#include <QDirIterator>
#include <QLabel>
#include <QTextStream>

namespace qor::desktop::tests {

namespace {

struct Pair {
    const char* what;
    QColor Colors::*front;
    QColor Colors::*back;
    double least;
};

/// Method: WCAG 2.1, 1.4.3 for texts and 1.4.11 for edges and marks.
const Pair pairs[] = {
    {"text on a window", &Colors::text, &Colors::window, 4.5},
    {"text in a field", &Colors::text, &Colors::field, 4.5},
    {"text on a button", &Colors::text, &Colors::raised, 4.5},
    {"text on a button under the mouse", &Colors::text, &Colors::hover, 4.5},
    {"text on a button held down", &Colors::text, &Colors::pressed, 4.5},
    {"text on the accent", &Colors::accentText, &Colors::accent, 4.5},
    {"hints on a window", &Colors::muted, &Colors::window, 4.5},
    {"hints in a field", &Colors::muted, &Colors::field, 4.5},
    {"errors on a window", &Colors::danger, &Colors::window, 4.5},
    {"warnings on a window", &Colors::warning, &Colors::window, 4.5},
    {"edges on a window", &Colors::edge, &Colors::window, 3.0},
    {"edges of a field", &Colors::edge, &Colors::field, 3.0},
    {"the ring of focus on a window", &Colors::accent, &Colors::window, 3.0},
    {"the ring of focus in a field", &Colors::accent, &Colors::field, 3.0},
    {"the accent on a groove", &Colors::accent, &Colors::groove, 3.0},
};

TEST(ThemeColors, CanBeToldApart) {
    for (const Colors* colors : {&Colors::light(), &Colors::darkOnes()})
        for (const Pair& pair : pairs)
            EXPECT_GE(contrast(colors->*pair.front, colors->*pair.back), pair.least)
                << pair.what << (colors->dark ? ", dark" : ", light");
}

TEST(ThemeColors, AreNeutralWhereAPictureIsJudged) {
    for (const Colors* colors : {&Colors::light(), &Colors::darkOnes()})
        for (const QColor& grey : {colors->window, colors->field, colors->raised})
            EXPECT_LT(grey.hsvSaturationF(), 0.11F) << grey.name().toStdString();
}

class ThemeTest : public DesktopTest {};

TEST_F(ThemeTest, CanBeChangedWhileWindowsAreShown) {
    show();
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), Colors::light().window);
    desktop->theme().choose(ThemeChoice::Dark);
    settle();
    EXPECT_EQ(controlFor(window)->palette().color(QPalette::Window), Colors::darkOnes().window);
    desktop->theme().choose(ThemeChoice::System); // the test's display has the light one
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), Colors::light().window);
}

TEST_F(ThemeTest, IconsTakeItsColors) {
    const QImage light = icon("open").pixmap(24).toImage();
    desktop->theme().choose(ThemeChoice::Dark);
    const QImage dark = icon("open").pixmap(24).toImage();
    EXPECT_NE(light, dark);
    EXPECT_TRUE(icon("no such icon").isNull());
}

TEST_F(ThemeTest, IconsAreSharpAtEveryScale) {
    for (const qreal ratio : {1.0, 1.25, 1.5, 2.0}) {
        const QPixmap pixmap = icon("options").pixmap(QSize(24, 24), ratio);
        EXPECT_EQ(pixmap.width(), qRound(24 * ratio));
        EXPECT_DOUBLE_EQ(pixmap.devicePixelRatio(), ratio);
    }
}

TEST_F(ThemeTest, EveryIconOfTheProgramCanBeDrawn) {
    int count = 0;
    for (QDirIterator icons(":/qor/icons"); icons.hasNext(); ++count) {
        const QFileInfo file(icons.next());
        const QImage image = icon(file.completeBaseName()).pixmap(24).toImage();
        bool painted = false;
        for (int y = 0; y < image.height() && !painted; ++y)
            for (int x = 0; x < image.width() && !painted; ++x)
                painted = qAlpha(image.pixel(x, y)) > 100;
        EXPECT_TRUE(painted) << file.fileName().toStdString();
    }
    EXPECT_GT(count, 20);
}

TEST_F(ThemeTest, UpdatingTheDisplayPaintsAndDoesNothingElse) {
    class Painted : public QWidget {
    public:
        using QWidget::QWidget;
        int paints = 0;

    protected:
        void paintEvent(QPaintEvent* /*event*/) override { ++paints; }
    };

    show();
    auto* probe = new Painted(controlFor(window));
    probe->resize(20, 20);
    probe->show();
    settle();
    const int before = probe->paints;
    bool posted = false;
    loop.Post([&] { posted = true; });
    bool input = false;
    QObject context;
    QMetaObject::invokeMethod(
        &context, [&] { input = true; }, Qt::QueuedConnection);
    application->SetDisplayUpdater(Desktop::displayUpdater());
    probe->update();
    application->UpdateDisplay();
    EXPECT_EQ(probe->paints, before + 1);
    EXPECT_FALSE(posted);
    EXPECT_FALSE(input);
    settle();
    EXPECT_TRUE(posted);
}

TEST_F(ThemeTest, UpdatingTheDisplayLeavesNothingToPaintAgain) {
    class Requests : public QObject {
    public:
        int count = 0;

        bool eventFilter(QObject* /*object*/, QEvent* event) override {
            count += event->type() == QEvent::UpdateRequest ? 1 : 0;
            return false;
        }
    };

    show();
    settle();
    Requests requests;
    controlFor(window)->installEventFilter(&requests);
    application->SetDisplayUpdater(Desktop::displayUpdater());
    controlFor(window)->update();
    application->UpdateDisplay();
    settle();
    EXPECT_EQ(requests.count, 1);
    controlFor(window)->update();
    settle();
    EXPECT_EQ(requests.count, 2) << "what changes later is painted later";
}

} // namespace

} // namespace qor::desktop::tests
