#pragma once
// "Link URL": whether a click on the movie opens a web page, which page and
// in which browser window.
#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class TeskFile;
class TeskHelpViewer;

class TeskLinkURLDialog final : public QDialog {
    Q_OBJECT
  public:
    /// Filled from `file`; a target other than the four standard names
    /// (compared exactly) is shown as a named window.
    TeskLinkURLDialog(const TeskFile& file, TeskHelpViewer& help, QWidget* parent = nullptr);

    /// Records the three link settings as "Edit Link URL" unless all of
    /// them equal the document's.
    void Apply(TeskFile& file) const;

    /// The target the dialog stands for: a standard name or the window name.
    QString GetTarget() const;

  private:
    void UpdateControls();

    QCheckBox* enabled_;
    QLineEdit* url_;
    QComboBox* target_;
    QLabel* nameLabel_;
    QLineEdit* name_;
    QLabel* explanation_;
};
