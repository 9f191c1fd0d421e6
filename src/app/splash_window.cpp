#include "app/splash_window.h"

#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>

#include "app/support_mail.h"

namespace {

constexpr QSize kSize(420, 240);

}  // namespace

TeskSplashWindow::TeskSplashWindow() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    setPixmap(Draw(screen ? screen->devicePixelRatio() : 1.0));
}

QPixmap TeskSplashWindow::Draw(qreal scale) {
    QPixmap picture(kSize * scale);
    picture.setDevicePixelRatio(scale);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area(QPointF(0, 0), QSizeF(kSize));
    // A dusk sky turning into day: a transition, like the movies Vimbo makes.
    QLinearGradient sky(area.topLeft(), area.bottomRight());
    sky.setColorAt(0.0, QColor(0x1d, 0x2b, 0x53));
    sky.setColorAt(0.6, QColor(0x7e, 0x25, 0x53));
    sky.setColorAt(1.0, QColor(0xff, 0xa3, 0x00));
    painter.fillRect(area, sky);
    painter.setPen(Qt::white);
    QFont title = painter.font();
    title.setPixelSize(64);
    title.setBold(true);
    painter.setFont(title);
    painter.drawText(area.adjusted(28, 40, -28, -100), Qt::AlignLeft | Qt::AlignTop,
                     QStringLiteral("Vimbo"));
    QFont small = painter.font();
    small.setPixelSize(15);
    small.setBold(false);
    painter.setFont(small);
    painter.drawText(area.adjusted(30, 120, -28, -60), Qt::AlignLeft | Qt::AlignTop,
                     QStringLiteral("Transitions for the web, from pictures, text and colour"));
    painter.drawText(
        area.adjusted(30, 0, -28, -20), Qt::AlignLeft | Qt::AlignBottom,
        QStringLiteral("Version %1  ·  Kestrane").arg(QString::fromStdString(TeskVersionText())));
    return picture;
}
