#include "workbench/desktop/frame/StartPage.h"

#include "platform/frame/QorCommandHeader.h"
#include "platform/text/QorMsgCatalog.h"
#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/theme/Icon.h"
#include "workbench/desktop/theme/Theme.h"

#include <QEvent>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

#include <string>

namespace qor::desktop {

namespace {

constexpr int recentCount = 5;
constexpr int columnWidth = 480;
constexpr int markSize = 64;

QString message(const char* key) {
    return toQt(QorMsgCatalog::BuildMessage("QorDesktop", key));
}

void start(const std::string& command) {
    const QorVar<QorCommandHeader> header(QorCommandHeader::GetHeaderFromList(command));
    if (header)
        (void)header->UserStart();
}

/// A title without the mark and number that reach it in a menu: "&1 gear.stp" is "gear.stp".
QString nameOf(const QString& title) {
    static const QRegularExpression number(QStringLiteral("^(&\\d|\\d&\\d) "));
    return QString(title).remove(number);
}

QLabel* centredLabel(QWidget* parent, const QString& text, qreal scale, QFont::Weight weight) {
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setWeight(weight);
    label->setFont(font);
    label->setAlignment(Qt::AlignHCenter);
    return label;
}

} // namespace

StartPage::StartPage(QWidget* parent)
    : QWidget(parent)
    , mark_(new QLabel(this))
    , recentTitle_(new QLabel(message("RecentFiles"), this))
    , open_(new QPushButton(this)) {
    constexpr int gap = 12;
    setObjectName(QStringLiteral("startPage"));
    auto* column = new QVBoxLayout;
    column->setSpacing(gap);
    column->addStretch(2);
    mark_->setAlignment(Qt::AlignHCenter);
    column->addWidget(mark_);
    column->addSpacing(gap);
    column->addWidget(centredLabel(this, message("EmptyDocument"), 1.5, QFont::DemiBold));
    auto* formats = centredLabel(this, message("ReadableFormats"), 1.0, QFont::Normal);
    formats->setWordWrap(true);
    formats->setForegroundRole(QPalette::PlaceholderText);
    column->addWidget(formats);
    column->addSpacing(gap);
    open_->setDefault(true);
    open_->setObjectName(QStringLiteral("startOpen"));
    QObject::connect(open_, &QPushButton::clicked, this, [] { start("Open"); });
    column->addWidget(open_, 0, Qt::AlignHCenter);
    column->addSpacing(2 * gap);
    recentTitle_->setForegroundRole(QPalette::PlaceholderText);
    column->addWidget(recentTitle_);
    auto* list = new QVBoxLayout;
    list->setSpacing(2);
    for (int i = 1; i <= recentCount; ++i) {
        auto* entry = new QPushButton(this);
        entry->setFlat(true);
        entry->setIcon(icon(QStringLiteral("file")));
        entry->setCursor(Qt::PointingHandCursor);
        const std::string command = "RecentFile" + std::to_string(i);
        QObject::connect(entry, &QPushButton::clicked, this, [command] { start(command); });
        entry->setStyleSheet(QStringLiteral("text-align: left"));
        recent_.push_back(entry);
        list->addWidget(entry);
    }
    column->addLayout(list);
    column->addStretch(3);
    auto* middle = new QWidget(this);
    middle->setLayout(column);
    middle->setFixedWidth(columnWidth);
    auto* row = new QHBoxLayout(this);
    row->addWidget(middle, 0, Qt::AlignHCenter);
    refresh();
    drawMark();
}

void StartPage::refresh() {
    const auto show = [this](QPushButton& button, const std::string& command) {
        QorCommandHeader* header = QorCommandHeader::GetHeaderFromList(command);
        const QString title = header != nullptr ? toQt(header->GetTitle()) : QString();
        if (header != nullptr)
            header->GetCallbackManager()->AddCallback(this, QorCommandHeader::HeaderModifiedEvent,
                                                      &StartPage::modified);
        button.setText(nameOf(title));
        button.setToolTip(header != nullptr ? toQt(header->GetLongHelp()) : QString());
        button.setEnabled(header != nullptr && header->IsAvailable());
        button.setVisible(!title.isEmpty());
        return !title.isEmpty();
    };
    show(*open_, "Open");
    bool any = false;
    for (std::size_t i = 0; i < recent_.size(); ++i)
        any = show(*recent_[i], "RecentFile" + std::to_string(i + 1)) || any;
    recentTitle_->setVisible(any);
}

void StartPage::modified(QorEventName /*event*/,
                         QorBaseUnknown* /*publisher*/,
                         QorNotification* /*notification*/,
                         QorSubscriberData /*data*/,
                         QorCallbackId /*cookie*/) {
    refresh();
}

void StartPage::drawMark() {
    mark_->setPixmap(iconPixmap(QStringLiteral("application"), markSize, devicePixelRatioF(),
                                Theme::colors().text));
}

void StartPage::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange)
        drawMark();
    QWidget::changeEvent(event);
}

void StartPage::paintEvent(QPaintEvent* event) {
    const Colors& colors = Theme::colors();
    QPainter painter(this);
    painter.fillRect(event->rect(), colors.dark ? colors.field : colors.window.darker(103));
}

} // namespace qor::desktop
