#include "flash/sequence_writer.h"

#include <algorithm>
#include <cstring>

#include "flash/swf_file.h"

namespace ZoFlash {
namespace {

bool SameName(const char* a, const char* b) noexcept {
    return a == b || (a && b && std::strcmp(a, b) == 0);
}

template <typename Entry>
bool SameCharacterSlot(const Entry& a, const Entry& b) noexcept {
    // ClipDepth and the name can only be given when a character is created.
    return a.placement->object.Get() == b.placement->object.Get() &&
           a.placement->clipDepth == b.placement->clipDepth && SameName(a.name, b.name);
}

template <typename Entry>
bool ShowsSame(const Entry& a, const Entry& b) noexcept {
    const ZoSWFPlacement& x = *a.placement;
    const ZoSWFPlacement& y = *b.placement;
    return &x == &y || (SameCharacterSlot(a, b) && x.matrix == y.matrix && x.cxform == y.cxform &&
                        x.ratio == y.ratio);
}

}  // namespace

void ZoFSequenceWriter::DefineCharacters(const ZoSWFFrame& frame) {
    for (const ZoSWFPlacement& p : frame.GetPlacements())
        file_.Define(*p.object);
}

void ZoFSequenceWriter::WriteFrame(const ZoSWFFrame& frame) {
    CollectFrame(frame);
    MergePermanents();
    EmitDifferences();
    EmitActions(frame);
    out_.PutTag(ZoFTagCode::kShowFrame, {});
    shown_.swap(next_);
}

void ZoFSequenceWriter::CollectFrame(const ZoSWFFrame& frame) {
    placed_.clear();
    bool ascending = true;
    for (const ZoSWFPlacement& p : frame.GetPlacements()) {
        ascending = ascending && (placed_.empty() || placed_.back().depth < p.depth);
        placed_.push_back({p.depth, &p, frame.GetName(p)});
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
        if (own.placement->permanent)
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
            EmitPlace(*now);
            ++now;
        } else {
            if (!ShowsSame(*before, *now)) {
                if (SameCharacterSlot(*before, *now)) {
                    EmitMove(*before->placement, *now->placement);
                } else {
                    EmitRemove(now->depth);
                    EmitPlace(*now);
                }
            }
            ++before;
            ++now;
        }
    }
}

void ZoFSequenceWriter::EmitPlace(const Entry& entry) {
    const ZoSWFPlacement& now = *entry.placement;
    ZoFPlaceObject2Record r;
    r.depth = now.depth;
    r.hasCharacter = true;
    r.characterId = static_cast<uint16_t>(now.object->GetCharacterID());
    r.hasMatrix = true;
    r.matrix = now.matrix;
    r.hasCxform = !now.cxform.IsIdentity();
    r.cxform = now.cxform;
    r.hasRatio = now.ratio >= 0;
    r.ratio = static_cast<uint16_t>(now.ratio);
    r.name = entry.name;
    r.hasClipDepth = now.clipDepth > 0;
    r.clipDepth = now.clipDepth;
    body_.Clear();
    ZoWritePlaceObject2Body(body_, r);
    out_.PutTag(ZoFTagCode::kPlaceObject2, body_.Bytes());
}

void ZoFSequenceWriter::EmitMove(const ZoSWFPlacement& before, const ZoSWFPlacement& now) {
    // Fields left out keep their values on the player's display list.
    ZoFPlaceObject2Record r;
    r.move = true;
    r.depth = now.depth;
    r.hasMatrix = !(before.matrix == now.matrix);
    r.matrix = now.matrix;
    r.hasCxform = !(before.cxform == now.cxform);
    r.cxform = now.cxform;
    r.hasRatio = now.ratio >= 0 && now.ratio != before.ratio;
    r.ratio = static_cast<uint16_t>(now.ratio);
    // A ratio cannot be taken back once given, so dropping it changes nothing.
    if (!r.hasMatrix && !r.hasCxform && !r.hasRatio)
        return;
    body_.Clear();
    ZoWritePlaceObject2Body(body_, r);
    out_.PutTag(ZoFTagCode::kPlaceObject2, body_.Bytes());
}

void ZoFSequenceWriter::EmitRemove(uint16_t depth) {
    body_.Clear();
    body_.PutU16(depth);
    out_.PutTag(ZoFTagCode::kRemoveObject2, body_.Bytes());
}

void ZoFSequenceWriter::EmitActions(const ZoSWFFrame& frame) {
    if (!frame.IsStopFrame() && frame.GetActions().IsEmpty())
        return;
    body_.Clear();
    if (frame.IsStopFrame())
        ZoFActionRecord(kZoActionStop).Write(body_);
    frame.GetActions().Write(body_);
    out_.PutTag(ZoFTagCode::kDoAction, body_.Bytes());
}

}  // namespace ZoFlash
