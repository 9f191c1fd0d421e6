#include "editor/message_sink.h"

#include <cstdio>

namespace ZoEditor {

void ZoStderrMessageSink::ShowMessage(std::string_view text) {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
}

}  // namespace ZoEditor
