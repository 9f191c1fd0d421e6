#include "flash/action_records.h"

#include "platform/zo_exception.h"

namespace ZoFlash {

void ZoFActionRecord::Write(ZoFByteBuffer& out) const {
    out.PutU8(code_);
    if (!HasData())
        return;
    const int length = GetDataLength();
    if (length > 0xFFFF)
        throw ZoException("An action record holds more than 65535 bytes.");
    out.PutU16(static_cast<uint16_t>(length));
    WriteData(out);
}

ZoString ZoFActionRecord::GetDescriptionLine(int indent) const {
    return ZoString(indent, ' ') + ZoFormat("Action 0x%02X", code_);
}

ZoFGetURLAction::ZoFGetURLAction(std::string_view url, std::string_view target)
    : ZoFActionRecord(kZoActionGetURL), url_(url), target_(target) {}

int ZoFGetURLAction::GetDataLength() const {
    return static_cast<int>(url_.size() + 1 + target_.size() + 1);
}

ZoString ZoFGetURLAction::GetDescriptionLine(int indent) const {
    return ZoString(indent, ' ') + "GetURL \"" + url_ + "\" \"" + target_ + "\"";
}

void ZoFGetURLAction::WriteData(ZoFByteBuffer& out) const {
    out.PutString(url_);
    out.PutString(target_);
}

void ZoFActionList::AddActionRecord(ZoAutoPtr2<ZoFActionRecord>& record) {
    if (record)
        records_.push_back(std::move(record));
}

void ZoFActionList::AddActionRecord(ZoAutoPtr2<ZoFActionRecord>&& record) {
    AddActionRecord(record);
}

void ZoFActionList::Write(ZoFByteBuffer& out) const {
    for (const auto& record : records_)
        record->Write(out);
    out.PutU8(0);
}

void ZoFActionList::TransferTo(ZoFActionList& other) {
    for (auto& record : records_)
        other.records_.push_back(std::move(record));
    records_.clear();
}

}  // namespace ZoFlash
