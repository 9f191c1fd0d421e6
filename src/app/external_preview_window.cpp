#include "app/external_preview_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QVBoxLayout>
#include <algorithm>

#include "app/app_settings.h"
#include "app/movie_view.h"

namespace {

QPoint ReadPosition(QSettings& settings) {
    return {settings.value(TeskSettingKey(kTeskPreviewWindowSection, "Window x pos"), 0).toInt(),
            settings.value(TeskSettingKey(kTeskPreviewWindowSection, "Window y pos"), 0).toInt()};
}

/// `position` moved so that a window of `size` lies on the screen nearest to it.
QPoint OnScreen(QPoint position, QSize size) {
    const QScreen* screen = QGuiApplication::screenAt(position);
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return position;
    const QRect area = screen->availableGeometry();
    return {std::clamp(position.x(), area.left(),
                       std::max(area.left(), area.right() - size.width() + 1)),
            std::clamp(position.y(), area.top(),
                       std::max(area.top(), area.bottom() - size.height() + 1))};
}

}  // namespace

TeskExternalPreviewWnd::TeskExternalPreviewWnd(QSettings& settings, QWidget* parent)
    : QWidget(parent, Qt::Window), settings_(settings) {
    setObjectName(QStringLiteral("externalPreview"));
    setWindowTitle(QStringLiteral("Vimbo - Macromedia Flash Player Preview"));
    view_ = new TeskMovieView;
    view_->setObjectName(QStringLiteral("externalPreviewView"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    resize(kWidth, kHeight);
    move(OnScreen(ReadPosition(settings_), frameGeometry().size()));
}

void TeskExternalPreviewWnd::closeEvent(QCloseEvent* event) {
    settings_.setValue(TeskSettingKey(kTeskPreviewWindowSection, "Window x pos"), x());
    settings_.setValue(TeskSettingKey(kTeskPreviewWindowSection, "Window y pos"), y());
    event->accept();
    emit closed();
}
