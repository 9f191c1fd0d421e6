#include "app/tip_of_the_day.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QStyle>
#include <QVBoxLayout>
#include <array>

namespace {

constexpr std::array<const char*, 12> kTips{
    "Every change you make can be undone: press Ctrl+Z to step back and Ctrl+Y to step "
    "forward again.",
    "Changes on an effect's page are applied two seconds after you stop, so dragging a slider "
    "back and forth is one step in the Undo list.",
    "Choose another effect from the list at the top of the window: its objects and timing "
    "carry over, so you can try several effects on the same pictures.",
    "Hold the first or last frame of an effect with the hold times beside its duration, to "
    "give people a moment to look at the picture.",
    "The Morph page shows the start and end objects with the same grid. Drag a point on one "
    "and it moves only there: put matching features on matching points.",
    "In the morph grid, hold Ctrl while dragging to move a whole row, or Shift to move a whole "
    "column. Right-click for more grid commands.",
    "3D effects have a Lighting panel: change where the light comes from, its colour and how "
    "strong the shadows are.",
    "Fit To Object in the Movie menu sizes the movie to the largest picture used by the "
    "effect.",
    "Quick Publish writes the movie again with the settings of your last Publish, without "
    "asking.",
    "Link URL makes the whole movie a link: people who click it go to the page you give.",
    "Turn the angle dials with the arrow keys for single degrees, or hold Shift for steps of "
    "15 degrees.",
    "Type times in seconds (1.5) or in milliseconds (1500 ms); either way they are stored "
    "exactly.",
};

QLabel* MakeHeading() {
    auto* heading = new QLabel(QStringLiteral("Did you know..."));
    QFont large = heading->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    heading->setFont(large);
    return heading;
}

}  // namespace

std::span<const char* const> TeskTipOfTheDay::Tips() {
    return kTips;
}

bool TeskTipOfTheDay::ShowsAtStartup(QSettings& settings) {
    return settings.value(QString::fromUtf8(kShowAtStartupKey), true).toBool();
}

TeskTipOfTheDay::TeskTipOfTheDay(QSettings& settings, QWidget* parent)
    : QDialog(parent), settings_(settings) {
    setWindowTitle(QStringLiteral("Tip of the Day"));
    auto* icon = new QLabel;
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(32, 32));
    text_ = new QLabel;
    text_->setObjectName(QStringLiteral("tipText"));
    text_->setWordWrap(true);
    text_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    text_->setMinimumSize(320, 80);
    showAtStartup_ = new QCheckBox(QStringLiteral("&Show tips at startup"));
    showAtStartup_->setChecked(ShowsAtStartup(settings_));
    auto* buttons = new QDialogButtonBox;
    QPushButton* next =
        buttons->addButton(QStringLiteral("&Next Tip"), QDialogButtonBox::ActionRole);
    buttons->addButton(QStringLiteral("&Close"), QDialogButtonBox::AcceptRole)->setDefault(true);
    connect(next, &QPushButton::clicked, this, &TeskTipOfTheDay::ShowNextTip);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* body = new QHBoxLayout;
    body->addWidget(icon, 0, Qt::AlignTop);
    auto* words = new QVBoxLayout;
    words->addWidget(MakeHeading());
    words->addWidget(text_, 1);
    body->addLayout(words, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    layout->addWidget(showAtStartup_);
    layout->addWidget(buttons);
    ShowTip(settings_.value(QString::fromUtf8(kNextTipKey), 0).toInt());
}

void TeskTipOfTheDay::ShowTip(int index) {
    const int count = static_cast<int>(kTips.size());
    // A stored place from a version with more tips starts again at the top.
    tip_ = index >= 0 && index < count ? index : 0;
    text_->setText(QString::fromUtf8(kTips[static_cast<size_t>(tip_)]));
}

void TeskTipOfTheDay::ShowNextTip() {
    ShowTip((tip_ + 1) % static_cast<int>(kTips.size()));
}

void TeskTipOfTheDay::done(int result) {
    settings_.setValue(QString::fromUtf8(kShowAtStartupKey), showAtStartup_->isChecked());
    settings_.setValue(QString::fromUtf8(kNextTipKey), (tip_ + 1) % static_cast<int>(kTips.size()));
    QDialog::done(result);
}
