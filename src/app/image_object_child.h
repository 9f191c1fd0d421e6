#pragma once
#include <QWidget>
#include <functional>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSlider;
class TeskColourButton;
class TeskImageObject;

/// The "Image" page of the object dialog: the picture file, how it is
/// placed, and the colour keyed out of it.
class TeskImageObjectChild final : public QWidget {
  public:
    /// Edits `object` directly and calls `changed` after every change.
    TeskImageObjectChild(TeskImageObject& object, std::function<void()> changed,
                         QWidget* parent = nullptr);

    /// Asks for a picture file, starting in `folder`; empty when cancelled.
    using FileChooser = std::function<QString(QWidget* parent, const QString& folder)>;
    /// Replaces the open-file dialog that "Browse..." shows.
    void SetFileChooser(FileChooser chooser) { chooser_ = std::move(chooser); }

    /// Takes the picture file `path` as the user chose it.
    void ChooseFile(const QString& path);

  private:
    void Browse();
    void Changed();
    void UpdateEnabled();

    TeskImageObject& object_;
    std::function<void()> changed_;
    FileChooser chooser_;
    QLineEdit* fileName_;
    QComboBox* placement_;
    QCheckBox* useTransparent_;
    QCheckBox* autoTransparent_;
    TeskColourButton* transparentColour_;
    QSlider* tolerance_;
};
