#include "flash/sequence_writer.h"

#include <algorithm>
#include <cstring>

#include "flash/swf_file.h"

namespace ZoFlash {
namespace {

bool SameName(const char* a, const char* b) noexcept {
    return a == b || (a && b && std::strcmp(a, b) == 0);
}

bool SameBytes(std::span<const uint8_t> a, std::span<const uint8_t> b) noexcept {
    // Records are a dozen bytes: a loop beats a call to memcmp.
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (a[i] != b[i])
            return false;
    return true;
}

bool SameCharacterSlot(const ZoSWFEncodedPlacement& a, const ZoSWFEncodedPlacement& b) noexcept {
    // ClipDepth and the name can only be given when a character is created.
    return a.object == b.object && a.clipDepth == b.clipDepth && SameName(a.name, b.name);
}

bool ShowsSame(const ZoSWFEncodedPlacement& a, const ZoSWFEncodedPlacement& b) noexcept {
    // Equal records are equal bytes: each value has one shortest encoding.
    return SameCharacterSlot(a, b) && SameBytes(a.matrix, b.matrix) &&
           SameBytes(a.cxform, b.cxform) && a.ratio == b.ratio;
}

bool IsIdentityCxform(std::span<const uint8_t> cxform) noexcept {
    return (cxform[0] & 0xC0) == 0;  // neither add nor multiply terms
}

bool IsIdentityMatrix(std::span<const uint8_t> matrix) noexcept {
    return matrix[0] == 0;  // no scale, no rotation, translation of 0 bits
}

bool CanReplace(const ZoSWFEncodedPlacement& was, const ZoSWFEncodedPlacement& is) noexcept {
    // Names, clip depths and ratios are left to a fresh creation: whether a
    // replacement keeps the old ones is where players are least agreed.
    return !was.name && !is.name && was.clipDepth == 0 && is.clipDepth == 0 && was.ratio < 0 &&
           is.ratio < 0;
}

}  // namespace

void ZoFSequenceWriter::WriteFrame(const ZoSWFFrame& frame) {
    // The tags gather in one buffer and leave together: a frame is a few
    // hundred tags of a few bytes each.
    tags_.Clear();
    CollectFrame(frame);
    MergePermanents();
    EmitDifferences();
    EmitActions(frame);
    ZoWriteTagHeader(tags_, ZoFTagCode::kShowFrame, 0);
    out_.PutFrame(tags_.Bytes());
    shown_.swap(next_);
}

void ZoFSequenceWriter::CollectFrame(const ZoSWFFrame& frame) {
    placed_.clear();
    placesPermanents_ = false;
    bool ascending = true;
    for (size_t i = 0; i < frame.GetPlacementCount(); ++i) {
        const ZoSWFEncodedPlacement p = frame.GetEncodedPlacement(i);
        file_.Define(*p.object);
        ascending = ascending && (placed_.empty() || placed_.back().depth < p.depth);
        placesPermanents_ = placesPermanents_ || p.permanent;
        placed_.push_back({&frame, static_cast<uint32_t>(i), p.depth, p.permanent});
    }
    if (ascending)
        return;
    // Stable, so that of two placements at one depth the later one is kept.
    std::stable_sort(placed_.begin(), placed_.end(),
                     [](const Entry& a, const Entry& b) { return a.depth < b.depth; });
    size_t kept = 0;
    for (const Entry& e : placed_) {
        if (kept > 0 && placed_[kept - 1].depth == e.depth)
            placed_[kept - 1] = e;
        else
            placed_[kept++] = e;
    }
    placed_.resize(kept);
}

void ZoFSequenceWriter::MergePermanents() {
    // The frame's own placements win; permanent ones from earlier frames fill
    // the other depths. A placement at a depth ends the permanent one there.
    if (permanents_.empty() && !placesPermanents_) {
        next_.swap(placed_);
        return;
    }
    next_.clear();
    scratch_.clear();
    auto perm = permanents_.begin();
    for (const Entry& own : placed_) {
        for (; perm != permanents_.end() && perm->depth < own.depth; ++perm) {
            next_.push_back(*perm);
            scratch_.push_back(*perm);
        }
        if (perm != permanents_.end() && perm->depth == own.depth)
            ++perm;
        next_.push_back(own);
        if (own.permanent)
            scratch_.push_back(own);
    }
    for (; perm != permanents_.end(); ++perm) {
        next_.push_back(*perm);
        scratch_.push_back(*perm);
    }
    permanents_.swap(scratch_);
}

void ZoFSequenceWriter::EmitDifferences() {
    auto before = shown_.begin();
    auto now = next_.begin();
    while (before != shown_.end() || now != next_.end()) {
        if (now == next_.end() || (before != shown_.end() && before->depth < now->depth)) {
            EmitRemove(before->depth);
            ++before;
        } else if (before == shown_.end() || now->depth < before->depth) {
            EmitPlace(now->Read());
            ++now;
        } else {
            EmitChange(*before, *now);
            ++before;
            ++now;
        }
    }
}

void ZoFSequenceWriter::EmitChange(const Entry& before, const Entry& now) {
    if (before.frame == now.frame && before.index == now.index)
        return;  // a permanent placement carried on
    const ZoSWFEncodedPlacement was = before.Read(), is = now.Read();
    if (ShowsSame(was, is))
        return;
    if (SameCharacterSlot(was, is)) {
        EmitMove(was, is);
        return;
    }
    if (CanReplace(was, is)) {
        EmitReplace(was, is);
        return;
    }
    EmitRemove(is.depth);
    EmitPlace(is);
}

void ZoFSequenceWriter::EmitPlace(const ZoSWFEncodedPlacement& now) {
    ZoFPlaceObject2Record r;
    r.depth = now.depth;
    r.hasCharacter = true;
    r.characterId = static_cast<uint16_t>(now.object->GetCharacterID());
    r.matrix = now.matrix;
    if (!IsIdentityCxform(now.cxform))
        r.cxform = now.cxform;
    r.hasRatio = now.ratio >= 0;
    r.ratio = static_cast<uint16_t>(now.ratio);
    r.name = now.name;
    r.hasClipDepth = now.clipDepth > 0;
    r.clipDepth = now.clipDepth;
    EmitPlaceObject2(r);
}

void ZoFSequenceWriter::EmitMove(const ZoSWFEncodedPlacement& before,
                                 const ZoSWFEncodedPlacement& now) {
    // Fields left out keep their values on the player's display list.
    ZoFPlaceObject2Record r;
    r.move = true;
    r.depth = now.depth;
    if (!SameBytes(before.matrix, now.matrix))
        r.matrix = now.matrix;
    if (!SameBytes(before.cxform, now.cxform))
        r.cxform = now.cxform;
    r.hasRatio = now.ratio >= 0 && now.ratio != before.ratio;
    r.ratio = static_cast<uint16_t>(now.ratio);
    // A ratio cannot be taken back once given, so dropping it changes nothing.
    if (r.matrix.empty() && r.cxform.empty() && !r.hasRatio)
        return;
    EmitPlaceObject2(r);
}

void ZoFSequenceWriter::EmitReplace(const ZoSWFEncodedPlacement& before,
                                    const ZoSWFEncodedPlacement& now) {
    // A move that names a character swaps it in at the depth, one tag where
    // remove and place take two. Some players start the new character afresh,
    // others keep the old matrix and colour transform: a field is left out
    // only where both readings give the identity.
    ZoFPlaceObject2Record r;
    r.move = true;
    r.depth = now.depth;
    r.hasCharacter = true;
    r.characterId = static_cast<uint16_t>(now.object->GetCharacterID());
    if (!IsIdentityMatrix(before.matrix) || !IsIdentityMatrix(now.matrix))
        r.matrix = now.matrix;
    if (!IsIdentityCxform(before.cxform) || !IsIdentityCxform(now.cxform))
        r.cxform = now.cxform;
    EmitPlaceObject2(r);
}

void ZoFSequenceWriter::EmitPlaceObject2(const ZoFPlaceObject2Record& record) {
    ZoWriteTagHeader(tags_, ZoFTagCode::kPlaceObject2, ZoPlaceObject2BodySize(record));
    ZoWritePlaceObject2Body(tags_, record);
}

void ZoFSequenceWriter::EmitRemove(uint16_t depth) {
    ZoWriteTagHeader(tags_, ZoFTagCode::kRemoveObject2, 2);
    tags_.PutU16(depth);
}

void ZoFSequenceWriter::EmitActions(const ZoSWFFrame& frame) {
    if (!frame.IsStopFrame() && frame.GetActions().IsEmpty())
        return;
    body_.Clear();
    if (frame.IsStopFrame())
        ZoFActionRecord(kZoActionStop).Write(body_);
    frame.GetActions().Write(body_);
    ZoWriteTag(tags_, ZoFTagCode::kDoAction, body_.Bytes());
}

}  // namespace ZoFlash
