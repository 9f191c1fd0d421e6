#include "app/user_prompts.h"

#include <QCheckBox>
#include <QDesktopServices>
#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

namespace {

QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::optional<std::filesystem::path> RunFileDialog(QFileDialog& dialog) {
    // A standard dialog keeps the overwrite question and the default suffix
    // on every desktop.
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return std::filesystem::path(dialog.selectedFiles().front().toStdString());
}

}  // namespace

void TeskQtUserPrompts::ShowMessage(std::string_view text) {
    QMessageBox::information(parent_, QStringLiteral("Vimbo"), ToQString(text));
}

bool TeskQtUserPrompts::AskYesNo(std::string_view text) {
    return QMessageBox::warning(parent_, QStringLiteral("Vimbo"), ToQString(text),
                                QMessageBox::Yes | QMessageBox::No,
                                QMessageBox::No) == QMessageBox::Yes;
}

TeskUserPrompts::Answer TeskQtUserPrompts::AskYesNoCancel(std::string_view text) {
    switch (QMessageBox::question(parent_, QStringLiteral("Vimbo"), ToQString(text),
                                  QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                                  QMessageBox::Yes)) {
        case QMessageBox::Yes:
            return Answer::kYes;
        case QMessageBox::No:
            return Answer::kNo;
        default:
            return Answer::kCancel;
    }
}

bool TeskQtUserPrompts::AskOverwrite(std::string_view question, bool& doNotAskAgain) {
    QMessageBox box(QMessageBox::Question, QStringLiteral("Vimbo"), ToQString(question),
                    QMessageBox::NoButton, parent_);
    QPushButton* overwrite = box.addButton(QStringLiteral("&Overwrite"), QMessageBox::AcceptRole);
    box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(overwrite);
    auto* dontAsk = new QCheckBox(QStringLiteral("Do not show this warning again"), &box);
    box.setCheckBox(dontAsk);
    box.exec();
    doNotAskAgain = dontAsk->isChecked();
    return box.clickedButton() == overwrite;
}

std::optional<std::filesystem::path> TeskQtUserPrompts::AskOpenPath(
    const std::filesystem::path& folder) {
    QFileDialog dialog(parent_, QStringLiteral("Open"), QString::fromStdString(folder.string()),
                       QStringLiteral("Vimbo Files (*.vmb);;All Files (*)"));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setDefaultSuffix(QStringLiteral("vmb"));
    return RunFileDialog(dialog);
}

std::optional<std::filesystem::path> TeskQtUserPrompts::AskSavePath(
    const std::filesystem::path& initial, std::string_view filter, std::string_view extension) {
    QFileDialog dialog(parent_, QStringLiteral("Save As"), QString::fromStdString(initial.string()),
                       ToQString(filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ToQString(extension));
    return RunFileDialog(dialog);
}

bool TeskQtUserPrompts::RunDialog(QDialog& dialog) {
    return dialog.exec() == QDialog::Accepted;
}

bool TeskQtUserPrompts::OpenWithDesktop(const ZoString& fileOrUrl) {
    const QString text = QString::fromStdString(fileOrUrl);
    const QUrl url =
        text.contains(QStringLiteral("://")) || text.startsWith(QStringLiteral("mailto:"))
            ? QUrl(text)
            : QUrl::fromLocalFile(text);
    return QDesktopServices::openUrl(url);
}
