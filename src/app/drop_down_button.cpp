#include "app/drop_down_button.h"

#include <QGuiApplication>
#include <QScreen>

TeskDropDownButton::TeskDropDownButton(const QString& text, const QIcon& icon, QWidget* panel,
                                       QWidget* parent)
    : QToolButton(parent), panel_(panel) {
    setText(text);
    setIcon(icon);
    setIconSize({32, 32});
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    panel_->setParent(this, Qt::Popup);
    connect(this, &QToolButton::clicked, this, &TeskDropDownButton::ShowPanel);
}

void TeskDropDownButton::ShowPanel() {
    panel_->adjustSize();
    QRect placed(mapToGlobal(QPoint(0, height())), panel_->size());
    // Keep the panel on the screen: above the button when there is no room below.
    if (const QScreen* screen = this->screen()) {
        const QRect area = screen->availableGeometry();
        if (placed.bottom() > area.bottom())
            placed.moveBottom(mapToGlobal(QPoint(0, 0)).y());
        if (placed.right() > area.right())
            placed.moveRight(area.right());
    }
    panel_->move(placed.topLeft());
    panel_->show();
    panel_->setFocus();
}
