#pragma once
#include <string_view>

namespace ZoEditor {

/// Where the core reports failures meant for the user; the editor shows them
/// in a message box, the command line prints them.
class ZoMessageSink {
  public:
    virtual ~ZoMessageSink() = default;
    virtual void ShowMessage(std::string_view text) = 0;
};

/// Writes each message as a line to standard error.
class ZoStderrMessageSink final : public ZoMessageSink {
  public:
    void ShowMessage(std::string_view text) override;
};

}  // namespace ZoEditor
