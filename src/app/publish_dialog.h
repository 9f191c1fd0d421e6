#pragma once
// "Publish": where the movie goes and what happens with it. Its choices are
// stored in the document's publish settings, which are never undoable.
#include <QDialog>
#include <filesystem>

class QCheckBox;
class QLineEdit;
class TeskFile;
class TeskHelpViewer;
class TeskUserPrompts;

class TeskPublishDialog final : public QDialog {
    Q_OBJECT
  public:
    /// Filled from `file`; a movie without a location is offered one beside
    /// the project, or in `homeFolder` for a project never saved.
    TeskPublishDialog(TeskFile& file, TeskUserPrompts& prompts, TeskHelpViewer& help,
                      const std::filesystem::path& homeFolder, QWidget* parent = nullptr);

    /// Writes the dialog's choices into the document (".swf" added to a
    /// location without an extension).
    void Store(TeskFile& file) const;

  private:
    void Browse();

    TeskUserPrompts& prompts_;
    QLineEdit* location_;
    QCheckBox* embedHTML_;
    QCheckBox* testImmediately_;
    QCheckBox* offsetForMovieClip_;
};
