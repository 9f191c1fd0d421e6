#pragma once
#include "flash/action_records.h"
#include "platform/zo_string.h"

namespace ZoFlash {

class ZoSWFFrame;

/// Action records compiled from one line of script. The only statement
/// understood is `_GetURL("url", "target");` (strings may escape quotes and
/// backslashes with a backslash); anything else throws ZoException naming
/// the text.
class ZoSWFScript {
  public:
    explicit ZoSWFScript(const char* text);
    /// Moves the compiled records into the frame's actions.
    void TransferActionRecords(ZoSWFFrame* frame);
    const ZoFActionList& GetActions() const noexcept { return actions_; }

  private:
    ZoFActionList actions_;
};

}  // namespace ZoFlash
