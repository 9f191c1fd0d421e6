#include "flash/swf_button.h"

#include "flash/swf_file.h"
#include "platform/zo_exception.h"

namespace ZoFlash {

ZoSWFButton::ZoSWFButton() = default;
ZoSWFButton::~ZoSWFButton() = default;

void ZoSWFButton::AddObject(int states, ZoAutoInterface2<ZoSWFObject> object, int depth,
                            const ZoSWFTransformation& matrix,
                            const ZoSWFColourTransformation& colour) {
    if (!object)
        throw ZoException("A null object cannot be added to a button.");
    if (depth < 1 || depth > 0xFFFF)
        throw ZoException(ZoFormat("The depth %d is outside 1 to 65535.", depth));
    records_.push_back({states & 0x0F, std::move(object), static_cast<uint16_t>(depth),
                        matrix.ToRecord(), colour.ToRecord()});
}

int ZoSWFButton::AddActionRecord(unsigned int conditions) {
    auto condition = std::make_unique<Condition>();
    condition->conditions = static_cast<uint16_t>(conditions);
    conditions_.push_back(std::move(condition));
    return static_cast<int>(conditions_.size()) - 1;
}

ZoFActionList& ZoSWFButton::GetActionList(int index) {
    if (index < 0 || index >= static_cast<int>(conditions_.size()))
        throw ZoException(ZoFormat("The button has no condition %d.", index));
    return conditions_[index]->actions;
}

void ZoSWFButton::Write(ZoSWFFile& file) {
    for (const Record& r : records_)
        file.Define(*r.object);
    ZoFByteBuffer body;
    body.PutU16(static_cast<uint16_t>(ClaimCharacterID(file)));
    body.PutU8(0);  // not tracked as a menu
    const size_t actionOffsetAt = body.Size();
    body.PutU16(0);
    for (const Record& r : records_) {
        body.PutU8(static_cast<uint8_t>(r.states));
        body.PutU16(static_cast<uint16_t>(r.object->GetCharacterID()));
        body.PutU16(r.depth);
        ZoWriteMatrix(body, r.matrix);
        ZoWriteCxformWithAlpha(body, r.cxform);
    }
    body.PutU8(0);  // end of button records
    if (!conditions_.empty())
        body.PatchU16(actionOffsetAt, static_cast<uint16_t>(body.Size() - actionOffsetAt));
    for (size_t i = 0; i < conditions_.size(); ++i) {
        const size_t start = body.Size();
        body.PutU16(0);  // size of this condition; 0 marks the last
        body.PutU16(conditions_[i]->conditions);
        conditions_[i]->actions.Write(body);
        if (i + 1 < conditions_.size())
            body.PatchU16(start, static_cast<uint16_t>(body.Size() - start));
    }
    file.GetFile().WriteRawTag(ZoFTagCode::kDefineButton2, body.Bytes());
}

void ZoSWFButton::InitialiseForRewriting() {
    ZoSWFObject::InitialiseForRewriting();
    for (const Record& r : records_)
        r.object->InitialiseForRewriting();
}

}  // namespace ZoFlash
