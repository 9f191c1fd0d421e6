#pragma once
#include <QDialog>

/// "About Vimbo": the credits and the facts a support question needs.
class TeskAboutDialog final : public QDialog {
    Q_OBJECT
  public:
    explicit TeskAboutDialog(QWidget* parent = nullptr);
};
