#include "app/object_preview.h"

#include <QPainter>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "app/colour_button.h"

#include "flash/byte_stream.h"
#include "media/swf_movie.h"
#include "objects/image_object.h"
#include "platform/zo_exception.h"
#include "publish/movie_compiler.h"
#include "render/movie_player.h"

std::vector<uint8_t> TeskObjectMovie(TeskObject* object, ZoSize movieSize, COLORREF background) {
    if (movieSize.cx <= 0 || movieSize.cy <= 0)
        return {};
    try {
        TeskSWFMovie movie;
        movie.SetWidth(movieSize.cx);
        movie.SetHeight(movieSize.cy);
        movie.SetBackgroundColour(ZoFlash::ZoSWFColour(background, 255));
        movie.AddScene()->AddFrame();
        // Placed where the document's background object goes: alone in the
        // frame, the depth makes no difference.
        AddMovieWideObjects(movie, nullptr, object, false, ZoString(), ZoString());
        ZoFlash::ZoFMemorySink bytes;
        movie.WriteMovie(bytes);
        return bytes.TakeBytes();
    } catch (const ZoException&) {
        return {};
    }
}

QImage TeskRenderMovie(const std::vector<uint8_t>& movie, QSize size) {
    if (movie.empty() || size.isEmpty())
        return {};
    try {
        const ZoMoviePlayer player(movie);
        const double scale = std::max(double(size.width()) / player.Width(),
                                      double(size.height()) / player.Height());
        const ZoRgbaImage frame = player.RenderFrame(0, scale);
        const QImage view(frame.rgba.data(), frame.width, frame.height, frame.width * 4,
                          QImage::Format_RGBA8888);
        // The player rounds each side up; the caller asked for exact pixels.
        return view.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_RGB32);
    } catch (const ZoException&) {
        return {};
    }
}

QImage TeskRenderObject(TeskObject* object, ZoSize movieSize, COLORREF background, QSize size) {
    return TeskRenderMovie(TeskObjectMovie(object, movieSize, background), size);
}

bool TeskObjectShowsPicture(const TeskObject* object, const ZoString& fullPath) {
    const auto* image = dynamic_cast<const TeskImageObject*>(object);
    return image && image->GetFullPath() == fullPath;
}

TeskObjectPreview::TeskObjectPreview(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("objectPreview"));
    setMinimumSize(64, 48);
}

void TeskObjectPreview::SetObject(TeskObject* object, ZoSize movieSize, COLORREF background) {
    object_ = object;
    movieSize_ = movieSize;
    background_ = background;
    ObjectChanged();
}

void TeskObjectPreview::ObjectChanged() {
    if (pending_)
        return;
    pending_ = true;
    QTimer::singleShot(0, this, &TeskObjectPreview::RenderNow);
}

void TeskObjectPreview::PictureChanged(const ZoString& fullPath) {
    if (TeskObjectShowsPicture(object_, fullPath))
        ObjectChanged();
}

void TeskObjectPreview::RenderNow() {
    pending_ = false;
    picture_ = TeskRenderObject(object_, movieSize_, background_, PictureRect().size());
    update();
}

QRect TeskObjectPreview::PictureRect() const {
    const QRect area = rect().adjusted(1, 1, -1, -1);
    if (area.isEmpty() || movieSize_.cx <= 0 || movieSize_.cy <= 0)
        return {};
    QSize size(movieSize_.cx, movieSize_.cy);
    size.scale(area.size(), Qt::KeepAspectRatio);
    size = size.expandedTo({1, 1});
    QRect placed(QPoint(), size);
    placed.moveCenter(area.center());
    return placed;
}

void TeskObjectPreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    const QRect placed = PictureRect();
    if (picture_.isNull())
        painter.fillRect(placed, TeskToQColor(background_));
    else
        painter.drawImage(placed.topLeft(), picture_);
    painter.setPen(palette().mid().color());
    painter.drawRect(placed.adjusted(-1, -1, 0, 0));
}

void TeskObjectPreview::resizeEvent(QResizeEvent*) {
    ObjectChanged();
}
