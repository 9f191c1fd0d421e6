#pragma once
// Everything the editor asks or tells the user in a modal box, behind one
// interface, so that commands can be driven without a person at the screen.
#include <filesystem>
#include <optional>

#include "document/file_storage.h"
#include "platform/zo_string.h"

class QDialog;
class QWidget;

class TeskUserPrompts : public TeskFilePrompter {
  public:
    enum class Answer { kYes, kNo, kCancel };

    /// Yes, No and Cancel, Yes being the default.
    virtual Answer AskYesNoCancel(std::string_view text) = 0;
    /// The overwrite question of publishing: true to overwrite; `doNotAskAgain`
    /// receives the state of "Do not show this warning again".
    virtual bool AskOverwrite(std::string_view question, bool& doNotAskAgain) = 0;

    /// A project to open, starting in `folder`; empty when cancelled.
    virtual std::optional<std::filesystem::path> AskOpenPath(
        const std::filesystem::path& folder) = 0;
    /// Where to save, starting at `initial` (folder and name); empty when cancelled.
    virtual std::optional<std::filesystem::path> AskSavePath(const std::filesystem::path& initial,
                                                             std::string_view filter,
                                                             std::string_view extension) = 0;
    /// Runs `dialog` modally; true when it was accepted.
    virtual bool RunDialog(QDialog& dialog) = 0;

    /// Opens a file or address with the desktop's program for it.
    virtual bool OpenWithDesktop(const ZoString& fileOrUrl) = 0;
};

/// The prompts as the person at the screen sees them.
class TeskQtUserPrompts final : public TeskUserPrompts {
  public:
    /// Boxes are centred on `parent` once it is set.
    void SetParent(QWidget* parent) noexcept { parent_ = parent; }

    void ShowMessage(std::string_view text) override;
    bool AskYesNo(std::string_view text) override;
    Answer AskYesNoCancel(std::string_view text) override;
    bool AskOverwrite(std::string_view question, bool& doNotAskAgain) override;
    std::optional<std::filesystem::path> AskOpenPath(const std::filesystem::path& folder) override;
    std::optional<std::filesystem::path> AskSavePath(const std::filesystem::path& initial,
                                                     std::string_view filter,
                                                     std::string_view extension) override;
    bool RunDialog(QDialog& dialog) override;
    bool OpenWithDesktop(const ZoString& fileOrUrl) override;

  private:
    QWidget* parent_ = nullptr;
};
