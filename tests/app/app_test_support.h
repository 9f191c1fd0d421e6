#pragma once
// What the editor's tests share: one offscreen QApplication for the program,
// settings in a temporary file, and prompts answered from a script.
#include <QSettings>
#include <QTemporaryDir>
#include <QWidget>
#include <deque>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/user_prompts.h"

namespace AppTest {

/// Answers every question from queued replies and records what was said.
class ScriptedPrompts final : public TeskUserPrompts {
  public:
    void ShowMessage(std::string_view text) override { messages.emplace_back(text); }
    bool AskYesNo(std::string_view text) override;
    Answer AskYesNoCancel(std::string_view text) override;
    bool AskOverwrite(std::string_view question, bool& doNotAskAgain) override;
    std::optional<std::filesystem::path> AskOpenPath(const std::filesystem::path& folder) override;
    std::optional<std::filesystem::path> AskSavePath(const std::filesystem::path& initial,
                                                     std::string_view filter,
                                                     std::string_view extension) override;
    bool RunDialog(QDialog& dialog) override;
    bool OpenWithDesktop(const ZoString& fileOrUrl) override;

    std::vector<std::string> messages;   // every box shown, in order
    std::vector<std::string> questions;  // every question asked
    std::deque<Answer> answers;          // next Yes/No/Cancel replies (Cancel when empty)
    bool overwrite = true;
    bool doNotAskAgain = false;
    std::optional<std::filesystem::path> chosenPath;  // answer of the file dialogs
    std::filesystem::path offeredFolder;              // where the last file dialog started
    /// Fills in a dialog and says whether it is accepted (rejected when unset).
    std::function<bool(QDialog&)> dialogHandler;
    std::vector<std::string> opened;  // files and addresses opened on the desktop
};

/// A temporary folder with the editor's settings in an INI file inside it.
class TempSettings {
  public:
    TempSettings();
    QSettings& Get() { return *settings_; }
    std::filesystem::path Folder() const { return dir_.path().toStdString(); }

  private:
    QTemporaryDir dir_;
    std::unique_ptr<QSettings> settings_;
};

/// The QSettings key of `value` in `section`, as the editor writes it.
QString Key(const char* section, const char* value);

/// The control of `parent` named `name`; throws when there is none, so that
/// a renamed control fails the test that uses it.
template <typename T>
T& Child(QWidget& parent, const char* name) {
    T* child = parent.findChild<T*>(QString::fromUtf8(name));
    if (!child)
        throw std::runtime_error(std::string("no control ") + name);
    return *child;
}

}  // namespace AppTest
