#include "app/movie_view.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

/// The largest picture drawn for a zoomed stage.
constexpr double kMaxRenderPixels = 4.0e6;

}  // namespace

TeskMovieScale TeskMovieScaleOf(int resizeMode) noexcept {
    switch (resizeMode) {
        case 0:
            return TeskMovieScale::kNoScale;
        case 1:
            return TeskMovieScale::kExactFit;
        default:
            return TeskMovieScale::kShowAll;
    }
}

QRect TeskMovieRect(QSize stage, QSize view, TeskMovieScale scale) noexcept {
    if (stage.isEmpty() || view.isEmpty())
        return {};
    QSize size = stage;
    if (scale == TeskMovieScale::kExactFit)
        size = view;
    else if (scale == TeskMovieScale::kShowAll)
        size = stage.scaled(view, Qt::KeepAspectRatio).expandedTo({1, 1});
    return {QPoint((view.width() - size.width()) / 2, (view.height() - size.height()) / 2), size};
}

QRect TeskZoomedRect(QRect fitted, QSize view, int zoom, QPointF centre) noexcept {
    if (zoom <= 1 || fitted.isEmpty())
        return fitted;
    const QSize size = fitted.size() * zoom;
    const auto place = [](int viewSide, int side, double at) {
        if (side <= viewSide)
            return (viewSide - side) / 2;
        const auto wanted = static_cast<int>(std::lround(viewSide / 2.0 - at * side));
        return std::clamp(wanted, viewSide - side, 0);
    };
    return {QPoint(place(view.width(), size.width(), centre.x()),
                   place(view.height(), size.height(), centre.y())),
            size};
}

TeskMovieView::TeskMovieView(QWidget* parent)
    : QWidget(parent), background_(palette().color(QPalette::Dark)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void TeskMovieView::SetScale(TeskMovieScale scale) {
    if (scale == scale_)
        return;
    scale_ = scale;
    Render();
}

void TeskMovieView::SetBackground(const QColor& colour) {
    background_ = colour;
    update();
}

void TeskMovieView::SetMessage(const QString& message) {
    message_ = message;
    update();
}

void TeskMovieView::ZoomIn(QPoint at) {
    const QRect stage = StageRect();
    if (zoom_ >= kMaxZoom || stage.isEmpty())
        return;
    centre_ = {std::clamp(double(at.x() - stage.left()) / stage.width(), 0.0, 1.0),
               std::clamp(double(at.y() - stage.top()) / stage.height(), 0.0, 1.0)};
    SetZoom(zoom_ * 2);
}

void TeskMovieView::ZoomOut() {
    if (zoom_ > 1)
        SetZoom(zoom_ / 2);
}

void TeskMovieView::ShowAll() {
    centre_ = {0.5, 0.5};
    SetZoom(1);
}

void TeskMovieView::SetZoom(int zoom) {
    zoom_ = zoom;
    Render();
}

QRect TeskMovieView::StageRect() const noexcept {
    if (!player_)
        return {};
    const QRect fitted = TeskMovieRect({player_->Width(), player_->Height()}, size(), scale_);
    return TeskZoomedRect(fitted, size(), zoom_, centre_);
}

void TeskMovieView::ShowFrame(const ZoMoviePlayer* player, int32_t frame) {
    player_ = player;
    frame_ = frame;
    Render();
}

void TeskMovieView::Render() {
    if (!player_) {
        picture_ = {};
        update();
        return;
    }
    const QRect stage = StageRect();
    if (!stage.isEmpty()) {
        // Stretched stages are drawn at the larger scale and shrunk along
        // the other side while painting. A deep zoom is drawn no larger
        // than kMaxRenderPixels and enlarged while painting, so that a
        // playing movie keeps its pace.
        double scale = std::max(static_cast<double>(stage.width()) / player_->Width(),
                                static_cast<double>(stage.height()) / player_->Height());
        const double pixels = scale * scale * player_->Width() * player_->Height();
        if (pixels > kMaxRenderPixels)
            scale *= std::sqrt(kMaxRenderPixels / pixels);
        player_->RenderFrameInto(frame_, scale, picture_);
    }
    update();
}

void TeskMovieView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), background_);
    if (player_ && picture_.width > 0) {
        const QImage image(picture_.rgba.data(), picture_.width, picture_.height,
                           picture_.width * 4, QImage::Format_RGBA8888);
        const QRect stage = StageRect();
        // The renderer rounds each side up: a picture of the stage's size
        // give or take that pixel is drawn as it is, any other stretched.
        if (std::abs(image.width() - stage.width()) <= 1 &&
            std::abs(image.height() - stage.height()) <= 1)
            painter.drawImage(stage.topLeft(), image);
        else
            painter.drawImage(stage, image);
        return;
    }
    painter.setPen(palette().color(QPalette::BrightText));
    painter.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap, message_);
}

void TeskMovieView::resizeEvent(QResizeEvent*) {
    Render();
}
