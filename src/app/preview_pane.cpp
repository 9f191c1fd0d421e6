#include "app/preview_pane.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "app/external_preview_window.h"
#include "app/player_menu.h"
#include "document/file.h"
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

TeskPreviewPane::TeskPreviewPane(QSettings& settings, QWidget* parent)
    : QWidget(parent), settings_(settings) {
    setObjectName(QStringLiteral("previewPane"));
    view_ = new TeskMovieView;
    view_->setObjectName(QStringLiteral("previewCanvas"));
    view_->setMinimumSize(120, 120);
    view_->SetMessage(QStringLiteral("Building the preview..."));
    FollowMenuSetting(*view_);
    connect(view_, &QWidget::customContextMenuRequested, this,
            [this](QPoint at) { ShowPlayerMenu(*view_, at); });
    slider_ = new QSlider(Qt::Horizontal);
    slider_->setObjectName(QStringLiteral("frameSlider"));
    slider_->setRange(1, 1);
    playPause_ = new QPushButton;
    playPause_->setObjectName(QStringLiteral("playPause"));
    playPause_->setToolTip(QStringLiteral("Play/Pause"));
    auto* stop = new QPushButton(style()->standardIcon(QStyle::SP_MediaStop), QString());
    stop->setObjectName(QStringLiteral("stop"));
    stop->setToolTip(QStringLiteral("Stop"));
    externalToggle_ =
        new QPushButton(style()->standardIcon(QStyle::SP_TitleBarNormalButton), QString());
    externalToggle_->setObjectName(QStringLiteral("externalPreview"));
    externalToggle_->setToolTip(QStringLiteral("External Preview"));
    externalToggle_->setCheckable(true);
    frameReadOut_ = new QLabel;
    frameReadOut_->setObjectName(QStringLiteral("frameReadOut"));
    timeReadOut_ = new QLabel;
    timeReadOut_->setObjectName(QStringLiteral("timeReadOut"));

    auto* controls = new QHBoxLayout;
    controls->addWidget(playPause_);
    controls->addWidget(stop);
    controls->addWidget(slider_, 1);
    controls->addWidget(externalToggle_);
    auto* readOuts = new QHBoxLayout;
    readOuts->addWidget(new QLabel(QStringLiteral("Frame:")));
    readOuts->addWidget(frameReadOut_, 1);
    readOuts->addWidget(new QLabel(QStringLiteral("Time:")));
    readOuts->addWidget(timeReadOut_, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Macromedia Flash Player Preview:")));
    layout->addWidget(view_, 1);
    layout->addLayout(controls);
    layout->addLayout(readOuts);

    connect(playPause_, &QPushButton::clicked, this, [this] { playing_ ? Pause() : Play(); });
    connect(stop, &QPushButton::clicked, this, &TeskPreviewPane::Stop);
    connect(externalToggle_, &QPushButton::toggled, this, &TeskPreviewPane::SetExternalPreview);
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

TeskPreviewPane::~TeskPreviewPane() {
    // The window draws from our player, which goes before our children do.
    delete externalWindow_;
}

int32_t TeskPreviewPane::GetFrameCount() const noexcept {
    return player_ ? player_->FrameCount() : 0;
}

void TeskPreviewPane::RequestPreview(const TeskFile& document) {
    const COLORREF colour = document.GetBackgroundColour();
    background_ = QColor(ZoGetRed(colour), ZoGetGreen(colour), ZoGetBlue(colour));
    externalScale_ = TeskMovieScaleOf(document.GetResizeMode());
    playerMenu_ = !document.GetDisableRightClick();
    FollowMenuSetting(*view_);
    if (externalWindow_) {
        externalWindow_->GetView().SetBackground(background_);
        externalWindow_->GetView().SetScale(externalScale_);
        FollowMenuSetting(externalWindow_->GetView());
    }
    session_.RequestPreview(document);
    UpdateReadOuts();
}

void TeskPreviewPane::PollPreview() {
    if (const std::optional<std::filesystem::path> file = session_.PollPreview())
        LoadMovie(*file);
    else if (!player_ && !session_.LastError().empty())
        view_->SetMessage(QString::fromStdString(session_.LastError()));
    UpdateReadOuts();
}

void TeskPreviewPane::LoadMovie(const std::filesystem::path& file) {
    std::optional<ZoMoviePlayer> loaded;
    try {
        loaded.emplace(ZoMoviePlayer::FromFile(file));
    } catch (const ZoException& error) {
        view_->SetMessage(QString::fromUtf8(error.what()));
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
    if (player_ && !looping_ && frame_ == player_->FrameCount() - 1)
        ShowFrame(0);
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

void TeskPreviewPane::StepForward() {
    Pause();
    ShowFrame(frame_ + 1);
}

void TeskPreviewPane::StepBack() {
    Pause();
    ShowFrame(frame_ - 1);
}

void TeskPreviewPane::AdvanceFrame() {
    if (!player_)
        return;
    if (!looping_ && frame_ == player_->FrameCount() - 1) {
        Pause();
        return;
    }
    ShowFrame((frame_ + 1) % player_->FrameCount());
}

void TeskPreviewPane::RenderCurrentFrame() {
    if (!player_)
        return;
    view_->ShowFrame(&*player_, frame_);
    if (externalWindow_)
        externalWindow_->GetView().ShowFrame(&*player_, frame_);
    if (!slider_->isSliderDown())
        slider_->setValue(frame_ + 1);
    UpdateReadOuts();
}

void TeskPreviewPane::SetExternalPreview(bool open) {
    if (open == (externalWindow_ != nullptr))
        return;
    if (!open) {
        externalWindow_->close();  // stores its place and reports back
        return;
    }
    externalWindow_ = new TeskExternalPreviewWnd(settings_, this);
    externalWindow_->setAttribute(Qt::WA_DeleteOnClose);
    TeskMovieView& externalView = externalWindow_->GetView();
    externalView.SetBackground(background_);
    externalView.SetScale(externalScale_);
    FollowMenuSetting(externalView);
    connect(&externalView, &QWidget::customContextMenuRequested, this,
            [this, &externalView](QPoint at) { ShowPlayerMenu(externalView, at); });
    connect(externalWindow_, &TeskExternalPreviewWnd::closed, this,
            &TeskPreviewPane::ExternalPreviewClosed);
    const QSignalBlocker block(externalToggle_);
    externalToggle_->setChecked(true);
    externalWindow_->show();
    RenderCurrentFrame();
}

void TeskPreviewPane::ExternalPreviewClosed() {
    externalWindow_ = nullptr;
    const QSignalBlocker block(externalToggle_);
    externalToggle_->setChecked(false);
}

void TeskPreviewPane::FollowMenuSetting(TeskMovieView& view) {
    // Preventing, not just leaving out, the menu keeps the right click from
    // reaching the windows around the movie, so no menu appears at all.
    view.setContextMenuPolicy(playerMenu_ ? Qt::CustomContextMenu : Qt::PreventContextMenu);
}

void TeskPreviewPane::ShowPlayerMenu(TeskMovieView& view, QPoint at) {
    if (!playerMenu_)
        return;
    const std::unique_ptr<QMenu> menu = TeskMakePlayerMenu(*this, view, at);
    menu->exec(view.mapToGlobal(at));
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
