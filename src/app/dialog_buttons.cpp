#include "app/dialog_buttons.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>

#include "app/help_topics.h"

QDialogButtonBox* TeskMakeDialogButtons(QDialog& dialog, TeskHelpViewer& help,
                                        std::string_view topic, const char* helpText,
                                        const char* acceptText) {
    auto* buttons = new QDialogButtonBox;
    if (acceptText) {
        buttons->addButton(QString::fromUtf8(acceptText), QDialogButtonBox::AcceptRole)
            ->setDefault(true);
        buttons->addButton(QStringLiteral("&Cancel"), QDialogButtonBox::RejectRole);
    } else {
        buttons->setStandardButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    }
    QPushButton* helpButton =
        buttons->addButton(QString::fromUtf8(helpText), QDialogButtonBox::HelpRole);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    QObject::connect(helpButton, &QPushButton::clicked, &dialog,
                     [&help, topic] { help.ShowTopic(topic); });
    return buttons;
}
