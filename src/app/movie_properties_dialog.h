#pragma once
// "Movie Properties": the movie's size, frame rate, background colour and
// how it behaves in the browser, applied as one undoable change.
#include <QDialog>

class QCheckBox;
class QRadioButton;
class QSpinBox;
class TeskColourButton;
class TeskFile;
class TeskHelpViewer;

class TeskMoviePropertiesDialog final : public QDialog {
    Q_OBJECT
  public:
    /// Filled from `file`.
    TeskMoviePropertiesDialog(const TeskFile& file, TeskHelpViewer& help,
                              QWidget* parent = nullptr);

    /// Records every field that differs from `file` in one transaction named
    /// after the single change, or "Edit Movie Properties" for several;
    /// nothing when none differs.
    void Apply(TeskFile& file) const;

  private:
    int ResizeMode() const;

    QSpinBox* width_;
    QSpinBox* height_;
    QSpinBox* frameRate_;
    TeskColourButton* background_;
    QRadioButton* resizeModes_[3];
    QCheckBox* disableRightClick_;
    QCheckBox* clipToMovieSize_;
};
