#include "app/effect_chooser.h"

#include <QHBoxLayout>
#include <QImage>
#include <QListWidget>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <cmath>

#include "app/movie_view.h"
#include "document/file.h"
#include "effects/effect.h"
#include "flash/byte_stream.h"
#include "flash/swf_colour.h"
#include "flash/swf_frame.h"
#include "media/swf_movie.h"
#include "platform/zo_exception.h"

namespace {

constexpr int kSampleAspectWidth = 182;
constexpr int kSampleAspectHeight = 202;
constexpr int kSampleFrameRate = 12;
constexpr int kIconSize = 32;
const QSize kSampleArea(kSampleAspectWidth, kSampleAspectHeight);

COLORREF ToColourRef(const QColor& colour) {
    return ZoRGB(static_cast<uint8_t>(colour.red()), static_cast<uint8_t>(colour.green()),
                 static_cast<uint8_t>(colour.blue()));
}

/// The sample's middle frame, as large as fits a square icon.
QIcon IconOf(const ZoMoviePlayer& sample) {
    const double scale = static_cast<double>(kIconSize) / std::max(sample.Width(), sample.Height());
    const ZoRgbaImage frame = sample.RenderFrame(sample.FrameCount() / 2, scale);
    const QImage image(frame.rgba.data(), frame.width, frame.height, frame.width * 4,
                       QImage::Format_RGBA8888);
    QPixmap icon(kIconSize, kIconSize);
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    painter.drawImage((kIconSize - frame.width) / 2, (kIconSize - frame.height) / 2, image);
    return icon;
}

}  // namespace

QSize TeskEffectSampleSize(QSize area) noexcept {
    if (area.isEmpty())
        return {};
    return kSampleArea.scaled(area, Qt::KeepAspectRatio).expandedTo({1, 1});
}

ZoMoviePlayer TeskBuildEffectSample(TeskFile& document, int index, QSize size,
                                    COLORREF background) {
    ZoAutoPtr<TeskEffect> effect;
    TeskEffect::Create(index, effect);
    effect->SetFile(&document);
    TeskSWFMovie movie;
    movie.SetWidth(size.width());
    movie.SetHeight(size.height());
    movie.SetBackgroundColour(ZoFlash::ZoSWFColour(background, 255));
    movie.SetFrameRate(kSampleFrameRate);
    effect->CompileAlone(movie);
    if (movie.TotalFrames() == 0)
        movie.GetScene(0)->AddFrame();
    ZoFlash::ZoFMemorySink sink;
    movie.WriteMovie(sink);
    return ZoMoviePlayer(sink.Bytes());
}

TeskEffectChooserPopup::TeskEffectChooserPopup(TeskFile& document, QWidget* parent)
    : QFrame(parent, Qt::Popup), document_(document) {
    setObjectName(QStringLiteral("effectChooserPopup"));
    setFrameStyle(QFrame::Panel | QFrame::Raised);
    list_ = new QListWidget;
    list_->setObjectName(QStringLiteral("effectList"));
    list_->setIconSize({kIconSize, kIconSize});
    list_->setMouseTracking(true);
    list_->setMinimumWidth(170);
    for (int i = 0; i < TeskEffect::GetCount(); ++i)
        list_->addItem(QString::fromStdString(TeskEffect::GetInfo(i).name));
    view_ = new TeskMovieView;
    view_->setObjectName(QStringLiteral("effectSample"));
    view_->setFixedSize(kSampleArea);
    view_->SetBackground(palette().color(QPalette::Button));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(list_);
    layout->addWidget(view_);

    // The pointer highlights as it moves; a click or Enter chooses.
    connect(list_, &QListWidget::itemEntered, this,
            [this](QListWidgetItem* item) { list_->setCurrentItem(item); });
    connect(list_, &QListWidget::currentRowChanged, this, &TeskEffectChooserPopup::Highlight);
    connect(list_, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { emit effectChosen(list_->row(item)); });
    connect(list_, &QListWidget::itemActivated, this,
            [this](QListWidgetItem* item) { emit effectChosen(list_->row(item)); });
    playTimer_.setInterval(1000 / kSampleFrameRate);
    connect(&playTimer_, &QTimer::timeout, this, &TeskEffectChooserPopup::AdvanceSample);
    connect(&iconTimer_, &QTimer::timeout, this, &TeskEffectChooserPopup::DrawNextIcon);
}

void TeskEffectChooserPopup::Highlight(int index) {
    if (index < 0 || index >= list_->count())
        return;
    if (list_->currentRow() != index)
        list_->setCurrentRow(index);  // comes back here through the list
    sample_.reset();
    view_->ShowFrame(nullptr, 0);
    try {
        sample_.emplace(TeskBuildEffectSample(document_, index, TeskEffectSampleSize(view_->size()),
                                              ToColourRef(palette().color(QPalette::Button))));
    } catch (const ZoException& error) {
        view_->SetMessage(QString::fromUtf8(error.what()));
        return;
    }
    frame_ = 0;
    view_->ShowFrame(&*sample_, frame_);
}

int TeskEffectChooserPopup::GetHighlighted() const {
    return list_->currentRow();
}

bool TeskEffectChooserPopup::HasAllIcons() const noexcept {
    return nextIcon_ >= list_->count();
}

void TeskEffectChooserPopup::AdvanceSample() {
    if (!sample_)
        return;
    frame_ = (frame_ + 1) % sample_->FrameCount();
    view_->ShowFrame(&*sample_, frame_);
}

void TeskEffectChooserPopup::DrawNextIcon() {
    if (HasAllIcons()) {
        iconTimer_.stop();
        return;
    }
    const int index = nextIcon_++;
    try {
        const ZoMoviePlayer sample = TeskBuildEffectSample(
            document_, index, TeskEffectSampleSize({kIconSize, kIconSize}) * 2,
            ToColourRef(palette().color(QPalette::Button)));
        const QIcon icon = IconOf(sample);
        list_->item(index)->setIcon(icon);
        emit iconDrawn(index, icon);
    } catch (const ZoException&) {
        // A type that cannot build its sample is listed without a picture.
    }
}

void TeskEffectChooserPopup::showEvent(QShowEvent* event) {
    QFrame::showEvent(event);
    list_->setFocus();
    playTimer_.start();
    if (!HasAllIcons())
        iconTimer_.start(0);
}

void TeskEffectChooserPopup::hideEvent(QHideEvent* event) {
    QFrame::hideEvent(event);
    // A closed list costs nothing.
    playTimer_.stop();
    iconTimer_.stop();
}

TeskEffectChooserCombo::TeskEffectChooserCombo(TeskFile& document, QWidget* parent)
    : QComboBox(parent) {
    setObjectName(QStringLiteral("effectChooser"));
    for (int i = 0; i < TeskEffect::GetCount(); ++i)
        addItem(QString::fromStdString(TeskEffect::GetInfo(i).name));
    popup_ = new TeskEffectChooserPopup(document, this);
    connect(popup_, &TeskEffectChooserPopup::effectChosen, this, &TeskEffectChooserCombo::Choose);
    connect(popup_, &TeskEffectChooserPopup::iconDrawn, this,
            [this](int index, const QIcon& icon) { setItemIcon(index, icon); });
}

void TeskEffectChooserCombo::showPopup() {
    popup_->adjustSize();
    QPoint at = mapToGlobal(QPoint(0, height()));
    // Keep the list on the screen when the strip is near its right edge.
    if (const QScreen* shown = screen()) {
        const QRect area = shown->availableGeometry();
        at.setX(std::min(at.x(), area.right() - popup_->width() + 1));
    }
    popup_->move(at);
    popup_->show();
    popup_->Highlight(std::max(currentIndex(), 0));
}

void TeskEffectChooserCombo::hidePopup() {
    popup_->hide();
    QComboBox::hidePopup();
}

void TeskEffectChooserCombo::Choose(int index) {
    hidePopup();
    setCurrentIndex(index);
    emit activated(index);
}
