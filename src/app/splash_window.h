#pragma once
// The window that shows while the editor starts: the product's name and
// version, drawn rather than loaded so it is sharp at any screen scale.
#include <QSplashScreen>

class TeskSplashWindow final : public QSplashScreen {
    Q_OBJECT
  public:
    TeskSplashWindow();

    /// The picture, at `scale` device pixels per pixel.
    static QPixmap Draw(qreal scale);
};
