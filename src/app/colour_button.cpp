#include "app/colour_button.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QToolButton>
#include <QWidgetAction>
#include <algorithm>
#include <deque>

namespace {

constexpr int kPaletteColumns = 8;
constexpr size_t kRecentCount = 8;

// Greys, then the full colours, then their tints and shades: the palette
// office and drawing programs have taught designers to expect.
constexpr COLORREF kPalette[] = {
    ZoRGB(0, 0, 0),       ZoRGB(64, 64, 64),    ZoRGB(128, 128, 128), ZoRGB(160, 160, 160),
    ZoRGB(192, 192, 192), ZoRGB(224, 224, 224), ZoRGB(240, 240, 240), ZoRGB(255, 255, 255),
    ZoRGB(255, 0, 0),     ZoRGB(255, 128, 0),   ZoRGB(255, 255, 0),   ZoRGB(0, 255, 0),
    ZoRGB(0, 255, 255),   ZoRGB(0, 0, 255),     ZoRGB(128, 0, 255),   ZoRGB(255, 0, 255),
    ZoRGB(255, 153, 153), ZoRGB(255, 204, 153), ZoRGB(255, 255, 153), ZoRGB(153, 255, 153),
    ZoRGB(153, 255, 255), ZoRGB(153, 153, 255), ZoRGB(204, 153, 255), ZoRGB(255, 153, 255),
    ZoRGB(128, 0, 0),     ZoRGB(128, 64, 0),    ZoRGB(128, 128, 0),   ZoRGB(0, 128, 0),
    ZoRGB(0, 128, 128),   ZoRGB(0, 0, 128),     ZoRGB(64, 0, 128),    ZoRGB(128, 0, 128),
};

/// Shared by every button of the session, newest first.
std::deque<COLORREF>& RecentColours() {
    static std::deque<COLORREF> recent;
    return recent;
}

void Remember(COLORREF colour) {
    auto& recent = RecentColours();
    recent.erase(std::remove(recent.begin(), recent.end(), colour), recent.end());
    recent.push_front(colour);
    if (recent.size() > kRecentCount)
        recent.pop_back();
}

QString Describe(COLORREF colour) {
    if (colour == kZoNoColour)
        return QStringLiteral("Transparent");
    return TeskToQColor(colour).name(QColor::HexRgb).toUpper();
}

/// A swatch; "no colour" is white crossed out in red.
QPixmap Swatch(COLORREF colour, QSize size) {
    QPixmap swatch(size);
    swatch.fill(colour == kZoNoColour ? QColor(Qt::white) : TeskToQColor(colour));
    QPainter painter(&swatch);
    if (colour == kZoNoColour) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Qt::red, 1.5));
        painter.drawLine(QPointF(0, size.height()), QPointF(size.width(), 0));
    }
    painter.setPen(Qt::gray);
    painter.drawRect(0, 0, size.width() - 1, size.height() - 1);
    return swatch;
}

}  // namespace

QColor TeskToQColor(COLORREF colour) {
    return QColor(ZoGetRed(colour), ZoGetGreen(colour), ZoGetBlue(colour));
}

COLORREF TeskFromQColor(const QColor& colour) {
    return ZoRGB(static_cast<uint8_t>(colour.red()), static_cast<uint8_t>(colour.green()),
                 static_cast<uint8_t>(colour.blue()));
}

TeskColourButton::TeskColourButton(COLORREF colour, QWidget* parent, bool allowTransparent)
    : QPushButton(parent),
      colour_(colour),
      allowTransparent_(allowTransparent),
      palette_(new QMenu(this)) {
    SetColour(colour);
    setMenu(palette_);
    connect(palette_, &QMenu::aboutToShow, this, &TeskColourButton::RebuildPalette);
}

void TeskColourButton::SetColour(COLORREF colour) {
    colour_ = colour;
    const QPixmap swatch = Swatch(colour, {32, 16});
    setIcon(QIcon(swatch));
    setIconSize(swatch.size());
    setToolTip(Describe(colour));
}

void TeskColourButton::Choose(COLORREF colour) {
    palette_->close();
    if (colour != kZoNoColour)
        Remember(colour);
    SetColour(colour);
    emit colourChosen(colour);
}

void TeskColourButton::ChooseMore() {
    const QColor start = colour_ == kZoNoColour ? QColor(Qt::white) : TeskToQColor(colour_);
    const QColor chosen = QColorDialog::getColor(start, this);
    if (chosen.isValid())
        Choose(TeskFromQColor(chosen));
}

void TeskColourButton::RebuildPalette() {
    palette_->clear();
    auto* grid = new QWidget;
    auto* layout = new QGridLayout(grid);
    layout->setSpacing(2);
    int row = 0;
    auto addRow = [&](auto begin, auto end) {
        int column = 0;
        for (auto it = begin; it != end; ++it) {
            const COLORREF colour = *it;
            auto* swatch = new QToolButton;
            swatch->setAutoRaise(true);
            swatch->setIcon(QIcon(Swatch(colour, {16, 16})));
            swatch->setToolTip(Describe(colour));
            swatch->setCheckable(true);
            swatch->setChecked(colour == colour_);
            connect(swatch, &QToolButton::clicked, this, [this, colour] { Choose(colour); });
            layout->addWidget(swatch, row, column);
            if (++column == kPaletteColumns) {
                column = 0;
                ++row;
            }
        }
        if (column != 0)
            ++row;
    };
    addRow(std::begin(kPalette), std::end(kPalette));
    const auto& recent = RecentColours();
    if (!recent.empty()) {
        layout->addWidget(new QLabel(QStringLiteral("Recent")), row++, 0, 1, kPaletteColumns);
        addRow(recent.begin(), recent.end());
    }
    auto* action = new QWidgetAction(palette_);
    action->setDefaultWidget(grid);
    palette_->addAction(action);
    palette_->addSeparator();
    if (allowTransparent_) {
        QAction* transparent = palette_->addAction(QIcon(Swatch(kZoNoColour, {16, 16})),
                                                   QStringLiteral("Transparent"));
        transparent->setObjectName(QStringLiteral("transparentColour"));
        connect(transparent, &QAction::triggered, this, [this] { Choose(kZoNoColour); });
    }
    QAction* more = palette_->addAction(QStringLiteral("More Colours..."));
    more->setObjectName(QStringLiteral("moreColours"));
    connect(more, &QAction::triggered, this, &TeskColourButton::ChooseMore);
}
