#include "platform/dialog/QorDlgDialog.h"
#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/vis/QorPictureService.h"
#include "scenes/QorRdgIconList.h"
#include "scenes/QorRdgIconReps.h"
#include "scenes/QorRdgWorkers.h"
#include "tests/scenes/SceneTest.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cmath>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Hears what an icon list sends.
class ListOwner : public QorDlgFrame {
public:
    using QorDlgFrame::QorDlgFrame;

    void Watch(QorRdgIconList* iList) {
        AddAnalyseNotificationCB(this, iList, iList->GetSelectNotification(), &ListOwner::HeardCB);
        AddAnalyseNotificationCB(this, iList, iList->GetActivateNotification(),
                                 &ListOwner::HeardCB);
    }

    std::vector<std::string> heard;

private:
    void HeardCB(QorCommand* /*iSender*/, QorNotification* iNotification, QorSubscriberData) {
        heard.emplace_back(iNotification->IsA());
    }
};

/// Picture files that hold "WIDTHxHEIGHT", and a count of how many of them were read.
class FakePictures : public QorPictureService {
public:
    FakePictures() { Install(this); }

    ~FakePictures() override { Install(nullptr); }

    QorPixelImage* Read(const QorUnicodeString& iPath, QorUnicodeString& /*oError*/) override {
        std::ifstream file(iPath.Str());
        int width = 0;
        int height = 0;
        char by = 0;
        if (!(file >> width >> by >> height))
            return nullptr;
        ++reads;
        return Make(width, height);
    }

    QorPixelImage* ReadReduced(const QorUnicodeString& iPath,
                               int iSide,
                               int& oWidth,
                               int& oHeight,
                               QorUnicodeString& oError) override {
        QorPixelImage* whole =
            QorPictureService::ReadReduced(iPath, iSide, oWidth, oHeight, oError);
        askedSide = iSide;
        if (whole == nullptr || reduced.first == 0)
            return whole;
        whole->Release();
        return Make(reduced.first, reduced.second);
    }

    int Write(const QorPixelImage& iImage,
              const QorString& iFormat,
              const QorUnicodeString& iPath,
              QorUnicodeString& /*oError*/) override {
        EXPECT_EQ(iFormat, "JPEG");
        std::ofstream file(iPath.Str());
        file << iImage.GetWidth() << 'x' << iImage.GetHeight();
        return file ? 0 : 1;
    }

    QorPixelImage* Resize(const QorPixelImage& /*iImage*/, int iWidth, int iHeight) override {
        return Make(iWidth, iHeight);
    }

    std::atomic<int> reads = 0;
    std::atomic<int> askedSide = 0;
    std::pair<int, int> reduced; ///< size of what ReadReduced gives; 0 for the whole

private:
    static QorPixelImage* Make(int iWidth, int iHeight) {
        const auto size = static_cast<std::size_t>(iWidth) * static_cast<std::size_t>(iHeight) * 3;
        return new QorPixelImage(iWidth, iHeight, 3, std::make_shared<QorPixelImage::Pixels>(size));
    }
};

class IconList : public SceneTest {
protected:
    IconList()
        : dialog(new QorDlgDialog(nullptr, "dialog"))
        , owner(new ListOwner(dialog, "owner"))
        , list(new QorRdgIconList(owner, "iconList", 232.0F, 523.0F)) {
        owner->Watch(list);
        dialog->SetVisibility(QorDlgSHOW);
        drawing = dynamic_cast<Qor2DViewer*>(Child("viewer"));
        bar = dynamic_cast<QorDlgScrollBar*>(Child("scrollbar"));
    }

    void TearDown() override {
        dialog->RequestDelayedDestruction();
        SceneTest::TearDown();
    }

    QorDialog* Child(const std::string& iName) const {
        for (QorDialog* widget : list->GetWidgets())
            if (widget->GetName().Str() == iName)
                return widget;
        return nullptr;
    }

    /// Titles "0", "1", … without pictures.
    void Fill(int iCount) const {
        std::vector<QorUnicodeString> titles;
        for (int i = 0; i < iCount; ++i)
            titles.emplace_back(std::to_string(i));
        const std::vector<QorUnicodeString> images(titles.size());
        list->SetIcons(titles.data(), images.data(), iCount, -1, 64);
    }

    /// The icons and the highlight as they are drawn.
    [[nodiscard]] const std::vector<Qor2DRep_var>& Reps() const {
        const auto& reps = drawing->GetMain2DViewpoint()->GetRoot().GetChildren();
        return dynamic_cast<const Qor2DBagRep&>(*reps.at(0)).GetChildren();
    }

    [[nodiscard]] Qor2DBagRep& Icon(std::size_t i) const {
        return dynamic_cast<Qor2DBagRep&>(*Reps().at(i));
    }

    static std::string TitleOf(const Qor2DBagRep& iIcon) {
        const auto& rep = dynamic_cast<const Qor2DCustomRep&>(*iIcon.GetChildren().back());
        return rep.GetTexts().at(0).text.Str();
    }

    [[nodiscard]] std::vector<std::string> Titles() const {
        std::vector<std::string> titles;
        for (std::size_t i = 0; i < Reps().size(); ++i)
            titles.push_back(TitleOf(Icon(i)));
        return titles;
    }

    [[nodiscard]] double Top() const {
        double left = 0.0;
        double right = 0.0;
        double bottom = 0.0;
        double top = 0.0;
        drawing->GetViewBox(left, right, bottom, top);
        EXPECT_NEAR(left, 0.0, 1.0e-6);
        return std::round(top * 1000.0) / 1000.0;
    }

    [[nodiscard]] int Range() const {
        int min = 0;
        int max = 0;
        bar->GetScrollRange(min, max);
        EXPECT_EQ(min, 0);
        return max;
    }

    void Mouse(QorMouseEvent::Action iAction, double iX, double iY) const {
        QorMouseEvent event;
        event.action = iAction;
        event.button = QorMouseEvent::Button::Left;
        event.pixel = {iX, iY};
        drawing->HandleMouse(event);
    }

    void Click(double iX, double iY) const {
        Mouse(QorMouseEvent::Action::Press, iX, iY);
        Mouse(QorMouseEvent::Action::Release, iX, iY);
    }

    void DoubleClick(double iX, double iY) const {
        Click(iX, iY);
        Mouse(QorMouseEvent::Action::DoubleClick, iX, iY);
        Mouse(QorMouseEvent::Action::Release, iX, iY);
    }

    [[nodiscard]] int Selected() const {
        int selected = -1;
        list->GetSelection(selected);
        return selected;
    }

    QorDlgDialog* dialog;
    ListOwner* owner;
    QorRdgIconList* list;
    Qor2DViewer* drawing;
    QorDlgScrollBar* bar;
};

TEST_F(IconList, HasAsManyColumnsAsFit) {
    struct Row {
        float width;
        int columns;
    };

    Fill(3);
    EXPECT_EQ(list->GetColumnCount(), 2);
    for (const Row& row :
         {Row{222, 1}, Row{223, 2}, Row{346, 2}, Row{347, 3}, Row{50, 1}, Row{0, 1}}) {
        drawing->UserResizeViewer(row.width, 523.0F);
        EXPECT_EQ(list->GetColumnCount(), row.columns) << row.width;
    }
}

TEST_F(IconList, PutsIconsIntoCells) {
    Fill(5);
    EXPECT_EQ(Icon(0).GetTranslation(), (QorMathPoint2D{5, -5}));
    EXPECT_EQ(Icon(3).GetTranslation(), (QorMathPoint2D{129, -139}));
    drawing->UserResizeViewer(347.0F, 523.0F);
    EXPECT_EQ(Icon(3).GetTranslation(), (QorMathPoint2D{5, -139}));
    EXPECT_EQ(Icon(2).GetTranslation(), (QorMathPoint2D{253, -5}));
}

TEST_F(IconList, DrawsABoxAndATitle) {
    const QorUnicodeString title = "Ätelier";
    const QorUnicodeString image;
    list->SetIcons(&title, &image, 1, -1, 64);
    const auto& children = Icon(0).GetChildren();
    ASSERT_EQ(children.size(), 2U);
    const auto& box = dynamic_cast<const Qor2DCustomRep&>(*children[0]);
    EXPECT_EQ(box.GetRectangles().at(0).low, (QorMathPoint2D{0, -94}));
    EXPECT_EQ(box.GetRectangles().at(0).high, (QorMathPoint2D{93, -1}));
    EXPECT_EQ(box.GetAttributes().color, (QorColor{212, 208, 200}));
    const auto& text = dynamic_cast<const Qor2DCustomRep&>(*children[1]);
    EXPECT_EQ(text.GetTexts().at(0).position, (QorMathPoint2D{47, -97}));
    EXPECT_EQ(text.GetTexts().at(0).anchor, 7);
    EXPECT_EQ(text.GetTexts().at(0).height, 15.0);
    EXPECT_EQ(text.GetBoundingBox().low, (QorMathPoint2D{26, -112})); // seven characters
    EXPECT_EQ(text.GetBoundingBox().high, (QorMathPoint2D{68, -97}));
}

TEST_F(IconList, AddsInsertsAndReplaces) {
    struct Row {
        const char* title;
        int position;
        int mode;
        int result;
        std::vector<std::string> titles;
    };

    const std::vector<Row> rows = {
        {"a", -1, 64, 1, {"a"}},
        {"b", 1, 64, 2, {"a", "b"}},
        {"c", 0, 64, 0, {"c", "a", "b"}},
        {"d", 1, 128, 1, {"c", "d", "b"}},
        {"e", 3, 128, 4, {"c", "d", "b", "e"}},
        {"f", 5, 64, -1, {"c", "d", "b", "e"}},
        {"f", -2, 64, -1, {"c", "d", "b", "e"}},
        {"g", 3, 64, 3, {"c", "d", "b", "g", "e"}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(list->AddIcon(row.title, "", row.position, row.mode), row.result) << row.title;
        EXPECT_EQ(Titles(), row.titles);
        for (std::size_t i = 0; i < row.titles.size(); ++i)
            EXPECT_EQ(Icon(i).GetTranslation(), QorRdgIconReps::CellOrigin(static_cast<int>(i), 2));
    }
}

TEST_F(IconList, SetIconsRefusesNothingAtAll) {
    const QorUnicodeString text = "a";
    EXPECT_EQ(list->SetIcons(nullptr, &text, 1, -1, 64), -1);
    EXPECT_EQ(list->SetIcons(&text, nullptr, 1, -1, 64), -1);
    EXPECT_EQ(list->SetIcons(&text, &text, 0, -1, 64), -1);
}

TEST_F(IconList, SelectsAndDrawsTheHighlightOverTheIcon) {
    Fill(3);
    EXPECT_EQ(list->Select(1, QorDlgNoNotify), 1);
    EXPECT_EQ(Selected(), 1);
    ASSERT_EQ(Reps().size(), 4U);
    const Qor2DBagRep& highlight = Icon(3);
    EXPECT_EQ(highlight.GetTranslation(), Icon(1).GetTranslation());
    const auto& bars = dynamic_cast<const Qor2DCustomRep&>(*highlight.GetChildren().at(0));
    EXPECT_EQ(bars.GetAttributes().color, (QorColor{10, 36, 106}));
    const auto& quads = bars.GetQuads().at(0).quads;
    std::vector<std::vector<double>> boxes;
    for (const auto& quad : quads)
        boxes.push_back({quad[0].x, quad[2].x, quad[0].y, quad[2].y});
    EXPECT_THAT(boxes, ElementsAre(ElementsAre(-1, 95, -2, 1), ElementsAre(-1, 95, -95, -92),
                                   ElementsAre(-1, 2, -95, 1), ElementsAre(92, 95, -95, 1),
                                   ElementsAre(44, 50, -113, -98)));
    EXPECT_EQ(highlight.GetChildren().at(1)->GetAttributes().color, (QorColor{255, 255, 255}));
    EXPECT_EQ(TitleOf(highlight), "1");
    EXPECT_THAT(owner->heard, IsEmpty());
    list->Select(0, QorDlgDoNotify);
    EXPECT_EQ(Reps().size(), 4U);
    EXPECT_THAT(owner->heard, ElementsAre("QorDlgListSelectNotification"));
    list->AddIcon("3", "", -1, 64);
    EXPECT_EQ(TitleOf(Icon(4)), "0"); // still on top
}

TEST_F(IconList, TitlesAreDrawnWithinTheirPlateAndBetweenTheirNeighbours) {
    struct Row {
        const char* title;
        double width;
    };

    for (const Row& row : {Row{"Sky", 18.0}, Row{"Studio soft box", 90.0},
                           Row{"A scene with a very long title", 104.0}}) {
        const QorVar<Qor2DBagRep> icon = QorRdgIconReps::MakeIcon(row.title);
        const QorVar<Qor2DBagRep> highlight = QorRdgIconReps::MakeHighlight(row.title);
        for (const auto& bag : {icon, highlight}) {
            const auto& title =
                dynamic_cast<const Qor2DCustomRep&>(*bag->GetChildren().back()).GetTexts().at(0);
            EXPECT_EQ(title.text, row.title) << "whole for whoever reads it";
            EXPECT_DOUBLE_EQ(title.maxWidth, row.width);
        }
    }
}

TEST_F(IconList, FollowsTheMouse) {
    struct Row {
        double x;
        double y;
        int selected;
    };

    Fill(3);
    for (const Row& row : {Row{50, 50, 0}, Row{150, 50, 1}, Row{150, 50, 1}, Row{50, 190, 2},
                           Row{52, 106, 0}, Row{180, 400, -1}, Row{115, 50, -1}}) {
        owner->heard.clear();
        Click(row.x, row.y);
        EXPECT_EQ(Selected(), row.selected) << row.x << ' ' << row.y;
        EXPECT_THAT(owner->heard, ElementsAre("QorDlgListSelectNotification"));
    }
    owner->heard.clear();
    DoubleClick(150, 50);
    EXPECT_EQ(Selected(), 1);
    EXPECT_THAT(owner->heard,
                ElementsAre("QorDlgListSelectNotification", "QorDlgListActivateNotification"));
    owner->heard.clear();
    DoubleClick(180, 400);
    EXPECT_EQ(Selected(), -1);
    EXPECT_THAT(owner->heard,
                ElementsAre("QorDlgListSelectNotification", "QorDlgListActivateNotification"));
    EXPECT_EQ(Reps().size(), 3U);
}

TEST_F(IconList, SizesTheScrollBar) {
    struct Row {
        int added;
        float height;
        int range;
        bool shown;
    };

    EXPECT_EQ(bar->GetVisibility(), QorDlgHIDE);
    for (const Row& row : {Row{5, 523, 909, true}, Row{2, 936, 936, false}, Row{0, 935, 936, true},
                           Row{2, 963, 963, false}}) {
        Fill(row.added);
        drawing->UserResizeViewer(232.0F, row.height);
        EXPECT_EQ(Range(), row.range);
        EXPECT_EQ(bar->GetScrollBoxSize(), static_cast<int>(row.height));
        EXPECT_EQ(bar->GetVisibility() == QorDlgSHOW, row.shown) << row.height;
        EXPECT_EQ(bar->GetScrollPos(), 0);
    }
}

TEST_F(IconList, ScrollsByItsBar) {
    struct Row {
        int wanted;
        int position;
        double top;
    };

    Fill(40); // 20 rows: 1368
    ASSERT_EQ(Range(), 1368);
    for (const Row& row :
         {Row{100, 100, -261}, Row{845, 845, -2210}, Row{1300, 845, -2210}, Row{0, 0, 0}}) {
        bar->UserSetPosition(row.wanted);
        EXPECT_EQ(bar->GetScrollPos(), row.position);
        EXPECT_EQ(Top(), row.top);
    }
}

TEST_F(IconList, TheBarFollowsTheView) {
    struct Row {
        double wanted;
        double top;
        int position;
    };

    Fill(40);
    for (const Row& row :
         {Row{-261, -261, 99}, Row{-5000, -2210, 845}, Row{300, 0, 0}, Row{-100, -100, 38}}) {
        drawing->SetViewBox(0.0, 232.0, row.wanted - 523.0, row.wanted);
        EXPECT_EQ(Top(), row.top);
        EXPECT_EQ(bar->GetScrollPos(), row.position);
    }
}

TEST_F(IconList, ScrollsToARow) {
    Fill(40);
    EXPECT_EQ(list->ScrollToRow(0), 0);
    EXPECT_EQ(list->ScrollToRow(21), 0);
    EXPECT_EQ(Top(), 0.0);
    EXPECT_EQ(list->ScrollToRow(3), 1);
    EXPECT_EQ(Top(), -407.0);
    EXPECT_EQ(bar->GetScrollPos(), 155);
    drawing->UserResizeViewer(240.0F, 600.0F); // the row stays where it is
    EXPECT_EQ(Top(), -407.0);
    EXPECT_EQ(bar->GetScrollPos(), 178);
}

TEST_F(IconList, ScrollsByTheWheel) {
    Fill(40);
    QorMouseEvent event;
    event.action = QorMouseEvent::Action::Wheel;
    event.wheelSteps = -2.0;
    EXPECT_TRUE(drawing->HandleMouse(event));
    EXPECT_EQ(Top(), -134.0);
    event.wheelSteps = 20.0;
    drawing->HandleMouse(event);
    EXPECT_EQ(Top(), 0.0);
}

TEST_F(IconList, OutlivesItsViewer) {
    Fill(3);
    list->Select(1, QorDlgNoNotify);
    drawing->RequestDelayedDestruction();
    loop.RunPosted();
    EXPECT_EQ(list->Select(0, QorDlgDoNotify), 0);
    EXPECT_EQ(list->AddIcon("a", "", -1, 64), -1);
    EXPECT_EQ(list->ScrollToRow(1), 0);
    const QorUnicodeString text = "a";
    EXPECT_EQ(list->SetIcons(&text, &text, 1, -1, 64), 1); // a refused icon counts
    bar->UserSetPosition(3);
}

/// The same with picture files and a private temporary directory.
class Thumbnails : public IconList {
protected:
    void Show(const std::vector<std::string>& iImages) const {
        const std::vector<QorUnicodeString> titles(iImages.size());
        const std::vector<QorUnicodeString> images(iImages.begin(), iImages.end());
        list->SetIcons(titles.data(), images.data(), static_cast<int>(images.size()), -1, 64);
        QorRdgWorkers::Finish();
    }

    /// Size and place of an icon's thumbnail; zeros when it has none.
    [[nodiscard]] std::vector<double> Shown(std::size_t i) const {
        const auto* image =
            dynamic_cast<const Qor2DImagePixelRep*>(Icon(i).GetChildren().front().Get());
        if (image == nullptr)
            return {0, 0, 0, 0};
        return {image->GetSize().x, image->GetSize().y, image->GetPosition().x,
                image->GetPosition().y};
    }

    FakePictures pictures;
    QorScopedVariable temporary{"TMPDIR", directory.GetPath()};
};

TEST_F(Thumbnails, HaveALongerSideOf92AndAnEvenOther) {
    struct Row {
        int width;
        int height;
        std::pair<int, int> size;
    };

    for (const Row& row :
         {Row{300, 451, {60, 92}}, Row{500, 500, {92, 92}}, Row{1920, 1080, {92, 50}},
          Row{1080, 1920, {50, 92}}, Row{92, 91, {92, 90}}, Row{5000, 10, {92, 2}}})
        EXPECT_EQ(QorRdgThumbnails::GetSize(row.width, row.height), row.size);
}

TEST_F(Thumbnails, AreMadeOfASmallerVersionWithTheProportionsOfTheWhole) {
    const std::string path = directory.Write("large.jpg", "3000x4510");
    pictures.reduced = {150, 226}; // as a reader gives it that rounds
    Show({path});
    EXPECT_THAT(Shown(0), ElementsAre(60, 92, 17, -93));
    EXPECT_EQ(pictures.askedSide, 184);
}

TEST_F(Thumbnails, LieInTheMiddleOfTheBoxBelowEverythingElse) {
    Show({directory.Write("a.jpg", "300x451"), directory.Write("b.jpg", "1920x1080"), "", "none"});
    EXPECT_THAT(Shown(0), ElementsAre(60, 92, 17, -93));
    EXPECT_THAT(Shown(1), ElementsAre(92, 50, 1, -72));
    EXPECT_EQ(Icon(0).GetChildren().size(), 3U);
    EXPECT_EQ(Icon(2).GetChildren().size(), 2U);
    EXPECT_EQ(Icon(3).GetChildren().size(), 2U);
}

TEST_F(Thumbnails, AreKeptByNameAndSharedByPicturesOfOneName) {
    const std::string one = directory.Write("one/a.jpg", "300x451");
    const std::string other = directory.Write("other/a.jpg", "451x300");
    Show({one, other});
    EXPECT_THAT(directory.List(".icons"), ElementsAre("a.jpg"));
    EXPECT_EQ(Shown(0), Shown(1));
    EXPECT_EQ(pictures.reads, 2); // the first picture, then its thumbnail
    Show({other});
    EXPECT_EQ(Shown(2), Shown(0));
    EXPECT_EQ(pictures.reads, 3);
}

TEST_F(Thumbnails, ThatCannotBeReadOrKeptAreMadeAnew) {
    directory.Write(".icons/a.jpg", "rubbish");
    std::filesystem::create_directories(directory.GetPath(".icons/dir.jpg"));
    const std::string kept = directory.Write("b.jpg", "100x100");
    const std::string secret = directory.Write("elsewhere", "7x7");
    std::filesystem::create_symlink(secret, directory.GetPath(".icons/link.jpg"));
    Show({directory.Write("a.jpg", "100x100"), directory.Write("dir.jpg", "100x100"),
          directory.Write("link.jpg", "100x100"), kept});
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_THAT(Shown(i), ElementsAre(92, 92, 1, -93)) << i;
    EXPECT_EQ(directory.Read(".icons/a.jpg"), "92x92");
    EXPECT_EQ(directory.Read("elsewhere"), "7x7"); // a link is neither read nor written through
}

TEST_F(Thumbnails, AreShownWithoutADirectoryToKeepThem) {
    directory.Write(".icons", "a file in the way");
    Show({directory.Write("a.jpg", "100x100")});
    EXPECT_THAT(Shown(0), ElementsAre(92, 92, 1, -93));
}

TEST_F(Thumbnails, ThatArriveAfterTheListAreDropped) {
    const QorUnicodeString image = directory.Write("a.jpg", "100x100");
    list->SetIcons(&image, &image, 1, -1, 64);
    list->RequestDelayedDestruction();
    loop.RunPosted();
    QorRdgWorkers::Finish();
    EXPECT_EQ(QorRdgWorkers::CountPending(), 0U);
}

} // namespace
