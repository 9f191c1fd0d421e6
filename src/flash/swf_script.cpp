#include "flash/swf_script.h"

#include <string_view>

#include "flash/swf_frame.h"
#include "platform/zo_exception.h"

namespace ZoFlash {
namespace {

class Parser {
  public:
    explicit Parser(std::string_view text) : text_(text) {}

    void SkipSpace() {
        while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\t'))
            ++pos_;
    }
    bool Take(std::string_view token) {
        SkipSpace();
        if (text_.substr(pos_, token.size()) != token)
            return false;
        pos_ += token.size();
        return true;
    }
    bool TakeString(ZoString& out) {
        if (!Take("\""))
            return false;
        out.clear();
        while (pos_ < text_.size() && text_[pos_] != '"') {
            if (text_[pos_] == '\\' && pos_ + 1 < text_.size())
                ++pos_;
            out += text_[pos_++];
        }
        return Take("\"");
    }
    bool AtEnd() {
        SkipSpace();
        return pos_ == text_.size();
    }

  private:
    std::string_view text_;
    size_t pos_ = 0;
};

}  // namespace

ZoSWFScript::ZoSWFScript(const char* text) {
    const std::string_view source = text ? text : "";
    Parser p(source);
    ZoString url, target;
    if (!(p.Take("_GetURL") && p.Take("(") && p.TakeString(url) && p.Take(",") &&
          p.TakeString(target) && p.Take(")") && p.Take(";") && p.AtEnd()))
        throw ZoException("The script '" + ZoString(source) + "' cannot be compiled.");
    actions_.AddActionRecord(std::make_unique<ZoFGetURLAction>(url, target));
}

void ZoSWFScript::TransferActionRecords(ZoSWFFrame* frame) {
    if (frame)
        actions_.TransferTo(frame->GetActions());
}

}  // namespace ZoFlash
