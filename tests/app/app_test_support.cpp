#include "app/app_test_support.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QDialog>
#include <QStandardPaths>

namespace AppTest {
namespace {

/// Every widget test needs the one application object of the process.
class QtEnvironment final : public ::testing::Environment {
  public:
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QStandardPaths::setTestModeEnabled(true);
        application_ = std::make_unique<QApplication>(argc_, argv_);
    }
    void TearDown() override { application_.reset(); }

  private:
    int argc_ = 1;
    char name_[11] = "test_app";
    char* argv_[2] = {name_, nullptr};
    std::unique_ptr<QApplication> application_;
};

[[maybe_unused]] ::testing::Environment* const kQt =
    ::testing::AddGlobalTestEnvironment(new QtEnvironment);

}  // namespace

bool ScriptedPrompts::AskYesNo(std::string_view text) {
    return AskYesNoCancel(text) == Answer::kYes;
}

TeskUserPrompts::Answer ScriptedPrompts::AskYesNoCancel(std::string_view text) {
    questions.emplace_back(text);
    if (answers.empty())
        return Answer::kCancel;
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

bool ScriptedPrompts::AskOverwrite(std::string_view question, bool& dontAsk) {
    questions.emplace_back(question);
    dontAsk = doNotAskAgain;
    return overwrite;
}

std::optional<std::filesystem::path> ScriptedPrompts::AskOpenPath(
    const std::filesystem::path& folder) {
    offeredFolder = folder;
    return chosenPath;
}

std::optional<std::filesystem::path> ScriptedPrompts::AskSavePath(
    const std::filesystem::path& initial, std::string_view, std::string_view) {
    offeredFolder = initial.parent_path();
    return chosenPath;
}

bool ScriptedPrompts::RunDialog(QDialog& dialog) {
    return dialogHandler && dialogHandler(dialog);
}

bool ScriptedPrompts::OpenWithDesktop(const ZoString& fileOrUrl) {
    opened.push_back(fileOrUrl);
    return true;
}

TempSettings::TempSettings()
    : settings_(std::make_unique<QSettings>(dir_.filePath(QStringLiteral("settings.ini")),
                                            QSettings::IniFormat)) {}

QString Key(const char* section, const char* value) {
    return QStringLiteral("%1/%2").arg(QLatin1String(section), QLatin1String(value));
}

}  // namespace AppTest
