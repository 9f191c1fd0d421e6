#include "app/help_topics.h"

#include "app/user_prompts.h"
#include "platform/zo_string.h"

namespace {

bool IsFolder(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

}  // namespace

TeskInstallFolders TeskLocateInstallFolders(const std::filesystem::path& programFolder) {
    const std::filesystem::path share = programFolder.parent_path() / "share" / "vimbo";
    if (IsFolder(share / "help"))
        return {share / "help", share / "examples"};
    const std::filesystem::path source(VIMBO_SOURCE_DIR);
    return {source / "resources" / "help", source / "examples"};
}

std::filesystem::path TeskHelpTopicPage(const std::filesystem::path& helpFolder,
                                        std::string_view topic) {
    if (ZoStartsWith(topic, "::/"))
        topic.remove_prefix(3);
    return helpFolder / ZoToLowerAscii(topic);
}

void TeskHelpViewer::ShowTopic(std::string_view topic) {
    const std::filesystem::path page = TeskHelpTopicPage(helpFolder_, topic);
    std::error_code ignored;
    if (std::filesystem::is_regular_file(page, ignored))
        prompts_.OpenWithDesktop(page.string());
}
