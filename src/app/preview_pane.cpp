#include "app/preview_pane.h"

#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSlider>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "platform/zo_exception.h"

namespace {

/// Minutes, seconds and hundredths ("0:01.25").
QString TimeText(int64_t ms) {
    return QStringLiteral("%1:%2.%3")
        .arg(ms / 60000)
        .arg(ms / 1000 % 60, 2, 10, QLatin1Char('0'))
        .arg(ms / 10 % 100, 2, 10, QLatin1Char('0'));
}

}  // namespace

/// Paints the current frame centred, as large as fits with the movie's aspect.
class TeskPreviewPane::Canvas final : public QWidget {
  public:
    explicit Canvas(TeskPreviewPane& pane) : pane_(pane) {
        setObjectName(QStringLiteral("previewCanvas"));
        setMinimumSize(120, 120);
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

    /// The scale that fits the stage into the canvas.
    double FitScale(const ZoMoviePlayer& player) const {
        const double scale = std::min(static_cast<double>(width()) / player.Width(),
                                      static_cast<double>(height()) / player.Height());
        return std::max(scale, 0.01);
    }

    void SetMessage(const QString& message) {
        message_ = message;
        update();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), palette().color(QPalette::Dark));
        const ZoRgbaImage& picture = pane_.picture_;
        if (picture.width > 0 && pane_.player_) {
            const QImage image(picture.rgba.data(), picture.width, picture.height,
                               picture.width * 4, QImage::Format_RGBA8888);
            painter.drawImage((width() - picture.width) / 2, (height() - picture.height) / 2,
                              image);
            return;
        }
        painter.setPen(palette().color(QPalette::BrightText));
        painter.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap,
                         message_);
    }

    void resizeEvent(QResizeEvent*) override { pane_.RenderCurrentFrame(); }

  private:
    TeskPreviewPane& pane_;
    QString message_ = QStringLiteral("Building the preview...");
};

TeskPreviewPane::TeskPreviewPane(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("previewPane"));
    canvas_ = new Canvas(*this);
    slider_ = new QSlider(Qt::Horizontal);
    slider_->setObjectName(QStringLiteral("frameSlider"));
    slider_->setRange(1, 1);
    playPause_ = new QPushButton;
    playPause_->setObjectName(QStringLiteral("playPause"));
    playPause_->setToolTip(QStringLiteral("Play/Pause"));
    auto* stop = new QPushButton(style()->standardIcon(QStyle::SP_MediaStop), QString());
    stop->setObjectName(QStringLiteral("stop"));
    stop->setToolTip(QStringLiteral("Stop"));
    frameReadOut_ = new QLabel;
    frameReadOut_->setObjectName(QStringLiteral("frameReadOut"));
    timeReadOut_ = new QLabel;
    timeReadOut_->setObjectName(QStringLiteral("timeReadOut"));

    auto* controls = new QHBoxLayout;
    controls->addWidget(playPause_);
    controls->addWidget(stop);
    controls->addWidget(slider_, 1);
    auto* readOuts = new QHBoxLayout;
    readOuts->addWidget(new QLabel(QStringLiteral("Frame:")));
    readOuts->addWidget(frameReadOut_, 1);
    readOuts->addWidget(new QLabel(QStringLiteral("Time:")));
    readOuts->addWidget(timeReadOut_, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Preview:")));
    layout->addWidget(canvas_, 1);
    layout->addLayout(controls);
    layout->addLayout(readOuts);

    connect(playPause_, &QPushButton::clicked, this, [this] { playing_ ? Pause() : Play(); });
    connect(stop, &QPushButton::clicked, this, &TeskPreviewPane::Stop);
    connect(slider_, &QSlider::sliderPressed, this, &TeskPreviewPane::SliderPressed);
    connect(slider_, &QSlider::sliderReleased, this, &TeskPreviewPane::SliderReleased);
    connect(slider_, &QSlider::actionTriggered, this,
            [this] { ShowFrame(slider_->sliderPosition() - 1); });
    connect(&pollTimer_, &QTimer::timeout, this, &TeskPreviewPane::PollPreview);
    connect(&playTimer_, &QTimer::timeout, this, &TeskPreviewPane::AdvanceFrame);
    playTimer_.setTimerType(Qt::PreciseTimer);
    pollTimer_.start(kPollMilliseconds);
    Play();
}

TeskPreviewPane::~TeskPreviewPane() = default;

int32_t TeskPreviewPane::GetFrameCount() const noexcept {
    return player_ ? player_->FrameCount() : 0;
}

void TeskPreviewPane::RequestPreview(const TeskFile& document) {
    session_.RequestPreview(document);
    UpdateReadOuts();
}

void TeskPreviewPane::PollPreview() {
    if (const std::optional<std::filesystem::path> file = session_.PollPreview())
        LoadMovie(*file);
    else if (!player_ && !session_.LastError().empty())
        canvas_->SetMessage(QString::fromStdString(session_.LastError()));
    UpdateReadOuts();
}

void TeskPreviewPane::LoadMovie(const std::filesystem::path& file) {
    std::optional<ZoMoviePlayer> loaded;
    try {
        loaded.emplace(ZoMoviePlayer::FromFile(file));
    } catch (const ZoException& error) {
        canvas_->SetMessage(QString::fromUtf8(error.what()));
        return;
    }
    const auto newRate = static_cast<int32_t>(std::lround(loaded->FrameRate()));
    if (player_) {
        const auto oldRate = static_cast<int32_t>(std::lround(player_->FrameRate()));
        frame_ = TeskContinuationFrame(frame_, oldRate, newRate, loaded->FrameCount());
    } else {
        frame_ = 0;
    }
    player_ = std::move(loaded);
    playTimer_.setInterval(static_cast<int>(std::lround(1000.0 / std::max(newRate, 1))));
    slider_->setRange(1, player_->FrameCount());
    RenderCurrentFrame();
    emit previewLoaded();
}

void TeskPreviewPane::Play() {
    playing_ = true;
    playPause_->setIcon(style()->standardIcon(QStyle::SP_MediaPause));
    playTimer_.start();
}

void TeskPreviewPane::Pause() {
    playing_ = false;
    playPause_->setIcon(style()->standardIcon(QStyle::SP_MediaPlay));
    // A paused preview costs nothing but the poll.
    playTimer_.stop();
}

void TeskPreviewPane::Stop() {
    Pause();
    ShowFrame(0);
}

void TeskPreviewPane::ShowFrame(int32_t frame) {
    if (!player_)
        return;
    frame_ = std::clamp(frame, 0, player_->FrameCount() - 1);
    RenderCurrentFrame();
}

void TeskPreviewPane::AdvanceFrame() {
    if (player_)
        ShowFrame((frame_ + 1) % player_->FrameCount());
}

void TeskPreviewPane::RenderCurrentFrame() {
    if (!player_)
        return;
    player_->RenderFrameInto(frame_, canvas_->FitScale(*player_), picture_);
    if (!slider_->isSliderDown())
        slider_->setValue(frame_ + 1);
    UpdateReadOuts();
    canvas_->update();
}

void TeskPreviewPane::UpdateReadOuts() {
    if (!player_ || !session_.ShowsNewestRequest()) {
        frameReadOut_->clear();
        timeReadOut_->clear();
        return;
    }
    frameReadOut_->setText(QStringLiteral("%1 / %2").arg(frame_ + 1).arg(player_->FrameCount()));
    const double rate = std::max(player_->FrameRate(), 1.0);
    timeReadOut_->setText(TimeText(static_cast<int64_t>((frame_ + 1) * 1000 / rate)));
}

void TeskPreviewPane::SliderPressed() {
    playAfterDrag_ = playing_;
    if (playing_)
        Pause();
}

void TeskPreviewPane::SliderReleased() {
    ShowFrame(slider_->value() - 1);
    if (playAfterDrag_)
        Play();
}
