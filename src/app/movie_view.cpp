#include "app/movie_view.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

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
    const QRect target = TeskMovieRect({player_->Width(), player_->Height()}, size(), scale_);
    if (!target.isEmpty()) {
        // Stretched stages are drawn at the larger scale and shrunk along
        // the other side while painting.
        const double scale = std::max(static_cast<double>(target.width()) / player_->Width(),
                                      static_cast<double>(target.height()) / player_->Height());
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
        if (scale_ == TeskMovieScale::kExactFit)
            painter.drawImage(rect(), image);
        else
            painter.drawImage((width() - image.width()) / 2, (height() - image.height()) / 2,
                              image);
        return;
    }
    painter.setPen(palette().color(QPalette::BrightText));
    painter.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap, message_);
}

void TeskMovieView::resizeEvent(QResizeEvent*) {
    Render();
}
